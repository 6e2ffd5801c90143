#include "LiveService/server/UpgradeRequest.h"

#include <algorithm>
#include <map>
#include <optional>

namespace quorvell {

namespace {

using Fields = std::map<std::string, std::string, std::less<>>; ///< Names in lower case; a repeated one is joined.

std::string lowered(std::string_view text)
{
    std::string result(text);
    std::ranges::transform(result, result.begin(),
        [](char letter) { return letter >= 'A' && letter <= 'Z' ? char(letter + 32) : letter; });
    return result;
}

std::string_view withoutBlanks(std::string_view text)
{
    const std::size_t start = text.find_first_not_of(" \t");
    if (start == std::string_view::npos)
        return {};
    return text.substr(start, text.find_last_not_of(" \t") + 1 - start);
}

std::string_view takeLine(std::string_view& rest)
{
    const std::size_t end = rest.find("\r\n");
    const std::string_view line = rest.substr(0, end);
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 2);
    return line;
}

std::optional<Fields> readFields(std::string_view rest)
{
    Fields fields;
    while (!rest.empty()) {
        const std::string_view line = takeLine(rest);
        const std::size_t colon = line.find(':');
        if (colon == std::string_view::npos || colon == 0 || line.front() == ' ' || line.front() == '\t')
            return std::nullopt;
        std::string& value = fields[lowered(line.substr(0, colon))];
        value += (value.empty() ? "" : ", ") + std::string(withoutBlanks(line.substr(colon + 1)));
    }
    return fields;
}

std::string_view valueOf(const Fields& fields, std::string_view name)
{
    const auto field = fields.find(name);
    return field != fields.end() ? std::string_view(field->second) : std::string_view();
}

bool hasToken(std::string_view list, std::string_view token)
{
    const std::string text = lowered(list);
    std::string_view rest = text;
    while (!rest.empty()) {
        const std::size_t comma = rest.find(',');
        if (withoutBlanks(rest.substr(0, comma)) == token)
            return true;
        rest.remove_prefix(comma == std::string_view::npos ? rest.size() : comma + 1);
    }
    return false;
}

bool showsKey(const Fields& fields, std::string_view token)
{
    const std::string_view value = valueOf(fields, "authorization");
    constexpr std::string_view scheme = "bearer ";
    return value.size() > scheme.size() && lowered(value.substr(0, scheme.size())) == scheme
        && UpgradeRequest::areEqual(withoutBlanks(value.substr(scheme.size())), token);
}

UpgradeVerdict refused(int status, const char* reason)
{
    return {UpgradeVerdict::Kind::refused, status, reason};
}

UpgradeVerdict judgeHead(std::string_view head, std::string_view token)
{
    const std::string_view line = takeLine(head);
    const std::size_t first = line.find(' ');
    const std::size_t second = first == std::string_view::npos ? first : line.find(' ', first + 1);
    const auto fields = readFields(head);
    if (second == std::string_view::npos || line.substr(second + 1) != "HTTP/1.1" || !fields)
        return refused(400, "This is no HTTP/1.1 request.");
    const std::string_view target = line.substr(first + 1, second - first - 1);
    if (target.substr(0, target.find('?')) != UpgradeRequest::path)
        return refused(404, "Live sessions are at /v1/live/sessions.");
    if (line.substr(0, first) != "GET")
        return refused(405, "Open a WebSocket here with GET.");
    if (!showsKey(*fields, token))
        return refused(401, "Send the header \"Authorization: Bearer KEY\" with this service's key.");
    if (!hasToken(valueOf(*fields, "upgrade"), "websocket") || !hasToken(valueOf(*fields, "connection"), "upgrade")
        || valueOf(*fields, "sec-websocket-key").empty())
        return refused(400, "Ask for an upgrade to a WebSocket.");
    if (valueOf(*fields, "sec-websocket-version") != "13")
        return refused(426, "Use version 13 of the WebSocket protocol.");
    return {UpgradeVerdict::Kind::accepted, 0, {}};
}

const char* phraseOf(int status)
{
    switch (status) {
    case 400:
        return "Bad Request";
    case 401:
        return "Unauthorized";
    case 404:
        return "Not Found";
    case 405:
        return "Method Not Allowed";
    case 408:
        return "Request Timeout";
    case 426:
        return "Upgrade Required";
    case 431:
        return "Request Header Fields Too Large";
    default:
        return "Service Unavailable";
    }
}

const char* fieldFor(int status)
{
    switch (status) {
    case 401:
        return "WWW-Authenticate: Bearer\r\n";
    case 405:
        return "Allow: GET\r\n";
    case 426:
        return "Upgrade: websocket\r\nSec-WebSocket-Version: 13\r\n";
    case 503:
        return "Retry-After: 10\r\n";
    default:
        return "";
    }
}

} // namespace

std::string UpgradeVerdict::response() const
{
    return "HTTP/1.1 " + std::to_string(status) + " " + phraseOf(status) + "\r\n" + fieldFor(status)
        + "Content-Type: text/plain; charset=utf-8\r\nContent-Length: " + std::to_string(reason.size() + 1)
        + "\r\nConnection: close\r\n\r\n" + reason + "\n";
}

UpgradeVerdict UpgradeRequest::judge(std::string_view bytes, std::string_view token)
{
    const std::size_t end = bytes.find("\r\n\r\n");
    if (end == std::string_view::npos && bytes.size() < longestHead)
        return {};
    if (end == std::string_view::npos || end > longestHead)
        return refused(431, "The request's head is too long.");
    return judgeHead(bytes.substr(0, end + 2), token);
}

bool UpgradeRequest::areEqual(std::string_view given, std::string_view expected)
{
    unsigned difference = given.size() == expected.size() ? 0 : 1;
    for (std::size_t index = 0; index < given.size(); ++index) {
        const char other = expected.empty() ? '\0' : expected[index % expected.size()];
        difference |= static_cast<unsigned char>(given[index]) ^ static_cast<unsigned char>(other);
    }
    return difference == 0 && !expected.empty();
}

} // namespace quorvell
