// SPDX-License-Identifier: MIT
// Accepts connections and hands each on at once, before any encryption is agreed on.
#pragma once

#include <QSslConfiguration>
#include <QTcpServer>

#include <functional>
#include <optional>

namespace quorvell {

/// Nothing is queued here: the library's own listeners stop accepting, and for good, once as many connections as they
/// keep wait for an agreement on encryption that never comes. Main thread.
class DoorListener : public QTcpServer {
public:
    using Arrived = std::function<void(QTcpSocket*)>; ///< The socket is a child of the listener.

    DoorListener(std::optional<QSslConfiguration> tls, Arrived arrived);

protected:
    void incomingConnection(qintptr descriptor) override;

private:
    std::optional<QSslConfiguration> m_tls;
    Arrived m_arrived;
};

} // namespace quorvell
