// SPDX-License-Identifier: MIT
// A request to a service behind a line, whose answer ends with its length or with the connection.
#pragma once

#include "Http/HttpAnswerHead.h"
#include "Quorvell/connections/web/ServiceStream.h"
#include "Quorvell/connections/web/WebExchange.h"

#include <QObject>
#include <QTimer>

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

/// Answers come whole or as they are made, never in the pieces of a transfer encoding: the service is ours.
class LineExchange : public WebExchange {
public:
    LineExchange(const std::shared_ptr<ServiceLine>& line, const WebRequest& request, Reports reports, Limits limits);
    LineExchange(const LineExchange&) = delete;
    LineExchange& operator=(const LineExchange&) = delete;

private:
    void ask(const WebRequest& request);
    void bytesArrived(std::string_view bytes);
    void headArrived(std::string_view bytes);
    void bodyArrived(std::string_view bytes);
    void streamClosed(const ConnectionFailure& failure);
    bool isWhole() const;
    void finish();
    void fail(const ConnectionFailure& failure);

    Reports m_reports;
    Limits m_limits;
    std::string m_answer; ///< While its head is not whole.
    std::optional<HttpAnswerHead> m_head;
    std::size_t m_bytes = 0; ///< Of the body, so far.
    std::string m_refusal; ///< The body of an answer that is no success.
    bool m_isOver = false;
    QTimer m_patience;
    ServiceStream m_stream;
    QObject m_context; ///< Goes first.
};

} // namespace quorvell
