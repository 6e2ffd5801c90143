// SPDX-License-Identifier: MIT
// What `quorvell notes` was asked to do.
#pragma once

#include <string>

namespace quorvell {

struct NotesRequest {
    enum class Action {
        list,
        find,
        show,
        facts,
        history,
        export_,
        add,
        remember,
        forgetFacts,
        edit,
        restore,
        confirm,
        tick,
        picture,
        delete_,
        move,
    };

    Action action = Action::list;
    std::string words{}; ///< To be found or kept; the id or its beginning; where to export or move to.
    int number = 0; ///< From 1: the version to be restored, 1 being the newest; the step or task to be ticked.
    std::string picture{}; ///< The file to take it from; empty to be told where it is.
    bool isSure = false; ///< Of what cannot be undone.
    bool asJson = false; ///< One object a line.
};

} // namespace quorvell
