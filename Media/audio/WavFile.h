// SPDX-License-Identifier: MIT
// Recordings as files: any common WAV file, FLAC, Ogg (Vorbis, Opus) or MP3 in, 16-bit mono WAV out.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace quorvell {

/// What a file held, or why it could not be read.
struct [[nodiscard]] WavReading {
    std::optional<std::vector<std::int16_t>> samples; ///< Mono, at the rate that was asked for.
    std::string problem; ///< When there are none: a sentence for the user that says what to do next.
    int recordedRateHz = 0; ///< As it was recorded.
    bool isWhole = true; ///< False where the file breaks off or is damaged: then there is only a part of the samples.
};

struct WavFile {
    static constexpr std::chrono::minutes longestRecording{10};
    static constexpr int highestChannelCount = 32;

    /// Channels are mixed to one and the rate converted. Anything but a recording of at most `longestRecording` is
    /// refused; a file that breaks off gives what it holds.
    static WavReading read(const std::string& path, int sampleRateHz);
    static WavReading read(std::span<const std::uint8_t> bytes, int sampleRateHz);

    /// Why `write` to this path would fail, as far as can be seen beforehand; nothing when it looks well.
    static std::optional<std::string> problemOfWriting(const std::string& path);

    /// Writes a temporary file beside `path` and renames it, so that no half-written recording is ever seen.
    /// Nothing when it worked, otherwise a sentence for the user.
    [[nodiscard]] static std::optional<std::string> write(
        const std::string& path, std::span<const std::int16_t> samples, int sampleRateHz);
};

} // namespace quorvell
