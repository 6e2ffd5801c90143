// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/spoken/SpokenDates.h"

#include "QuorvellCore/reminders/calendar/ReminderWords.h"
#include "QuorvellCore/reminders/spoken/TokenLength.h"
#include "QuorvellCore/reminders/spoken/TokenNumber.h"
#include "QuorvellCore/reminders/spoken/TokenReplacement.h"
#include "QuorvellCore/reminders/wording/TimeTerms.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace quorvell {

namespace {

using Kind = RequestToken::Kind;
using Terms = WordTerms;

using Replacement = TokenReplacement;

class SpokenDates {
public:
    explicit SpokenDates(const RequestTokens& tokens)
        : m_tokens(tokens)
    {
    }

    std::vector<Replacement> find() const
    {
        std::vector<Replacement> found;
        for (int index = 0; index < m_tokens.size();) {
            const bool isRead = has(index, Terms::spokenDate) && m_tokens.isOpen(index);
            const auto replacement = isRead ? at(index) : std::nullopt;
            if (replacement)
                found.push_back(*replacement);
            index = replacement ? replacement->end : index + 1;
        }
        return found;
    }

private:
    std::optional<Replacement> at(int index) const
    {
        for (const auto rule : {&SpokenDates::offset, &SpokenDates::fromNow, &SpokenDates::monthlyOrdinal,
                 &SpokenDates::ordinal, &SpokenDates::bareOrdinal, &SpokenDates::pluralWeekday,
                 &SpokenDates::twelveNoon, &SpokenDates::aboutClock, &SpokenDates::hourOfPart, &SpokenDates::everyday,
                 &SpokenDates::partOfDay, &SpokenDates::shortName})
            if (auto replacement = (this->*rule)(index))
                return replacement;
        return std::nullopt;
    }

    bool is(int index, RequestTokens::Words words) const { return m_tokens.is(index, words); }
    bool has(int index, std::uint32_t anyOf) const { return m_tokens.has(index, anyOf); }
    const Terms& terms(int index) const { return m_tokens.token(index).terms; }
    std::string_view text(int index) const { return m_tokens.token(index).text; }
    Kind kind(int index) const { return m_tokens.token(index).kind; }

    static std::string written(const TokenLength& length)
    {
        return length.isOfDays ? "in " + std::to_string(length.minutes / TokenLength::minutesOfDay) + " days"
                               : "in " + std::to_string(length.minutes) + " minutes";
    }

    std::optional<Replacement> offset(int index) const
    {
        if (!is(index, {"in", "after"}))
            return std::nullopt;
        const int first = is(index + 1, {"about", "around", "roughly", "approximately", "exactly", "just", "another"})
            ? index + 2
            : index + 1;
        const auto found = TokenLength::at(m_tokens, first);
        if (!found)
            return std::nullopt;
        int end = is(found->end, {"'", "’"}) ? found->end + 1 : found->end;
        end = is(end, {"time"}) || (is(end, {"from"}) && is(end + 1, {"now"})) ? end + (is(end, {"time"}) ? 1 : 2)
                                                                               : found->end;
        if (is(end, {"or"}) && is(end + 1, {"so"}))
            end += 2;
        // "After 20 minutes", but not "after 20 minutes of rest".
        if (is(index, {"after"}) && m_tokens.isInside(end) && kind(end) != Kind::mark && !is(end, {"to", "please"}))
            return std::nullopt;
        return Replacement{index, end, written(*found)};
    }

    std::optional<Replacement> fromNow(int index) const
    {
        const auto found = is(index - 1, {"in"}) ? std::nullopt : TokenLength::at(m_tokens, index);
        if (!found || !is(found->end, {"from"}) || !is(found->end + 1, {"now", "today"}))
            return std::nullopt;
        const bool isWhole = found->isOfDays || is(found->end + 1, {"now"});
        return isWhole ? std::optional(Replacement{index, found->end + 2, written(*found)}) : std::nullopt;
    }

