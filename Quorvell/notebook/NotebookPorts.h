// SPDX-License-Identifier: MIT
// What the store asks of the desktop.
#pragma once

#include "Quorvell/files/PictureConverter.h"
#include "Quorvell/files/Trash.h"

namespace quorvell {

/// Each may be missing; all outlive the file worker.
struct NotebookPorts {
    Trash* trash = nullptr; ///< Without it deleted notes are removed.
    const PictureConverter* pictures = nullptr; ///< Without it no pictures are taken in.
};

} // namespace quorvell
