// SPDX-License-Identifier: MIT
#include "Quorvell/records/LogTimeline.h"

#include "Quorvell/records/UsageText.h"
#include "QuorvellCore/text/PrintableText.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <map>

namespace quorvell {

namespace {

/// Events whose names say that something did not go as wished.
bool isProblem(std::string_view event)
{
    constexpr std::array signs{
        "lost", "failed", "error", "refused", "rejected", "dropped", "too_long", "cut_off", "timed_out"};
    return std::any_of(
        signs.begin(), signs.end(), [event](const char* sign) { return event.find(sign) != std::string_view::npos; });
}

std::string eventInWords(std::string event)
{
    std::replace(event.begin(), event.end(), '_', ' ');
    return printableText(event);
}

std::string clockText(Instant at, const Calendar& calendar)
{
    const CalendarParts parts = calendar.parts(at);
    const auto milliseconds = static_cast<int>(at.time_since_epoch().count() % 1000);
    std::array<char, 48> text{};
    std::snprintf(text.data(), text.size(), "%02d:%02d:%02d.%03d", parts.hour, parts.minute, parts.second,
        std::max(milliseconds, 0));
    return text.data();
}

std::string dayText(Instant at, const Calendar& calendar)
{
    const CalendarParts parts = calendar.parts(at);
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02d-%02d %02d:%02d", parts.year, parts.month, parts.day, parts.hour,
        parts.minute);
    return text.data();
}

double secondsBetween(Instant from, Instant to)
{
    return std::chrono::duration<double>(to - from).count();
}

} // namespace

LogTimeline LogTimeline::of(std::string_view text)
{
    struct Run {
        std::size_t conversation; ///< Its latest.
        int parts = 1;
    };
    LogTimeline timeline;
    std::map<std::string, Run> runs;
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(text.size(), line.size() + 1));
        if (line.empty())
            continue;
        auto entry = LogEntry::read(line);
        if (!entry) {
            ++timeline.unreadable;
            continue;
        }
        const std::string name = entry->program.empty() ? "earlier" : entry->program;
        auto& all = timeline.conversations;
        auto run = runs.find(name);
        const bool isNew = run == runs.end();
        if (isNew)
            run = runs.emplace(name, Run{all.size()}).first;
        else if (entry->at - all[run->second.conversation].entries.back().at > newConversationAfter)
            run->second = {all.size(), run->second.parts + 1};
        if (run->second.conversation == all.size())
            all.push_back({name + (run->second.parts > 1 ? "-" + std::to_string(run->second.parts) : ""), {}});
        all[run->second.conversation].entries.push_back(*std::move(entry));
    }
    return timeline;
}

const LogConversation* LogTimeline::find(std::string_view id) const
{
    const LogConversation* found = nullptr;
    for (const LogConversation& conversation : conversations) {
        if (conversation.id == id)
            return &conversation;
        if (!id.empty() && conversation.id.starts_with(id)) {
            if (found != nullptr)
                return nullptr;
            found = &conversation;
        }
    }
    return found;
}

std::vector<std::string> LogTimeline::lines(const LogConversation& conversation, const Calendar& calendar)
{
    constexpr std::size_t eventWidth = 28;
    std::vector<std::string> lines;
    const LogEntry* before = nullptr;
    for (const LogEntry& entry : conversation.entries) {
        const double pause = before != nullptr ? secondsBetween(before->at, entry.at) : 0;
        if (pause > std::chrono::duration<double>(gapShown).count())
            lines.push_back("              … " + UsageText::duration(pause));
        if (pause < -1)
            lines.push_back("              … the clock was set back");
        std::string event = eventInWords(entry.event);
        event.resize(std::max(event.size(), eventWidth), ' ');
        lines.push_back(
            clockText(entry.at, calendar) + (isProblem(entry.event) ? " ! " : "   ") + event + " " + entry.details);
        while (lines.back().ends_with(' '))
            lines.back().pop_back();
        before = &entry;
    }
    return lines;
}

std::string LogTimeline::heading(const LogConversation& conversation, const Calendar& calendar)
{
    const auto& entries = conversation.entries;
    const std::size_t problems = problemsIn(conversation);
    return printableText(conversation.id) + "  " + dayText(entries.front().at, calendar) + "  "
        + UsageText::duration(std::max(0.0, secondsBetween(entries.front().at, entries.back().at))) + ", "
        + std::to_string(entries.size()) + (entries.size() == 1 ? " event" : " events")
        + (problems > 0 ? ", " + std::to_string(problems) + " of them a problem" : "");
}

std::size_t LogTimeline::problemsIn(const LogConversation& conversation)
{
    return static_cast<std::size_t>(std::count_if(conversation.entries.begin(), conversation.entries.end(),
        [](const LogEntry& entry) { return isProblem(entry.event); }));
}

} // namespace quorvell
