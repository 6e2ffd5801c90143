// SPDX-License-Identifier: MIT
// Catches calendar files misread, events moved by clock changes, and changes that damage what others wrote.
#include "Quorvell/agenda/IcsCalendar.h"

#include "AgendaMoments.h"
#include "Quorvell/agenda/IcsLimits.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

namespace quorvell {
namespace {

using test::at;
using test::berlin;
using test::now;

std::string file(const std::string& lines)
{
    return "BEGIN:VCALENDAR\nVERSION:2.0\nPRODID:x\n" + lines + "\nEND:VCALENDAR\n";
}

std::string event(const std::string& lines, const std::string& uid = "u1")
{
    return "BEGIN:VEVENT\nUID:" + uid + "\nSUMMARY:Lunch\n" + lines + "\nEND:VEVENT";
}

/// "start/end" without what the end has in common with the start, of whole days with a mark.
std::vector<std::string> shown(const std::string& text, const char* from, const char* to)
{
    const auto calendar = IcsCalendar::parse(text);
    std::vector<std::string> lines;
    if (!calendar)
        return {"unreadable"};
    for (const CalendarEvent& found : calendar->between(at(from), at(to), 'f', berlin())) {
        const std::string start = isoText(found.start).substr(5, 11);
        const std::string end = isoText(found.end).substr(5, 11);
        const bool isSameDay = start.substr(0, 5) == end.substr(0, 5);
        lines.push_back(start + (start == end ? "" : "/" + (isSameDay ? end.substr(6) : end))
            + (found.allDay ? " day" : "") + (found.title == "Lunch" ? "" : " " + found.title));
    }
    return lines;
}

std::vector<std::string> inTheYear(const IcsCalendar& calendar)
{
    return shown(calendar.text(), "2026-01-01T00:00:00Z", "2027-01-01T00:00:00Z");
}

TEST(IcsCalendar, putsEventsWhereTheyHappen)
{
    const std::string outlook = "BEGIN:VTIMEZONE\nTZID:Made up\nBEGIN:STANDARD\nDTSTART:20200101T000000\n"
                                "TZOFFSETFROM:+0300\nTZOFFSETTO:+0300\nEND:STANDARD\nEND:VTIMEZONE\n";
    const std::tuple<const char*, std::string, std::vector<std::string>> rows[] = {
        {"in a zone",
            event("DTSTART;TZID=America/New_York:20261123T090000\nDTEND;TZID=America/New_York:20261123T100000"),
            {"11-23T14:00/15:00"}},
        {"in UTC, with a duration", event("DTSTART:20261123T090000Z\nDURATION:PT45M"), {"11-23T09:00/09:45"}},
        {"by the user's clock, without an end", event("DTSTART:20261123T090000"), {"11-23T08:00"}},
        {"a zone behind a program's name",
            event("DTSTART;TZID=/example.org/2007/Europe/London:20261123T090000\nDURATION:PT1H"),
            {"11-23T09:00/10:00"}},
        {"a zone that the file describes", outlook + event("DTSTART;TZID=Made up:20261123T090000\nDURATION:PT1H"),
            {"11-23T06:00/07:00"}},
        {"a zone by the name that another system has for it",
            event("DTSTART;TZID=W. Europe Standard Time:20261123T090000\nDURATION:PT1H"), {"11-23T08:00/09:00"}},
        {"a zone whose rules are newer than those of the library",
            event("DTSTART;TZID=Asia/Almaty:20261123T090000\nDURATION:PT1H"), {"11-23T04:00/05:00"}},
        {"a zone that nobody knows", event("DTSTART;TZID=Nowhere:20261123T090000\nDURATION:PT1H"),
            {"11-23T08:00/09:00"}},
        {"whole days", event("DTSTART;VALUE=DATE:20261123\nDTEND;VALUE=DATE:20261125"),
            {"11-22T23:00/11-24T23:00 day"}},
        {"a whole day without an end", event("DTSTART;VALUE=DATE:20261123"), {"11-22T23:00/11-23T23:00 day"}},
        {"under way when the week begins", event("DTSTART:20261121T220000Z\nDTEND:20261123T010000Z"),
            {"11-21T22:00/11-23T01:00"}},
        {"over when it begins", event("DTSTART:20261121T220000Z\nDTEND:20261122T000000Z"), {}},
        {"called off", event("DTSTART:20261123T090000Z\nSTATUS:CANCELLED"), {}},
        {"one of a series called off",
            event("DTSTART:20261116T090000Z\nRRULE:FREQ=WEEKLY;COUNT=2") + "\n"
                + event("RECURRENCE-ID:20261123T090000Z\nDTSTART:20261123T100000Z\nSTATUS:CANCELLED"),
            {}},
        {"every working day, one struck out",
            event("DTSTART;TZID=Europe/Berlin:20200106T090000\nDURATION:PT1H\nRRULE:FREQ=WEEKLY;BYDAY=MO,WE,FR\n"
                  "EXDATE;TZID=Europe/Berlin:20261125T090000"),
            {"11-23T08:00/09:00", "11-27T08:00/09:00"}},
        {"with positions, which mean nothing in a week",
            event("DTSTART:20200106T090000Z\nRRULE:FREQ=WEEKLY;BYDAY=2MO,FR"), {"11-23T09:00", "11-27T09:00"}},
        {"one struck out without its zone",
            event("DTSTART;TZID=Asia/Tokyo:20261117T090000\nRRULE:FREQ=WEEKLY;COUNT=2\nEXDATE:20261124T090000"), {}},
        {"until an instant, counted in the zone",
            event("DTSTART;TZID=Europe/Berlin:20261121T003000\nRRULE:FREQ=DAILY;UNTIL=20261123T233000Z"),
            {"11-22T23:30", "11-23T23:30"}},
        {"until a day, counted in whole", event("DTSTART:20261121T090000Z\nRRULE:FREQ=DAILY;UNTIL=20261123"),
            {"11-22T09:00", "11-23T09:00"}},
        {"a number of times", event("DTSTART;VALUE=DATE:20261110\nRRULE:FREQ=WEEKLY;COUNT=3"),
            {"11-23T23:00/11-24T23:00 day"}},
        {"the last Friday of the month", event("DTSTART:20200131T120000Z\nRRULE:FREQ=MONTHLY;BYDAY=-1FR"),
            {"11-27T12:00"}},
        {"every third day, for years", event("DTSTART:20200101T120000Z\nRRULE:FREQ=DAILY;INTERVAL=3"),
            {"11-22T12:00", "11-25T12:00", "11-28T12:00"}},
        {"every other week, for years", event("DTSTART:20200101T120000Z\nRRULE:FREQ=WEEKLY;INTERVAL=2;BYDAY=WE,FR"),
            {"11-25T12:00", "11-27T12:00"}},
        {"every fifth month, for years", event("DTSTART:20200124T120000Z\nRRULE:FREQ=MONTHLY;INTERVAL=2"),
            {"11-24T12:00"}},
        {"every thirty hours", event("DTSTART:20261101T120000Z\nRRULE:FREQ=HOURLY;INTERVAL=30"),
            {"11-22T18:00", "11-24T00:00", "11-25T06:00", "11-26T12:00", "11-27T18:00"}},
        {"every five hours of a whole day", event("DTSTART;VALUE=DATE:20261123\nRRULE:FREQ=HOURLY;INTERVAL=5"),
            {"11-22T23:00/11-23T23:00 day"}},
        {"further dates", event("DTSTART:20200101T120000Z\nRDATE:20261124T120000Z,20261126T120000Z"),
            {"11-24T12:00", "11-26T12:00"}},
        {"one moved out of the week, one into it",
            event("DTSTART:20261102T120000Z\nRRULE:FREQ=WEEKLY") + "\n"
                + event("RECURRENCE-ID:20261123T120000Z\nDTSTART:20261223T120000Z") + "\n"
                + event("RECURRENCE-ID:20261214T120000Z\nDTSTART:20261124T070000Z"),
            {"11-24T07:00"}},
        {"every second that never comes",
            event("DTSTART:20261102T120000Z\nRRULE:FREQ=SECONDLY;BYMONTH=2;BYMONTHDAY=30"), {}},
        {"a day that never comes", event("DTSTART:20261102T120000Z\nRRULE:FREQ=DAILY;BYMONTH=2;BYMONTHDAY=30"), {}},
    };
    for (const auto& [name, text, happens] : rows)
        EXPECT_EQ(shown(file(text), "2026-11-22T00:00:00Z", "2026-11-29T00:00:00Z"), happens) << name;
}

TEST(IcsCalendar, keepsTheHourAcrossClockChanges)
{
    EXPECT_EQ(shown(file(event("DTSTART;TZID=Europe/Berlin:20260301T093000\nDURATION:PT30M\nRRULE:FREQ=DAILY")),
                  "2026-03-28T00:00:00Z", "2026-03-30T00:00:00Z"),
        (std::vector<std::string>{"03-28T08:30/09:00", "03-29T07:30/08:00"}));
    EXPECT_EQ(shown(file(event("DTSTART;VALUE=DATE:20240229\nRRULE:FREQ=YEARLY")), "2027-01-01T00:00:00Z",
                  "2029-01-01T00:00:00Z"),
        (std::vector<std::string>{"02-28T23:00/02-29T23:00 day"}));
}

TEST(IcsCalendar, refusesWhatIsNoCalendar)
{
    std::string nested;
    for (int depth = 0; depth < 2000; ++depth)
        nested = "begin:VEVENT\n" + nested + "END:VEVENT\n";
    nested = file(nested);
    for (const std::string& text :
        {std::string(), std::string("hello"), std::string("BEGIN:VCARD\nEND:VCARD\n"), nested,
            std::string("BEGIN:VCALENDAR\n\0END:VCALENDAR\n", 32), std::string(IcsLimits::longestText + 1, 'x')})
        EXPECT_FALSE(IcsCalendar::parse(text)) << text.substr(0, 40);
    EXPECT_EQ(shown(file("BEGIN:VEVENT\nSUMMARY:Nobody's\nEND:VEVENT"), "2026-01-01T00:00:00Z", "2027-01-01T00:00:00Z"),
        std::vector<std::string>());
}

const char* const weekly = "DTSTART;TZID=Europe/Berlin:20261102T120000\nDTEND;TZID=Europe/Berlin:20261102T130000\n"
                           "X-KEPT:yes\nRRULE:FREQ=WEEKLY;COUNT=5\nEXDATE;TZID=Europe/Berlin:20261109T120000";

TEST(IcsCalendar, changesOneOccurrenceOrTheSeries)
{
    const EventChange moved{.start = at("2026-11-17T09:00:00Z")};
    const EventChange renamed{.title = "Dinner, late; \"really\"\nyes"};
    const EventChange wholeDay{.allDay = true};
    const struct Row {
        const char* name;
        const char* id;
        EventScope scope;
        EventChange change;
        std::vector<std::string> happens; ///< None when it is refused.
    } rows[] = {
        {"one moves", "f:u1#20261116T120000", EventScope::occurrence, moved,
            {"11-02T11:00/12:00", "11-17T09:00/10:00", "11-23T11:00/12:00", "11-30T11:00/12:00"}},
        {"all move, what is struck out too", "f:u1#20261116T120000", EventScope::series, moved,
            {"11-03T09:00/10:00", "11-17T09:00/10:00", "11-24T09:00/10:00", "12-01T09:00/10:00"}},
        {"one gets another title", "f:u1#20261130T120000", EventScope::occurrence, renamed,
            {"11-02T11:00/12:00", "11-16T11:00/12:00", "11-23T11:00/12:00",
                "11-30T11:00/12:00 Dinner, late; \"really\"\nyes"}},
        {"one becomes a whole day", "f:u1#20261116T120000", EventScope::occurrence, wholeDay,
            {"11-02T11:00/12:00", "11-15T23:00/11-16T23:00 day", "11-23T11:00/12:00", "11-30T11:00/12:00"}},
        {"not the series", "f:u1", EventScope::series, wholeDay, {}},
        {"never backwards", "f:u1#20261116T120000", EventScope::occurrence, {.end = at("2026-11-16T10:00:00Z")}, {}},
        {"none that is struck out", "f:u1#20261109T120000", EventScope::occurrence, renamed, {}},
        {"none that never was", "f:u1#20261117T120000", EventScope::occurrence, renamed, {}},
        {"none of nobody", "f:u2", EventScope::series, renamed, {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        auto calendar = IcsCalendar::parse(file(event(weekly)));
        ASSERT_TRUE(calendar);
        const auto id = EventID::parse(row.id);
        ASSERT_TRUE(id);
        const std::string problem = calendar->change(*id, row.scope, row.change, berlin(), now);
        EXPECT_EQ(problem.empty(), !row.happens.empty()) << problem;
        if (!problem.empty())
            continue;
        EXPECT_EQ(inTheYear(*calendar), row.happens);
        EXPECT_NE(calendar->text().find("X-KEPT:yes"), std::string::npos);
        EXPECT_TRUE(calendar->find(*id, berlin()) || row.scope == EventScope::series);
    }
}

TEST(IcsCalendar, movesSeriesByDaysWhereTheirRulesFollow)
{
    const struct Row {
        const char* name;
        const char* rule;
        int daysLater;
        std::vector<std::string> happens; ///< None when it is refused.
    } rows[] = {
        {"its own weekday", "FREQ=WEEKLY;COUNT=2;BYDAY=MO", 3, {"11-05T11:00/12:00", "11-12T11:00/12:00"}},
        {"over the end of the week", "FREQ=WEEKLY;BYDAY=MO,WE;UNTIL=20261111T110000Z", 5,
            {"11-07T11:00/12:00", "11-09T11:00/12:00", "11-14T11:00/12:00", "11-16T11:00/12:00"}},
        {"every other week", "FREQ=WEEKLY;INTERVAL=2;BYDAY=MO", 1, {}},
        {"a day of the month", "FREQ=MONTHLY;BYMONTHDAY=2", 1, {}},
        {"the first Monday", "FREQ=MONTHLY;BYDAY=1MO", 1, {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        auto calendar = IcsCalendar::parse(
            file(event("DTSTART;TZID=Europe/Berlin:20261102T120000\nDURATION:PT1H\nRRULE:" + std::string(row.rule))));
        ASSERT_TRUE(calendar);
        const EventChange later{.start = at("2026-11-02T11:00:00Z") + std::chrono::days(row.daysLater)};
        const std::string problem =
            calendar->change({'f', "u1", "20261102T120000"}, EventScope::series, later, berlin(), Instant());
        EXPECT_EQ(problem.empty(), !row.happens.empty()) << problem;
        if (problem.empty()) {
            EXPECT_EQ(inTheYear(*calendar), row.happens);
        }
    }
}

TEST(IcsCalendar, writesRulesThatComeBack)
{
    const struct Row {
        const char* repeat;
        const char* start;
        const char* written; ///< Of the rule.
        const char* last; ///< The start of the last occurrence before 2028-03-10.
    } rows[] = {
        {"daily", "2027-03-01T08:00:00Z", "FREQ=DAILY", "03-09T08:00"},
        {"weekdays", "2027-03-01T08:00:00Z", "BYDAY=MO,TU,WE,TH,FR", "03-09T08:00"},
        {"weekly:2", "2027-03-01T08:00:00Z", "FREQ=WEEKLY", "03-06T08:00"},
        {"weekly:2,7", "2027-03-01T08:00:00Z", "BYDAY=MO,SA", "03-06T08:00"},
        {"monthly:1", "2027-03-01T08:00:00Z", "FREQ=MONTHLY", "03-01T08:00"},
        {"monthly:31", "2027-03-31T07:00:00Z", "BYMONTHDAY=28,29,30,31;BYSETPOS=-1", "02-29T08:00"},
        {"yearly", "2027-03-01T08:00:00Z", "FREQ=YEARLY", "03-01T08:00"},
        {"yearly", "2024-02-29T08:00:00Z", "BYMONTHDAY=-1;BYMONTH=2", "02-29T08:00"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.repeat);
        const EventDraft draft{"u1", "Lunch", "", "", at(row.start), at(row.start) + std::chrono::hours(1), false,
            ReminderRepeat::fromStored(row.repeat)};
        const std::string text = IcsCalendar::withEvent(draft, berlin(), Instant()).text();
        EXPECT_NE(text.find(row.written), std::string::npos) << text;
        EXPECT_EQ(shown(text, "2026-01-01T00:00:00Z", "2028-03-10T00:00:00Z").back().substr(0, 11), row.last);
    }
}

TEST(IcsCalendar, removesOneOccurrenceOrTheSeries)
{
    auto calendar = IcsCalendar::parse(file(event(weekly) + "\n" + event("DTSTART:20261201T120000Z", "other")));
    ASSERT_TRUE(calendar);
    const EventID one{'f', "u1", "20261116T120000"};
    EXPECT_EQ(calendar->remove(one, EventScope::occurrence, berlin(), now), "");
    EXPECT_FALSE(calendar->find(one, berlin()));
    EXPECT_NE(calendar->remove(one, EventScope::occurrence, berlin(), now), "");
    EXPECT_EQ(inTheYear(*calendar).size(), 4U);
    EXPECT_EQ(calendar->remove({'f', "u1", "20261123T120000"}, EventScope::series, berlin(), Instant()), "");
    EXPECT_EQ(inTheYear(*calendar).size(), 1U);
    EXPECT_EQ(calendar->remove({'f', "other", ""}, EventScope::occurrence, berlin(), Instant()), "");
    EXPECT_EQ(calendar->eventCount(), 0U);
}

} // namespace
} // namespace quorvell
