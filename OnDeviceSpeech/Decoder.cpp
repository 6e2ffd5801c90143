// SPDX-License-Identifier: MIT
#include "OnDeviceSpeech/Decoder.h"

#include <algorithm>
#include <array>
#include <functional>
#include <initializer_list>
#include <mutex>
#include <string_view>
#include <utility>

extern "C" {
#include <ngram_model.h>
#include <pocketsphinx.h>
#include <ps_search.h>
#include <sphinxbase/cmn.h>
#include <sphinxbase/err.h>
#include <sphinxbase/fe.h>
#include <sphinxbase/feat.h>
}

namespace quorvell {

namespace {

const char* const search = "words";
const char* const comparison = "comparison"; ///< The search that only compares.

/// So much speech tells how a voice, its microphone and the room sound on the whole.
constexpr std::size_t samplesToKnowAVoice = 16000;
/// What the model was made from counts like so many frames of 10 ms beside the first of a voice.
constexpr float framesOfModel = 25;

/// The library's set-up of its options and its log are not made for two threads at once.
std::mutex& setUp()
{
    static std::mutex mutex;
    return mutex;
}

struct Release {
    void operator()(ps_decoder_t* decoder) const { ps_free(decoder); }
    void operator()(cmd_ln_t* options) const { cmd_ln_free_r(options); }
    void operator()(ngram_model_t* model) const { ngram_model_free(model); }
    void operator()(fe_t* frontEnd) const { fe_free(frontEnd); }
};

using LanguageModel = std::unique_ptr<ngram_model_t, Release>;

/// Both models as one, which shares in them.
LanguageModel mixed(cmd_ln_t* settings, const LanguageModel& first, const LanguageModel& second, float shareOfFirst)
{
    std::array models{first.get(), second.get()};
    std::string firstName = "first";
    std::string secondName = "second";
    std::array names{firstName.data(), secondName.data()};
    const std::array weights{shareOfFirst, 1 - shareOfFirst};
    return LanguageModel(ngram_model_set_init(settings, models.data(), names.data(), weights.data(), 2));
}

/// Without the number of a further pronunciation, "read(2)".
std::string plainWord(std::string_view word)
{
    return std::string(word.substr(0, word.find('(')));
}

/// The mean that is taken off each frame of the sound, begun from these samples; what is heard next moves it on.
void learnVoice(ps_decoder_t* decoder, cmd_ln_t* settings, std::span<const std::int16_t> samples)
{
    const std::unique_ptr<fe_t, Release> frontEnd(fe_init_auto_r(cmd_ln_retain(settings)));
    cmn_t* running = ps_get_feat(decoder)->cmn_struct;
    if (!frontEnd || !running || fe_start_utt(frontEnd.get()) != 0)
        return;
    const auto size = static_cast<std::size_t>(fe_get_output_size(frontEnd.get()));
    std::vector<mfcc_t> mean(running->cmn_mean, running->cmn_mean + size);
    std::vector<mfcc_t> frame(size);
    std::transform(mean.begin(), mean.end(), mean.begin(), [](mfcc_t value) { return value * framesOfModel; });
    float frames = framesOfModel;
    const std::int16_t* next = samples.data();
    for (std::size_t left = samples.size(); left > 0;) {
        mfcc_t* place = frame.data();
        int32 made = 1;
        if (fe_process_frames(frontEnd.get(), &next, &left, &place, &made, nullptr) < 0 || made == 0)
            break;
        if (frame[0] < 0) // next to nothing
            continue;
        std::transform(mean.begin(), mean.end(), frame.begin(), mean.begin(), std::plus());
        ++frames;
    }
    std::transform(mean.begin(), mean.end(), mean.begin(), [&](mfcc_t value) { return value / frames; });
    cmn_live_set(running, mean.data());
}

/// Silences and noises.
bool isFiller(std::string_view word)
{
    return word.empty() || std::string_view("<[+").find(word[0]) != std::string_view::npos;
}

std::vector<std::string> otherWordings(ps_decoder_t* decoder, const std::string& text)
{
    std::vector<std::string> others;
    int looked = 0;
    for (ps_nbest_t* next = ps_nbest(decoder); next; next = ps_nbest_next(next)) {
        const char* words = ps_nbest_hyp(next, nullptr);
        if (words && text != words && std::find(others.begin(), others.end(), words) == others.end())
            others.emplace_back(words);
        if (++looked == Decoder::mostOthers) {
            ps_nbest_free(next);
            break;
        }
    }
    return others;
}

} // namespace

struct Decoder::Parts {
    // The steps of loading; each is false when a file cannot be read.
    bool readSounds(const Options& options);
    bool readFirstModel(const Options& options);
    bool mixInSecondModel(const Options& options);
    bool beginSearch(const Options& options);

    LanguageModel read(const std::string& path) const;
    void startUtterance();
    void knowVoice();

