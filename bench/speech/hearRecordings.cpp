// SPDX-License-Identifier: MIT
// Tells what the recogniser hears in recordings, one line of JSON each, and how long it worked at it. The models are
// loaded once, so that many wordings, voices and rooms can be compared in minutes; scripts/measure-wordings does.
#include "OnDeviceSpeech/SoundQuality.h"
#include "OnDeviceSpeech/SpeechRecogniser.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <fstream>
#include <iostream>
#include <iterator>
#include <span>
#include <string>
#include <vector>

using namespace quorvell;

namespace {

/// 16 kHz, mono, 16 bits, without a header.
std::vector<std::int16_t> samplesOf(const char* path)
{
    std::ifstream file(path, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    std::vector<std::int16_t> samples(bytes.size() / 2);
    std::copy_n(bytes.data(), samples.size() * 2, reinterpret_cast<char*>(samples.data()));
    return samples;
}

nlohmann::json heardIn(SpeechRecogniser& recogniser, std::span<const std::int16_t> samples)
{
    constexpr std::size_t chunk = SpeechRecogniser::sampleRateHz / 25; // as they come from a microphone
    const SoundQuality quality = soundQualityOf(samples);
    const auto start = std::chrono::steady_clock::now();
    recogniser.begin();
    for (; !samples.empty(); samples = samples.subspan(std::min(chunk, samples.size()))) {
        recogniser.feed(samples.first(std::min(chunk, samples.size())));
    }
    const RecognisedUtterance heard = recogniser.finish();
    const std::chrono::duration<double, std::milli> work = std::chrono::steady_clock::now() - start;
    const char* const qualities[] = {"good", "noisy", "narrow"};
    return {{"text", heard.text}, {"or_else", heard.orElse}, {"faint_names", heard.faintNames},
        {"quality", qualities[static_cast<int>(quality)]}, {"confidence", heard.confidence},
        {"least_of_times", heard.leastOfTimes}, {"work_ms", work.count()}};
}

} // namespace

int main(int argumentCount, char** arguments)
{
    if (argumentCount < 3) {
        std::cerr << "Usage: hear_recordings FOLDER_OF_THE_PROGRAM RECORDING.raw ...\n";
        return 2;
    }
    const SpeechRecogniser::Made made = SpeechRecogniser::create(SpeechModels::find(arguments[1]));
    if (!made.recogniser) {
        std::cerr << made.problem << '\n';
        return 1;
    }
    for (const char* path : std::span(arguments, static_cast<std::size_t>(argumentCount)).subspan(2)) {
        nlohmann::json line = heardIn(*made.recogniser, samplesOf(path));
        line["recording"] = path;
        std::cout << line.dump() << std::endl;
    }
    return 0;
}
