// SPDX-License-Identifier: MIT
// What one 40 ms frame of sound costs on the wire, each way, beside what any client must pay: base64 alone, and JSON
// with base64 written in the plainest way.
#include "QuorvellCore/live/gate/MicGate.h"
#include "QuorvellCore/live/gate/PCM.h"
#include "QuorvellCore/live/wire/gemini/GeminiClientParser.h"
#include "QuorvellCore/live/wire/gemini/GeminiServerMessage.h"
#include "QuorvellCore/live/wire/gemini/LiveMessage.h"
#include "QuorvellCore/live/wire/gemini/LiveServerParser.h"
#include "QuorvellCore/live/wire/openai/OpenAILiveClientParser.h"
#include "QuorvellCore/live/wire/openai/OpenAILiveEventMapper.h"
#include "QuorvellCore/live/wire/openai/OpenAILiveMessage.h"
#include "QuorvellCore/live/wire/openai/OpenAILiveParser.h"
#include "QuorvellCore/live/wire/openai/OpenAILiveServerMessage.h"
#include "QuorvellCore/text/Base64.h"

#include <benchmark/benchmark.h>

#include <cmath>

namespace {

using namespace quorvell;

constexpr std::size_t frameSamples = 960; // 40 ms at 24000 Hz

/// A tone with an overtone: every byte value occurs, as in speech.
Bytes frame()
{
    std::vector<float> samples(frameSamples);
    for (std::size_t index = 0; index < frameSamples; ++index) {
        const float time = static_cast<float>(index) / 24000.0f;
        samples[index] = 0.4f * std::sin(time * 1382.0f) + 0.2f * std::sin(time * 9110.0f);
    }
    return PCM::floatToInt16LE(samples);
}

const Bytes pcm = frame();
const std::string received = OpenAILiveServerMessage::outputAudioDeltaText(pcm);
const std::string sent = OpenAILiveMessage::audioText(pcm);

const std::string geminiReceived = dumpJson(GeminiServerMessage::audio(pcm));
const std::string geminiSent = LiveMessage::audioText(pcm);

void encodeBase64Alone(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(base64Encode(pcm));
}

void encodePlainJson(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(Json{{"type", "session.input_audio.append"}, {"audio", base64Encode(pcm)}}.dump());
}

void encodeFrame(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(OpenAILiveMessage::audioText(pcm));
}

void decodeBase64Alone(benchmark::State& state)
{
    const std::string text = base64Encode(pcm);
    for (auto _ : state)
        benchmark::DoNotOptimize(base64Decode(text));
}

void decodePlainJson(benchmark::State& state)
{
    for (auto _ : state) {
        const Json message = Json::parse(received, nullptr, false);
        benchmark::DoNotOptimize(base64Decode(*message["delta"].get_ptr<const std::string*>()));
    }
}

void decodeFrame(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(OpenAILiveParser::parse(received));
}

void decodeFrameForTheSession(benchmark::State& state)
{
    for (auto _ : state) {
        for (OpenAILiveEvent& event : OpenAILiveParser::parse(received))
            benchmark::DoNotOptimize(OpenAILiveEventMapper::map(std::move(event)));
    }
}

void decodeFrameOnTheServer(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(OpenAILiveClientParser::parse(sent));
}

void encodeGeminiPlainJson(benchmark::State& state)
{
    for (auto _ : state) {
        const Json message{{"realtimeInput",
            {{"audio", {{"data", base64Encode(pcm)}, {"mimeType", LiveMessage::inputAudioMimeType}}}}}};
        benchmark::DoNotOptimize(message.dump());
    }
}

void encodeGeminiFrame(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(LiveMessage::audioText(pcm));
}

void decodeGeminiPlainJson(benchmark::State& state)
{
    const Json::json_pointer data("/serverContent/modelTurn/parts/0/inlineData/data");
    for (auto _ : state) {
        const Json message = Json::parse(geminiReceived, nullptr, false);
        benchmark::DoNotOptimize(base64Decode(*message[data].get_ptr<const std::string*>()));
    }
}

void decodeGeminiFrame(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(LiveServerParser::parse(geminiReceived));
}

void decodeGeminiFrameOnTheServer(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(GeminiClientParser::parse(geminiSent));
}

void gateFrame(benchmark::State& state)
{
    MicGate gate;
    for (auto _ : state)
        benchmark::DoNotOptimize(gate.process({pcm}, PCM::levelOfInt16LE(pcm)));
}

BENCHMARK(encodeBase64Alone);
BENCHMARK(encodePlainJson);
BENCHMARK(encodeFrame);
BENCHMARK(decodeBase64Alone);
BENCHMARK(decodePlainJson);
BENCHMARK(decodeFrame);
BENCHMARK(decodeFrameForTheSession);
BENCHMARK(decodeFrameOnTheServer);
BENCHMARK(encodeGeminiPlainJson);
BENCHMARK(encodeGeminiFrame);
BENCHMARK(decodeGeminiPlainJson);
BENCHMARK(decodeGeminiFrame);
BENCHMARK(decodeGeminiFrameOnTheServer);
BENCHMARK(gateFrame);

} // namespace
