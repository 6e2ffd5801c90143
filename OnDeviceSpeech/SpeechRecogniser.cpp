// SPDX-License-Identifier: MIT
#include "OnDeviceSpeech/SpeechRecogniser.h"

#include "OnDeviceSpeech/BackgroundDecoder.h"
#include "OnDeviceSpeech/Decoder.h"
#include "Understanding/time/SpokenToWritten.h"

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

/// Of the mixture; the rest is general English.
constexpr float shareOfCommands = 0.7F;
/// How much better the mixture's words must fit than those that the requests alone explain. Nearly all that is said is
/// a request. Measured on requests with words outside the templates and on free speech.
constexpr int preferenceForCommands = 100;
/// A word or two is mostly an answer, and its sound alone tells little: "sure" is easily taken for "share".
constexpr int preferenceForAnswers = 450;
constexpr std::ptrdiff_t mostSpacesInAnswer = 1;

const char* const unreadable =
    "Speech cannot be recognised on this computer: a speech model cannot be read. Install the package "
    "pocketsphinx-en-us and Quorvell again; typing works without them.";

bool isCommand(const Decoder::Result& commands, const Decoder::Result& open)
{
    const bool isShort = std::ranges::count(commands.text, ' ') <= mostSpacesInAnswer;
    return commands.score + (isShort ? preferenceForAnswers : preferenceForCommands) >= open.score;
}

} // namespace

/// Two searches over the same sound: one knows only what the templates say, the other every word.
struct SpeechRecogniser::Parts {
    std::stop_token stop;
    std::unique_ptr<Decoder> commands;
    BackgroundDecoder open;
    std::size_t fedSamples = 0;
};

SpeechRecogniser::SpeechRecogniser(std::unique_ptr<Parts> parts)
    : m_parts(std::move(parts))
{
}

SpeechRecogniser::~SpeechRecogniser() = default;

SpeechRecogniser::Made SpeechRecogniser::create(const SpeechModels& models, const std::stop_token& stop)
{
    if (std::string problem = models.missing(); !problem.empty()) {
        return {nullptr, std::move(problem)};
    }
    auto commands = Decoder::create({.acousticModel = models.acousticModel,
                                        .dictionary = models.commandDictionary,
                                        .languageModel = models.commandLanguageModel},
        stop);
    if (!commands) {
        return {nullptr, stop.stop_requested() ? "" : unreadable};
    }
    // The large model is still loading when this returns; what is fed meanwhile waits for it.
    auto parts = std::unique_ptr<Parts>(new Parts{stop, std::move(commands),
        BackgroundDecoder({.acousticModel = models.acousticModel,
                              .dictionary = models.dictionary,
                              .languageModel = models.commandLanguageModel,
                              .secondLanguageModel = models.generalLanguageModel,
                              .shareOfFirst = shareOfCommands},
            stop)});
    return {std::unique_ptr<SpeechRecogniser>(new SpeechRecogniser(std::move(parts))), {}};
}

void SpeechRecogniser::begin()
{
    m_parts->fedSamples = 0;
    m_parts->open.begin();
    m_parts->commands->begin();
}

void SpeechRecogniser::feed(std::span<const std::int16_t> samples)
{
    samples = samples.first(std::min(samples.size(), longestUtteranceSamples - m_parts->fedSamples));
    m_parts->fedSamples += samples.size();
    m_parts->open.feed(samples);
    m_parts->commands->feed(samples);
}

RecognisedUtterance SpeechRecogniser::finish()
{
    m_parts->open.finish();
    const Decoder::Result commands = m_parts->commands->finish();
    const std::optional<Decoder::Result> open = m_parts->open.finished();
    if (!open) {
        return {{}, m_parts->stop.stop_requested() ? "" : unreadable};
    }
    return {spokenToWritten(isCommand(commands, *open) ? commands.text : open->text)};
}

} // namespace quorvell
