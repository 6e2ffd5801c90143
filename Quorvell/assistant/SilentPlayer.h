// SPDX-License-Identifier: MIT
// Where answers are read and not heard.
#pragma once

#include "Quorvell/session/ports/AudioPlayer.h"

namespace quorvell {

class SilentPlayer : public AudioPlayer {
public:
    void play(std::span<const std::uint8_t>) override { }
    void stop() override { }
    std::chrono::milliseconds unplayed() const override { return {}; }
    std::chrono::milliseconds played() const override { return {}; }
};

} // namespace quorvell
