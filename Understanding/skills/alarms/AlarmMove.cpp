// SPDX-License-Identifier: MIT
#include "Understanding/skills/alarms/AlarmMove.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/alarms/TimerLength.h"

namespace quorvell {

bool AlarmMove::isMeant(const AlarmLine& cut, const std::string& front)
{
    static const Pattern there("^(?:the|my|our|that)\\b.*\\d", Pattern::caseless);
    static const Pattern to("^to (?:\\d|noon|midnight|half|quarter)", Pattern::caseless);
    static const Pattern instead("\\b(?:instead of|rather than|in place of)\\b.*\\d", Pattern::caseless);
    return !cut.isPlural && ((there.find(front) && to.find(cut.back)) || instead.find(cut.back));
}

AlarmWish AlarmMove::read(const AlarmLine& cut, const std::string& front)
{
    static const Pattern to(
        "^(.*?)\\b(?:to|until|till|for|by|at|back|forward|earlier|later)\\b\\s*(.*)$", Pattern::caseless);
    AlarmWish wish{
        .kind = AlarmWish::Kind::move, .isOfTimers = cut.isOfTimers, .which = AlarmLine::withoutArticles(front)};
    static const Pattern inPlace(
        "^(?:to|go(?:es)? off|ring|be|for|at|\\s)*(.+?),? (?:instead of|rather than|in place of|and not|not) (.+)$",
        Pattern::caseless);
    if (const auto match = inPlace.find(cut.back)) {
        wish.which = trimmed(wish.which + " " + AlarmLine::withoutLead(match->texts[1]));
        wish.when = AlarmLine::asTime(match->texts[0]);
        return wish;
    }
    static const Pattern toLast("^(?:(.*?)\\s+)?(?:to|until|till)\\s+(.+)$", Pattern::caseless);
    if (const auto match = toLast.find(cut.back)) {
        wish.which = trimmed(wish.which + " " + AlarmLine::withoutLead(match->texts[0]));
        wish.when = cut.isOfTimers ? match->texts[1] : AlarmLine::asTime(match->texts[1]);
    } else if (static const Pattern span(
                   "^(?:(?:back|forward|out|up|on|earlier|later|by)\\s+)*(.+?)(?:\\s+(later|earlier))?$",
                   Pattern::caseless);
               const auto moved = span.find(cut.back)) {
        wish.when =
            TimerLength::read(moved->texts[0]) ? "by " + moved->texts[0] : AlarmLine::withoutLead(moved->texts[0]);
        static const Pattern sooner("\\b(?:earlier|forward|up)\\b", Pattern::caseless);
        if (sooner.find(cut.back) && wish.when.starts_with("by "))
            wish.when = "earlier " + moved->texts[0];
    }
    return wish;
}

} // namespace quorvell
