// SPDX-License-Identifier: MIT
#include "Quorvell/tools/reminders/ReminderArguments.h"

#include "Quorvell/reminding/AlarmMark.h"
#include "QuorvellCore/reminders/calendar/DateParts.h"
#include "QuorvellCore/reminders/phrase/PhraseWords.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace quorvell {

namespace {

constexpr std::size_t longestText = 2000; ///< Bytes; a request is a sentence or two.

std::string argument(const LiveFunctionCall& call, std::string_view key)
{
    return trimmed(repairUtf8(call.string(key).value_or("")));
}

bool flag(const LiveFunctionCall& call, std::string_view key)
{
    return readBool(call.args, key).value_or(false);
}

ReminderArguments::Kind kindOf(const std::string& word)
{
    using Kind = ReminderArguments::Kind;
    return word == "alarm" ? Kind::alarm : word == "timer" ? Kind::timer : word == "all" ? Kind::all : Kind::reminder;
}

/// Whole, and small enough for every sum with a date.
std::optional<std::int64_t> amount(const LiveFunctionCall& call, std::string_view key)
{
    constexpr double most = 1e9;
    const auto number = call.number(key);
    if (!number || !(std::abs(*number) <= most))
        return std::nullopt;
    return std::llround(*number);
}

std::string lengthProblem(const ReminderArguments& arguments)
{
    for (const auto& [name, value] : {std::pair("text", &arguments.text), {"task", &arguments.task},
             {"later", &arguments.later}, {"id", &arguments.id}})
        if (value->size() > longestText)
            return std::string(name) + " is too long. Give the request in one or two sentences.";
    return characterCount(arguments.task) > ReminderArguments::longestTask
        ? "the task is too long. Say it in one sentence."
        : "";
}

/// Of what rings; empty where nothing is wrong.
std::string alarmProblem(const ReminderArguments& arguments)
{
    constexpr std::chrono::hours longestSnooze{12};
    const int changes = arguments.pauses + arguments.resumes + arguments.stops + arguments.added.has_value()
        + arguments.snooze.has_value() + arguments.timer.has_value() + arguments.isAlarm;
    if (changes > 1)
        return "give only one of alarm, timer_seconds, pause, resume, add_seconds, stop and snooze_minutes.";
    if (arguments.timer && (*arguments.timer < std::chrono::seconds(1) || *arguments.timer > AlarmMark::longestTimer))
        return "timer_seconds must be between 1 and 604800, a week.";
    if (arguments.added && std::chrono::abs(*arguments.added) > AlarmMark::longestTimer)
        return "add_seconds must be at most 604800, a week.";
    if (arguments.snooze && (*arguments.snooze < std::chrono::minutes(1) || *arguments.snooze > longestSnooze))
        return "snooze_minutes must be between 1 and 720.";
    if ((!arguments.ids.empty() || arguments.until) && !arguments.isCancelled)
        return "ids and until go with cancel.";
    return arguments.until && arguments.ofSeries ? "give only one of series and until." : "";
}

/// Why the call as a whole says nothing that could be done, although each part of it does.
std::string contradiction(const ReminderArguments& arguments)
{
    const bool putsOff = !arguments.later.empty();
    const bool hasTime = !arguments.date.empty() || arguments.repeat || arguments.endsRepeat;
    const bool ends = arguments.isDone || arguments.isCancelled;
    if (arguments.lists + arguments.isDone + arguments.isCancelled + putsOff > 1)
        return "give only one of list, done, cancel and later, and call again for the other.";
    if (arguments.ofSeries && !arguments.isCancelled)
        return "series goes with cancel.";
    if ((ends || putsOff) && (hasTime || arguments.isForReturn))
        return "done, cancel and later go with id or task alone. To give it another time or rule, call with id and "
               "date, "
               "repeat "
               "or when_back.";
    if (arguments.isForReturn && hasTime)
        return "when_back means no time at all. Give either when_back, or date and repeat.";
    if (arguments.isOfAlarms())
        return "";
    const bool isEmpty = arguments.words().empty() && arguments.date.empty() && arguments.id.empty();
    const bool asksForNothing = !arguments.lists && !ends && !putsOff && !arguments.isForReturn;
    return isEmpty && asksForNothing ? "text is missing. Give the user's own words, time and all." : "";
}

/// False for a day that does not exist.
bool readUntil(const LiveFunctionCall& call, const Calendar& calendar, ReminderArguments& read)
{
    const std::string until = argument(call, "until");
    const auto day = DateParts::parse(until);
    if (day)
        read.until = day->wholeDay().instant(calendar);
    return until.empty() || read.until.has_value();
}

void readAlarm(const LiveFunctionCall& call, ReminderArguments& read)
{
    constexpr std::size_t mostIds = 200;
    read.kind = kindOf(argument(call, "kind"));
    read.isAlarm = flag(call, "alarm");
    read.pauses = flag(call, "pause");
    read.resumes = flag(call, "resume");
    read.stops = flag(call, "stop");
    read.undo = argument(call, "undo");
    if (const auto seconds = amount(call, "timer_seconds"))
        read.timer = std::chrono::seconds(*seconds);
    if (const auto seconds = amount(call, "add_seconds"))
        read.added = std::chrono::seconds(*seconds);
    if (const auto minutes = amount(call, "snooze_minutes"))
        read.snooze = std::chrono::minutes(*minutes);
    read.ids = readStrings(call.args, "ids").value_or(std::vector<std::string>());
    read.ids.resize(std::min(read.ids.size(), mostIds));
}

} // namespace

