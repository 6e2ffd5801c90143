// SPDX-License-Identifier: MIT
#include "OnDeviceSpeech/SpeechRecogniser.h"

#include "OnDeviceSpeech/BackgroundDecoder.h"
#include "OnDeviceSpeech/Decoder.h"
#include "OnDeviceSpeech/HearingDoubts.h"
#include "Understanding/time/SpokenToWritten.h"

#include <algorithm>
#include <optional>
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

/// Nobody asks for one thing in more; comparing takes longer than it is worth.
constexpr std::size_t longestCompared = std::size_t{12} * SpeechRecogniser::sampleRateHz;

/// Speech goes on where so many frames of 20 ms are louder: as much as begins a turn, and a little below its level.
constexpr std::size_t speechFrameSamples = SpeechRecogniser::sampleRateHz / 50;
constexpr int framesOfSpeech = 3;
constexpr double leastLevelOfSpeech = 200; ///< Root mean square, of 32768.

const char* const unreadable =
    "Speech cannot be recognised on this computer: a speech model cannot be read. Install the package "
    "pocketsphinx-en-us and Quorvell again; typing works without them.";

bool holdsSpeech(std::span<const std::int16_t> samples)
{
    int loud = 0;
    for (; samples.size() >= speechFrameSamples; samples = samples.subspan(speechFrameSamples)) {
        double sum = 0;
        for (const std::int16_t sample : samples.first(speechFrameSamples))
            sum += static_cast<double>(sample) * sample;
        loud += sum > leastLevelOfSpeech * leastLevelOfSpeech * speechFrameSamples ? 1 : 0;
    }
    return loud >= framesOfSpeech;
}

bool isCommand(const Decoder::Result& commands, const Decoder::Result& open)
{
    const bool isShort = std::ranges::count(commands.text, ' ') <= mostSpacesInAnswer;
    return commands.score + (isShort ? preferenceForAnswers : preferenceForCommands) >= open.score;
}

float meanConfidence(const Decoder::Result& heard)
{
    float sum = 0;
    for (const Decoder::Word& word : heard.words)
        sum += word.confidence;
    return heard.words.empty() ? 0 : sum / static_cast<float>(heard.words.size());
}

/// The words that the sound speaks for, where they have twins; those that stay possible are added.
std::string decided(
    std::string text, Decoder& comparing, std::span<const std::int16_t> samples, std::vector<std::string>& others)
{
    if (samples.size() > longestCompared)
        return text;
    std::optional<int> own;
    if (const auto span = HearingDoubts::withSpan(text)) {
        own = comparing.agreement(samples, text);
        const auto score = comparing.agreement(samples, *span);
        if (own && score && *own - *score < HearingDoubts::marginOfSpan)
            return decided(*span, comparing, samples, others);
    }
    for (const HearingDoubts::Twin& twin : HearingDoubts::twins(text)) {
        if (!own)
            own = comparing.agreement(samples, text);
        const auto other = own ? comparing.agreement(samples, twin.words) : std::nullopt;
        if (other && *other - *own >= HearingDoubts::sure)
            return decided(twin.words, comparing, samples, others);
        if (!other || *own - *other < twin.margin)
            others.push_back(twin.words);
    }
    return text;
}

/// Leaves the wordings that the sound does not speak against.
void keepPossible(std::vector<std::string>& others, const std::string& text, Decoder& comparing,
    std::span<const std::int16_t> samples)
{
    if (others.empty() || samples.size() > longestCompared)
        return;
    const auto own = comparing.agreement(samples, text);
    std::erase_if(others, [&](const std::string& other) {
        const auto score = own ? comparing.agreement(samples, other) : std::nullopt;
        return score && *own - *score > HearingDoubts::marginOfOther;
    });
}

} // namespace

/// Two searches over the same sound: one knows only what the templates say, the other every word.
struct SpeechRecogniser::Parts {
    std::stop_token stop;
    std::unique_ptr<Decoder> commands;
    BackgroundDecoder open;
    std::vector<std::int16_t> samples{}; ///< Of this utterance.
    std::optional<RecognisedUtterance> ahead{}; ///< What was worked out when the end was expected,
    std::size_t samplesOfAhead = 0; ///< of so much of it.

    void listen(std::span<const std::int16_t> fed)
    {
        open.feed(fed);
        commands->feed(fed);
    }
    void beginSearches()
    {
        ahead.reset();
        open.begin();
        commands->begin();
    }
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
    m_parts->samples.clear();
    m_parts->beginSearches();
}

void SpeechRecogniser::feed(std::span<const std::int16_t> samples)
{
    samples = samples.first(std::min(samples.size(), longestUtteranceSamples - m_parts->samples.size()));
    m_parts->samples.insert(m_parts->samples.end(), samples.begin(), samples.end());
    if (!m_parts->ahead)
        return m_parts->listen(samples);
    if (holdsSpeech(std::span(m_parts->samples).subspan(m_parts->samplesOfAhead))) {
        m_parts->beginSearches();
        m_parts->listen(m_parts->samples);
    }
}

std::string SpeechRecogniser::heardSoFar() const
{
    return m_parts->ahead ? m_parts->ahead->text : spokenToWritten(m_parts->commands->heardSoFar());
}

void SpeechRecogniser::expectEnd()
{
    if (m_parts->ahead || m_parts->samples.empty())
        return;
    RecognisedUtterance ahead = workOut();
    m_parts->ahead = std::move(ahead);
    m_parts->samplesOfAhead = m_parts->samples.size();
}

RecognisedUtterance SpeechRecogniser::finish()
{
    return m_parts->ahead ? *std::exchange(m_parts->ahead, std::nullopt) : workOut();
}

RecognisedUtterance SpeechRecogniser::workOut()
{
    m_parts->open.finish();
    const Decoder::Result commands = m_parts->commands->finish();
    // While the other search is still at work.
    std::vector<std::string> twins;
    std::string text = decided(commands.text, *m_parts->commands, m_parts->samples, twins);
    const std::optional<Decoder::Result> open = m_parts->open.finished();
    if (!open) {
        return {.text = {}, .problem = m_parts->stop.stop_requested() ? "" : unreadable};
    }
    const bool isOfCommands = isCommand(commands, *open);
    const Decoder::Result& heard = isOfCommands ? commands : *open;
    if (!isOfCommands) {
        twins.clear();
        text = decided(heard.text, *m_parts->commands, m_parts->samples, twins);
    }
    // Twins come first: they are the likeliest.
    std::vector<std::string> others = std::move(twins);
    std::vector<std::string> times = HearingDoubts::otherTimes(heard, isOfCommands ? *open : commands);
    keepPossible(times, heard.text, *m_parts->commands, m_parts->samples);
    others.insert(others.end(), times.begin(), times.end());
    RecognisedUtterance utterance{.text = spokenToWritten(text),
        .faintNames = HearingDoubts::faintNames(heard),
        .confidence = meanConfidence(heard),
        .leastOfTimes = HearingDoubts::leastOfTimes(heard)};
    for (const std::string& other : others) {
        std::string written = spokenToWritten(other);
        const bool isKnown =
            written == utterance.text || std::ranges::find(utterance.orElse, written) != utterance.orElse.end();
        if (!isKnown && utterance.orElse.size() < HearingDoubts::most)
            utterance.orElse.push_back(std::move(written));
    }
    return utterance;
}

} // namespace quorvell
