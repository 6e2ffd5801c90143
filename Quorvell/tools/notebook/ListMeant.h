// SPDX-License-Identifier: MIT
// Which of the user's lists a call of keep_note is about.
#pragma once

#include "Quorvell/tools/notebook/ListRequest.h"
#include "QuorvellCore/live/tools/ToolResult.h"
#include "QuorvellCore/notebook/ListWords.h"
#include "QuorvellCore/notebook/Note.h"

#include <optional>
#include <string>
#include <vector>

namespace quorvell {

/// The list, or what is answered instead.
struct ListMeant {
    std::optional<Note> list;
    std::optional<ToolResult> answer;

    /// By its id, its name, or what is to be found on it. What only looks is told of all where none is named.
    static ListMeant of(const std::vector<Note>& lists, const ListRequest& request);
    /// All lists, or all of that kind, however they are named: what is to be bought stands on "groceries" and
    /// "shopping".
    static ToolResult several(const std::vector<Note>& lists, const ListRequest& request);
    static ListWords::Best best(const std::vector<Note>& lists, const std::string& name);
};

} // namespace quorvell
