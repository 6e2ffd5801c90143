// SPDX-License-Identifier: MIT
// keep_note, explain, save_how_to: what the model writes into the notebook.
#pragma once

#include "Quorvell/notebook/FullNotebook.h"
#include "Quorvell/session/tools/ToolReply.h"
#include "Quorvell/tools/notebook/NoteUse.h"
#include "Quorvell/tools/notebook/NotebookToolContext.h"
#include "QuorvellCore/live/wire/vocabulary/LiveFunctionCall.h"

namespace quorvell {

void keepNote(
    FullNotebook& notebook, const NotebookToolContext& context, const LiveFunctionCall& call, ToolReply reply);
void explain(FullNotebook& notebook, const NotebookToolContext& context, const LiveFunctionCall& call, ToolReply reply);
void saveHowTo(FullNotebook& notebook, NoteUse& use, const NotebookToolContext& context, const LiveFunctionCall& call,
    ToolReply reply);

} // namespace quorvell
