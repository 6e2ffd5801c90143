// SPDX-License-Identifier: MIT
#include "Http/HttpRequest.h"

#include "QuorvellCore/text/LowerCase.h"

#include <charconv>
#include <optional>

namespace quorvell {

namespace {

HttpReading refused(int status, const char* reason)
{
    return {.kind = HttpReading::Kind::refused, .status = status, .reason = reason};
}

/// Sets the length of the body; what is wrong with it, or nothing.
std::optional<HttpReading> readLength(HttpRequest& request)
{
    if (!request.field("transfer-encoding").empty())
        return refused(411, "Send the body whole, with its length in \"Content-Length\".");
    const std::string_view text = request.field("content-length");
    if (text.empty())
        return std::nullopt;
    const auto [end, problem] = std::from_chars(text.data(), text.data() + text.size(), request.bodyBytes);
    if (problem == std::errc::invalid_argument || end != text.data() + text.size())
        return refused(400, "\"Content-Length\" is no number.");
    if (problem != std::errc() || request.bodyBytes > HttpRequest::longestBody)
        return refused(413, "The body is too long; 16 MiB are taken.");
    return std::nullopt;
}

HttpReading readHead(std::string_view head)
{
    HttpRequest request{.headBytes = head.size() + 2};
    const std::string_view line = http_fields::takeLine(head);
    const std::size_t first = line.find(' ');
    const std::size_t second = first == std::string_view::npos ? first : line.find(' ', first + 1);
    auto fields = http_fields::read(head);
    if (second == std::string_view::npos || first == 0 || line.substr(second + 1) != "HTTP/1.1" || !fields)
        return refused(400, "This is no HTTP/1.1 request.");
    request.method = line.substr(0, first);
    request.target = line.substr(first + 1, second - first - 1);
    request.fields = std::move(*fields);
    if (auto problem = readLength(request))
        return std::move(*problem);
    return {.kind = HttpReading::Kind::whole, .request = std::move(request)};
}

} // namespace

int HttpRequest::upgradeProblem() const
{
    if (!fieldHas("upgrade", "websocket") || !fieldHas("connection", "upgrade") || field("sec-websocket-key").empty())
        return 400;
    return field("sec-websocket-version") == "13" ? 0 : 426;
}

std::string_view HttpRequest::bearer() const
{
    constexpr std::string_view scheme = "bearer ";
    const std::string_view value = field("authorization");
    if (value.size() <= scheme.size() || asciiLowerCased(value.substr(0, scheme.size())) != scheme)
        return {};
    return http_fields::withoutBlanks(value.substr(scheme.size()));
}

HttpReading HttpReading::of(std::string_view bytes)
{
    const std::size_t end = bytes.substr(0, HttpRequest::longestHead + 4).find("\r\n\r\n");
    if (end == std::string_view::npos && bytes.size() < HttpRequest::longestHead)
        return {};
    if (end == std::string_view::npos || end > HttpRequest::longestHead)
        return refused(431, "The request's head is too long.");
    return readHead(bytes.substr(0, end + 2));
}

bool isSameSecret(std::string_view given, std::string_view expected)
{
    unsigned difference = given.size() == expected.size() ? 0 : 1;
    for (std::size_t index = 0; index < given.size(); ++index) {
        const char other = expected.empty() ? '\0' : expected[index % expected.size()];
        difference |= static_cast<unsigned char>(given[index]) ^ static_cast<unsigned char>(other);
    }
    return difference == 0 && !expected.empty();
}

} // namespace quorvell
