// SPDX-License-Identifier: MIT
#include "Understanding/skills/reminders/FollowUpWish.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/reminders/ReminderIntent.h"
#include "Understanding/time/SpokenLength.h"
#include "Understanding/time/SpokenPhrase.h"
#include "Understanding/time/TimeVocabulary.h"
#include "Understanding/time/TimeWords.h"
#include "Understanding/words/RequestWords.h"

#include <string>

namespace quorvell {

namespace {

constexpr int minutesOfDay = 24 * 60;
constexpr std::size_t mostWords = 10; ///< Nobody says more of them for a time and another.

/// "two days later", "the day before", "an hour earlier", in minutes; below 0 for earlier.
std::optional<int> shiftIn(const std::string& words)
{
    static const Pattern nextDay("^(?:on )?the (?:day after(?: that)?|next day|following day)$", Pattern::caseless);
    static const Pattern dayBefore("^(?:on )?the (?:day before(?: that)?|previous day)$", Pattern::caseless);
    static const Pattern shift("^(.+) (?:(later|after)|earlier|sooner|before)(?: (?:than )?that)?$", Pattern::caseless);
    if (nextDay.find(words))
        return minutesOfDay;
    if (dayBefore.find(words))
        return -minutesOfDay;
    const auto match = shift.find(words);
    if (!match)
        return std::nullopt;
    const bool isLater = match->groups[1].has_value();
    if (const auto days = TimeWords::daysIn(match->texts[0]))
        return (isLater ? 1 : -1) * *days * minutesOfDay;
    // Minutes and hours later are "by an hour", which may as well be said of what is due.
    const auto length = isLater ? std::nullopt : SpokenLength::read(match->texts[0]);
    return length && length->rest.empty() ? std::optional(-length->minutes) : std::nullopt;
}

/// "Remind me about the suit an hour earlier": of one that is there, or nothing could be earlier.
std::optional<Wish> shiftOfNamed(const std::string& core)
{
    static const Pattern form("^remind me (?:about|of) (?:(?:the|my|our) )?(.+?) ((?:an?|half an|one|two|three|four|"
                              "five|ten|fifteen|twenty|thirty|\\d{1,3}) (?:minute|hour|day|week)s?) "
                              "(?:earlier|sooner|(later))(?: than (?:that|planned))?$",
        Pattern::caseless);
    const auto match = form.find(core);
    if (!match)
        return std::nullopt;
    if (match->groups[2])
        return Wish{.kind = Wish::Kind::move, .title = match->texts[0], .when = "by " + match->texts[1]};
    const auto minutes = shiftIn(match->texts[1] + " earlier");
    return minutes ? std::optional(Wish{.kind = Wish::Kind::move, .title = match->texts[0], .minutes = *minutes})
                   : std::nullopt;
}

/// "same time on saturday", "saturday, same time": the day alone.
std::optional<Wish> sameTime(const std::string& words, const LocalTime& around)
{
    static const Pattern first("^(?:at )?(?:the )?same time,? (?:but )?(.+)$", Pattern::caseless);
    static const Pattern last(
        "^(.+?),? (?:but )?(?:at )?the same time$|^(.+?),? (?:but )?(?:at )?same time$", Pattern::caseless);
    auto match = first.find(words);
    if (!match)
        match = last.find(words);
    if (!match)
        return std::nullopt;
    const std::string day =
        ReminderIntent::bareTime(match->texts[0] + (match->texts.size() > 1 ? match->texts[1] : ""), around);
    const auto phrase = SpokenPhrase::read(day, around);
    return phrase && !phrase->hasTime ? std::optional(Wish{.kind = Wish::Kind::move, .when = day}) : std::nullopt;
}

/// "not friday, saturday", "saturday, not friday": a time and the one that it takes the place of.
std::optional<Wish> inPlaceOf(const std::string& spoken, const LocalTime& around)
{
    const RequestWords words(spoken);
    const std::size_t count = words.size();
    if (count < 3 || count > mostWords)
        return std::nullopt;
    const auto wish = [&](const std::string& wrong, const std::string& right) {
        const std::string from = ReminderIntent::bareTime(wrong, around);
        const std::string when = from.empty() ? "" : ReminderIntent::bareTime(right, around);
        return when.empty() ? std::nullopt : std::optional(Wish{.kind = Wish::Kind::move, .when = when, .from = from});
    };
    const auto isBut = [&](std::size_t index) { return words.at(index) == "but"; };
    for (std::size_t split = 1; split < count; ++split) {
        const std::size_t right = isBut(split) ? split + 1 : split;
        auto found = words.at(0) == "not" && split > 1 ? wish(words.said(1, split), words.said(right, count))
            : words.at(split) == "not" && split + 1 < count
            ? wish(words.said(split + 1, count), words.said(0, isBut(split - 1) ? split - 1 : split))
            : std::nullopt;
        if (found)
            return found;
    }
    return std::nullopt;
}

/// "every friday", "every day at 10", "every year on this date"
std::optional<Wish> otherRule(const std::string& words)
{
    static const Pattern lead(
        "^(?:do|repeat|set|make|have) (?:it|that|this)(?: (?:for|to|come|repeat))? ", Pattern::caseless);
    static const Pattern rule("^(?:every|each)\\b|^(?:daily|weekly|monthly|yearly)\\b", Pattern::caseless);
    static const Pattern same(
        ",? (?:on (?:this|that|the same) (?:date|day)|at (?:this|that|the same) time)$", Pattern::caseless);
    static const Pattern noun("^an? (?=\\S+ (?:reminder|one)$)|(?<=ly) (?:reminder|one)$", Pattern::caseless);
    const std::string spoken = noun.replaceAll(lead.replaceAll(words, ""), "");
    if (!rule.find(spoken))
        return std::nullopt;
    const std::string often = same.replaceAll(spoken, "");
    const RequestWords parts(often);
    return TimeVocabulary::mayBeTime(parts, 0, parts.size())
        ? std::optional(Wish{.kind = Wish::Kind::move, .when = often, .repeat = often})
        : std::nullopt;
}

} // namespace

std::optional<Wish> FollowUpWish::read(std::string_view core, const LocalTime& around)
{
    if (auto wish = shiftOfNamed(std::string(core)))
        return wish;
    static const Pattern instead(",? instead$", Pattern::caseless);
    static const Pattern asks("\\bremind(?!er$)", Pattern::caseless); // "Remind me an hour before" moves nothing.
    if (RequestWords(core).size() > mostWords || asks.find(core))
        return std::nullopt;
    const std::string words = trimmed(ReminderIntent::timeAnswer(instead.replaceAll(core, "")), ",.");
    if (const auto minutes = shiftIn(words))
        return Wish{.kind = Wish::Kind::move, .minutes = *minutes};
    if (auto wish = sameTime(words, around))
        return wish;
    if (auto wish = otherRule(words))
        return wish;
    return inPlaceOf(words, around);
}

} // namespace quorvell
