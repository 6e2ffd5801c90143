// SPDX-License-Identifier: MIT
#include "Quorvell/reminding/Notifier.h"

#include "QuorvellCore/text/PrintableText.h"

namespace quorvell {

Notice Notice::printable() const
{
    Notice shown = *this;
    shown.title = printableLine(title);
    shown.body = printableText(body);
    for (Action& action : shown.actions)
        action.label = printableLine(action.label);
    return shown;
}

} // namespace quorvell
