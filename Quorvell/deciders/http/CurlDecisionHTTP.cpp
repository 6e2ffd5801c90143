// SPDX-License-Identifier: MIT
#include "Quorvell/deciders/http/CurlDecisionHTTP.h"

#include "Quorvell/deciders/http/CurlLine.h"

namespace quorvell {

namespace {

using Kind = DecisionError::Kind;

} // namespace

CurlDecisionHTTP::CurlDecisionHTTP(WebProxy proxy)
    : m_proxy(std::move(proxy))
{
}

CurlDecisionHTTP::~CurlDecisionHTTP() = default;

std::variant<Json, DecisionError> CurlDecisionHTTP::post(const std::string& url,
    const std::vector<std::pair<std::string, std::string>>& headers, const Json& body,
    std::chrono::milliseconds timeout, std::stop_token stop)
{
    const auto address = CurlAddress::parse(url);
    if (!address)
        return DecisionError{Kind::rejected, 0,
            "The address of the decider is none that is asked: it must begin with https://, or with http:// for this "
            "computer."};
    const auto request = PostRequest::create(headers, body, timeout, std::chrono::steady_clock::now());
    if (!request)
        return DecisionError{Kind::refused, 0,
            "The key for " + address->host()
                + " holds characters that no key has, such as a line break. Set it again."};
    auto line = takeLine(address->origin());
    const PostReply reply = line->exchange(*address, *request, m_proxy, std::move(stop));
    keep(address->origin(), std::move(line));
    return reply.judged(address->host(), timeout, request->secrets);
}

std::unique_ptr<CurlLine> CurlDecisionHTTP::takeLine(const std::string& origin)
{
    const std::lock_guard lock(m_mutex);
    const auto kept = m_kept.extract(origin);
    return kept ? std::move(kept.mapped()) : std::make_unique<CurlLine>();
}

void CurlDecisionHTTP::keep(const std::string& origin, std::unique_ptr<CurlLine> line)
{
    const std::lock_guard lock(m_mutex);
    if (m_kept.size() < mostKept)
        m_kept.try_emplace(origin, std::move(line));
}

} // namespace quorvell
