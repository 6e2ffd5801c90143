#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace quorvell {

/// The text of {"type": type, key: base64 of the PCM}. Base64 and the two names need no escaping, so the text can be
/// put together without a JSON value; `type` and `key` are literals of the protocol.
std::string audioFrameText(std::string_view type, std::string_view key, std::span<const std::uint8_t> pcm);

} // namespace quorvell
