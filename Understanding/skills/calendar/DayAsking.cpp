// SPDX-License-Identifier: MIT
#include "Understanding/skills/calendar/DayAsking.h"

#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/calendar/AgendaRules.h"
#include "Understanding/skills/calendar/finding/EventLookup.h"
#include "Understanding/skills/calendar/reading/CalendarWords.h"

#include <deque>
#include <utility>

namespace quorvell {

std::optional<Request> DayAsking::freeTime(std::optional<SpokenDays> days)
{
    constexpr int usualMinutes = 60;
    return AgendaRules::request(
        {.kind = AgendaIntent::Kind::findTime, .days = std::move(days), .minutes = usualMinutes});
}

std::optional<Request> DayAsking::read(
    const std::string& plain, const std::string& core, const RuleSurroundings& around)
{
    static const std::string lead =
        "^(?:(?:please|can you|could you|hey|and|so|just|tell me|let me know|check|see|if|whether|i) )*";
    static const std::deque<Pattern> forms = [&] {
        std::deque<Pattern> all;
        all.emplace_back(lead
            + "(?:is|are|how (?:is|are|busy is)|how does|what does|will) (?:my |the )?(.+?)(?: (?:be|going to be|"
              "look|looking|still|very|really|all|already|an?|too))*(?: "
              "(?:busy|full|packed|clear|empty|booked|like|look|looking|hectic|light|(free|available|open)))(?: "
              "day)?(?: "
              "for (?:me|us))?$");
        all.emplace_back(lead
            + "(?:do (?:i|we) have |have (?:i|we) (?:got )?|is there |what is |what do i have |what "
              "(?:happens|comes|comes "
              "next|am i doing|have i got|is there|event is) )?(?:anything|something|what)?"
              "(?: (?:on|planned|scheduled|happening|to do|booked|going on|else))* "
              "?((?:(?:right|just|straight|directly|soon) )?(?:before|after|between|from|around|until) .+)$");
        all.emplace_back(lead
            + "(?:(?:give|get|read|show|i want|i need)(?: me)? )?(?:an? |the |my )?(?:quick |short )?(?:rundown|run "
              "down|overview|"
              "summary|outline|recap|breakdown|briefing)(?: (?:of|for|on|about))? (.+)$");
        all.emplace_back(lead
            + "how (?:many|much) (?:things|plans|commitments|stuff) (?:(?:have i got|do i have|have i|are there|i "
              "have|have we|do we have)"
              "(?: got)?)(?: (?:on|planned|scheduled|to do|going on))* (.+)$");
        all.emplace_back(lead
            + "(?:(?:do (?:i|we) have |have (?:i|we) (?:got )?|(?:is|are) there |what is |any ?)?(?:any ?)?(?:anything|"
              "something|things?)(?: else)?(?: (?:new|big|very|really|special|"
              "important|interesting|urgent|exciting|fun|major|specific|particular|else|coming up|happening|planned|"
              "scheduled|going on|for me|to do|on))*(?: (?:for|on|in|at|during))? (.+))$");
        all.emplace_back(lead
            + "(?:what is|what do i have|what have i got)(?: (?:on|planned|there))* (?:in|during|over|"
              "for) (.+)$");
        all.emplace_back(lead + "what (?:is|was) there (?:on|in|for) (.+)$");
        all.emplace_back(lead
            + "did (?!i\\b|we\\b|you\\b)(?:[a-z]+ ){1,3}(?:schedule|book|plan|put|add|arrange|set up) (?:anything|"
              "something|any [a-z]+)(?: for me| in| on)*(?: (?:for|on|in))? (.+)$");
        all.emplace_back(lead
            + "do (?:i|we) (?:need|have) to (?:be|go|drive|travel|turn up|show up) (?:anywhere|somewhere|any place|at "
              "any place)(?: else)? (.+)$");
        all.emplace_back(lead + "(?:do i have |have i got )?(?:any )?plans(?: (?:for|on|at))? (.+)$");
        all.emplace_back(lead
            + "what (?:(?:all )?do i have to do|(?:was|were|did) (?:i|we) (?:doing|do|have on|have planned|up to)) "
              "(.+)$");
        all.emplace_back(lead
            + "(?:what is|what do i have|what have i got|is anything|do i have anything|anything) (?:still )?(?:left|"
              "remaining|outstanding)(?! to do)(?: for)? (.+)$");
        return all;
    }();
    static const Pattern free(" (?:free|available|open)$");
    if (CalendarWords::isOfOthers(free.replaceAll(plain, "")))
        return std::nullopt;
    for (const Pattern& form : forms) {
        const auto match = form.find(plain);
        auto search = match ? CalendarWords::search(match->texts[0], around) : std::nullopt;
        if (!search || (!search->days && search->anchor.empty()) || !search->name.empty() || search->isUnclear)
            continue;
        if (match->texts.size() > 1 && !match->texts[1].empty())
            return freeTime(std::move(search->days));
        search->aim = EventSearch::Aim::tell;
        search->noun.clear();
        return EventLookup::request(*std::move(search), core);
    }
    return std::nullopt;
}

} // namespace quorvell
