// SPDX-License-Identifier: MIT
// Catches calendar files misread, events moved by clock changes, and changes that damage what others wrote.
#include "Quorvell/agenda/IcsCalendar.h"

#include "FixtureTable.h"
#include "Moments.h"
#include "Quorvell/agenda/IcsLimits.h"

namespace quorvell {
namespace {

const Instant editedAt = at("2026-11-21T09:00:00Z");

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

/// A fixture's lines: of an event or of all that stands in a file, then "= " and when something happens.
TEST(IcsCalendar, putsEventsWhereTheyHappen)
{
    for (const auto& [name, lines] : test::fixtureRows("agenda/events.txt")) {
        std::string text;
        std::vector<std::string> happens;
        for (const std::string& line : lines)
            if (line.starts_with("= "))
                happens.push_back(line.substr(2));
            else
                text += (text.empty() ? "" : "\n") + line;
        EXPECT_EQ(shown(file(text.find("BEGIN:") == text.npos ? event(text) : text), "2026-11-22T00:00:00Z",
                      "2026-11-29T00:00:00Z"),
            happens)
            << name;
    }
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
        const std::string problem = calendar->change(*id, row.scope, row.change, berlin(), editedAt);
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
    EXPECT_EQ(calendar->remove(one, EventScope::occurrence, berlin(), editedAt), "");
    EXPECT_FALSE(calendar->find(one, berlin()));
    EXPECT_NE(calendar->remove(one, EventScope::occurrence, berlin(), editedAt), "");
    EXPECT_EQ(inTheYear(*calendar).size(), 4U);
    EXPECT_EQ(calendar->remove({'f', "u1", "20261123T120000"}, EventScope::series, berlin(), Instant()), "");
    EXPECT_EQ(inTheYear(*calendar).size(), 1U);
    EXPECT_EQ(calendar->remove({'f', "other", ""}, EventScope::occurrence, berlin(), Instant()), "");
    EXPECT_EQ(calendar->eventCount(), 0U);
}

} // namespace
} // namespace quorvell
