#include "OnDeviceSpeech/Decoder.h"

#include <array>
#include <mutex>
#include <string_view>
#include <utility>

extern "C" {
#include <ngram_model.h>
#include <pocketsphinx.h>
#include <ps_search.h>
#include <sphinxbase/err.h>
}

namespace quorvell {

namespace {

const char* const mixedSearch = "mixed";

/// The library's set-up of its options and its log are not made for two threads at once.
std::mutex& setUp()
{
    static std::mutex mutex;
    return mutex;
}

struct Release {
    void operator()(ps_decoder_t* decoder) const { ps_free(decoder); }
    void operator()(cmd_ln_t* options) const { cmd_ln_free_r(options); }
};

/// Mixes both models. The set takes its members over.
bool mixModels(ps_decoder_t* decoder, cmd_ln_t* settings, const Decoder::Options& options)
{
    logmath_t* logarithms = ps_get_logmath(decoder);
    ngram_model_t* first = ngram_model_read(settings, options.languageModel.c_str(), NGRAM_AUTO, logarithms);
    ngram_model_t* second = ngram_model_read(settings, options.secondLanguageModel.c_str(), NGRAM_AUTO, logarithms);
    if (!first || !second) {
        ngram_model_free(first);
        ngram_model_free(second);
        return false;
    }
    std::array models{first, second};
    std::string firstName = "first";
    std::string secondName = "second";
    std::array names{firstName.data(), secondName.data()};
    const std::array weights{options.shareOfFirst, 1 - options.shareOfFirst};
    ngram_model_t* mixed = ngram_model_set_init(settings, models.data(), names.data(), weights.data(), 2);
    const bool isSet = mixed && ps_set_lm(decoder, mixedSearch, mixed) == 0 && ps_set_search(decoder, mixedSearch) == 0;
    ngram_model_free(mixed);
    ngram_model_free(first);
    ngram_model_free(second);
    return isSet;
}

/// Without the number of a further pronunciation, "read(2)".
std::string plainWord(std::string_view word)
{
    return std::string(word.substr(0, word.find('(')));
}

} // namespace

struct Decoder::Parts {
    std::unique_ptr<cmd_ln_t, Release> settings;
    std::unique_ptr<ps_decoder_t, Release> decoder;
    bool isListening = false;
};

Decoder::Decoder(std::unique_ptr<Parts> parts)
    : m_parts(std::move(parts))
{
}

Decoder::~Decoder() = default;

std::unique_ptr<Decoder> Decoder::create(const Options& options)
{
    const std::lock_guard lock(setUp());
    err_set_logfp(nullptr);
    auto parts = std::make_unique<Parts>();
    const bool isMixed = !options.secondLanguageModel.empty();
    // The gate before us has cut silences off already; all that it let through is listened to.
    parts->settings.reset(cmd_ln_init(nullptr, ps_args(), TRUE, "-hmm", options.acousticModel.c_str(), "-dict",
        options.dictionary.c_str(), "-remove_silence", "no", isMixed ? nullptr : "-lm", options.languageModel.c_str(),
        nullptr));
    if (!parts->settings)
        return nullptr;
    parts->decoder.reset(ps_init(parts->settings.get()));
    if (!parts->decoder || (isMixed && !mixModels(parts->decoder.get(), parts->settings.get(), options)))
        return nullptr;
    return std::unique_ptr<Decoder>(new Decoder(std::move(parts)));
}

void Decoder::begin()
{
    if (m_parts->isListening)
        ps_end_utt(m_parts->decoder.get());
    // A new stream, so that what was heard before does not weigh on it.
    ps_start_stream(m_parts->decoder.get());
    m_parts->isListening = ps_start_utt(m_parts->decoder.get()) == 0;
}

void Decoder::feed(std::span<const std::int16_t> samples)
{
    if (m_parts->isListening && !samples.empty())
        ps_process_raw(m_parts->decoder.get(), samples.data(), samples.size(), FALSE, FALSE);
}

Decoder::Result Decoder::finish()
{
    Result result;
    ps_decoder_t* decoder = m_parts->decoder.get();
    if (!std::exchange(m_parts->isListening, false) || ps_end_utt(decoder) != 0 || !ps_get_hyp(decoder, &result.score))
        return result;
    for (ps_seg_t* segment = ps_seg_iter(decoder); segment; segment = ps_seg_next(segment)) {
        const char* word = ps_seg_word(segment);
        // Silences and noises
        if (!word || std::string_view("<[+").find(word[0]) != std::string_view::npos)
            continue;
        result.text.append(result.text.empty() ? "" : " ").append(plainWord(word));
    }
    return result;
}

} // namespace quorvell
