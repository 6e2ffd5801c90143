// SPDX-License-Identifier: MIT
#include "Quorvell/connections/web/LineExchange.h"

#include <QPointer>

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

using Kind = ConnectionFailure::Kind;

constexpr int moreThanAllowed = 1009;

bool isSuccess(const HttpAnswerHead& head)
{
    return head.status >= 200 && head.status <= 299;
}

} // namespace

LineExchange::LineExchange(
    const std::shared_ptr<ServiceLine>& line, const WebRequest& request, Reports reports, Limits limits)
    : m_reports(std::move(reports))
    , m_limits(limits)
    , m_stream({[this, request] { ask(request); }, [this](std::string_view bytes) { bytesArrived(bytes); },
          [this](const ConnectionFailure& failure) { streamClosed(failure); }})
{
    m_patience.setSingleShot(true);
    QObject::connect(&m_patience, &QTimer::timeout, &m_context,
        [this] { fail({m_bytes == 0 ? Kind::openedTooSlowly : Kind::wentSilent}); });
    m_patience.start(m_limits.toAnswer);
    m_stream.open(request, line);
}

void LineExchange::ask(const WebRequest& request)
{
    const QByteArray head = ServiceStream::headOf(request,
        "Connection: close\r\nContent-Length: " + QByteArray::number(static_cast<qulonglong>(request.body.size()))
            + "\r\n");
    m_stream.write({head.constData(), static_cast<std::size_t>(head.size())});
    m_stream.write(request.body);
}

void LineExchange::bytesArrived(std::string_view bytes)
{
    m_patience.start(m_limits.silence);
    if (m_head)
        bodyArrived(bytes);
    else
        headArrived(bytes);
}

void LineExchange::headArrived(std::string_view bytes)
{
    m_answer += bytes;
    auto reading = HttpAnswerReading::of(m_answer);
    if (reading.kind == HttpAnswerReading::Kind::incomplete)
        return;
    if (reading.kind == HttpAnswerReading::Kind::notUnderstood)
        return fail({Kind::closed, LiveClosure::abnormal, "the answer cannot be read"});
    m_head = std::move(reading.head);
    const std::string body = std::exchange(m_answer, {}).substr(m_head->headBytes);
    bodyArrived(body);
}

void LineExchange::bodyArrived(std::string_view bytes)
{
    m_bytes += bytes.size();
    if (m_bytes > m_limits.bytes)
        return fail({Kind::closed, moreThanAllowed});
    if (!isSuccess(*m_head)) {
        m_refusal.append(bytes.substr(0, largestRefusal - m_refusal.size()));
    } else if (m_reports.received && !bytes.empty()) {
        const QPointer<QObject> isAlive(&m_context);
        const auto received = m_reports.received;
        received(bytes);
        if (!isAlive)
            return;
    }
    if (isWhole())
        finish();
}

void LineExchange::streamClosed(const ConnectionFailure& failure)
{
    // What has no length ends with the connection.
    if (m_head && !m_head->bodyBytes && failure.kind == Kind::closed)
        finish();
    else
        fail(failure);
}

bool LineExchange::isWhole() const
{
    return m_head->bodyBytes && m_bytes >= *m_head->bodyBytes;
}

void LineExchange::finish()
{
    if (!isSuccess(*m_head))
        return fail(ConnectionFailure::refusal(m_head->status, m_refusal));
    if (std::exchange(m_isOver, true))
        return;
    m_patience.stop();
    m_stream.end();
    if (const auto ended = m_reports.ended)
        ended();
}

void LineExchange::fail(const ConnectionFailure& failure)
{
    if (std::exchange(m_isOver, true))
        return;
    m_patience.stop();
    m_stream.end();
    if (const auto failed = m_reports.failed)
        failed(failure);
}

} // namespace quorvell
