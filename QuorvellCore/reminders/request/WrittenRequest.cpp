// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/request/WrittenRequest.h"

#include "QuorvellCore/reminders/spoken/FigureDates.h"
#include "QuorvellCore/reminders/spoken/SpokenClocks.h"
#include "QuorvellCore/reminders/spoken/SpokenDates.h"
#include "QuorvellCore/reminders/spoken/SpokenRules.h"
#include "QuorvellCore/reminders/spoken/SpokenTimes.h"
#include "QuorvellCore/reminders/spoken/TimeSlips.h"
#include "QuorvellCore/reminders/spoken/WorkedOutDays.h"
#include "QuorvellCore/reminders/wording/RequestWording.h"
#include "QuorvellCore/text/Characters.h"

#include <optional>
#include <utility>

namespace quorvell {

namespace {

/// Reads the words anew only where something was rewritten.
class Rewriting {
public:
    explicit Rewriting(std::string words)
        : m_wording(std::in_place, std::move(words))
    {
        m_wording->tokens().markQuotes();
    }

    const RequestWording& wording() const { return *m_wording; }
    void take(std::optional<std::string> changed)
    {
        if (!changed)
            return;
        m_wording.emplace(*std::move(changed));
        m_wording->tokens().markQuotes();
    }

private:
    std::optional<RequestWording> m_wording;
};

} // namespace

std::string writtenRequest(std::string_view words, Instant now, const Calendar& calendar)
{
    Rewriting rewriting(repairUtf8(words));
    rewriting.take(withoutTimeSlips(rewriting.wording()));
    rewriting.take(FigureDates::written(rewriting.wording(), now, calendar));
    rewriting.take(withWrittenClocks(rewriting.wording()));
    const std::string& text = rewriting.wording().text();
    if (std::string timed = withWrittenTimes(text); timed != text)
        rewriting.take(std::move(timed));
    rewriting.take(withWrittenRules(rewriting.wording()));
    rewriting.take(withWrittenDates(rewriting.wording()));
    rewriting.take(withWorkedOutDays(rewriting.wording(), calendar.day(now)));
    return rewriting.wording().text();
}

} // namespace quorvell