bool ReminderArguments::isOfAlarms() const
{
    return isAlarm || timer || pauses || resumes || stops || added || snooze || kind == Kind::alarm
        || kind == Kind::timer || !ids.empty() || until;
}

ReminderArguments ReminderArguments::read(const LiveFunctionCall& call, const Calendar& calendar)
{
    ReminderArguments read;
    read.text = argument(call, "text");
    read.task = argument(call, "task");
    read.date = argument(call, "date");
    read.later = argument(call, "later");
    read.id = argument(call, "id");
    read.isForReturn = flag(call, "when_back");
    read.lists = flag(call, "list");
    read.isDone = flag(call, "done");
    read.isCancelled = flag(call, "cancel");
    read.ofSeries = readBool(call.args, "series");
    readAlarm(call, read);
    const std::string rule = argument(call, "repeat");
    read.endsRepeat = rule == "none";
    read.repeat = ReminderRepeat::fromStored(rule);
    const auto parts = DateParts::parse(read.date);
    read.moment = parts ? parts->instant(calendar) : std::nullopt;
    read.isWholeDay = parts && parts->allDay;
    if (read.moment && read.isWholeDay)
        read.moment = calendar.instant(calendar.day(*read.moment), std::chrono::hours(PhraseWords::defaultHour));

    if (!rule.empty() && !read.repeat && !read.endsRepeat)
        read.problem = "repeat must be \"daily\", \"weekdays\", \"weekly:2\" (1 is Sunday, 7 Saturday), "
                       "\"monthly:15\", \"yearly\" or \"none\".";
    else if (!readUntil(call, calendar, read))
        read.problem = "until must be a day that exists, written like \"2026-11-22\".";
    else if (!read.date.empty() && !read.moment)
        read.problem = "date must be a day that exists, written like \"2026-11-22 17:00\" or, for a whole day, "
                       "\"2026-11-22\".";
    else
        read.problem = lengthProblem(read);
    if (read.problem.empty())
        read.problem = alarmProblem(read);
    if (read.problem.empty())
        read.problem = contradiction(read);
    if (!read.problem.empty())
        read.problem = "Nothing was set or changed: " + read.problem;
    return read;
}

bool ReminderArguments::changesNothing() const
{
    return text.empty() && task.empty() && date.empty() && !repeat && !endsRepeat && !isForReturn;
}

ReminderRequest ReminderArguments::request(Instant now, const Calendar& calendar) const
{
    ReminderRequest understood = ReminderRequest::fromWords(text.empty() ? task : text, now, calendar);
    // A task beside a time is taken as it stands: a "weekly magazine" repeats nothing.
    const bool isTaskGiven = !task.empty() && (!text.empty() || moment || isForReturn);
    static const Pattern link(
        "^(?:for|about|abt|regarding) (?=\\S)", Pattern::caseless); // "On the 12th for Dad's MRI".
    const std::string wanted = withUpperCaseFirst(isTaskGiven ? task : link.replaceAll(understood.task, ""));
    const auto ruleOfWords = moment && text.empty() ? std::nullopt : understood.repeatRule;
    const auto rule = repeat || endsRepeat ? repeat : ruleOfWords;
    if (moment)
        return ReminderRequest::settled(wanted, *moment, !isWholeDay, rule, now, calendar);
    understood.repeatRule = rule;
    if (understood.verdict == ReminderRequest::Verdict::ready
        || understood.verdict == ReminderRequest::Verdict::needsTask)
        return ReminderRequest::settled(wanted, understood.date, understood.hasTime, rule, now, calendar);
    understood.task = wanted;
    return understood;
}

} // namespace quorvell
