// SPDX-License-Identifier: MIT
#include "Quorvell/deciders/http/CurlLine.h"

#include "Quorvell/deciders/http/PipeSilence.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace quorvell {

namespace {

using End = PostReply::End;
using std::chrono::steady_clock;

/// The library asks for the number of bytes taken; any other number ends the exchange.
constexpr std::size_t noMore = 0;

std::size_t takeBody(char* bytes, std::size_t, std::size_t count, void* into)
{
    PostReply& reply = *static_cast<PostReply*>(into);
    const std::size_t taken = std::min(count, PostReply::longestBody - reply.body.size());
    reply.body.append(bytes, taken);
    reply.isTooLarge = reply.isTooLarge || taken < count;
    return reply.isTooLarge ? noMore : count;
}

/// Only counts: heads may follow each other without end before an answer begins.
struct HeadCount {
    PostReply& reply;
    std::size_t bytes = 0;
};

std::size_t countHead(char*, std::size_t, std::size_t count, void* into)
{
    HeadCount& head = *static_cast<HeadCount*>(into);
    head.bytes += count;
    head.reply.isTooLarge = head.reply.isTooLarge || head.bytes > PostReply::longestHead;
    return head.reply.isTooLarge ? noMore : count;
}

End endOf(CURLcode code)
{
    if (code == CURLE_OK || code == CURLE_WRITE_ERROR) // The latter is a bound of ours.
        return End::whole;
    if (code == CURLE_COULDNT_RESOLVE_HOST)
        return End::unknownName;
    if (code == CURLE_COULDNT_RESOLVE_PROXY || code == CURLE_PROXY)
        return End::noProxy;
    if (code == CURLE_PEER_FAILED_VERIFICATION || code == CURLE_SSL_CONNECT_ERROR || code == CURLE_SSL_CACERT_BADFILE)
        return End::notTrusted;
    if (code == CURLE_WEIRD_SERVER_REPLY || code == CURLE_UNSUPPORTED_PROTOCOL || code == CURLE_BAD_CONTENT_ENCODING)
        return End::notHTTP;
    const bool hadBegun =
        code == CURLE_GOT_NOTHING || code == CURLE_PARTIAL_FILE || code == CURLE_RECV_ERROR || code == CURLE_SEND_ERROR;
    return hadBegun ? End::brokenOff : End::noConnection;
}

CURL* readyHandle()
{
    // The library's own count of its users is guarded by it; it is never given back, as a thread of it may still run.
    static const CURLcode isReady = curl_global_init(CURL_GLOBAL_DEFAULT);
    return isReady == CURLE_OK ? curl_easy_init() : nullptr;
}

} // namespace

CurlLine::CurlLine()
    : m_easy(readyHandle())
{
    m_multi.reset(m_easy ? curl_multi_init() : nullptr);
    if (m_multi)
        curl_multi_setopt(m_multi.get(), CURLMOPT_MAXCONNECTS, 1L);
}

PostReply CurlLine::exchange(
    const CurlAddress& address, const PostRequest& request, const WebProxy& proxy, std::stop_token stop)
{
    PostReply reply;
    const HeaderList headers = headersOf(request);
    if (!m_multi || !headers) {
        reply.end = End::noConnection; // Without memory.
        return reply;
    }
    const PipeSilence silence;
    HeadCount head{reply};
    CURL* const easy = m_easy.get();
    prepare(address, request, proxy, reply);
    curl_easy_setopt(easy, CURLOPT_HTTPHEADER, headers.get());
    curl_easy_setopt(easy, CURLOPT_HEADERFUNCTION, countHead);
    curl_easy_setopt(easy, CURLOPT_HEADERDATA, &head);
    reply.end = run(request, stop);
    long status = 0;
    long proxyStatus = 0;
    curl_off_t wait = 0;
    curl_easy_getinfo(easy, CURLINFO_RESPONSE_CODE, &status);
    curl_easy_getinfo(easy, CURLINFO_HTTP_CONNECTCODE, &proxyStatus);
    curl_easy_getinfo(easy, CURLINFO_RETRY_AFTER, &wait);
    reply.status = static_cast<int>(status);
    if (reply.end == End::brokenOff && proxyStatus >= 300)
        reply.end = End::noProxy;
    if (wait > 0)
        reply.retryAfter = std::chrono::seconds(wait);
    curl_easy_reset(easy); // Keeps the connection, and nothing of the request.
    return reply;
}

