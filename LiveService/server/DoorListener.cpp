// SPDX-License-Identifier: MIT
#include "LiveService/server/DoorListener.h"

#include <QSslSocket>
#include <QTimer>

#include <chrono>
#include <memory>
#include <utility>

namespace quorvell {

namespace {

constexpr std::chrono::milliseconds pauseWithoutDescriptors{1'000};
constexpr int backlog = 128; ///< Connections that the kernel keeps until they are accepted.

} // namespace

DoorListener::DoorListener(std::optional<QSslConfiguration> tls, Arrived arrived)
    : m_tls(std::move(tls))
    , m_arrived(std::move(arrived))
{
    setListenBacklogSize(backlog);
    // Out of descriptors, the library stops accepting and leaves it at that.
    connect(this, &QTcpServer::acceptError, this,
        [this] { QTimer::singleShot(pauseWithoutDescriptors, this, [this] { resumeAccepting(); }); });
}

void DoorListener::incomingConnection(qintptr descriptor)
{
    if (!m_tls) {
        auto socket = std::make_unique<QTcpSocket>(this);
        if (socket->setSocketDescriptor(descriptor))
            m_arrived(socket.release());
        return;
    }
    auto socket = std::make_unique<QSslSocket>(this);
    socket->setSslConfiguration(*m_tls);
    if (!socket->setSocketDescriptor(descriptor))
        return;
    socket->startServerEncryption();
    m_arrived(socket.release());
}

} // namespace quorvell
