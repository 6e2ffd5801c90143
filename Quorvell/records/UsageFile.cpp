// SPDX-License-Identifier: MIT
#include "Quorvell/records/UsageFile.h"

#include "Quorvell/session/hearing/MicrophoneStream.h"
#include "Quorvell/settings/PrivateFile.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <utility>

namespace quorvell {

namespace {

double microphoneSeconds(std::int64_t chunks)
{
    return static_cast<double>(chunks) * std::chrono::duration<double>(MicrophoneStream::chunkLength).count();
}

} // namespace

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
    const SessionUsage before = std::exchange(m_seen, usage);
    UsageBook::Day used;
    used.billedSeconds = std::max(0.0, usage.billedSeconds - before.billedSeconds);
    used.voiceSeconds = std::max(0.0, usage.voiceSeconds - before.voiceSeconds);
    used.microphoneSeconds =
        microphoneSeconds(std::max<std::int64_t>(0, usage.microphoneChunks - before.microphoneChunks));
    used.tokens = std::max<std::int64_t>(0, usage.tokens - before.tokens);
    used.images = std::max<std::int64_t>(0, usage.imagesSent - before.imagesSent);
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
    m_stored = book();
    m_unwritten.days.clear();
    PrivateFile::replace(m_path, m_stored.text()); // Else this program alone counts on.
}

} // namespace quorvell
