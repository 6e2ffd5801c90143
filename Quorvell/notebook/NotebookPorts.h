#pragma once

#include "Quorvell/files/PictureConverter.h"
#include "Quorvell/files/Trash.h"

#include <functional>
#include <string>

namespace quorvell {

/// What the store asks of the desktop. Each may be missing; all outlive the file worker.
struct NotebookPorts {
    Trash* trash = nullptr; ///< Without it deleted notes are removed.
    const PictureConverter* pictures = nullptr; ///< Without it no pictures are taken in.
    std::function<void(const std::string& id)> withdrawNotifications; ///< Of a note that is deleted. Main thread.
};

} // namespace quorvell
