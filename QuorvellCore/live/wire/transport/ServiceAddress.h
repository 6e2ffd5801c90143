// SPDX-License-Identifier: MIT
// Where a service is found.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

/// TLS is used for every host but the computer itself.
struct ServiceAddress {
    enum class Security { tls, none };

    std::string host; ///< With ":port" where it is not the scheme's own.
    Security security = Security::tls;

    /// From an address in the settings: "https://host", "wss://host:port", or a bare host. Without TLS ("http", "ws")
    /// only for the computer itself. Nothing for any other text; a path is not allowed.
    static std::optional<ServiceAddress> create(std::string_view address);

    bool isThisComputer() const; ///< Whatever the port.
    std::string webUrl(std::string_view path) const; ///< "https" or "http".
    std::string socketUrl(std::string_view path) const; ///< "wss" or "ws".

    bool operator==(const ServiceAddress&) const = default;
};

} // namespace quorvell
