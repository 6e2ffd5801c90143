#include "OnDeviceSpeech/SpeechRecogniser.h"

#include "OnDeviceSpeech/BackgroundDecoder.h"
#include "OnDeviceSpeech/Decoder.h"
#include "OnDeviceSpeech/HeardReadings.h"
#include "OnDeviceSpeech/SpokenToWritten.h"
#include "OnDeviceSpeech/WordMarks.h"

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

std::string joined(const std::vector<HeardWord>& words)
{
    std::string text;
    for (const HeardWord& word : words) {
        text.append(text.empty() ? "" : " ").append(word.text);
    }
    return text;
}

std::vector<HeardWord> withoutMarks(std::vector<HeardWord> words)
{
    for (HeardWord& word : words) {
        word.text = withoutMark(word.text);
    }
    return words;
}

} // namespace

struct SpeechRecogniser::Parts {
    std::unique_ptr<Decoder> trigram;
    std::unique_ptr<Decoder> grammar;
    BackgroundDecoder open;
    std::size_t fedSamples = 0;
};

SpeechRecogniser::SpeechRecogniser(std::unique_ptr<Parts> parts)
    : m_parts(std::move(parts))
{
}

SpeechRecogniser::~SpeechRecogniser() = default;

SpeechRecogniser::Made SpeechRecogniser::create(const SpeechModels& models)
{
    if (std::string problem = models.missing(); !problem.empty()) {
        return {nullptr, std::move(problem)};
    }
    auto trigram = Decoder::create({.acousticModel = models.acousticModel,
        .dictionary = models.commandDictionary,
        .languageModel = models.commandLanguageModel});
    auto grammar = Decoder::create({.acousticModel = models.acousticModel,
        .dictionary = models.commandDictionary,
        .grammar = models.commandGrammar});
    if (!trigram || !grammar) {
        return {nullptr,
            "Speech cannot be recognised on this computer: a speech model cannot be read. Install the package "
            "pocketsphinx-en-us and Quorvell again; typing works without them."};
    }
    // The large model is still loading when this returns; what is fed meanwhile waits for it.
    auto parts = std::unique_ptr<Parts>(new Parts{std::move(trigram), std::move(grammar),
        BackgroundDecoder({.acousticModel = models.acousticModel,
            .dictionary = models.dictionary,
            .languageModel = models.commandLanguageModel,
            .secondLanguageModel = models.generalLanguageModel})});
    return {std::unique_ptr<SpeechRecogniser>(new SpeechRecogniser(std::move(parts))), {}};
}

void SpeechRecogniser::begin()
{
    m_parts->fedSamples = 0;
    m_parts->open.begin();
    m_parts->trigram->begin();
    m_parts->grammar->begin();
}

void SpeechRecogniser::feed(std::span<const std::int16_t> samples)
{
    samples = samples.first(std::min(samples.size(), longestUtteranceSamples - m_parts->fedSamples));
    m_parts->fedSamples += samples.size();
    m_parts->open.feed(samples);
    m_parts->trigram->feed(samples);
    m_parts->grammar->feed(samples);
}

HeardUtterance SpeechRecogniser::finish()
{
    m_parts->open.finish();
    HeardReadings readings{m_parts->trigram->finish(), m_parts->grammar->finish(), {}};
    readings.open = m_parts->open.finished().value_or(readings.trigram);
    HeardUtterance heard;
    heard.isCommand = readings.isCommand();
    heard.words = heard.isCommand ? readings.merged() : withoutMarks(std::move(readings.open));
    heard.text = spokenToWritten(joined(heard.words));
    return heard;
}

} // namespace quorvell
