// SPDX-License-Identifier: MIT
// What keep_note tells of lists, of one or of several at once, without changing any.
#pragma once

#include "Quorvell/tools/notebook/ListRequest.h"
#include "QuorvellCore/live/tools/ToolResult.h"
#include "QuorvellCore/notebook/Note.h"
#include "QuorvellCore/text/Json.h"

#include <string>
#include <vector>

namespace quorvell {

struct ListsTold {
    using Texts = std::vector<std::string>;

    /// Without its items.
    static Json described(const Note& note);
    static Json described(const std::vector<Note>& lists);
    /// "lists", each with the first of its open items where `withItems` is set.
    static ToolResult all(const std::vector<Note>& lists, bool withItems);
    /// The same, with where the items stand that are asked about: "held" and "missing".
    static ToolResult holding(const std::vector<Note>& lists, const Texts& items);
    static ToolResult which(const std::vector<Note>& lists);
    static ToolResult none(const ListRequest& request, const std::vector<Note>& lists);
    /// "elsewhere": on which other lists the items stand; nothing is added where they stand on none.
    static void addElsewhere(ToolResult& result, const std::vector<Note>& lists, const Note& but, const Texts& items);
    /// "a, b or c".
    static std::string eitherOf(const Texts& texts);
};

} // namespace quorvell
