// SPDX-License-Identifier: MIT
// Where a Wyoming service is. The protocol knows no encryption and no key.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

struct WyomingAddress {
    std::string host{}; ///< Without brackets.
    std::uint16_t port = 0;

    /// "127.0.0.1:10300" or "tcp://localhost:10300": this very computer. Anywhere else only where the user says that it
    /// is in the clear: "unencrypted://box.example:10300". Nothing for any other text.
    static std::optional<WyomingAddress> parse(std::string_view text);

    bool isThisComputer() const;
    std::string text() const; ///< "host:port"

    bool operator==(const WyomingAddress&) const = default;
};

} // namespace quorvell
