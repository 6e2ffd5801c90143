#include "OnDeviceSpeech/SpeechRecogniser.h"

#include "OnDeviceSpeech/Decoder.h"
#include "OnDeviceSpeech/SecondLook.h"
#include "OnDeviceSpeech/SpokenToWritten.h"

#include <utility>

namespace quorvell {

namespace {

std::string joined(const std::vector<HeardWord>& words)
{
    std::string text;
    for (const HeardWord& word : words)
        text.append(text.empty() ? "" : " ").append(word.text);
    return text;
}

} // namespace

struct SpeechRecogniser::Parts {
    std::unique_ptr<Decoder> commands;
    std::unique_ptr<Decoder> mixed;
};

SpeechRecogniser::SpeechRecogniser(std::unique_ptr<Parts> parts)
    : m_parts(std::move(parts))
{
}

SpeechRecogniser::~SpeechRecogniser() = default;

SpeechRecogniser::Made SpeechRecogniser::create(const SpeechModels& models)
{
    if (std::string problem = models.missing(); !problem.empty())
        return {nullptr, std::move(problem)};
    auto parts = std::make_unique<Parts>();
    parts->commands =
        Decoder::create({models.acousticModel, models.commandDictionary, models.commandLanguageModel, {}});
    parts->mixed = Decoder::create(
        {models.acousticModel, models.dictionary, models.commandLanguageModel, models.generalLanguageModel});
    if (!parts->commands || !parts->mixed)
        return {nullptr,
            "Speech cannot be recognised on this computer: a speech model cannot be read. Install the package "
            "pocketsphinx-en-us and Quorvell again; typing works without them."};
    return {std::unique_ptr<SpeechRecogniser>(new SpeechRecogniser(std::move(parts))), {}};
}

void SpeechRecogniser::begin()
{
    m_parts->commands->begin();
    m_parts->mixed->begin();
}

void SpeechRecogniser::feed(std::span<const std::int16_t> samples)
{
    m_parts->commands->feed(samples);
    m_parts->mixed->feed(samples);
}

HeardUtterance SpeechRecogniser::finish()
{
    const std::vector<HeardWord> command = m_parts->commands->finish();
    std::vector<HeardWord> mixed = m_parts->mixed->finish();
    HeardUtterance heard;
    heard.isCommand = SecondLook::agree(command, mixed);
    heard.words = heard.isCommand ? SecondLook::merged(command, mixed) : std::move(mixed);
    heard.text = spokenToWritten(joined(heard.words));
    return heard;
}

} // namespace quorvell
