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
    for (const CalendarEvent& found : calendar->between(at(from), at(to), 'f', berlin()).events) {
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

TEST(IcsCalendar, findsAWeek53OnlyWhereThereIsOne)
{
    const std::pair<const char*, std::vector<std::string>> rows[] = {
        {"BYDAY=MO", {"2020-12-28", "2026-12-28", "2032-12-27"}},
        {"BYDAY=MO;COUNT=2", {"2020-12-28", "2026-12-28"}},
        {"BYDAY=MO;WKST=SU", {"2020-12-28", "2025-12-29", "2031-12-29"}},
        {"BYDAY=SU,MO;INTERVAL=3;UNTIL=20270101", {"2020-12-28", "2021-01-03", "2026-12-28"}},
    };
    for (const auto& [rule, days] : rows) {
        const auto calendar = IcsCalendar::parse(
            file(event(std::string("DTSTART;VALUE=DATE:20201228\nRRULE:FREQ=YEARLY;BYWEEKNO=53;") + rule)));
        ASSERT_TRUE(calendar) << rule;
        std::vector<std::string> happens;
        const auto years = calendar->between(at("2020-01-01T00:00:00Z"), at("2033-06-01T00:00:00Z"), 'f', berlin());
        for (const CalendarEvent& found : years.events) {
            happens.push_back(isoText(found.start + std::chrono::hours(1)).substr(0, 10));
            EXPECT_TRUE(calendar->find(found.id, berlin())) << rule << " " << happens.back();
        }
        EXPECT_EQ(happens, days) << rule;
    }
}

std::string zone(const std::string& lines, const std::string& start = "20200101T000000")
{
    return "BEGIN:VTIMEZONE\nTZID:Made up\nBEGIN:STANDARD\nDTSTART:" + start
        + "\nTZOFFSETFROM:+0300\nTZOFFSETTO:+0300\n" + lines + "\nEND:STANDARD\nEND:VTIMEZONE\n";
}

std::string repeated(const std::string& text, int times)
{
    std::string all;
    for (int time = 0; time < times; ++time)
        all += text;
    return all;
}

/// Where the shown stands only for the rest, the library below would be at it for minutes, years or ever.
TEST(IcsCalendar, followsNothingWithoutEndAndSaysSo)
{
    enum class Left { nothing, repeats, zones };
    const std::string inZone = event("DTSTART;TZID=Made up:20261123T090000");
    const std::string byZone = "11-23T06:00"; // 9:00, three hours ahead of UTC
    const std::string byUser = "11-23T08:00";
    const std::string autumn = "RRULE:FREQ=YEARLY;BYDAY=-1SU;BYMONTH=10";
    const std::string once = "DTSTART:20261123T090000Z\n";
    const std::tuple<const char*, std::string, std::string, Left> rows[] = {
        {"a zone that changes every second", zone("RRULE:FREQ=SECONDLY") + inZone, byUser, Left::zones},
        {"every minute", zone("RRULE:FREQ=MINUTELY") + inZone, byUser, Left::zones},
        {"every day", zone("RRULE:FREQ=DAILY") + inZone, byUser, Left::zones},
        {"at many times of one day", zone("RRULE:FREQ=YEARLY;BYHOUR=1,2,3") + inZone, byUser, Left::zones},
        {"on every day of the year", zone("RRULE:FREQ=YEARLY;BYDAY=MO,TU,WE,TH,FR,SA,SU") + inZone, byUser,
            Left::zones},
        {"by many rules", zone(repeated(autumn + "\n", 100)) + inZone, byUser, Left::zones},
        {"on 10,000 dates", zone("RDATE:20200101T000000" + repeated(",20200102T000000", 9'999)) + inZone, byUser,
            Left::zones},
        {"with a name without end", event("DTSTART;TZID=" + repeated("a/", 500'000) + ":20261123T090000"), byUser,
            Left::zones},
        {"as zones are: from the first year on", zone(autumn, "16010101T000000") + inZone, byZone, Left::nothing},
        {"a Sunday by its dates", zone("RRULE:FREQ=YEARLY;BYMONTH=3;BYMONTHDAY=8,9,10,11,12,13,14;BYDAY=SU") + inZone,
            byZone, Left::nothing},
        {"on 200 dates", zone("RDATE:20200101T000000" + repeated(",20200102T000000", 199)) + inZone, byZone,
            Left::nothing},

        {"an event every second", event(once + "RRULE:FREQ=SECONDLY"), "11-23T09:00", Left::repeats},
        {"every hour of some days", event(once + "RRULE:FREQ=HOURLY;BYDAY=MO"), "11-23T09:00", Left::repeats},
        {"at every second of a day that is far to find",
            event("DTSTART:19000101T000000Z\nRRULE:FREQ=DAILY;COUNT=9;BYMONTH=2;BYMONTHDAY=29;BYYEARDAY=1;BYHOUR="
                + std::string("0,1,2,3,4,5,6,7,8,9,10,11,12;BYMINUTE=0") + repeated(",1", 40) + ";BYSECOND=0"
                + repeated(",1", 40)),
            "", Left::repeats},
        {"from long ago on, counted", event("DTSTART:19000101T090000Z\nRRULE:FREQ=DAILY;COUNT=2147483647"), "",
            Left::repeats},
        {"a fifth Monday that is the first of a month, counted",
            event("DTSTART:19000101T090000Z\nRRULE:FREQ=MONTHLY;COUNT=3;BYDAY=5MO;BYMONTHDAY=1"), "", Left::nothing},
        {"by many rules, of which some count", event(once + repeated("RRULE:FREQ=DAILY;COUNT=1\n", 9)), "11-23T09:00",
            Left::repeats},
        {"one of more dates than the parser takes from a line",
            event(once + "RRULE:FREQ=DAILY\nEXDATE;X-A=\"b:c\":20261101T090000Z" + repeated(",20261102T090000Z", 3'000)
                + ",20261123T090000Z"),
            "", Left::nothing},
        {"weeks by their numbers, and days of these by theirs", event(once + "RRULE:FREQ=YEARLY;BYWEEKNO=48;BYDAY=2MO"),
            "11-23T09:00", Left::repeats},
        {"the last time of each day", event(once + "RRULE:FREQ=DAILY;BYHOUR=7,8;BYSETPOS=-1"), "11-23T09:00",
            Left::repeats},
        {"the only day of each week", event(once + "RRULE:FREQ=WEEKLY;BYDAY=MO;BYSETPOS=1"), "11-23T09:00",
            Left::nothing},
        {"weeks that no year has", event(once + "RRULE:FREQ=YEARLY;BYWEEKNO=53,-53;BYDAY=MO;BYMONTH=6"), "11-23T09:00",
            Left::nothing},
        {"further dates without end", event(once + "RDATE:20261101T090000Z" + repeated(",20261102T090000Z", 5'000)),
            "11-23T09:00", Left::repeats},
    };
    for (const auto& [name, text, happens, left] : rows) {
        SCOPED_TRACE(name);
        const auto calendar = IcsCalendar::parse(file(text));
        ASSERT_TRUE(calendar);
        const IcsReading found =
            calendar->between(at("2026-11-23T00:00:00Z"), at("2026-11-24T00:00:00Z"), 'f', berlin());
        EXPECT_EQ(found.events.empty() ? "" : isoText(found.events.front().start).substr(5, 11), happens);
        EXPECT_LE(found.events.size(), 1U);
        EXPECT_EQ(found.omissions.repeats, left == Left::repeats);
        EXPECT_EQ(found.omissions.zones, left == Left::zones);
        EXPECT_EQ(found.omissions.sentences("It").size(), left == Left::nothing ? 0U : 1U);
    }
    std::string many;
    for (int index = 0; index < 1'000; ++index)
        many += event("DTSTART:20200101T090000Z\nRRULE:FREQ=DAILY", "u" + std::to_string(index)) + "\n";
    const auto calendar = IcsCalendar::parse(file(many));
    ASSERT_TRUE(calendar);
    const auto read = [&](const Patience& patience) {
        return calendar->between(at("2026-11-23T00:00:00Z"), at("2026-11-30T00:00:00Z"), 'f', berlin(), patience);
    };
    EXPECT_EQ(read({}).events.size(), IcsLimits::mostOccurrences);
    EXPECT_TRUE(read({}).omissions.amount);
    EXPECT_TRUE(read({.until = Patience::Clock::now()}).omissions.time);
}

TEST(IcsCalendar, readsLinesOfAnyLength)
{
    const std::string words = repeated("a b\\, ", 100'000);
    std::string folded = words;
    for (std::size_t place = 70; place < folded.size(); place += 73)
        folded.insert(place, "\r\n ");
    const auto textOf = [](const std::string& description) {
        const auto calendar = IcsCalendar::parse(file(event("DTSTART:20261123T090000Z\nDESCRIPTION:" + description)));
        return calendar ? calendar->text() : "unreadable";
    };
    EXPECT_EQ(textOf(words), textOf(folded));
    EXPECT_GT(textOf(words).size(), words.size());
}

TEST(IcsCalendar, refusesWhatIsNoCalendar)
{
    std::string nested;
    for (int depth = 0; depth < 2000; ++depth)
        nested = "begin:VEVENT\n" + nested + "END:VEVENT\n";
    nested = file(nested);
    // The parser closes with whatever begins with END and a colon, and takes lines apart that are folded.
    const std::string hidden = file(repeated("BE\n GIN:VEVENT\nENDING:1\n", 2'000) + repeated("END:VEVENT\n", 2'000));
    const std::string many = file(event("DTSTART:20261123T090000Z\n" + repeated("DTEND:x\n", 100'000)));
    const std::string alarms = file(event(repeated("BEGIN:VALARM\nX-A:1\nEND:VALARM\n", 70'000)));
    for (const std::string& text :
        {hidden, many, alarms, std::string(), std::string("hello"), std::string("BEGIN:VCARD\nEND:VCARD\n"), nested,
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
