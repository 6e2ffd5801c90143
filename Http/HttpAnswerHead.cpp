// SPDX-License-Identifier: MIT
#include "Http/HttpAnswerHead.h"

#include <charconv>
#include <utility>

namespace quorvell {

namespace {

template <typename Number> std::optional<Number> wholeNumber(std::string_view text)
{
    Number number = 0;
    const auto [end, problem] = std::from_chars(text.data(), text.data() + text.size(), number);
    return problem == std::errc() && end == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

/// "HTTP/1.1 503 Service Unavailable"
std::optional<int> statusIn(std::string_view line)
{
    constexpr std::string_view version = "HTTP/1.";
    constexpr std::size_t statusAt = version.size() + 2;
    const bool isHttp = line.starts_with(version) && line.size() >= statusAt + 3 && line[statusAt - 1] == ' ';
    const auto status = isHttp ? wholeNumber<int>(line.substr(statusAt, 3)) : std::nullopt;
    return status && *status >= 100 && *status <= 999 ? status : std::nullopt;
}

} // namespace

HttpAnswerReading HttpAnswerReading::of(std::string_view bytes)
{
    const std::size_t end = bytes.substr(0, HttpAnswerHead::longestHead + 4).find("\r\n\r\n");
    if (end == std::string_view::npos && bytes.size() < HttpAnswerHead::longestHead)
        return {};
    if (end == std::string_view::npos)
        return {Kind::notUnderstood};
    std::string_view rest = bytes.substr(0, end + 2);
    const auto status = statusIn(http_fields::takeLine(rest));
    auto fields = http_fields::read(rest);
    if (!status || !fields)
        return {Kind::notUnderstood};
    HttpAnswerHead head{*status, std::move(*fields), end + 4};
    if (const std::string_view length = head.field("content-length"); !length.empty()) {
        head.bodyBytes = wholeNumber<std::size_t>(length);
        if (!head.bodyBytes)
            return {Kind::notUnderstood};
    }
    return {Kind::whole, std::move(head)};
}

} // namespace quorvell
