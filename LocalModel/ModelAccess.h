// SPDX-License-Identifier: MIT
// Which model of the user's own takes what the rules do not understand.
#pragma once

#include "QuorvellCore/live/wire/transport/ServiceAddress.h"

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

struct ModelAccess {
    ServiceAddress address{};
    std::string model{};

    /// `host` is "host:port" or an address with http or https. Without TLS only this computer, where it is the default.
    /// Nothing for any other text.
    static std::optional<ServiceAddress> addressOf(std::string_view host);

    /// "the model on this computer", or "the model at box.example".
    std::string title() const;

    bool operator==(const ModelAccess&) const = default;
};

} // namespace quorvell
