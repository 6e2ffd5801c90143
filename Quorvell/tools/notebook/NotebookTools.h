// SPDX-License-Identifier: MIT
// The model's hands on the notebook. Notes that are put away and facts that are not confirmed do not exist for it.
#pragma once

#include "Quorvell/notebook/FullNotebook.h"
#include "Quorvell/session/tools/ToolRegistry.h"
#include "Quorvell/tools/notebook/NotebookToolContext.h"

namespace quorvell {

/// The notebook must outlive the registry. Every tool that keeps something answers once that is durable.
///
/// keep_note title?, text?, kind? ("note" or "clip") answers {"status": "kept", "id", "title"}; with a list or an id
/// what ListKeeping tells. What changes the notebook answers with "undo" too; the same tool takes it back, given just
/// that. explain question, text, level? does the same; the same question again replaces the text. save_how_to title,
/// goal, steps, based_on? does the same and puts the one it is based on away, whose uses go on to count for the new
/// one. find_in_notebook query, kind?, limit? answers {"status": "found", "count", "notes": [{"id", "kind", "title",
/// "snippet", "created", "remind_at"?, "untrusted"?}]}; "count" is of all that match, "notes" the first `limit` of
/// them, best first. With `question` it answers {"status": "found", "count", "sentences": [{"id", "kind", "title",
/// "text", "created", ...}], "notes"}: sentences that hold the answer as they stand in notes, at most 5, best first;
/// without any, "notes" are at most 3 that come near. read_note id answers {"status": "read", "id", "kind", "title",
/// "text", "created", "remind_at"?, "untrusted"?, "question"?, "goal"?, "thread"?, "truncated"?}. "untrusted" is true
/// for what came from the screen or the web, and absent otherwise. open_notebook id? answers {"status": "shown", "id"?,
/// "title"?}. remember_about_them fact: see FactTool.h.
void registerNotebookTools(ToolRegistry& registry, FullNotebook& notebook, NotebookToolContext context);

} // namespace quorvell
