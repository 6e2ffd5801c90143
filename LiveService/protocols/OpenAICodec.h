// SPDX-License-Identifier: MIT
// The words of a session for clients of the protocol with a delegated backend.
#pragma once

#include "LiveService/protocols/SessionCodec.h"

namespace quorvell {

class OpenAICodec : public SessionCodec {
public:
    enum class Sound { inTexts, apart }; ///< Apart: it travels on a track of its own.

    explicit OpenAICodec(Sound sound)
        : m_sound(sound)
    {
    }

    Incoming read(std::string_view text) const override;
    Outgoing write(const SessionNews& news) override;

private:
    Sound m_sound;
};

} // namespace quorvell
