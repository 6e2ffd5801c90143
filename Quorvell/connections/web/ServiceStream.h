// SPDX-License-Identifier: MIT
// A stream of bytes to a service: over the network, encrypted or not, or over a line to our own child. Every way to end
// comes out as one ConnectionFailure.
#pragma once

#include "Quorvell/connections/access/ServiceLine.h"
#include "Quorvell/connections/life/ConnectionFailure.h"
#include "QuorvellCore/live/wire/transport/WebRequest.h"

#include <QByteArray>
#include <QObject>
#include <QSslSocket>
#include <QTcpSocket>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace quorvell {

/// The server's certificate is always verified. However much a service sends, a turn of the event loop brings no more
/// than `mostAtOnce` of it, so that everybody else has theirs; the rest waits in the network, and with the service.
/// Main thread; used once.
class ServiceStream {
public:
    /// Each may destroy the stream.
    struct Reports {
        std::function<void()> opened;
        std::function<void(std::string_view bytes)> received;
        /// Once: why it could not be opened, or `Kind::closed`. What came before was reported before.
        std::function<void(const ConnectionFailure& failure)> closed;
    };

    static constexpr qint64 mostAtOnce = 16 * 1024; ///< Bytes; twice that where a record of TLS comes on top.

    explicit ServiceStream(Reports reports);
    ~ServiceStream();
    ServiceStream(const ServiceStream&) = delete;
    ServiceStream& operator=(const ServiceStream&) = delete;

    /// To where the request goes; `line` is null over the network. Nothing is reported from inside this call.
    void open(const WebRequest& request, const std::shared_ptr<ServiceLine>& line);
    void write(std::string_view bytes);
    /// Accepted and not yet taken by the network.
    std::int64_t unsentBytes() const;
    /// What was written is handed to the network where it takes it; nothing is reported any more.
    void end();

    /// The head of the request as it goes over the stream, with fields that its protocol needs.
    static QByteArray headOf(const WebRequest& request, const QByteArray& furtherFields);

private:
    void connectSocket();
    void openLine(ServiceLine& line);
    void opened();
    bool read();
    template <typename Report, typename... Values> bool tell(Report report, Values... values);
    void failed(QAbstractSocket::SocketError error);
    ConnectionFailure failureOf(QAbstractSocket::SocketError error) const;
    void reportEnd(const ConnectionFailure& failure);

    Reports m_reports;
    bool m_isOpen = false;
    bool m_hasEnded = false;
    bool m_isTelling = false; ///< From inside the socket, which must live until it returns.
    std::string m_untrustedBecause;
    std::unique_ptr<QTcpSocket> m_socket; ///< Null until it is opened.
    QSslSocket* m_secure = nullptr; ///< The same where it is encrypted: what is encrypted counts as written there.
    QObject m_context; ///< Receives the socket's signals; goes first.
};

} // namespace quorvell