CurlLine::HeaderList CurlLine::headersOf(const PostRequest& request)
{
    HeaderList list;
    for (const std::string& header : request.headers) {
        curl_slist* const longer = curl_slist_append(list.get(), header.c_str());
        if (longer == nullptr)
            return {};
        if (!list)
            list.reset(longer);
    }
    return list;
}

void CurlLine::prepare(const CurlAddress& address, const PostRequest& request, const WebProxy& proxy, PostReply& reply)
{
    CURL* const easy = m_easy.get();
    curl_easy_setopt(easy, CURLOPT_CURLU, address.handle());
    curl_easy_setopt(easy, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(request.body.size()));
    curl_easy_setopt(easy, CURLOPT_POSTFIELDS, request.body.data()); // Not copied.
    curl_easy_setopt(easy, CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1));
    curl_easy_setopt(easy, CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(connecting.count()));
    curl_easy_setopt(easy, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(easy, CURLOPT_QUICK_EXIT, 1L); // A name that is still looked up holds nobody up.
    curl_easy_setopt(easy, CURLOPT_WRITEFUNCTION, takeBody);
    curl_easy_setopt(easy, CURLOPT_WRITEDATA, &reply);
    protect(address, proxy);
}

/// Most of these are what the library does anyway; here they are promises.
void CurlLine::protect(const CurlAddress& address, const WebProxy& proxy)
{
    CURL* const easy = m_easy.get();
    curl_easy_setopt(easy, CURLOPT_PROTOCOLS_STR, address.isThisComputer() ? "http,https" : "https");
    curl_easy_setopt(easy, CURLOPT_FOLLOWLOCATION, 0L); // The key is for this host.
    curl_easy_setopt(easy, CURLOPT_SSL_VERIFYPEER, 1L);
    curl_easy_setopt(easy, CURLOPT_SSL_VERIFYHOST, 2L);
    curl_easy_setopt(easy, CURLOPT_SSLVERSION, static_cast<long>(CURL_SSLVERSION_TLSv1_2));
    curl_easy_setopt(easy, CURLOPT_NETRC, static_cast<long>(CURL_NETRC_IGNORED));
    curl_easy_setopt(easy, CURLOPT_HTTP09_ALLOWED, 0L);
    // What is not set is looked for in the environment.
    curl_easy_setopt(easy, CURLOPT_PROXY, address.isThisComputer() ? "" : proxy.address.c_str());
    curl_easy_setopt(easy, CURLOPT_NOPROXY, proxy.exceptions.c_str());
    curl_easy_setopt(easy, CURLOPT_HEADEROPT, static_cast<long>(CURLHEADER_SEPARATE)); // The proxy gets no key.
    curl_easy_setopt(easy, CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L);
}

End CurlLine::run(const PostRequest& request, const std::stop_token& stop)
{
    CURLM* const multi = m_multi.get();
    if (curl_multi_add_handle(multi, m_easy.get()) != CURLM_OK)
        return End::noConnection;
    End end = End::timedOut;
    {
        // What it wakes is the wait below, also when that has not begun yet.
        const std::stop_callback wake(stop, [multi] { curl_multi_wakeup(multi); });
        int running = 1;
        for (auto left = request.timeLeft(steady_clock::now()); left.count() > 0 && !stop.stop_requested();
             left = request.timeLeft(steady_clock::now())) {
            if (curl_multi_perform(multi, &running) != CURLM_OK || running == 0) {
                end = result();
                break;
            }
            curl_multi_poll(multi, nullptr, 0, static_cast<int>(left.count()), nullptr);
        }
    }
    curl_multi_remove_handle(multi, m_easy.get()); // An exchange that is not over takes its connection along.
    return end == End::timedOut && stop.stop_requested() ? End::cancelled : end;
}

End CurlLine::result() const
{
    int more = 0;
    while (const CURLMsg* const message = curl_multi_info_read(m_multi.get(), &more))
        if (message->msg == CURLMSG_DONE)
            return endOf(message->data.result);
    return End::noConnection;
}

} // namespace quorvell
