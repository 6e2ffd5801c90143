// SPDX-License-Identifier: MIT
// Asks hosted deciders over HTTP.
#pragma once

#include "Quorvell/preferences/WebProxy.h"
#include "QuorvellCore/automation/engine/http/DecisionHTTP.h"

#include <cstddef>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace quorvell {

class CurlLine;

/// Any number of threads may ask at once; each waits for its own answer. For each host one connection is kept for the
/// next request, so that a step does not begin with an exchange of certificates.
class CurlDecisionHTTP : public DecisionHTTP {
public:
    static constexpr std::size_t mostKept = 4; ///< Connections. There are two deciders.

    explicit CurlDecisionHTTP(WebProxy proxy = {});
    ~CurlDecisionHTTP() override;

    /// https only, but for this very computer. Redirections are not followed. No key stands in what an error says.
    std::variant<Json, DecisionError> post(const std::string& url,
        const std::vector<std::pair<std::string, std::string>>& headers, const Json& body,
        std::chrono::milliseconds timeout, std::stop_token stop) override;

private:
    std::unique_ptr<CurlLine> takeLine(const std::string& origin);
    void keep(const std::string& origin, std::unique_ptr<CurlLine> line);

    const WebProxy m_proxy;
    std::mutex m_mutex;
    std::map<std::string, std::unique_ptr<CurlLine>> m_kept; ///< By origin; guarded by the mutex.
};

} // namespace quorvell
