// SPDX-License-Identifier: MIT
// Catches clock changes of a zone missed, and bytes taken for a zone that are none.
#include "QuorvellCore/reminders/calendar/ZoneTable.h"

#include "QuorvellCore/reminders/calendar/Calendar.h"

#include <gtest/gtest.h>

#include <tuple>

namespace quorvell {
namespace {

std::string number(std::int64_t value, int bytes)
{
    std::string text;
    for (int shift = 8 * (bytes - 1); shift >= 0; shift -= 8)
        text += static_cast<char>(value >> shift & 0xff);
    return text;
}

std::string header(int changes, int types)
{
    return "TZif2" + std::string(15 + 12, '\0') + number(changes, 4) + number(types, 4) + number(1, 4);
}

/// A zone of UTC+1 that had UTC+2 from 1000000000 to 1100000000, with a rule for the years after that.
std::string fileWith(const std::string& years)
{
    const std::string types = number(3600, 4) + number(0, 2) + number(7200, 4) + number(0x100, 2);
    return header(0, 1) + number(0, 6) + std::string(1, '\0') + header(2, 2) + number(1000000000, 8)
        + number(1100000000, 8) + std::string("\1\0", 2) + types + std::string(1, '\0') + "\n" + years + "\n";
}

TEST(ZoneTable, followsTheRuleForTheYearsToCome)
{
    const std::tuple<const char*, const char*, const char*> rows[] = {
        {"", "2001-09-09T04:00:00Z", "2001-09-09T02:00:00.000Z"},
        {"", "2030-07-01T12:00:00Z", "2030-07-01T11:00:00.000Z"},
        {"CET-1", "2030-07-01T12:00:00Z", "2030-07-01T11:00:00.000Z"},
        {"CET-1CEST,M3.5.0,M10.5.0/3", "2030-07-01T12:00:00Z", "2030-07-01T10:00:00.000Z"},
        {"CET-1CEST,M3.5.0,M10.5.0/3", "2030-03-31T02:30:00Z", "2030-03-31T01:30:00.000Z"}, // Skipped.
        {"CET-1CEST,M3.5.0,M10.5.0/3", "2030-10-27T02:30:00Z", "2030-10-27T00:30:00.000Z"}, // Twice: the first.
        {"CET-1CEST,M3.5.0,M10.5.0/3", "2399-07-01T12:00:00Z", "2399-07-01T10:00:00.000Z"},
        {"<+1030>-10:30<+11>-11,M10.1.0,M4.1.0", "2030-01-01T12:00:00Z", "2030-01-01T01:00:00.000Z"}, // The south.
        {"<+1030>-10:30<+11>-11,M10.1.0,M4.1.0", "2030-07-01T12:00:00Z", "2030-07-01T01:30:00.000Z"},
        {"IST-1GMT0,M10.5.0,M3.5.0/1", "2030-01-01T12:00:00Z", "2030-01-01T12:00:00.000Z"}, // Back in winter.
        {"EET-2EEST,M4.5.5/0,M10.5.4/24", "2030-04-26T00:30:00Z", "2030-04-25T22:30:00.000Z"},
        {"XXX3YYY,J60/0,J61/0", "2028-03-01T12:00:00Z", "2028-03-01T14:00:00.000Z"}, // 1 March in any year.
        {"XXX3YYY,59/0,60/0", "2028-02-29T12:00:00Z", "2028-02-29T14:00:00.000Z"}, // The 60th day.
        {"XXX3YYY,0/0,J365/25", "2030-12-31T23:30:00Z", "2031-01-01T01:30:00.000Z"}, // Always.
    };
    for (const auto& [years, local, instant] : rows) {
        SCOPED_TRACE(std::string(years) + " " + local);
        const auto calendar = Calendar::create("Zone", "en_US", fileWith(years));
        ASSERT_TRUE(calendar);
        const auto clock = parseIsoText(local)->time_since_epoch();
        const LocalDay day(std::chrono::floor<std::chrono::days>(clock));
        EXPECT_EQ(isoText(calendar->instant(day, clock - day.time_since_epoch())), instant);
        EXPECT_EQ(calendar->day(*parseIsoText(instant)), day);
    }
}

TEST(ZoneTable, takesNoOtherBytes)
{
    const std::string whole = fileWith("CET-1CEST,M3.5.0,M10.5.0/3");
    ASSERT_TRUE(ZoneTable::parse(whole));
    for (std::size_t size = 0; size < whole.size(); ++size)
        EXPECT_FALSE(ZoneTable::parse(whole.substr(0, size))) << size;
    for (std::size_t index = 0; index < whole.size(); ++index)
        for (const char byte : {'\0', '\1', '\x7f', '\xff'}) {
            std::string changed = whole;
            changed[index] = byte;
            const auto table = ZoneTable::parse(changed); // whatever it is, it can be asked
            (void)table.value_or(ZoneTable{}).offsetAtLocal(std::chrono::local_seconds::max());
        }
    for (const char* years : {"C-1", "CET", "CET-1CEST", "CET-1CEST,M3.5.0", "CET-1CEST,M13.5.0,M10.5.0", "CET-1 ",
             "CET-1CEST,M3.0.0,M10.5.0", "CET-1CEST,J0,J1", "CET-200", "<+1-1", "CET-1CEST,M3.5.0,M10.5.0/3x"})
        EXPECT_FALSE(ZoneTable::parse(fileWith(years))) << years;
    EXPECT_FALSE(ZoneTable::parse(whole + std::string(ZoneTable::maximumBytes, '\n')));
    EXPECT_EQ(Calendar::create("Nowhere", "en_US", "no such file"), std::nullopt);
}

} // namespace
} // namespace quorvell
