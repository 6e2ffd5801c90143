// SPDX-License-Identifier: MIT
// What the notebook's tools need besides the notebook.
#pragma once

#include "Quorvell/notebook/NotebookSearch.h"
#include "Quorvell/session/consent/ConsentWords.h"
#include "Quorvell/tools/UndoBook.h"
#include "QuorvellCore/reminders/calendar/Calendar.h"

#include <functional>
#include <string>

namespace quorvell {

/// Everything that is borrowed outlives the registry.
struct NotebookToolContext {
    std::function<Instant()> now;
    std::function<std::string()> newID;
    Calendar calendar; ///< Of the user: dates cross to the model as its clock shows them.
    NotebookSearch* search = nullptr; ///< Without it nothing is found, and the tool says so.
    ConsentWords* consent = nullptr; ///< Without it no fact about the user is ever confirmed.
    using Shown = std::function<void(const std::string& problem)>;
    /// Shows a file or folder on the screen, which may take its time, then says why that cannot be, or nothing.
    std::function<void(const std::string& path, Shown shown)> show = nullptr;
    UndoBook* undo = nullptr; ///< Without it nothing can be taken back, and no result says that it could.
};

} // namespace quorvell
