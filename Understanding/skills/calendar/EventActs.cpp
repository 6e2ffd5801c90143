// SPDX-License-Identifier: MIT
#include "Understanding/skills/calendar/EventActs.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/calendar/AgendaRules.h"
#include "Understanding/skills/calendar/EventShaping.h"
#include "Understanding/skills/calendar/finding/EventLookup.h"
#include "Understanding/skills/calendar/reading/CalendarWords.h"
#include "Understanding/skills/calendar/reading/EventDeed.h"
#include "Understanding/skills/calendar/reading/EventNotice.h"
#include "Understanding/skills/calendar/reading/EventTitle.h"
#include "Understanding/skills/calendar/reading/EventWay.h"
#include "Understanding/words/RequestWords.h"

#include <cstddef>
#include <deque>
#include <utility>

namespace quorvell {

namespace {

using Found = std::optional<Request>;
using Aim = EventSearch::Aim;

const std::string owner = "(?:my|the|our|a|an|this|that)";

/// The event of a notice; of "the party to charge the camera" what cannot be the name of one stands behind it.
std::optional<EventSearch> eventOf(const EventNotice& notice, const RuleSurroundings& around)
{
    auto search = CalendarWords::search(notice.event, around);
    if (search) {
        search->value = notice.deed;
        return search;
    }
    const auto parted = EventDeed::apart({.aim = Aim::remind, .name = notice.event, .value = notice.deed});
    search = parted ? CalendarWords::search(parted->name, around) : std::nullopt;
    if (search)
        search->value = parted->value;
    return search;
}

Found reminding(const std::string& plain, const std::string& core, const RuleSurroundings& around)
{
    static const Pattern pronoun("^(?:it|that|this|hand|then|(?:it|that|this) (?:starts|begins))?$");
    static const Pattern clause("^(?:i|we|he|she|they|you|going|leaving|bed|sleep)\\b"); // Nothing of a calendar.
    const auto notice = EventNotice::in(plain, around);
    if (!notice)
        return std::nullopt;
    EventSearch search{.value = notice->deed};
    if (!notice->deed.empty() && clause.find(notice->event)) {
        search.value = CalendarWords::asSaid(notice->deed, core);
        return Request{.answer = [search](RequestMemory memory, const RuleSurroundings&) {
            return EventDeed::askTime(search, "I can't tell when that is.", std::move(memory));
        }};
    }
    if (!pronoun.find(notice->event)) {
        auto named = eventOf(*notice, around);
        if (!named)
            return std::nullopt;
        search = *std::move(named);
        search.isAll = false;
    }
    if (notice->isLoose && (search.days || search.isUnclear)) // That has its time already.
        return std::nullopt;
    search.isUsualLead = notice->isUsualLead;
    if (notice->isLoose)
        search.fallback = EventNotice::otherwise(core);
    const int minutes = notice->ahead.empty() ? 0 : EventNotice::minutesIn(notice->ahead);
    if (!notice->ahead.empty() && minutes == 0)
        return std::nullopt;
    search.aim = Aim::remind;
    search.minutes = minutes;
    return EventLookup::request(std::move(search), core);
}

/// "Rename the sales meeting to budget talk", "change the location of the dentist to Main Street 7". `core` keeps the
/// user's own spelling of the new words.
Found describing(const std::string& core, const std::string& plain, const RuleSurroundings& around)
{
    static const std::deque<EventWay> ways = [] {
        const std::string polite = "^(?:please |can you |could you )*";
        std::deque<EventWay> all;
        all.emplace_back(polite + "(?:rename|retitle)(?: " + owner + ")? (.+?)(?: (?:to|as|into) (.+))?$", Aim::rename);
        all.emplace_back(
            polite + "(?:change|set|edit|update) the (?:name|title) of(?: " + owner + ")? (.+?)(?: (?:to|into) (.+))?$",
            Aim::rename);
        all.emplace_back(polite + "(?:change|set|edit|update) the (?:location|place|address|venue) (?:of|for)(?: "
                + owner + ")? (.+?)(?: (?:to|into) (.+))?$",
            Aim::place);
        all.emplace_back(
            polite + "(?:change|set|edit|update) " + owner + " (.+?) (?:location|place|venue)(?: (?:to|into) (.+))?$",
            Aim::place);
        return all;
    }();
    if (CalendarWords::isOfOthers(plain))
        return std::nullopt;
    for (const auto& [form, aim] : ways) {
        const auto match = form.find(plain);
        if (!match)
            continue;
        auto search = CalendarWords::search(match->texts[0], around);
        if (!search)
            return std::nullopt;
        search->aim = aim;
        search->isAll = false;
        const std::size_t count = RequestWords(match->texts[1]).size();
        const RequestWords words(core);
        if (count > 0 && words.size() >= count) // As they spelled it.
            search->value = withUpperCaseFirst(trimmed(words.said(words.size() - count, words.size()), " .,;!?\"“”"));
        return EventLookup::request(*std::move(search), core);
    }
    return std::nullopt;
}

/// "Make the yoga class repeat every week", "make yoga weekly": the rule of a series stays as it was put in.
Found repeating(const std::string& plain)
{
    static const std::string often = "(?:weekly|daily|monthly|yearly|annual|recurring|repeating)";
    static const std::string name = "(?:my |the |our )?(?!it\\b|that\\b|this\\b|an? )(.+?)";
    static const Pattern form("^(?:please |can you |could you )*(?:(?:make|set|have|let) " + owner
        + " .+? (?:to )?(?:repeat|recur|come back|be repeated|recurring|repeating)\\b.*|repeat " + owner
        + " .+ (?:weekly|daily|monthly|yearly|every .+|each .+)|(?:make|turn) " + name + " (?:into )?(?:an? )?" + often
        + "(?: (?:event|meeting|series))?|(?:set|make|have) " + name + " (?:to|on) (?:be )?(?:repeat|recur|" + often
        + ")(?: .+)?)$");
    static const Pattern other("\\b(?:reminders?|alarms?|timers?|lists?|notes?|songs?)\\b|\\d");
    static const Pattern any("^(?:an? |the )?(?:event|meeting|appointment)?$");
    const auto match = other.find(plain) ? std::nullopt : form.find(plain);
    if (!match)
        return std::nullopt;
    const std::string& named = match->texts[0].empty() ? match->texts[1] : match->texts[0];
    if (!named.empty() && (any.find(named) || !EventTitle::namesOccasion(named)))
        return std::nullopt;
    return Request{.answer = [](RequestMemory memory, const RuleSurroundings&) {
        return RuleStep{AgendaRules::ruleIsFixed, std::move(memory)};
    }};
}

} // namespace

Found EventActs::read(const std::string& core, const std::string& plain, const RuleSurroundings& around)
{
    if (auto request = reminding(plain, core, around))
        return request;
    if (auto request = repeating(plain))
        return request;
    if (auto request = EventShaping::read(core, plain, around))
        return request;
    return describing(core, plain, around);
}

} // namespace quorvell