    /// "on the first of every month", "the 1st of the month".
    std::optional<Replacement> monthlyOrdinal(int index) const
    {
        const int the = is(index, {"on", "by"}) ? index + 1 : index;
        const bool hasArticle = is(the, {"the"});
        const bool mayLackArticle = kind(the) == Kind::ordinal && is(the + 2, {"every", "each"});
        const auto day =
            hasArticle || mayLackArticle ? TokenNumber::ordinal(m_tokens, hasArticle ? the + 1 : the) : std::nullopt;
        if (!day || !is(day->end, {"of"}) || !is(day->end + 2, {"month"}))
            return std::nullopt;
        const std::string written = "on the " + ReminderWords::ordinal(day->value);
        if (is(day->end + 1, {"every", "each"}))
            return Replacement{index, day->end + 3, "every month " + written};
        const bool isThisOne = is(day->end + 1, {"the"}) && is(the - 1, {"on"});
        return isThisOne ? std::optional(Replacement{index, day->end + 3, written}) : std::nullopt;
    }

    /// "december fifth", "the twenty first of march", "on the fifth".
    std::optional<Replacement> ordinal(int index) const
    {
        const auto day = kind(index) == Kind::word ? TokenNumber::ordinal(m_tokens, index) : std::nullopt;
        if (!day)
            return std::nullopt;
        const int before = is(index - 1, {"the"}) ? index - 2 : index - 1;
        const int after = is(day->end, {"of"}) ? day->end + 1 : day->end;
        const bool isOfMonth = has(before, Terms::month) || has(after, Terms::month);
        const bool isLater =
            day->value > 3 && before == index - 2 && is(day->end, {"at", "@"}); // "the twenty third at noon"
        const bool isAlone = isLater
            || (before == index - 2 && (is(before, {"on", "by", "until"}) || has(before, Terms::weekday))
                && (kind(day->end) == Kind::mark || is(day->end, {"at", "to"})));
        if (!isOfMonth && !isAlone)
            return std::nullopt;
        const int first = has(before, Terms::month) ? before + 1 : index;
        return Replacement{first, day->end, ReminderWords::ordinal(day->value)};
    }

    /// "on 22nd", "friday 27th": the patterns know it with its article.
    std::optional<Replacement> bareOrdinal(int index) const
    {
        const bool isLed = is(index - 1, {"on", "by", "until", "till"}) || has(index - 1, Terms::weekday);
        const bool isFollowed = m_tokens.isInside(index + 1) && kind(index + 1) != Kind::mark
            && (TimeTerms::isOrdinary(m_tokens, index + 1) || has(index + 1, Terms::month | Terms::unit)
                || is(index + 1, {"of", "and", "or"}));
        // "Pickup 27th 08:30"
        const bool isTimed = kind(index + 1) == Kind::clock && TimeTerms::clockLength(m_tokens, index + 1) > 0
            && !is(index - 1, {"the"}) && !has(index - 1, Terms::month);
        const bool isDay =
            kind(index) == Kind::ordinal && (isLed || isTimed) && !isFollowed && !is(index + 1, {"-", "–"});
        return isDay ? std::optional(Replacement{index, index + 1, "the " + std::string(text(index))}) : std::nullopt;
    }

    /// "on mondays"; "mondays at 8".
    std::optional<Replacement> pluralWeekday(int index) const
    {
        const int day = is(index, {"on"}) ? index + 1 : index;
        const bool isRule = is(index - 1, {"every", "each"}) || is(index - 1, {"on"});
        const bool isTimed =
            day == index + 1 || kind(day + 1) == Kind::mark || TimeTerms::isTimeLike(m_tokens, day + 1);
        if (isRule || !isTimed || !has(day, Terms::pluralWeekday))
            return std::nullopt;
        return Replacement{index, day + 1, "every " + std::string(text(day).substr(0, text(day).size() - 1))};
    }

    std::optional<Replacement> twelveNoon(int index) const
    {
        if (is(index, {"12noon", "12midnight"}))
            return Replacement{index, index + 1, std::string(text(index).substr(2))};
        const bool isTwelve = is(index, {"12", "12:00", "twelve"}) && is(index + 1, {"noon", "midday", "midnight"});
        const int night = is(index + 1, {"o'clock", "oclock"}) ? index + 2 : index + 1;
        if (is(index, {"12", "twelve"}) && is(night, {"at"}) && is(night + 1, {"night"}))
            return Replacement{index, night + 2, "midnight"};
        return isTwelve ? std::optional(Replacement{index, index + 2, std::string(text(index + 1))}) : std::nullopt;
    }

