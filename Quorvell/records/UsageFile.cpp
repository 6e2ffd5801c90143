// SPDX-License-Identifier: MIT
#include "Quorvell/records/UsageFile.h"

#include "Quorvell/settings/PrivateFile.h"

#include <array>
#include <cstdio>
#include <utility>

namespace quorvell {

UsageFile::UsageFile(std::string path, Scheduler& scheduler, Calendar calendar)
    : m_path(std::move(path))
    , m_scheduler(scheduler)
    , m_calendar(std::move(calendar))
    , m_stored(UsageBook::fromText(PrivateFile::readWhole(m_path, longestFile)))
{
}

UsageFile::~UsageFile()
{
    write();
}

double UsageFile::secondsToday() const
{
    const std::string day = today();
    return m_stored.sumOf(day).spokenSeconds + m_unwritten.sumOf(day).spokenSeconds;
}

void UsageFile::addSeconds(double seconds)
{
    if (seconds > 0)
        note({seconds});
}

/// The session reports sums; only what is new in them is booked.
void UsageFile::usageChanged(const SessionUsage& usage)
{
    const auto used = UsageBook::Day::of(usage, std::exchange(m_seen, usage));
    if (used != UsageBook::Day{})
        note(used);
}

void UsageFile::conversationEnded(const SessionEnd&)
{
    m_seen = {};
    write();
}

UsageBook UsageFile::book() const
{
    UsageBook book = m_stored;
    for (const auto& [day, used] : m_unwritten.days)
        book.add(day, used);
    return book;
}

std::string UsageFile::today() const
{
    const CalendarParts parts = m_calendar.parts(m_scheduler.wallClock());
    std::array<char, 40> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02d-%02d", parts.year, parts.month, parts.day);
    return text.data();
}

void UsageFile::note(const UsageBook::Day& used)
{
    m_unwritten.add(today(), used);
    if (!m_nextWrite.isSet())
        m_nextWrite = m_scheduler.after(betweenWrites, [this] { write(); });
}

void UsageFile::write()
{
    m_nextWrite.cancel();
    if (m_unwritten.days.empty())
        return;
    m_stored = UsageBook::fromText(PrivateFile::readWhole(m_path, longestFile));
    UsageBook whole = book();
    if (!PrivateFile::replace(m_path, whole.text()))
        return; // This program counts on by itself; the next write tries again.
    m_stored = std::move(whole);
    m_unwritten.days.clear();
}

} // namespace quorvell
