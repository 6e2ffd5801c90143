// SPDX-License-Identifier: MIT
#include "Understanding/skills/calendar/reading/EventDeed.h"

#include "Understanding/skills/reminders/ReminderQuestions.h"
#include "Understanding/words/RequestText.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace quorvell {

namespace {

constexpr std::string_view link = " to ";

std::ptrdiff_t blanksIn(std::string_view words)
{
    return std::ranges::count(words, ' ');
}

/// Of "the party to give the camera to Ben" the first "to" begins the deed, of "flight to Lisbon to pack" the last.
std::size_t beginOfDeed(const std::string& name)
{
    const std::size_t last = name.rfind(link);
    const std::size_t before = last == 0 || last == std::string::npos ? last : name.rfind(link, last - 1);
    if (before == std::string::npos || before == last)
        return last;
    const std::string_view between = std::string_view(name).substr(before + link.size(), last - before - link.size());
    const bool isToWhom = blanksIn(std::string_view(name).substr(last + link.size())) < 2;
    return isToWhom && blanksIn(between) > 0 ? before : last;
}

} // namespace

std::optional<EventSearch> EventDeed::apart(const EventSearch& search)
{
    const std::size_t begin = beginOfDeed(search.name);
    if (search.aim != EventSearch::Aim::remind || !search.value.empty() || begin == std::string::npos)
        return std::nullopt;
    EventSearch parted = search;
    parted.value = search.name.substr(begin + link.size());
    parted.name = search.name.substr(0, begin);
    return parted;
}

RuleStep EventDeed::askTime(const EventSearch& search, const std::string& nothing, RequestMemory memory)
{
    memory.request = "remind me to " + search.value;
    return RuleStep::asking({.kind = &ReminderQuestions::when,
                                .question = nothing + " At what time should I remind you to " + search.value + "?",
                                .task = RequestText::written(search.value)},
        std::move(memory));
}

} // namespace quorvell
