// SPDX-License-Identifier: MIT
// Carries one request after the other over one connection, which it keeps in between.
#pragma once

#include "Quorvell/deciders/http/CurlAddress.h"
#include "Quorvell/deciders/http/PostReply.h"
#include "Quorvell/deciders/http/PostRequest.h"
#include "Quorvell/preferences/WebProxy.h"

#include <curl/curl.h>

#include <chrono>
#include <memory>
#include <stop_token>

namespace quorvell {

/// Used by one thread at a time, whichever.
class CurlLine {
public:
    /// For the name, the connection and TLS together.
    static constexpr std::chrono::milliseconds connecting{5'000};

    CurlLine();

    /// Blocks until there is an answer, the request's time is over or `stop` is requested, which ends it within
    /// milliseconds: it waits for the network and for that, and looks at neither again and again.
    PostReply exchange(
        const CurlAddress& address, const PostRequest& request, const WebProxy& proxy, std::stop_token stop);

private:
    /// To the compiler the library's handles are of one type.
    template <auto release> struct Release {
        template <typename Handle> void operator()(Handle* handle) const { release(handle); }
    };
    using HeaderList = std::unique_ptr<curl_slist, Release<curl_slist_free_all>>;

    static HeaderList headersOf(const PostRequest& request);
    void prepare(const CurlAddress& address, const PostRequest& request, const WebProxy& proxy, PostReply& reply);
    void protect(const CurlAddress& address, const WebProxy& proxy);
    PostReply::End run(const PostRequest& request, const std::stop_token& stop);
    PostReply::End result() const;

    // The connection belongs to the multi handle; the easy handle is one request, and goes first.
    std::unique_ptr<CURLM, Release<curl_multi_cleanup>> m_multi;
    std::unique_ptr<CURL, Release<curl_easy_cleanup>> m_easy;
};

} // namespace quorvell
