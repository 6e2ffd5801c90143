#pragma once

#include "Quorvell/session/AudioPlayer.h"

namespace quorvell {

/// Where answers are read and not heard.
class SilentPlayer : public AudioPlayer {
public:
    void play(std::span<const std::uint8_t>) override { }
    void stop() override { }
    std::chrono::milliseconds unplayed() const override { return {}; }
    std::chrono::milliseconds played() const override { return {}; }
};

} // namespace quorvell
