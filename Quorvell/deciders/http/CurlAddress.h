// SPDX-License-Identifier: MIT
// Where a request goes, read by the very library that will go there: two readings of one address would let a request
// past the check of the one to where the other leads.
#pragma once

#include <curl/curl.h>

#include <memory>
#include <optional>
#include <string>

namespace quorvell {

class CurlAddress {
public:
    /// https, and http to this very computer. Nothing for anything else, and where a name to log in with stands in it.
    static std::optional<CurlAddress> parse(const std::string& url);

    const std::string& host() const { return m_host; } ///< An IPv6 address in its brackets.
    const std::string& origin() const { return m_origin; } ///< What one connection serves: scheme, host and port.
    bool isThisComputer() const;
    CURLU* handle() const { return m_url.get(); }

private:
    struct Release {
        void operator()(CURLU* url) const { curl_url_cleanup(url); }
    };

    std::unique_ptr<CURLU, Release> m_url;
    std::string m_host;
    std::string m_origin;
};

} // namespace quorvell
