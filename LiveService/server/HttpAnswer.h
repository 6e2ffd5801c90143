// SPDX-License-Identifier: MIT
// The way back to whoever posted a request.
#pragma once

#include "Http/HttpResponse.h"

#include <QPointer>
#include <QTcpSocket>

#include <string_view>

namespace quorvell {

/// The connection ends with the answer; a client that has gone hears nothing. Lives on the main thread.
class HttpAnswer {
public:
    explicit HttpAnswer(QTcpSocket* socket)
        : m_socket(socket)
    {
    }

    void answer(const HttpResponse& response) const;
    /// An event stream instead: first its head, then texts, then its end.
    void send(std::string_view text) const;
    void finish() const;
    void abort() const;
    bool isGone() const { return !m_socket; }

private:
    QPointer<QTcpSocket> m_socket; ///< Deletes itself when the connection is gone.
};

} // namespace quorvell
