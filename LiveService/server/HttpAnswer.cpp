// SPDX-License-Identifier: MIT
#include "LiveService/server/HttpAnswer.h"

namespace quorvell {

void HttpAnswer::answer(const HttpResponse& response) const
{
    send(response.bytes());
    finish();
}

void HttpAnswer::send(std::string_view text) const
{
    if (m_socket)
        m_socket->write(text.data(), static_cast<qint64>(text.size()));
}

void HttpAnswer::finish() const
{
    if (m_socket)
        m_socket->disconnectFromHost();
}

void HttpAnswer::abort() const
{
    if (!m_socket)
        return;
    m_socket->flush();
    m_socket->abort();
}

} // namespace quorvell
