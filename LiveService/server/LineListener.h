// SPDX-License-Identifier: MIT
// Takes the connections that an assistant hands over with the line to this service.
#pragma once

#include <QSocketNotifier>
#include <QTcpSocket>

#include <functional>
#include <memory>

namespace quorvell {

/// The line is a socket of which only the assistant has the other end. Each message on it carries one connected socket;
/// its bytes mean nothing. Main thread.
class LineListener {
public:
    struct Reports {
        std::function<void(std::unique_ptr<QTcpSocket>)> arrived;
        std::function<void()> ended; ///< The assistant is gone; may destroy the listener.
    };

    /// The descriptor stays the caller's.
    LineListener(int descriptor, Reports reports);

private:
    void read();
    void take(int descriptor);

    int m_descriptor;
    Reports m_reports;
    QSocketNotifier m_notifier;
};

} // namespace quorvell
