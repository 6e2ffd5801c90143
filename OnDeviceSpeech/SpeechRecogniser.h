// SPDX-License-Identifier: MIT
// Speech to text on the device.
#pragma once

#include "OnDeviceSpeech/RecognisedUtterance.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <stop_token>
#include <string>

namespace quorvell {

/// Where the models lie. The defaults are found beside the program and in the system's folders.
struct SpeechModels {
    std::string acousticModel; ///< Folder.
    std::string dictionary; ///< Of the general language model's words and those of the commands.
    std::string generalLanguageModel;
    std::string commandLanguageModel; ///< Built with the program from request templates, as is the next.
    std::string commandDictionary;

    /// `programFolder` is the folder that holds the program.
    static SpeechModels find(const std::string& programFolder);
    /// Empty when every file is there, else a sentence that says what to do.
    std::string missing() const;
};

/// Recognises one utterance at a time. Blocking: use it from one worker thread, the same one throughout. Several can
/// work in several threads at once.
class SpeechRecogniser {
public:
    static constexpr int sampleRateHz = 16000;
    /// What is fed beyond a minute is not heard: the library counts frames in 16 bits, and nobody asks that long.
    static constexpr std::size_t longestUtteranceSamples = std::size_t{60} * sampleRateHz;

    struct Made;
    /// Either a recogniser or a sentence that says what is missing and how to get it. Once `stop` is requested, from
    /// any thread, this and everything else here returns soon and with nothing.
    static Made create(const SpeechModels& models, const std::stop_token& stop = {});
    ~SpeechRecogniser();

    /// Starts a new utterance; what was fed to an unfinished one is forgotten.
    void begin();
    /// 16 kHz mono. Recognition goes on while samples arrive, so that finish has little left to do.
    void feed(std::span<const std::int16_t> samples);
    /// What the quicker search makes of the utterance so far, in written form.
    std::string heardSoFar() const;
    /// The utterance has probably ended: works its words out ahead, so that finish has little to do where only quiet
    /// follows. Where speech goes on, what was heard is listened to once more.
    void expectEnd();
    /// Waits for the words; for the models too while they load.
    RecognisedUtterance finish();

private:
    struct Parts;
    RecognisedUtterance workOut();
    explicit SpeechRecogniser(std::unique_ptr<Parts> parts);
    std::unique_ptr<Parts> m_parts;
};

struct SpeechRecogniser::Made {
    std::unique_ptr<SpeechRecogniser> recogniser;
    std::string problem;
};

} // namespace quorvell
