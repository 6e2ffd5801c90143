// SPDX-License-Identifier: MIT
#include "Understanding/skills/calendar/RemovalNews.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/calendar/finding/EventLookup.h"
#include "Understanding/skills/calendar/reading/CalendarWords.h"

#include <deque>
#include <utility>

namespace quorvell {

namespace {

using Found = std::optional<Request>;

const std::string thing("\\b(?:" + CalendarWords::noun + "|" + CalendarWords::occasion + ")\\b");

bool isOfOtherMatters(const std::string& plain)
{
    static const Pattern other("\\b(?:lists?|notes?|notebook|reminders?|alarms?|timers?|e-?mails?|messages?|files?|"
                               "photos?|songs?|music|tabs?|windows?|subscription|order|account)\\b");
    static const Pattern question("^(?:is|are|was|were|has|have|had|did|does|do "
                                  "(?!not\\b)|can|could|what|when|where|who|why|how|which|if|whose)\\b");
    return other.find(plain) || question.find(plain);
}

Found removing(const std::string& subject, const std::string& core, const RuleSurroundings& around)
{
    auto search = CalendarWords::search(subject, around);
    if (!search || search->isUnclear || (search->name.empty() && search->noun.empty()))
        return std::nullopt;
    search->aim = EventSearch::Aim::cancel;
    search->isLoose = search->isLoose || search->days.has_value();
    return EventLookup::request(*std::move(search), core);
}

/// "Skip standup on thursday", "no more standups on fridays", "there is no yoga this saturday".
Found skipped(const std::string& plain, const std::string& core, const RuleSurroundings& around)
{
    static const Pattern form(
        "^(?:(?:please|can you|could you|let us|i want to|i will|we will|i need to|there is|there "
        "will be|we have|i have|i am|we are|and|so) )*(?:skip|skipping|no more|no) (?:(?:my|the|our) )?(.+)$");
    static const Pattern series("\\bevery\\b|days\\b|\\bno more\\b|\\bskip (?:my|the|our)\\b");
    static const Pattern named(thing);
    const auto match = form.find(plain);
    if (!match || !named.find(match->texts[0]))
        return std::nullopt;
    const auto search = CalendarWords::search(match->texts[0], around);
    const bool isSure = search && !search->name.empty() && (search->days || series.find(plain));
    return isSure ? removing(match->texts[0], core, around) : std::nullopt;
}

/// "The yoga class has been cancelled", "mark the staff meeting as cancelled"
Found ended(const std::string& plain, const std::string& core, const RuleSurroundings& around)
{
    static const std::string over("(?:cancelled|canceled|called off|off|scrapped|scratched|dropped)");
    static const Pattern form(
        "^(?:(?:my|the|our) )?(.+?) (?:is|are|was|got|has been|have been|had been|just got|has just "
        "been|is now|will be) (?:just |now |being )?"
        + over + "(?: now| (?:for )?((?:today|tomorrow|this|next|on) ?.*))?$");
    static const Pattern marked(
        "^(?:please |can you |could you )*mark (?:(?:my|the|our) )?(.+?) as " + over + "(?: (.*))?$");
    static const Pattern notOn(
        "^(?:(?:my|the|our) )?(.+?) (?:is|are|will) (?:not|no longer) (?:be )?(?:happening|taking place|"
        "going ahead|on)(?: anymore| any longer)?(?: ((?:today|tomorrow|this|next|on) ?.*))?$");
    static const Pattern isOff("^(?:(?:my|the|our) )?(.+?)['’]s (?:been )?" + over
        + "(?: now| (?:for )?((?:today|tomorrow|this|next|on) ?.*))?$");
    static const Pattern named(thing);
    std::optional<PatternMatch> match;
    for (const Pattern* said : {&form, &marked, &notOn, &isOff})
        match = match ? match : said->find(plain);
    return match && named.find(match->texts[0])
        ? removing(trimmed(match->texts[0] + " " + match->texts[1]), core, around)
        : std::nullopt;
}

/// "Ana cancelled lunch": with Ana it was.
Found calledOff(const std::string& plain, const std::string& core, const RuleSurroundings& around)
{
    static const Pattern form(
        "^(?:(?:my|the|our) )?([a-z]+(?: [a-z]+)?) (?:has |have |just |had )*(?:cancelled|canceled|"
        "called off|scrapped|bailed on|backed out of)(?: on)? (?:(?:my|the|our|his|her|their) )?(.+)$");
    static const Pattern named(thing);
    static const Pattern nobody("^(?:i|we|you|they|he|she|it|who|somebody|someone|yes|no|please|not|is|are)\\b");
    const auto match = form.find(plain);
    if (!match || !named.find(match->texts[1]))
        return std::nullopt;
    static const Pattern with("\\bwith\\b");
    const bool isNamed = !nobody.find(match->texts[0]) && !with.find(match->texts[1]);
    const auto search = CalendarWords::search(match->texts[1], around);
    const bool isOccasion = search && !search->name.empty();
    return removing(match->texts[1] + (isNamed && isOccasion ? " with " + match->texts[0] : ""), core, around);
}

/// "I am not going to yoga on saturday", "I won't make it to dinner with John", "I quit yoga", "no longer have ..."
Found notGoing(const std::string& plain, const std::string& core, const RuleSurroundings& around)
{
    static const std::deque<Pattern> forms = [] {
        const std::string who("^(?:(?:i|we|so|and|sorry|well) )+");
        const std::string behind(" (?:(?:my|the|our|that|this) )?(.+?)(?: anymore| any longer| after all)?$");
        std::deque<Pattern> all;
        all.emplace_back(who
            + "(?:am|are|will|was|were|can|could) ?not (?:be |be able to )?(?:going to (?:go to|attend|"
              "make it to|be at)|going to|going for|attending|attend|make it to|coming to|be at|go to|"
              "coming for|doing|having)"
            + behind);
        all.emplace_back(who + "cannot (?:attend|make it to|come to|be at|go to)" + behind);
        all.emplace_back(who
            + "(?:do not|no longer|do not really) (?:want|need|plan|intend|wish|have)(?: to)?(?: (?:go to|"
              "attend|go for|have|do))?"
            + behind);
        all.emplace_back(who
            + "(?:quit|gave up|dropped out of|stopped|decided against|decided not to go to|changed my mind "
              "about|pulled out of|am done with|have quit|backed out of)"
            + behind);
        all.emplace_back("^(?:please )?(?:do not|no need to) (?:have|schedule|keep|do|attend|book)" + behind);
        return all;
    }();
    static const Pattern named(thing);
    static const Pattern deed("^(?:(?:go|call|have|attend|be|do|buy|get|make|see|meet|tell|let|forget|miss|visit) )");
    static const Pattern wish("\\banymore\\b|\\bany longer\\b|\\bno longer\\b|^(?:i|we) (?:quit|gave up)");
    for (const Pattern& form : forms) {
        const auto match = form.find(plain);
        if (!match || !named.find(match->texts[0]) || deed.find(match->texts[0]))
            continue;
        const auto search = CalendarWords::search(match->texts[0], around);
        if (search && (!search->name.empty() || search->days || wish.find(plain)))
            return removing(match->texts[0], core, around);
    }
    return std::nullopt;
}

} // namespace

Found RemovalNews::read(const std::string& plain, const std::string& core, const RuleSurroundings& around)
{
    if (isOfOtherMatters(plain) || !around.offers("change_event"))
        return std::nullopt;
    for (const auto reader : {skipped, ended, calledOff, notGoing})
        if (auto request = reader(plain, core, around))
            return request;
    return std::nullopt;
}

Found RemovalNews::readStatement(const std::string& plain, const std::string& core, const RuleSurroundings& around)
{
    static const Pattern without(
        "^(?:i am|i will|i was|we are|we will|i do|i can|we do|i|we)(?: not|not)? (?:going to |be )*(?:not )?"
        "(?:having|have|going to|go to|attending|attend|doing|do|need|needing|making|make it to|coming to|be at) "
        "(?:(?:my|the|our) )?(.+?)(?: anymore)?(?:,? (?:so )?(?:please )?(?:can you |could you )?"
        "(?:remove|cancel|delete|take) .*)?$");
    static const Pattern negative("\\b(?:not|cannot|no longer|never)\\b");
    static const Pattern wish("\\banymore\\b|\\bno longer\\b|\\b(?:remove|cancel|delete) (?:it|that)\\b|"
                              "\\bnot (?:be )?(?:going to|attending|coming to|making) (?:my|the|our)\\b");
    if (isOfOtherMatters(plain) || !around.offers("change_event") || !negative.find(plain) || !wish.find(plain))
        return std::nullopt;
    const auto match = without.find(plain);
    auto search = match ? CalendarWords::search(match->texts[0], around) : std::nullopt;
    if (!search || search->isUnclear || (search->name.empty() && search->noun.empty()))
        return std::nullopt;
    search->aim = EventSearch::Aim::cancel;
    return EventLookup::request(*std::move(search), core);
}

} // namespace quorvell