    /// "around 5 pm", "at about 5": as near as a reminder can be. "5ish", too.
    std::optional<Replacement> aboutClock(int index) const
    {
        const int about = is(index, {"at"}) ? index + 1 : index;
        const bool isAbout = is(about, {"about", "around", "approximately", "roughly", "exactly"});
        const bool isClock = TimeTerms::clockLength(m_tokens, about + 1) > 0
            || (kind(about + 1) == Kind::number && text(about + 1).size() <= 2
                && (about > index || is(about, {"around"})) && !TimeTerms::isOrdinary(m_tokens, about + 2));
        if (isAbout && isClock)
            return Replacement{index, about + 1, "at"};
        const std::string_view hour = text(index);
        const bool isVague = hour.ends_with("ish") && hour.size() <= 5
            && hour.find_first_not_of("0123456789") == hour.size() - 3 && hour.size() > 3;
        return isVague ? std::optional(Replacement{index, index + 1,
                   (is(index - 1, {"at", "by", "around"}) ? "" : "at ") + std::string(hour.substr(0, hour.size() - 3))})
                       : std::nullopt;
    }

    /// "7 in the evening" has its "at" understood; "at night" is "in the night".
    std::optional<Replacement> hourOfPart(int index) const
    {
        if (is(index, {"at"}) && is(index + 1, {"night"}))
            return Replacement{index, index + 2, "in the night"};
        const bool isHour = kind(index) == Kind::number && text(index).size() <= 2
            && !is(index - 1, {"at", "by", "@", "around", ":", "/"});
        const bool isOfPart = (is(index + 1, {"in"}) && is(index + 2, {"the"}) && has(index + 3, Terms::part))
            || (is(index + 1, {"at"}) && is(index + 2, {"night"}));
        return isHour && isOfPart ? std::optional(Replacement{index, index + 1, "at " + std::string(text(index))})
                                  : std::nullopt;
    }

    /// "everyday at 6 am"
    std::optional<Replacement> everyday(int index) const
    {
        const bool isTimed = kind(index + 1) == Kind::mark || TimeTerms::isTimeLike(m_tokens, index + 1);
        return is(index, {"everyday"}) && isTimed ? std::optional(Replacement{index, index + 1, "every day"})
                                                  : std::nullopt;
    }

    /// "on the morning of the 5th"
    std::optional<Replacement> partOfDay(int index) const
    {
        const int the = is(index, {"on", "in", "for"}) ? index + 1 : index;
        const bool isPart = is(the, {"the"}) && has(the + 1, Terms::part) && is(the + 2, {"of"});
        const int day = is(the + 3, {"the"}) ? the + 4 : the + 3;
        const bool isDay = the > index
            ? TimeTerms::isTimeLike(m_tokens, day)
            : kind(day) == Kind::ordinal || has(day, Terms::month) || has(day + 1, Terms::month);
        return isPart && isDay
            ? std::optional(Replacement{index, the + 3, "in the " + std::string(text(the + 1)) + " on"})
            : std::nullopt;
    }

    /// "2moro", and "weds" where it is no verb.
    std::optional<Replacement> shortName(int index) const
    {
        const std::string_view name = terms(index).has(Terms::shortName) ? text(index) : std::string_view();
        if (name.empty())
            return std::nullopt;
        if (name == "arvo")
            return Replacement{index, index + 1, "afternoon"};
        if (name != "weds")
            return Replacement{index, index + 1, name.find("ni") != std::string_view::npos ? "tonight" : "tomorrow"};
        const bool isDay = has(index - 1, Terms::governsDay) || index == m_tokens.start()
            || !m_tokens.isInside(index + 1) || TimeTerms::isTimeLike(m_tokens, index - 1)
            || TimeTerms::isTimeLike(m_tokens, index + 1);
        return isDay ? std::optional(Replacement{index, index + 1, "wednesday"}) : std::nullopt;
    }

    const RequestTokens& m_tokens;
};

} // namespace

std::optional<std::string> withWrittenDates(const RequestWording& wording)
{
    return Replacement::apply(wording, SpokenDates(wording.tokens()).find());
}

} // namespace quorvell
