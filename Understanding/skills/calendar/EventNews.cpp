// SPDX-License-Identifier: MIT
#include "Understanding/skills/calendar/EventNews.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/calendar/AgendaRules.h"
#include "Understanding/skills/calendar/reading/CalendarWords.h"
#include "Understanding/skills/calendar/reading/EventTitle.h"
#include "Understanding/time/SpokenLength.h"
#include "Understanding/time/TimeWords.h"

#include <functional>
#include <utility>

namespace quorvell {

namespace {

using Found = std::optional<Request>;

const std::string newsOwner = "^(?:(?:the|my|our) )?";
const std::string newsAux = "(?:has been|have been|had been|will be|was|is|are|got|has|just got)";

Found newsOfMove(const std::string& title, std::string when, std::string from, Wish::Scope scope = Wish::Scope::open)
{
    return AgendaRules::request({.kind = AgendaIntent::Kind::move,
        .title = trimmed(title),
        .scope = scope,
        .when = std::move(when),
        .from = std::move(from)});
}

/// A time with the word that leads to it: "at 10" of "10".
std::string asTime(const std::string& words, const RuleSurroundings& around)
{
    static const Pattern led("^(?:to|on|for|at|until) ", Pattern::caseless);
    const std::string bare = trimmed(led.replaceAll(trimmed(words), ""), " .,;!?");
    if (bare.empty())
        return {};
    const bool isDigit = bare.front() >= '0' && bare.front() <= '9';
    if (isDigit && TimeWords::isTime("at " + bare, around))
        return "at " + bare;
    return TimeWords::isTime(bare, around) ? bare : std::string();
}

/// "The meeting with Ana has been moved, put it on thursday".
Found changed(const std::string& core, const RuleSurroundings& around)
{
    static const Pattern form(newsOwner + "(.+?) " + newsAux
            + " (?:changed|moved|rescheduled|postponed|shifted|put back|delayed)[ ,.;-]*(?:(?:so|please|now|and) "
              ")*(?:(?:put|move|change|set|make|schedule|update)(?: it| that)?)?(?: (?:to|on|for|at|until))? (.+)$",
        Pattern::caseless);
    static const Pattern length("^by\\b|^(?:an?|one|two|half an|\\d+) (?:hour|minute|min|day|week)", Pattern::caseless);
    static const Pattern asks(
        "^(?:if|when|why|what|who|where|how|whether|is|are|was|has|tell|did)\\b", Pattern::caseless);
    const auto match = form.find(core);
    if (!match || length.find(match->texts[1]) || asks.find(match->texts[0]))
        return std::nullopt;
    const std::string when = asTime(match->texts[1], around);
    static const Pattern owned("^(?:the|my|our) ", Pattern::caseless);
    if (when.empty() && !owned.find(core))
        return std::nullopt;
    static const Pattern known("^(?:to|on|for|at|until) ", Pattern::caseless);
    return newsOfMove(match->texts[0], when.empty() ? known.replaceAll(match->texts[1], "") : when, "");
}

/// "Dinner with John is postponed", "staff meeting pushed back an hour".
Found putOff(const std::string& core, const RuleSurroundings&)
{
    static const Pattern form(newsOwner + "(.+?) (?:" + newsAux
            + " )?(?:(postponed|delayed|moved|changed|pushed back|put back|put off|rescheduled|moved "
              "back|shifted|running "
              "late)|(brought "
              "forward|moved up|moved forward|pulled forward))(?: (?:by )?((?:an?|one|two|three|half an|\\d+) "
              "(?:minutes?|mins?|hours?|days?|weeks?)))?(?: later| earlier)?[.!]*$",
        Pattern::caseless);
    static const Pattern asks("^(?:if|when|why|what|who|where|how|whether|is|are|was|has|tell)\\b", Pattern::caseless);
    const auto match = form.find(core);
    if (!match || asks.find(match->texts[0]) || !EventTitle::namesOccasion(match->texts[0])
        || CalendarWords::isOfOthers(CalendarWords::of(core).plain))
        return std::nullopt;
    constexpr int minutesOfDay = 24 * 60;
    const auto days = TimeWords::daysIn(match->texts[3]);
    const auto length = SpokenLength::read(match->texts[3]);
    const int minutes = days ? *days * minutesOfDay : length ? length->minutes : 0;
    return AgendaRules::request({.kind = AgendaIntent::Kind::move,
        .minutes = match->texts[2].empty() ? minutes : -minutes,
        .title = match->texts[0]});
}

/// "The yoga class is at 10 instead of 9", "make the meeting at 5 and not at 4".
Found replaced(const std::string& core, const RuleSurroundings& around)
{
    static const Pattern form(
        "^(?:(?:please|can you|could you|so|make|move|change|set|have|put|start|update) )*"
        "(?:(?:the|my|our|a|an) )?(.+?)(?: (?:starts?|begins?|is|be|will be|should be|to be|now))*"
        " ((?:(?:at|on|to|for|from) )?[^ ].*?),? (?:and not|instead of|not|rather than) "
        "((?:(?:at|on|to|for|from) )?.+)$",
        Pattern::caseless);
    static const Pattern asks("^(?:if|when|why|what|who|where|how|whether|is|are|do|does)\\b", Pattern::caseless);
    const auto match = form.find(core);
    if (!match || asks.find(core) || CalendarWords::isOfOthers(CalendarWords::of(core).plain))
        return std::nullopt;
    const std::string from = asTime(match->texts[2], around);
    const auto end = TimeWords::atEnd(match->texts[0] + " " + match->texts[1], around);
    if (from.empty() || !end || end->rest.empty() || !EventTitle::namesOccasion(end->rest))
        return std::nullopt;
    static const Pattern verb(
        "(?: (?:starts?|begins?|is|be|will be|should be|to be|now|this|at|on))+$", Pattern::caseless);
    return newsOfMove(verb.replaceAll(end->rest, ""), end->time, from);
}

/// "My standup is now at 9:45 every day, update it".
Found isNow(const std::string& core, const RuleSurroundings& around)
{
    static const Pattern form(newsOwner
            + "(.+?) (?:is|starts|begins|will be) now (?:at |on |to )?(.+?)( every ?(?:day|time|week|one)| always| "
              "from "
              "now on)?$",
        Pattern::caseless);
    const auto match = form.find(core);
    const std::string when = match ? asTime(match->texts[1], around) : "";
    if (when.empty() || !EventTitle::namesOccasion(match->texts[0]))
        return std::nullopt;
    return newsOfMove(match->texts[0], when, "", match->texts[2].empty() ? Wish::Scope::open : Wish::Scope::all);
}

/// "Lunch with Ana should be at 12:30", "put the staff meeting on friday instead".
Found shouldBe(const std::string& core, const RuleSurroundings& around)
{
    static const Pattern should(newsOwner
            + "(.+?) (?:(?:should|must|will|needs to|need to|has to|is going to) (?:now )?(?:be|start|begin|take "
              "place|happen)) "
              "(?:at |on )(.+)$",
        Pattern::caseless);
    static const Pattern instead(
        "^(?:(?:please|can you|could you) )*(?:put|have|schedule|set|make|do|book) (?:(?:the|my|our) "
        ")?(.+?) (?:on|at|to|for) (.+?) instead$",
        Pattern::caseless);
    static const Pattern made("^(?:(?:please|can you|could you) )*make (?:(?:the|my|our) (.+?)|(\\w+ with .+?)) (?:be "
                              ")?(?:at|on|for|to) (.+)$",
        Pattern::caseless);
    static const Pattern asks(
        "^(?:if|when|why|what|who|where|how|it|that|this|there|i|we|he|she|they|remind|notify|alert|let|"
        "do|add|put|set|note|write|save|create|schedule|book|have|make)\\b|\\b(?:it|that|which)$",
        Pattern::caseless);
    auto match = should.find(core);
    if (!match)
        match = instead.find(core);
    const auto making = match ? std::nullopt : made.find(core);
    if (!match && !making)
        return std::nullopt;
    const std::string when = asTime((making ? making->texts[2] : match->texts[1]), around);
    const std::string title = !making ? match->texts[0]
        : making->texts[0].empty()    ? making->texts[1]
                                      : making->texts[0];
    const bool isOther = CalendarWords::isOfOthers(CalendarWords::of(core).plain);
    return when.empty() || isOther || asks.find(title) || !EventTitle::namesOccasion(title)
        ? std::nullopt
        : newsOfMove(title, when, "");
}

/// "Cancel the staff meeting and put it on friday": it is moved.
Found putElsewhere(const std::string& core, const RuleSurroundings& around)
{
    static const Pattern form(
        "^(?:(?:please|can you|could you) )*(?:cancel|remove|take|delete) (?:(?:the|my|our) )?(.+?)"
        "(?: from .+?| off .+?)?,? (?:and|then) (?:then )?(?:put|move|reschedule|schedule|set|add|"
        "make) (?:it|that)(?: in| back)? (?:to|on|for|at|in) (.+?)(?: instead)?$",
        Pattern::caseless);
    const auto match = form.find(core);
    const std::string when = match ? asTime(match->texts[1], around) : "";
    return when.empty() || !EventTitle::namesOccasion(match->texts[0]) ? std::nullopt
                                                                       : newsOfMove(match->texts[0], when, "");
}

} // namespace

Found EventNews::read(const std::string& core, const RuleSurroundings& around)
{
    static const Pattern asked(
        "[,;.]? (?:so |and |please |can you |could you |kindly )*(?:update|change|fix|correct|move) (?:it|that|my "
        "calendar|the calendar)(?: please)?$",
        Pattern::caseless);
    if (!around.offers("change_event"))
        return std::nullopt;
    const std::string news = asked.replaceAll(core, "");
    for (const auto reader : {changed, putOff, replaced, isNow, shouldBe, putElsewhere})
        if (auto request = reader(news, around))
            return request;
    return std::nullopt;
}

} // namespace quorvell
