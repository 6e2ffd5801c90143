// SPDX-License-Identifier: MIT
// How well the sound of an utterance carries speech. Pure.
//
// Noise fills the pauses of speech: its level is taken from the quietest tenth of the frames and compared with the
// loudest tenth. A telephone line ends below 4 kHz: above it even its hissing sounds have next to nothing.
#pragma once

#include <cstdint>
#include <span>

namespace quorvell {

enum class SoundQuality {
    good,
    noisy, ///< What is not speech is nearly as loud.
    narrow, ///< The upper half of the frequencies is missing, as behind a telephone.
};

/// 16 kHz mono, with some quiet before or behind the speech. Less than half a second is good.
SoundQuality soundQualityOf(std::span<const std::int16_t> samples);

} // namespace quorvell
