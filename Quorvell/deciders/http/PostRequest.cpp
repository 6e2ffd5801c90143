// SPDX-License-Identifier: MIT
#include "Quorvell/deciders/http/PostRequest.h"

#include "QuorvellCore/text/LowerCase.h"

#include <algorithm>
#include <string_view>

namespace quorvell {

namespace {

using std::chrono::milliseconds;

bool isVisible(char letter)
{
    return letter > ' ' && letter <= '~';
}

bool isName(std::string_view text)
{
    return !text.empty()
        && std::all_of(text.begin(), text.end(), [](char letter) { return isVisible(letter) && letter != ':'; });
}

bool isValue(std::string_view text)
{
    return !text.empty() && isVisible(text.front()) && isVisible(text.back())
        && std::all_of(text.begin(), text.end(), [](char letter) { return isVisible(letter) || letter == ' '; });
}

bool has(const PostRequest::Headers& headers, std::string_view name)
{
    return std::any_of(
        headers.begin(), headers.end(), [name](const auto& header) { return lowerCased(header.first) == name; });
}

} // namespace

std::optional<PostRequest> PostRequest::create(
    const Headers& headers, const Json& body, milliseconds timeout, std::chrono::steady_clock::time_point now)
{
    PostRequest request;
    // The last one: without it a large body would wait for a leave that many servers never give.
    request.headers = {"User-Agent: Quorvell", "Expect:"};
    for (const char* name : {"content-type", "accept"})
        if (!has(headers, name))
            request.headers.push_back(std::string(name) + ": application/json");
    for (const auto& [name, value] : headers) {
        if (!isName(name) || !isValue(value))
            return std::nullopt;
        request.headers.push_back(name + ": " + value);
        request.secrets.words.push_back(value.substr(value.rfind(' ') + 1)); // "Bearer KEY"
    }
    request.body = dumpJson(body);
    request.deadline = now + std::clamp(timeout, milliseconds::zero(), longestTimeout);
    return request;
}

milliseconds PostRequest::timeLeft(std::chrono::steady_clock::time_point now) const
{
    return std::max(milliseconds::zero(), std::chrono::ceil<milliseconds>(deadline - now));
}

} // namespace quorvell
