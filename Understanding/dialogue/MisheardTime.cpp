// SPDX-License-Identifier: MIT
#include "Understanding/dialogue/MisheardTime.h"

#include "QuorvellCore/reminders/request/ReminderRequest.h"
#include "QuorvellCore/text/Json.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/Pattern.h"

#include <nlohmann/json.hpp>

namespace quorvell {

namespace {

constexpr auto anyCase = Pattern::Case::insensitive;

Json argumentsOf(const ToolRequest& call)
{
    return parseJson(call.arguments).value_or(Json::object());
}

std::optional<ReminderRequest> reminderOf(const ToolRequest& call, const RuleSurroundings& around)
{
    const auto text = readString(argumentsOf(call), "text");
    return call.name == "set_reminder" && text
        ? std::optional(ReminderRequest::fromWords(*text, around.now, around.calendar))
        : std::nullopt;
}

bool isReady(const ReminderRequest& reminder)
{
    return reminder.verdict == ReminderRequest::Verdict::ready;
}

/// The words of `piece` where they stand in `words`, with the preposition before them.
std::optional<std::string> whereItStands(std::string_view words, const std::string& piece)
{
    static const Pattern preposition(" (?:on|for|in|at|by|of)(?: the)? $", anyCase);
    const std::string whole = " " + std::string(words) + " ";
    const std::size_t place = lowerCased(whole).find(" " + lowerCased(piece) + " ");
    if (piece.empty() || place == std::string::npos)
        return std::nullopt;
    const auto before = preposition.find(std::string_view(whole).substr(0, place + 1));
    const std::size_t start = before ? before->range.start + 1 : place + 1;
    return whole.substr(start, place + 1 + piece.size() - start);
}

/// "The fence to order the paint": what stands before the deed, where nothing belongs but a time.
std::optional<std::string> beforeDeed(std::string_view words, const ReminderRequest& reminder)
{
    static const Pattern deed("^(.+?) to \\S", anyCase);
    // What a reminder is about stands there rightly, and so does who it is for.
    static const Pattern matter(
        "\\b(?:about|of|that|called|named)\\b|\\bfor (?:me|us|my|our|his|her|mom|mum|mam|dad|grandma|grandpa)\\b",
        anyCase);
    const auto match = deed.find(reminder.task);
    if (!match)
        return std::nullopt;
    const auto piece = whereItStands(words, match->texts.front());
    static const Pattern command("\\b(?:remind|reminder|nudge|tell|ping)\\b", anyCase);
    const auto start = command.find(words);
    const auto place = piece ? words.find(*piece) : std::string_view::npos;
    if (!start || place == std::string_view::npos || place < start->range.end)
        return std::nullopt;
    const auto between = words.substr(start->range.end, place + piece->size() - start->range.end);
    return between.find(" to ") == std::string_view::npos && !matter.find(between) ? piece : std::nullopt;
}

/// "Wake me up on the fence at 6 am"
std::optional<std::string> inAlarm(std::string_view words, const ReminderRequest& alarm)
{
    static const Pattern preposition("^(?:on|in|at|by) ", anyCase);
    const auto piece = alarm.task.empty() ? std::nullopt : whereItStands(words, alarm.task);
    return piece && preposition.find(*piece) ? piece : std::nullopt;
}

/// "Lunch with my sister on the fence", on the day that comes first.
std::optional<std::string> inEvent(std::string_view words, const ToolRequest& call)
{
    static const Pattern last("\\b(?:on|for) (?:the )?\\S+(?: day)?$", anyCase);
    static const Pattern day(
        "\\b(?:today|tonight|tomorrow|this|next|(?:mon|tues|wednes|thurs|fri|satur|sun)days?|every|in \\S+ "
        "(?:days?|weeks?|months?)|\\d+(?:st|nd|rd|th))\\b",
        anyCase);
    const std::string title = readString(argumentsOf(call), "title").value_or("");
    const auto match = last.find(title);
    return match && !day.find(words) ? whereItStands(words, title.substr(match->range.start)) : std::nullopt;
}

} // namespace

std::optional<std::string> MisheardTime::in(
    std::string_view words, const ToolRequest& call, const RuleSurroundings& around)
{
    if (call.name == "add_event")
        return inEvent(words, call);
    const auto reminder = reminderOf(call, around);
    static const Pattern hour("\\d|\\b(?:noon|midnight)\\b", anyCase);
    const bool isFull = reminder && reminder->namesDay && reminder->hasTime && hour.find(words);
    if (!reminder || !isReady(*reminder) || isFull)
        return std::nullopt; // What is not ready is asked about anyway.
    return memberOf(argumentsOf(call), "alarm") ? inAlarm(words, *reminder) : beforeDeed(words, *reminder);
}

bool MisheardTime::isWhole(const ToolRequest& call, const RuleSurroundings& around)
{
    const auto reminder = reminderOf(call, around);
    const bool isAlarm = memberOf(argumentsOf(call), "alarm") != nullptr; // Needs no task.
    return !reminder || isReady(*reminder) || (isAlarm && reminder->verdict == ReminderRequest::Verdict::needsTask);
}

} // namespace quorvell
