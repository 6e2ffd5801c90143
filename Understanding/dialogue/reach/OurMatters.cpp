// SPDX-License-Identifier: MIT
#include "Understanding/dialogue/reach/OurMatters.h"

#include "QuorvellCore/text/Pattern.h"

namespace quorvell {

bool OurMatters::areNamed(const std::string& phrase)
{
    static const Pattern ours(
        "\\b(?:remind\\w*|note|notes|noted|notebook|calend[ae]rs?|diary|agenda|lists?|check ?lists?|alarms?"
        "|timers?|appointments?|remember|do not forget|not let me forget|write down|jot|birthdays?|what did "
        "i|(?:save|keep) (?:this|that) for later"
        "|where did i)\\b");
    return ours.find(phrase).has_value();
}

bool OurMatters::mayBeNamed(const std::string& phrase)
{
    static const Pattern ours(
        "\\b(?:to do|todo|events?|schedules?|scheduled|meetings?|put down|wake|bought|items?|notify|nudge"
        "|ping me|minutes from now|did i|my (?:\\w+ )?(?:flight|train|bus|taxi|plane|tickets?|hotel|trip))\\b"
        "|\\bin \\d+ (?:minutes?|hours?|seconds?)\\b"
        "|^(?:please |can you |could you )*(?:move|reschedule|postpone|delay|push|shift|rename) (?:the|our|that)\\b");
    return ours.find(phrase).has_value();
}

} // namespace quorvell
