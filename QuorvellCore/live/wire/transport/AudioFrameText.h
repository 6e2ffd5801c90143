// SPDX-License-Identifier: MIT
// The messages that carry sound, written and read without a JSON value in between: 25 a second each way, and a JSON
// parser costs more than ten times what their base64 does.
#pragma once

#include "QuorvellCore/text/Bytes.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace quorvell {

/// The text of {"type": type, key: base64 of the PCM}. Neither base64 nor the two names, literals of the protocol, need
/// escaping.
std::string audioFrameText(std::string_view type, std::string_view key, std::span<const std::uint8_t> pcm);

/// The sound of such a message. Nothing when the text has any other form, broken or not: a JSON parser decides then.
/// What is accepted here reads the same there: one object of strings without escapes, no key twice.
std::optional<Bytes> readAudioFrameText(std::string_view text, std::string_view type, std::string_view key);

/// What stands around an object {"data", "mimeType"}: each object has no other member, each array no other element.
struct AudioEnvelope {
    std::string_view before;
    std::string_view after;
};

inline constexpr AudioEnvelope geminiClientAudio{R"({"realtimeInput":{"audio":)", "}}"};
inline constexpr AudioEnvelope geminiServerAudio{R"({"serverContent":{"modelTurn":{"parts":[{"inlineData":)", "}]}}}"};

struct AudioBlob {
    Bytes pcm;
    std::string mimeType;

    bool operator==(const AudioBlob&) const = default;
};

/// As audioFrameText, for sound in an envelope. The MIME type is a literal of the protocol.
std::string audioBlobText(const AudioEnvelope& envelope, std::string_view mimeType, std::span<const std::uint8_t> pcm);
/// As readAudioFrameText.
std::optional<AudioBlob> readAudioBlobText(std::string_view text, const AudioEnvelope& envelope);

} // namespace quorvell
