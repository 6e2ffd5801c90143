// SPDX-License-Identifier: MIT
// What keep_note does with lists.
#pragma once

#include "Quorvell/notebook/FullNotebook.h"
#include "Quorvell/session/tools/ToolReply.h"
#include "Quorvell/tools/notebook/ListRequest.h"
#include "Quorvell/tools/notebook/NotebookToolContext.h"

namespace quorvell {

/// Answers, with `name` as one speaks of the list, behind "your":
/// {"status": "lists", "count", "lists": [{"id", "title", "name", "open", "ticked"}]}, each with its open "items" where
/// they were asked for, and where several lists may be meant; with "held": [{"id", "name", "text", "ticked"}] and
/// "missing" where `has` asks for some;
/// {"status": "list", "id", "title", "name", "open", "ticked", "items": [{"place", "text", "ticked"}]}, open ones
/// first, with "held" and "missing" where `has` asks for some, and "elsewhere", as "held" above, for what is missing;
/// {"status": "kept" | "known" | "changed" | "deleted", ...} with what was done: "added", "again", "already", "ticked",
/// "unticked", "removed", "replaced", "missing", "was", and "undo";
/// and with nothing done "which_list", "no_list", "which_item", "not_on_list".
void keepList(FullNotebook& notebook, const NotebookToolContext& context, const ListRequest& request, ToolReply reply);

/// What is told of a list wherever its note is shown: "items". Nothing is added for any other note.
void addItems(Json& shown, const Note& note);

} // namespace quorvell
