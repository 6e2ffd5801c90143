// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/calendar/ZoneTable.h"

#include "QuorvellCore/reminders/calendar/ZoneRule.h"

#include <algorithm>
#include <array>

namespace quorvell {

namespace {

constexpr int lastYear = 2400;
constexpr std::int32_t longestOffset = 26 * 3600; ///< Seconds. No zone was ever further from UTC.

/// Numbers of the most significant byte first. Beyond the end it reads zeros and remembers it.
class ByteReader {
public:
    explicit ByteReader(std::string_view rest)
        : m_rest(rest)
    {
    }

    std::string_view take(std::size_t count)
    {
        m_isWhole = m_isWhole && count <= m_rest.size();
        const std::string_view taken = m_rest.substr(0, count);
        m_rest.remove_prefix(taken.size());
        return taken;
    }
    std::int64_t number(std::size_t size)
    {
        std::uint64_t value = 0;
        for (const char byte : take(size))
            value = value << 8 | static_cast<unsigned char>(byte);
        const std::uint64_t sign = std::uint64_t{1} << (size * 8 - 1);
        return static_cast<std::int64_t>((value ^ sign) - sign);
    }
    std::size_t count() { return static_cast<std::size_t>(static_cast<std::uint32_t>(number(4))); }
    std::string_view rest() const { return m_rest; }
    bool isWhole() const { return m_isWhole; }

private:
    std::string_view m_rest;
    bool m_isWhole = true;
};

/// How many of each follow a header.
struct Counts {
    std::size_t utcMarks = 0, standardMarks = 0, leapSeconds = 0, changes = 0, types = 0, letters = 0;

    std::size_t bytes(std::size_t timeSize) const
    {
        return changes * (timeSize + 1) + types * 6 + letters + leapSeconds * (timeSize + 4) + standardMarks + utcMarks;
    }
};

std::optional<Counts> readHeader(ByteReader& bytes)
{
    constexpr std::size_t unused = 15;
    const std::string_view mark = bytes.take(4);
    const std::string_view version = bytes.take(1);
    bytes.take(unused);
    Counts counts;
    for (std::size_t* count :
        {&counts.utcMarks, &counts.standardMarks, &counts.leapSeconds, &counts.changes, &counts.types, &counts.letters})
        *count = bytes.count();
    const bool isFine = bytes.isWhole() && mark == "TZif" && version >= "2" && counts.types > 0
        && counts.leapSeconds == 0 && counts.changes <= ZoneTable::maximumBytes && counts.types <= 256
        && counts.letters <= ZoneTable::maximumBytes;
    return isFine ? std::optional(counts) : std::nullopt;
}

std::optional<ZoneTable> readChanges(ByteReader& bytes, const Counts& counts)
{
    constexpr std::size_t timeSize = 8;
    std::vector<std::int64_t> times(counts.changes);
    for (std::int64_t& time : times)
        time = bytes.number(timeSize);
    const std::string_view types = bytes.take(counts.changes);
    std::vector<std::int32_t> offsets(counts.types);
    for (std::int32_t& offset : offsets) {
        offset = static_cast<std::int32_t>(bytes.number(4));
        bytes.take(2); // whether it is saving, and where its name is
        if (offset < -longestOffset || offset > longestOffset)
            return std::nullopt;
    }
    bytes.take(counts.letters + counts.standardMarks + counts.utcMarks);
    if (!bytes.isWhole() || !std::is_sorted(times.begin(), times.end()))
        return std::nullopt;
    ZoneTable table{offsets.front(), {}};
    std::int32_t before = table.first;
    for (std::size_t index = 0; index < times.size(); ++index) {
        const std::size_t type = static_cast<unsigned char>(types[index]);
        if (type >= offsets.size())
            return std::nullopt;
        table.changes.push_back({times[index], before, offsets[type]});
        before = offsets[type];
    }
    return table;
}

/// The years after the last change of the table.
void writeOut(const ZoneRule& rule, ZoneTable& table)
{
    using namespace std::chrono;
    if (!rule.start)
        return;
    const std::int64_t from = table.changes.empty() ? 0 : table.changes.back().at;
    std::int32_t before = table.changes.empty() ? table.first : table.changes.back().after;
    const auto clamped = sys_seconds(seconds(std::clamp<std::int64_t>(from, 0, 16'000'000'000)));
    const int firstYear = static_cast<int>(year_month_day(floor<days>(clamped)).year());
    for (int year = firstYear; year <= lastYear; ++year) {
        std::array<ZoneTable::Change, 2> both{
            {{ZoneRule::momentOf(*rule.start, year) - rule.standard, rule.standard, rule.saving},
                {ZoneRule::momentOf(rule.end, year) - rule.saving, rule.saving, rule.standard}}};
        if (both[1].at < both[0].at)
            std::swap(both[0], both[1]);
        for (const ZoneTable::Change& change : both) {
            const bool isNews =
                change.after != before && (table.changes.empty() || change.at >= table.changes.back().at);
            if (!isNews)
                continue;
            table.changes.push_back({change.at, before, change.after});
            before = change.after;
        }
    }
}

} // namespace

std::optional<ZoneTable> ZoneTable::parse(std::string_view file)
{
    ByteReader bytes(file.substr(0, maximumBytes));
    const auto old = readHeader(bytes);
    if (!old || file.size() > maximumBytes)
        return std::nullopt;
    constexpr std::size_t oldTimeSize = 4;
    bytes.take(old->bytes(oldTimeSize)); // the same again for programs with small numbers
    const auto counts = readHeader(bytes);
    auto table = counts ? readChanges(bytes, *counts) : std::nullopt;
    const std::string_view rest = bytes.rest();
    if (!table || !rest.starts_with('\n') || !rest.ends_with('\n') || rest.size() < 2)
        return std::nullopt;
    const std::string_view years = rest.substr(1, rest.size() - 2);
    const auto rule = ZoneRule::parse(years);
    if (!years.empty() && !rule)
        return std::nullopt;
    if (rule)
        writeOut(*rule, *table);
    return table;
}

std::chrono::seconds ZoneTable::offsetAt(std::chrono::sys_seconds instant) const
{
    const auto next = std::partition_point(changes.begin(), changes.end(),
        [time = instant.time_since_epoch().count()](const Change& change) { return change.at <= time; });
    return std::chrono::seconds(next == changes.begin() ? first : std::prev(next)->after);
}

std::chrono::seconds ZoneTable::offsetAtLocal(std::chrono::local_seconds time) const
{
    const auto next = std::partition_point(
        changes.begin(), changes.end(), [clock = time.time_since_epoch().count()](const Change& change) {
            return change.at <= clock - std::max(change.before, change.after);
        });
    return std::chrono::seconds(next == changes.begin() ? first : std::prev(next)->after);
}

} // namespace quorvell
