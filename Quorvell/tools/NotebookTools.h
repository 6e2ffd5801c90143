// The model's hands on the notebook: keep_note, find_in_notebook, read_note. Notes that are put away and facts that are
// not confirmed do not exist for it.
#pragma once

#include "Quorvell/notebook/Notebook.h"
#include "Quorvell/session/ToolRegistry.h"
#include "QuorvellCore/reminders/Calendar.h"

#include <functional>
#include <string>

namespace quorvell {

struct NotebookToolContext {
    std::function<Instant()> now;
    std::function<std::string()> newID;
    Calendar calendar; ///< Of the user: dates cross to the model as its clock shows them.
};

/// The notebook must outlive the registry.
///
/// keep_note title?, text?, kind? ("note" or "clip") answers {"status": "kept", "id", "title"} once it is durable.
/// find_in_notebook query, kind?, limit? answers {"status": "found", "count", "notes": [{"id", "kind", "title",
/// "snippet", "created", "remind_at"?, "untrusted"?}]}; "count" is of all that match, "notes" the first `limit` of
/// them. read_note id answers {"status": "read", "id", "kind", "title", "text", "created", "remind_at"?, "untrusted"?,
/// "truncated"?}. "untrusted" is true for what came from the screen or the web, and absent otherwise.
void registerNotebookTools(ToolRegistry& registry, Notebook& notebook, NotebookToolContext context);

} // namespace quorvell
