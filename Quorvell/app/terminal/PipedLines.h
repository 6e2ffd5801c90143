// SPDX-License-Identifier: MIT
// Lines of a pipe, a file, or a terminal that cannot move its cursor.
#pragma once

#include "Quorvell/app/terminal/LineSource.h"

#include <QObject>
#include <QSocketNotifier>

#include <memory>
#include <optional>
#include <string>

namespace quorvell {

/// Takes no more in than it needs for the next line.
class PipedLines : public LineSource {
public:
    static constexpr std::size_t longestLine = 64 * 1024; ///< Bytes.

    /// `tooLong` is told of each line that was left out because of its length.
    PipedLines(int descriptor, std::function<void(const std::string& sentence)> tooLong, std::string prompt = {});

    void readNext(Report report) override;
    void aside(const std::function<void()>& print) override;

private:
    void readMore();
    bool reportBuffered();
    void reportLine(const std::optional<std::string>& line);

    int m_descriptor;
    std::function<void(const std::string&)> m_tooLong;
    std::string m_prompt; ///< Shows a person that a line is waited for.
    Report m_report;
    std::string m_buffer;
    bool m_isSkipping = false; ///< The rest of a line that is too long.
    bool m_hasEnded = false;
    std::unique_ptr<QSocketNotifier> m_notifier;
    QObject m_context;
};

} // namespace quorvell
