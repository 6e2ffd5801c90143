// SPDX-License-Identifier: MIT
// A web address taken apart.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

/// The host is lower-case ASCII (international names in their "xn--" form, an IPv6 address in its brackets), so that
/// two spellings of one host compare equal.
struct WebAddress {
    static constexpr std::size_t maximumBytes = 64 * 1024;

    std::string scheme; ///< Lower case.
    std::string host; ///< May be empty.
    std::optional<std::uint16_t> port;
    std::string path; ///< As written, "" or with its leading "/"; escapes stay.
    std::string query; ///< Behind "?", without it.

    /// Text without "://" is taken as an https address, so "example.com:8080" is a host and a port. Nothing when it
    /// does not parse or is unreasonably long.
    static std::optional<WebAddress> parse(std::string_view text);

    /// This computer: "localhost", a name under it, 127.0.0.0/8 or ::1.
    bool isLoopback() const;

    bool operator==(const WebAddress&) const = default;
};

} // namespace quorvell
