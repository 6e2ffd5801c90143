// SPDX-License-Identifier: MIT
#include "Quorvell/tools/reminders/ReminderChanges.h"

#include "QuorvellCore/reminders/calendar/DateParts.h"
#include "QuorvellCore/reminders/phrase/PhraseWords.h"
#include "QuorvellCore/reminders/state/ReminderChoices.h"
#include "QuorvellCore/reminders/state/ReminderState.h"
#include "QuorvellCore/reminders/state/ReminderTrigger.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/Pattern.h"
#include "QuorvellCore/text/TextMatch.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace quorvell {

namespace {

/// After everything that has a time.
Instant sortKey(const Note& note)
{
    const bool waits = note.trigger == storedText(ReminderTrigger::backAtMac);
    return waits ? Instant::max() : note.remindAt.value_or(Instant::max());
}

/// Words that say no more than which kind of thing is meant.
bool isFiller(std::string_view word)
{
    constexpr std::array fillers{"reminder", "task", "the", "my", "our", "a", "an", "to", "about", "for", "of"};
    return std::ranges::find(fillers, word) != fillers.end();
}

bool holdsWords(const Note& note, const std::string& wanted)
{
    const std::string title = " " + TextMatch::normalized(note.title) + " ";
    bool isNamed = false;
    for (std::size_t start = 0; start < wanted.size();) {
        const std::size_t end = std::min(wanted.find(' ', start), wanted.size());
        const std::string word = wanted.substr(start, end - start);
        const bool isHeld = title.find(" " + word + " ") != std::string::npos;
        if (!isHeld && !isFiller(word))
            return false;
        isNamed = isNamed || isHeld;
        start = end + 1;
    }
    return isNamed;
}

/// Until a date in the form of the tools; a whole day's is at the usual hour.
ReminderRequest putOffTo(const DateParts& parts, Instant now, const Calendar& calendar)
{
    ReminderRequest request;
    auto date = parts.instant(calendar);
    if (date && parts.allDay)
        date = calendar.instant(calendar.day(*date), std::chrono::hours(PhraseWords::defaultHour));
    request.hasTime = !parts.allDay;
    request.verdict = !date ? ReminderRequest::Verdict::needsTime
        : *date <= now      ? ReminderRequest::Verdict::pastTime
                            : ReminderRequest::Verdict::ready;
    request.date = date.value_or(now);
    return request;
}

} // namespace

std::vector<Note> pendingReminders(const std::vector<Note>& notes, ReminderAudience audience)
{
    std::vector<Note> pending;
    for (const Note& note : notes)
        if (ReminderState::isPending(note) && (audience == ReminderAudience::user || note.isVisibleToQuorvell()))
            pending.push_back(note);
    std::stable_sort(pending.begin(), pending.end(),
        [](const Note& left, const Note& right) { return sortKey(left) < sortKey(right); });
    return pending;
}

std::vector<Note> meantReminders(
    const std::vector<Note>& pending, std::string_view id, std::string_view words, Instant now)
{
    std::vector<Note> meant;
    const auto collect = [&](const auto& isMeant) {
        std::copy_if(pending.begin(), pending.end(), std::back_inserter(meant), isMeant);
    };
    const std::string wanted = TextMatch::normalized(words);
    if (!id.empty()) {
        collect([&](const Note& note) { return note.id == id; });
        if (meant.empty())
            collect([&](const Note& note) { return note.id.starts_with(id); });
    } else if (!trimmed(words).empty()) {
        collect([&](const Note& note) { return TextMatch::normalized(note.title) == wanted; });
        if (meant.empty())
            collect([&](const Note& note) { return holdsWords(note, wanted); });
    } else {
        collect([&](const Note& note) { return ReminderState::isDue(note, now); });
    }
    return meant;
}

ReminderRequest putOffRequest(std::string_view words, Instant now, const Calendar& calendar, Instant own)
{
    if (const auto parts = DateParts::parse(words))
        return putOffTo(*parts, now, calendar);
    // "6 pm", of one that is on another day, is on that day.
    static const Pattern clock(
        "^(?:at )?(?:\\d{1,2}(?:[:.]\\d{2})? ?(?:[ap]\\.?m\\.?)?|noon|midday|midnight)$", Pattern::Case::insensitive);
    if (own > now && !calendar.isSameDay(own, now) && clock.find(words))
        now = calendar.instant(calendar.day(own), std::chrono::hours(0));
    constexpr std::string_view by = "by ";
    if (words.starts_with(by))
        return putOffRequest("in " + std::string(words.substr(by.size())), std::max(now, own), calendar, own);
    for (const std::string_view until : {"until ", "till "})
        if (words.starts_with(until))
            return putOffRequest(words.substr(until.size()), now, calendar, own);
    const std::string wanted = TextMatch::normalized(words);
    const bool isVague = wanted == "later" || wanted == "a bit later" || wanted == "again later" || wanted == "snooze";
    for (const ReminderChoice& choice : ReminderChoices::later(now, calendar, calendar.locale()))
        if (wanted == lowerCased(choice.title) || (isVague && choice.kind == ReminderChoice::Kind::inAnHour))
            return {ReminderRequest::Verdict::ready, "", choice.date, true, {}, std::nullopt};
    ReminderRequest request = ReminderRequest::fromWords(words, now, calendar);
    if (request.verdict == ReminderRequest::Verdict::needsTask)
        request.verdict = ReminderRequest::Verdict::ready;
    if (request.repeatRule) { // Put off, it comes at one time; the rule would be lost without a word.
        request = {};
        request.unclear = trimmed(words);
    }
    return request;
}

} // namespace quorvell
