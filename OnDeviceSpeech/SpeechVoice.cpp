// SPDX-License-Identifier: MIT
#include "OnDeviceSpeech/SpeechVoice.h"

#include <algorithm>
#include <array>
#include <mutex>

// NOLINTBEGIN(readability-identifier-naming): the library's own names.
extern "C" {
#include <flite.h>
cst_voice* register_cmu_us_slt(const char* folder);
cst_voice* register_cmu_us_rms(const char* folder);
cst_voice* register_cmu_us_awb(const char* folder);
cst_voice* register_cmu_us_kal16(const char* folder);
}
// NOLINTEND(readability-identifier-naming)

namespace quorvell {

namespace {

struct KnownVoice {
    std::string_view name;
    cst_voice* (*open)(const char*);
};

constexpr std::array knownVoices{
    KnownVoice{"slt", register_cmu_us_slt}, // the default
    KnownVoice{"rms", register_cmu_us_rms},
    KnownVoice{"awb", register_cmu_us_awb},
    KnownVoice{"kal16", register_cmu_us_kal16},
};

/// The engine counts references to shared values without atomics, so one sentence is made at a time in this process.
std::mutex& engine()
{
    static std::mutex mutex;
    return mutex;
}

cst_voice* openVoice(std::string_view name)
{
    const std::lock_guard lock(engine());
    static const bool isReady = flite_init() >= 0;
    const auto known = std::find_if(
        knownVoices.begin(), knownVoices.end(), [name](const KnownVoice& voice) { return voice.name == name; });
    const KnownVoice& voice = known == knownVoices.end() ? knownVoices.front() : *known;
    return isReady ? voice.open(nullptr) : nullptr;
}

struct Delivery {
    const SpeechVoice::Sink& sink;
    const std::stop_token& stop;
};

extern "C" int deliverPiece(
    const cst_wave* wave, int start, int size, int /*last*/, cst_audio_streaming_info* streaming)
{
    const auto& delivery = *static_cast<const Delivery*>(streaming->userdata);
    if (delivery.stop.stop_requested())
        return CST_AUDIO_STREAM_STOP;
    delivery.sink({wave->samples + start, static_cast<std::size_t>(size)});
    return CST_AUDIO_STREAM_CONT;
}

/// Up to and including the next end of a sentence, so that the first words are heard while the rest is made.
std::string_view nextSentence(std::string_view text)
{
    for (std::size_t index = 0; index + 1 < text.size(); ++index) {
        const bool isEnd = text[index] == '.' || text[index] == '!' || text[index] == '?';
        const bool isAbbreviation = index >= 2 && text[index] == '.' && text[index - 2] == '.'; // "p.m."
        if (isEnd && !isAbbreviation && text[index + 1] == ' ')
            return text.substr(0, index + 1);
    }
    return text;
}

void speakSentence(cst_voice* voice, const std::string& sentence, const Delivery& delivery)
{
    const std::lock_guard lock(engine());
    cst_audio_streaming_info* streaming = new_audio_streaming_info();
    streaming->asc = deliverPiece;
    streaming->userdata = const_cast<Delivery*>(&delivery);
    feat_set(voice->features, "streaming_info", audio_streaming_info_val(streaming)); // takes the object over
    if (cst_wave* wave = flite_text_to_wave(sentence.c_str(), voice))
        delete_wave(wave);
    feat_remove(voice->features, "streaming_info");
}

} // namespace

struct SpeechVoice::Parts {
    cst_voice* voice = nullptr; ///< Owned by the engine, shared by all that speak with it.
};

std::vector<std::string> SpeechVoice::names()
{
    std::vector<std::string> names;
    names.reserve(knownVoices.size());
    for (const KnownVoice& voice : knownVoices)
        names.emplace_back(voice.name);
    return names;
}

SpeechVoice::SpeechVoice(std::string_view name)
    : m_parts(std::make_unique<Parts>())
{
    m_parts->voice = openVoice(name);
}

SpeechVoice::~SpeechVoice() = default;

void SpeechVoice::speak(std::string_view text, const Sink& sink, std::stop_token stop)
{
    while (m_parts->voice && !text.empty() && !stop.stop_requested()) {
        const std::string_view sentence = nextSentence(text);
        speakSentence(m_parts->voice, std::string(sentence), {sink, stop});
        text.remove_prefix(sentence.size());
        text.remove_prefix(std::min(text.size(), text.find_first_not_of(' ')));
    }
}

} // namespace quorvell
