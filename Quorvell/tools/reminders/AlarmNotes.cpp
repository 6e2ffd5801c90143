// SPDX-License-Identifier: MIT
#include "Quorvell/tools/reminders/AlarmNotes.h"

#include "Quorvell/reminding/AlarmMark.h"
#include "Quorvell/tools/reminders/ReminderChanges.h"
#include "QuorvellCore/reminders/state/ReminderRepeat.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/Pattern.h"
#include "QuorvellCore/text/TextMatch.h"

#include <chrono>

namespace quorvell {

namespace {

using Kind = ReminderArguments::Kind;

} // namespace

bool AlarmNotes::isPausedTimer(const Note& note)
{
    const auto mark = AlarmMark::of(note);
    return mark && mark->isPaused() && !note.archived && !note.doneAt;
}

bool AlarmNotes::isOfKind(const Note& note, Kind kind)
{
    const auto mark = AlarmMark::of(note);
    if (!mark || kind == Kind::reminder)
        return false;
    return kind == Kind::all || mark->isTimer() == (kind == Kind::timer);
}

bool AlarmNotes::repeats(const Note& note)
{
    return note.repeatRule && ReminderRepeat::fromStored(*note.repeatRule);
}

bool AlarmNotes::isHalfReadTime(const std::string& rest)
{
    static const Pattern halfRead(
        "\\d|^(?:and|or)\\b|^[ap]\\.?m\\b|^(?:(?:the|this|next|on|each|every) )*(?:weekends?|weeks?|months?|days?)$",
        Pattern::caseless);
    return halfRead.find(rest).has_value();
}

bool AlarmNotes::namesHour(const std::string& words)
{
    static const Pattern hour(
        "\\d|\\b(?:one|two|three|four|five|six|seven|eight|nine|ten|eleven|twelve|thirteen|fifteen|"
        "twenty|thirty|forty|half|quarter|noon|midday|lunchtime|midnight|hours?|minutes?|seconds?)\\b",
        Pattern::caseless);
    return hour.find(words).has_value();
}

std::string AlarmNotes::partOfDay(const std::string& words)
{
    static const Pattern part("\\b(?:(morning|afternoon|evening)|(?:to)?(night))s?\\b", Pattern::caseless);
    const auto match = part.find(words);
    if (!match)
        return {};
    return match->groups[1] ? "at night" : "in the " + lowerCased(match->texts[0]);
}

std::string AlarmNotes::withoutAlarmWords(const std::string& text)
{
    static const Pattern lead(
        "^(?:(?:please|can you|could you|i (?:want|need)|i(?:'d| would) like) )*"
        "(?:(?:set|make|create|add|start|put|give|schedule)(?: me| up| us)*(?: an?| the| my| another| new)* )?"
        "(?:alarm|wake[- ]?up call)(?: clock)?(?: on| for| at| to(?= ))?\\b"
        "|^(?:please )?(?:wake|get) (?:me|us)(?: up)?\\b(?: for| to)?",
        Pattern::Case::insensitive);
    const auto match = lead.find(text);
    return match ? trimmed(std::string_view(text).substr(match->range.end)) : text;
}

std::string AlarmNotes::timerTitle(const std::string& task)
{
    const std::string name = trimmed(task);
    if (name.empty())
        return "Timer";
    const bool saysSo = (" " + TextMatch::normalized(name) + " ").find(" timer ") != std::string::npos;
    return withUpperCaseFirst(saysSo ? name : name + " timer");
}

std::vector<Note> AlarmNotes::set(const std::vector<Note>& notes, Kind kind, Instant now)
{
    constexpr std::chrono::hours news{24};
    std::vector<Note> found;
    for (const Note& note : pendingReminders(notes, ReminderAudience::model))
        if (isOfKind(note, kind) && note.remindAt && (repeats(note) || now - *note.remindAt < news))
            found.push_back(note);
    for (const Note& note : notes)
        if (isOfKind(note, kind) && isPausedTimer(note))
            found.push_back(note);
    return found;
}

} // namespace quorvell
