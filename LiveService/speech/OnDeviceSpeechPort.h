// SPDX-License-Identifier: MIT
// The recogniser and the voice of this computer.
#pragma once

#include "LiveService/speech/SpeechPort.h"
#include "Media/echo/NoiseSuppressor.h"
#include "OnDeviceSpeech/SpeechRecogniser.h"
#include "OnDeviceSpeech/SpeechVoice.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quorvell {

/// The recogniser's models take a second to load and 150 MB, so they are loaded when speech is expected; without them
/// turns are answered by a sentence that says what is missing, and the voice still speaks.
class OnDeviceSpeechPort : public SpeechPort {
public:
    OnDeviceSpeechPort(SpeechModels models, std::string defaultVoice);

    void expectSpeech() override;
    void begin() override;
    void feed(std::span<const std::int16_t> samples) override;
    std::string heardSoFar() override;
    void expectEnd() override;
    HeardTurn finish() override;
    void speak(std::string_view voice, std::string_view text, const Sink& sink, std::stop_token stop) override;

private:
    /// Cleans what is in m_waiting and gives it to the recogniser.
    void feedClean(std::size_t least);

    SpeechModels m_models;
    std::optional<SpeechRecogniser::Made> m_hearing; ///< Once speech was expected.
    NoiseSuppressor m_suppressor;
    std::vector<std::int16_t> m_heard; ///< Of this turn, as it came.
    std::vector<std::int16_t> m_waiting; ///< Not cleaned yet.
    bool m_knowsRoom = false; ///< The turn's first moment was heard.
    std::string m_defaultVoice;
    std::string m_voiceName; ///< Of m_voice.
    std::unique_ptr<SpeechVoice> m_voice;
};

} // namespace quorvell
