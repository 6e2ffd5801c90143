// SPDX-License-Identifier: MIT
// Catches dates that the program prints and does not understand when they are said back to it.
#include "QuorvellCore/reminders/calendar/DateParts.h"
#include "QuorvellCore/reminders/calendar/ReminderWords.h"
#include "QuorvellCore/reminders/request/ReminderRequest.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

namespace quorvell {
namespace {

struct Said {
    const char* name;
    std::string (*words)(Instant date, Instant now, const Calendar& calendar);
};

constexpr Said forms[] = {
    {"spoken",
        [](Instant date, Instant now, const Calendar& calendar) {
            return "on " + ReminderWords::spoken(date, now, calendar, calendar.locale());
        }},
    {"with its year",
        [](Instant date, Instant now, const Calendar& calendar) {
            return ReminderWords::spokenWithYear(date, now, calendar, calendar.locale());
        }},
    {"full",
        [](Instant date, Instant now, const Calendar& calendar) {
            return ReminderWords::full(date, ReminderWords::Time::isKnown, now, calendar, calendar.locale());
        }},
    {"short",
        [](Instant date, Instant now, const Calendar& calendar) {
            return ReminderWords::short_(date, now, calendar, calendar.locale());
        }},
    {"choice",
        [](Instant date, Instant now, const Calendar& calendar) {
            return ReminderWords::choice(date, now, calendar, calendar.locale());
        }},
    {"for tools",
        [](Instant date, Instant, const Calendar& calendar) { return DateParts::from(date, calendar).text(); }},
};

/// Understood as that date, or asked about with it among the choices.
bool isMeant(const ReminderRequest& request, Instant date)
{
    const bool isAsked = request.verdict == ReminderRequest::Verdict::whichTime;
    return isAsked ? std::ranges::find(request.choices, date) != request.choices.end()
                   : request.verdict == ReminderRequest::Verdict::ready && request.date == date;
}

TEST(SaidBack, everyDateThatIsPrintedIsUnderstood)
{
    // Before, at and behind both changes of the clocks, at both ends of a year, and before a leap day.
    constexpr const char* moments[] = {"2026-03-27T09:30:00Z", "2026-03-29T00:30:00Z", "2026-10-24T22:30:00Z",
        "2026-10-25T00:30:00Z", "2026-12-31T22:50:00Z", "2027-01-01T06:00:00Z", "2027-06-16T12:00:00Z",
        "2028-02-28T20:00:00Z"};
    const Calendar calendars[] = {
        *Calendar::create("Europe/Berlin", "en_US"), *Calendar::create("America/New_York", "en_GB")};
    std::mt19937 chance(20'261'122);
    std::uniform_int_distribution<int> minutesAhead(1, 363 * 24 * 12);
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    constexpr int dates = 300; // They make it slower, and find nothing more in the others.
#else
    constexpr int dates = 2000;
#endif
    for (int count = 0; count < dates; ++count) {
        const Calendar& calendar = calendars[count % 2];
        const Instant now = *parseIsoText(moments[static_cast<std::size_t>(count) % std::size(moments)]);
        // One in four is of today or tomorrow, where the words are others.
        const int steps = count % 4 == 0 ? minutesAhead(chance) % (30 * 12) : minutesAhead(chance);
        const Instant ahead = now + std::chrono::minutes(5 * steps);
        // Of an hour that comes twice the first is meant.
        const Instant date = DateParts::from(ahead, calendar).instant(calendar).value_or(ahead);
        if (date <= now)
            continue;
        for (const Said& form : forms) {
            const std::string words = form.words(date, now, calendar);
            const auto request = ReminderRequest::fromWords("remind me " + words + " to call mum", now, calendar);
            EXPECT_TRUE(isMeant(request, date) && request.task == "Call mum")
                << form.name << ": " << words << " seen from " << isoText(now) << ": " << request.unclear;
        }
    }
}

TEST(SaidBack, everyRuleThatIsPrintedIsUnderstood)
{
    const Calendar calendar = *Calendar::create("Europe/Berlin", "en_US");
    const Instant now = *parseIsoText("2026-11-21T09:30:00Z");
    for (const char* stored :
        {"daily", "weekdays", "weekly:1", "weekly:2,4,6", "weekly:1,7", "monthly:3", "monthly:31"}) {
        const auto rule = ReminderRepeat::fromStored(stored);
        const std::string words = rule->spoken("en_US");
        const auto request = ReminderRequest::fromWords("remind me " + words + " at 5 PM to call mum", now, calendar);
        EXPECT_EQ(request.repeatRule, rule) << words;
        EXPECT_EQ(request.task, "Call mum") << words;
    }
}

} // namespace
} // namespace quorvell
