// SPDX-License-Identifier: MIT
#include "QuorvellCore/notebook/ListNote.h"

#include "QuorvellCore/notebook/CheckList.h"
#include "QuorvellCore/notebook/ListWords.h"
#include "QuorvellCore/text/Characters.h"

namespace quorvell {

bool ListNote::isList(const Note& note)
{
    if (note.kind != NoteKind::note || !note.isVisibleToQuorvell() || note.remindAt || note.trigger)
        return false;
    const bool isCalledList = ListWords::isListTitle(note.title);
    const CheckList list(note.body);
    if (!list.hasBoxes())
        return isCalledList && trimmed(note.body).empty();
    return !list.isTooLong() && (isCalledList || list.isNothingElse());
}

} // namespace quorvell
