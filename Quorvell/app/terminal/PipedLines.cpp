// SPDX-License-Identifier: MIT
#include "Quorvell/app/terminal/PipedLines.h"

#include "QuorvellCore/text/Characters.h"

#include <QTimer>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <iostream>
#include <utility>

namespace quorvell {

PipedLines::PipedLines(int descriptor, std::function<void(const std::string& sentence)> tooLong, std::string prompt)
    : m_descriptor(descriptor)
    , m_tooLong(std::move(tooLong))
    , m_prompt(std::move(prompt))
    , m_notifier(std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read))
{
    m_notifier->setEnabled(false);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, &m_context, [this] { readMore(); });
}

void PipedLines::readNext(Report report)
{
    m_report = std::move(report);
    std::cout << m_prompt << std::flush;
    // Later, so that a caller who asks again from its report does not wind itself up.
    QTimer::singleShot(0, &m_context, [this] {
        if (m_report && !reportBuffered())
            m_notifier->setEnabled(true);
    });
}

void PipedLines::aside(const std::function<void()>& print)
{
    if (!m_report || m_prompt.empty())
        return print();
    std::cout << "\n";
    print();
    std::cout << m_prompt << std::flush;
}

void PipedLines::readMore()
{
    std::array<char, 4096> bytes;
    const auto count = read(m_descriptor, bytes.data(), bytes.size());
    if (count < 0 && (errno == EINTR || errno == EAGAIN))
        return;
    if (count <= 0)
        m_hasEnded = true;
    else
        m_buffer.append(bytes.data(), static_cast<std::size_t>(count));
    reportBuffered();
}

/// True when a line, or the end, was there to report.
bool PipedLines::reportBuffered()
{
    const auto end = m_buffer.find('\n');
    if (end != std::string::npos) {
        const std::optional line(m_buffer.substr(0, end));
        m_buffer.erase(0, end + 1);
        if (std::exchange(m_isSkipping, false))
            return reportBuffered();
        reportLine(line);
        return true;
    }
    if (m_buffer.size() > longestLine && !std::exchange(m_isSkipping, true))
        m_tooLong(
            "A line is longer than " + std::to_string(longestLine) + " bytes and was left out. Send it in parts.");
    if (m_isSkipping)
        m_buffer.clear();
    if (!m_hasEnded)
        return false;
    reportLine(m_buffer.empty() ? std::nullopt : std::optional(std::exchange(m_buffer, {})));
    return true;
}

void PipedLines::reportLine(const std::optional<std::string>& line)
{
    m_notifier->setEnabled(false);
    std::optional<TypedMessage> message;
    if (line)
        message = TypedMessage{{{repairUtf8(*line)}}, false};
    std::exchange(m_report, nullptr)(std::move(message));
}

} // namespace quorvell
