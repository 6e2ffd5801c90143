// SPDX-License-Identifier: MIT
#include "Http/HttpResponse.h"

namespace quorvell {

namespace {

const char* phraseOf(int status)
{
    switch (status) {
    case 200:
        return "OK";
    case 201:
        return "Created";
    case 400:
        return "Bad Request";
    case 401:
        return "Unauthorized";
    case 403:
        return "Forbidden";
    case 404:
        return "Not Found";
    case 405:
        return "Method Not Allowed";
    case 408:
        return "Request Timeout";
    case 411:
        return "Length Required";
    case 413:
        return "Content Too Large";
    case 426:
        return "Upgrade Required";
    case 429:
        return "Too Many Requests";
    case 431:
        return "Request Header Fields Too Large";
    case 500:
        return "Internal Server Error";
    default:
        return "Service Unavailable";
    }
}

std::string fieldFor(const HttpResponse& response)
{
    switch (response.status) {
    case 401:
        return "WWW-Authenticate: Bearer\r\n";
    case 405:
        return "Allow: " + response.allow + "\r\n";
    case 426:
        return "Upgrade: websocket\r\nSec-WebSocket-Version: 13\r\n";
    case 429:
    case 503:
        return "Retry-After: " + std::to_string(response.retryAfterSeconds) + "\r\n";
    default:
        return {};
    }
}

/// Our own sentences: quotation marks are all that JSON minds in them.
std::string escaped(std::string_view text)
{
    std::string result;
    for (const char letter : text) {
        if (letter == '"' || letter == '\\')
            result += '\\';
        result += static_cast<unsigned char>(letter) < 0x20 ? ' ' : letter;
    }
    return result;
}

} // namespace

HttpResponse HttpResponse::refusal(int status, std::string_view reason, std::string_view code)
{
    const char* type = status < 500 ? "invalid_request_error" : "server_error";
    return {status, "application/json",
        "{\"error\":{\"message\":\"" + escaped(reason) + "\",\"type\":\"" + type + "\",\"code\":\""
            + (code.empty() ? std::to_string(status) : escaped(code)) + "\"}}\n"};
}

std::string HttpResponse::bytes() const
{
    return "HTTP/1.1 " + std::to_string(status) + " " + phraseOf(status) + "\r\n" + fieldFor(*this) + "Content-Type: "
        + contentType + "\r\nContent-Length: " + std::to_string(body.size()) + "\r\nConnection: close\r\n\r\n" + body;
}

std::string HttpResponse::eventStreamHead()
{
    return "HTTP/1.1 200 OK\r\nContent-Type: text/event-stream; charset=utf-8\r\nCache-Control: no-store\r\n"
           "Connection: close\r\n\r\n";
}

} // namespace quorvell
