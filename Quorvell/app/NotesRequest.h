#pragma once

#include <string>

namespace quorvell {

/// What `quorvell notes` was asked to do.
struct NotesRequest {
    enum class Action { list, find, show, edit, history, restore, confirm, delete_, export_, move };

    Action action = Action::list;
    std::string words{}; ///< To be found; the id or its beginning; where to export or move to.
    int version = 0; ///< To be restored: 1 is the newest of the history.
    bool asJson = false; ///< One object a line.
};

} // namespace quorvell
