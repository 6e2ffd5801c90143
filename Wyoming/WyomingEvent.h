// SPDX-License-Identifier: MIT
// One message of the Wyoming protocol: a line of JSON, and what it says that follows.
#pragma once

#include "QuorvellCore/text/Json.h"

#include <nlohmann/json.hpp>

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

struct WyomingEvent {
    std::string type{}; ///< "transcript"
    Json data = Json::object();
    std::string payload{}; ///< Bytes, of sound.

    /// As it is sent.
    std::string bytes() const;

    /// A rate and the one form of sound that is sent: 16 bits, one channel.
    static WyomingEvent audioStart(int rateHz);
    static WyomingEvent audioChunk(int rateHz, std::span<const std::int16_t> samples);
    static WyomingEvent audioStop();
    /// Without a name the service chooses.
    static WyomingEvent synthesize(std::string_view text, std::string_view voice);

    bool operator==(const WyomingEvent&) const = default;
};

} // namespace quorvell
