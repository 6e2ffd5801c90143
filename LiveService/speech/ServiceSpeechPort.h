// SPDX-License-Identifier: MIT
// Recognition and voice of services that the user runs, with those of this computer for when they fail.
#pragma once

#include "LiveService/speech/SpeechPort.h"
#include "Wyoming/WyomingRecogniser.h"
#include "Wyoming/WyomingVoice.h"

#include <memory>
#include <optional>
#include <string>

namespace quorvell {

/// The recogniser of this computer hears every turn too: its words are there the moment the service fails, and what is
/// read of a turn while it is still spoken comes from it.
class ServiceSpeechPort : public SpeechPort {
public:
    struct Services {
        std::optional<WyomingAddress> recogniser{};
        std::optional<WyomingAddress> voice{};

        bool areAny() const { return recogniser || voice; }
    };

    ServiceSpeechPort(std::unique_ptr<SpeechPort> own, const Services& services);

    void expectSpeech() override { m_own->expectSpeech(); }
    void begin() override;
    void feed(std::span<const std::int16_t> samples) override;
    std::string heardSoFar() override { return m_own->heardSoFar(); }
    void expectEnd() override { m_own->expectEnd(); }
    HeardTurn finish() override;
    void speak(std::string_view voice, std::string_view text, const Sink& sink, std::stop_token stop) override;

private:
    void addNotice(const std::string& sentence);

    std::unique_ptr<SpeechPort> m_own;
    std::optional<WyomingRecogniser> m_recogniser;
    std::optional<WyomingVoice> m_voice;
    std::string m_notice; ///< That is to be told with the next turn.
};

} // namespace quorvell