    std::unique_ptr<cmd_ln_t, Release> settings;
    std::unique_ptr<ps_decoder_t, Release> decoder;
    LanguageModel model; ///< Until the search begins.
    bool isListening = false;
    bool knowsVoice = false;
    std::vector<std::int16_t> firstSamples; ///< Until the voice is known: what was fed in this utterance.
};

bool Decoder::Parts::readSounds(const Options& options)
{
    // The gate before us has cut silences off already; all that it let through is listened to.
    settings.reset(cmd_ln_init(nullptr, ps_args(), TRUE, "-hmm", options.acousticModel.c_str(), "-dict",
        options.dictionary.c_str(), "-remove_silence", "no", nullptr));
    if (settings)
        decoder.reset(ps_init(settings.get()));
    return decoder != nullptr;
}

LanguageModel Decoder::Parts::read(const std::string& path) const
{
    return LanguageModel(ngram_model_read(settings.get(), path.c_str(), NGRAM_AUTO, ps_get_logmath(decoder.get())));
}

bool Decoder::Parts::readFirstModel(const Options& options)
{
    model = read(options.languageModel);
    return model != nullptr;
}

bool Decoder::Parts::mixInSecondModel(const Options& options)
{
    if (options.secondLanguageModel.empty())
        return true;
    const LanguageModel second = read(options.secondLanguageModel);
    if (second)
        model = mixed(settings.get(), model, second, options.shareOfFirst);
    return second && model;
}

bool Decoder::Parts::beginSearch(const Options&)
{
    const LanguageModel used = std::move(model); // The decoder keeps it.
    return ps_set_lm(decoder.get(), search, used.get()) == 0 && ps_set_search(decoder.get(), search) == 0;
}

void Decoder::Parts::startUtterance()
{
    // A new stream, so that what was heard before does not weigh on it.
    ps_start_stream(decoder.get());
    isListening = ps_start_utt(decoder.get()) == 0;
}

/// Without it the first request of a conversation is heard as if everyone had the voice of whom the model was made: of
/// 40 requests in a man's voice 21 were heard right as the first, and 31 after others.
void Decoder::Parts::knowVoice()
{
    knowsVoice = true;
    const std::vector<std::int16_t> samples = std::exchange(firstSamples, {});
    ps_end_utt(decoder.get());
    learnVoice(decoder.get(), settings.get(), samples);
    startUtterance();
    if (isListening && !samples.empty())
        ps_process_raw(decoder.get(), samples.data(), samples.size(), FALSE, FALSE);
}

Decoder::Decoder(std::unique_ptr<Parts> parts)
    : m_parts(std::move(parts))
{
}

Decoder::~Decoder() = default;

std::unique_ptr<Decoder> Decoder::create(const Options& options, const std::stop_token& stop)
{
    const std::lock_guard lock(setUp());
    err_set_logfp(nullptr);
    auto parts = std::make_unique<Parts>();
    // One step after the other, so that whoever gives up waits for one of them and not for all.
    for (const auto step : {&Parts::readSounds, &Parts::readFirstModel, &Parts::mixInSecondModel, &Parts::beginSearch})
        if (stop.stop_requested() || !(*parts.*step)(options))
            return nullptr;
    return std::unique_ptr<Decoder>(new Decoder(std::move(parts)));
}

void Decoder::begin()
{
    if (m_parts->isListening)
        ps_end_utt(m_parts->decoder.get());
    m_parts->firstSamples.clear();
    m_parts->startUtterance();
}

void Decoder::feed(std::span<const std::int16_t> samples)
{
    if (!m_parts->isListening || samples.empty())
        return;
    ps_process_raw(m_parts->decoder.get(), samples.data(), samples.size(), FALSE, FALSE);
    if (m_parts->knowsVoice)
        return;
    m_parts->firstSamples.insert(m_parts->firstSamples.end(), samples.begin(), samples.end());
    if (m_parts->firstSamples.size() >= samplesToKnowAVoice)
        m_parts->knowVoice();
}

Decoder::Result Decoder::finish()
{
    Result result;
    ps_decoder_t* decoder = m_parts->decoder.get();
    if (m_parts->isListening && !m_parts->knowsVoice && !m_parts->firstSamples.empty()) {
        m_parts->knowVoice();
        m_parts->knowsVoice = false; // A word tells little; the next utterance tells more.
    }
    if (!std::exchange(m_parts->isListening, false) || ps_end_utt(decoder) != 0 || !ps_get_hyp(decoder, &result.score))
        return result;
    for (ps_seg_t* segment = ps_seg_iter(decoder); segment; segment = ps_seg_next(segment)) {
        const char* word = ps_seg_word(segment);
        if (!word || isFiller(word))
            continue;
        int sound = 0;
        int model = 0;
        int backOff = 0;
        const int confidence = ps_seg_prob(segment, &sound, &model, &backOff);
        result.words.push_back({plainWord(word), static_cast<float>(logmath_exp(ps_get_logmath(decoder), confidence))});
        result.text.append(result.text.empty() ? "" : " ").append(result.words.back().text);
    }
    result.others = otherWordings(decoder, result.text);
    return result;
}

std::string Decoder::heardSoFar() const
{
    int score = 0;
    const char* words = m_parts->isListening ? ps_get_hyp(m_parts->decoder.get(), &score) : nullptr;
    return words ? words : "";
}

std::optional<int> Decoder::agreement(std::span<const std::int16_t> samples, const std::string& words)
{
    ps_decoder_t* decoder = m_parts->decoder.get();
    const std::string grammar = "#JSGF V1.0; grammar comparison; public <words> = " + words + ";";
    if (m_parts->isListening || ps_set_jsgf_string(decoder, comparison, grammar.c_str()) != 0)
        return std::nullopt;
    std::optional<int> score;
    if (ps_set_search(decoder, comparison) == 0) {
        begin();
        // All at once: the loudness of the whole evens out differences between its parts.
        ps_process_raw(decoder, samples.data(), samples.size(), FALSE, TRUE);
        int value = 0;
        if (std::exchange(m_parts->isListening, false) && ps_end_utt(decoder) == 0) {
            const char* heard = ps_get_hyp(decoder, &value);
            score = heard && words == heard ? std::optional(value) : std::nullopt;
        }
    }
    ps_set_search(decoder, search);
    return score;
}

} // namespace quorvell
