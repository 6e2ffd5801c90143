// SPDX-License-Identifier: MIT
// Runs the patterns over a lower-cased phrase in their fixed order.
#pragma once

#include "QuorvellCore/reminders/phrase/PhraseFindings.h"
#include "QuorvellCore/reminders/phrase/PhraseHints.h"
#include "QuorvellCore/reminders/phrase/PhraseKeywords.h"
#include "QuorvellCore/text/PatternText.h"

#include <string_view>

namespace quorvell {

/// A day or a part of the day that is found is never overridden by a later pattern, and only words that contributed are
/// remembered as time words.
class PhraseRecogniser {
public:
    /// The text and the calendar must outlive the recogniser.
    PhraseRecogniser(std::string_view lowerCasedText, Instant now, const Calendar& calendar);

    PhraseFindings findings(const PhraseHints& hints);

private:
    void findRepeat();
    void findOffset();
    void findNamedDay();
    void findThisPart();
    void findWeekday();
    void findNextWeek();
    void findDayAndMonth();
    void findDayOfMonth();
    void findClock();
    void findSecondChanceClock();
    void findPart();

    std::optional<PatternMatch> search(PhraseSearch what, const Pattern& pattern, std::size_t from = 0) const;
    void setDay(const PhraseDay& day, const PatternMatch& match, std::string_view part = {});
    void setPart(std::string_view word, bool isOfDay);
    PhraseDay comingWeekday(int weekday) const;
    bool partContributes(DayPart part, const PatternMatch& match) const;

    PatternText m_text;
    PhraseKeywords m_keywords;
    Instant m_now;
    const Calendar& m_calendar;
    LocalDay m_today;
    PhraseFindings m_findings;
};

} // namespace quorvell
