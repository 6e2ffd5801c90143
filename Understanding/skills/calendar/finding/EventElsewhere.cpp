// SPDX-License-Identifier: MIT
#include "Understanding/skills/calendar/finding/EventElsewhere.h"

#include "Understanding/skills/calendar/acting/AgendaReply.h"
#include "Understanding/skills/calendar/acting/ToldSeries.h"
#include "Understanding/skills/calendar/finding/EventPick.h"

#include <algorithm>

namespace quorvell {

namespace {

using Aim = EventSearch::Aim;

/// As many are told; more nobody asked for.
constexpr std::size_t mostTold = 3;

bool asksOfOne(const EventSearch& search)
{
    return search.aim == Aim::cancel || search.aim == Aim::where || search.aim == Aim::who || search.aim == Aim::ends;
}

} // namespace

std::optional<EventSearch> EventElsewhere::next(
    const EventSearch& search, const std::string& nothing, const std::string& none)
{
    const bool isPlaced = search.days || search.isBack;
    const bool isOfDayAndHour = search.isLoose && search.name.empty() && !search.hour; // That may ring as well.
    if (search.isElsewhere || isOfDayAndHour || !isPlaced || !search.anchor.empty() || search.aim == Aim::clashes)
        return std::nullopt;
    EventSearch wider = search;
    wider.isElsewhere = true;
    wider.otherwise = search.otherwise.empty() ? nothing : search.otherwise;
    wider.missed = none;
    wider.isBack = false;
    wider.isLast = false;
    wider.place = 0;
    const bool isOfAnyDay = search.hour && asksOfOne(search);
    if (search.name.empty() && !isOfAnyDay) {
        const bool isMoment =
            search.days && !search.days->from.allDay && search.days->from.adding(1) == search.days->to;
        if (!asksOfOne(search) || !isMoment)
            return std::nullopt;
        // At that hour there is nothing: what there is on the day is told.
        wider.aim = Aim::tell;
        wider.noun.clear();
        wider.days = SpokenDays{search.days->from.wholeDay(), search.days->from.wholeDay(), ""};
        return wider;
    }
    if (search.aim == Aim::remind || search.isAll)
        return std::nullopt;
    wider.days.reset();
    return wider;
}

bool EventElsewhere::isMeant(const std::vector<FoundThing>& found, const EventSearch& search)
{
    return search.hour && !search.days && !EventPick::isAtOtherHour(found, search);
}

std::string EventElsewhere::told(const std::vector<FoundThing>& found, const EventSearch& search)
{
    std::vector<FoundThing> first = found;
    ToldSeries::keepFirstTimes(first);
    std::string text = search.aim == Aim::confirm ? (isMeant(found, search) ? "Yes." : "No.") : search.missed;
    const char* lead = search.aim == Aim::confirm ? " " : " There is ";
    for (std::size_t index = 0; index < std::min(first.size(), mostTold); ++index)
        text += (index == 0 ? lead : "; ") + AgendaReply::named(first[index]);
    return text + (first.size() > mostTold ? "; and " + std::to_string(first.size() - mostTold) + " more." : ".");
}

std::string EventElsewhere::choices(const std::vector<FoundThing>& found)
{
    constexpr std::size_t mostNamed = 6;
    std::string question =
        found.size() > mostNamed ? "Which event do you mean? The next ones are " : "Which event do you mean: ";
    const std::size_t named = std::min(found.size(), mostNamed);
    for (std::size_t index = 0; index < named; ++index)
        question += (index == 0 ? "" : index + 1 < named ? ", " : " or ") + found[index].title;
    return question + (found.size() > mostNamed ? "." : "?");
}

} // namespace quorvell
