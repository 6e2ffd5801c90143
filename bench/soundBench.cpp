// SPDX-License-Identifier: MIT
// What the sound rooms cost and how soon they act, through a private sound server: one JSON object a line.

#include "Media/audio/Resampler.h"
#include "Media/audio/SampleBytes.h"
#include "OnDeviceSpeech/SpeechVoice.h"
#include "PrivatePulse.h"
#include "Quorvell/sound/CaptureCleaner.h"
#include "Quorvell/sound/PulseCapture.h"
#include "Quorvell/sound/PulsePlayer.h"
#include "Quorvell/speech/DeviceEar.h"
#include "QuorvellCore/live/gate/MicGate.h"
#include "QuorvellCore/live/gate/PCM.h"
#include "RealScheduler.h"

#include <pulse/stream.h>
#include <sys/resource.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <optional>
#include <random>

namespace quorvell::test {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

double milliseconds(Clock::duration duration)
{
    return std::chrono::duration<double, std::milli>(duration).count();
}

void print(const char* name, std::vector<double> values, const char* unit)
{
    std::sort(values.begin(), values.end());
    if (values.empty())
        std::printf("{\"name\": \"%s\", \"missing\": 1}\n", name);
    else
        std::printf("{\"name\": \"%s\", \"p50\": %.2f, \"worst\": %.2f, \"unit\": \"%s\", \"runs\": %zu}\n", name,
            values[values.size() / 2], values.back(), unit, values.size());
    std::fflush(stdout);
}

constexpr int loud = 1000; ///< In 16-bit units; softer sound does not count.

/// From its first loud sample on, at the session's rate.
std::vector<std::int16_t> speech(std::string_view voice, std::string_view words)
{
    std::vector<std::int16_t> samples;
    const auto take = [&](std::span<const std::int16_t> piece) {
        samples.insert(samples.end(), piece.begin(), piece.end());
    };
    SpeechVoice(voice).speak(words, take, {});
    auto spoken = Resampler(SpeechVoice::sampleRateHz, 24000).process(std::span<const std::int16_t>(samples));
    spoken.erase(
        spoken.begin(), std::find_if(spoken.begin(), spoken.end(), [](int sample) { return std::abs(sample) > loud; }));
    return spoken;
}

Bytes bytesOf(const std::vector<std::int16_t>& samples)
{
    const auto bytes = bytesOfSamples(samples);
    return {bytes.begin(), bytes.end()};
}

/// When a device began to sound and when it fell silent, seen where the sound server hands the sound out.
class Witness {
public:
    Witness(SoundServer& server, const std::string& device)
        : m_stream(server, {PulseStream::Direction::record, "Witness", device, 240},
            {[this](pa_stream* stream, std::size_t) { look(stream); }, [] {}, [] {}})
    {
    }

    /// Nothing until it sounds.
    std::optional<Clock::time_point> began() const { return time(m_began); }
    std::optional<Clock::time_point> lastLoud() const { return time(m_lastLoud); }
    void reset()
    {
        m_began = 0;
        m_lastLoud = 0;
    }

private:
    static std::optional<Clock::time_point> time(std::int64_t ticks)
    {
        if (ticks == 0)
            return std::nullopt;
        return Clock::time_point(Clock::duration(ticks));
    }
    void look(pa_stream* stream)
    {
        const void* data = nullptr;
        std::size_t bytes = 0;
        while (pa_stream_peek(stream, &data, &bytes) >= 0 && bytes > 0) {
            const std::span pcm(static_cast<const std::uint8_t*>(data), data ? bytes : 0);
            if (!PCM::isSilent(pcm, loud / 2)) {
                const std::int64_t now = Clock::now().time_since_epoch().count();
                m_lastLoud = now;
                std::int64_t none = 0;
                m_began.compare_exchange_strong(none, now);
            }
            pa_stream_drop(stream);
        }
    }

    std::atomic<std::int64_t> m_began{0};
    std::atomic<std::int64_t> m_lastLoud{0};
    PulseStream m_stream; ///< Last: it calls the rest.
};

PulsePlayer::Reports silentReports()
{
    return {[](const std::string& sentence) { std::fprintf(stderr, "%s\n", sentence.c_str()); }, [] {}};
}

/// Assistant and person have a loudspeaker each; the microphone hears the person.
void measureLatencies(int rounds)
{
    const PrivatePulse pulse(
        {"module-null-sink sink_name=speaker rate=48000", "module-null-sink sink_name=person rate=48000"},
        {"speaker", "person"});
    RealScheduler scheduler;
    SoundServer server({pulse.address(), pulse.folder()}, scheduler);
    scheduler.runUntil([&] { return server.isReady(); });
    scheduler.run(2500ms); // the null sinks come to their pace
    EchoReference reference;
    EchoReference ofPerson;
    PulsePlayer player(server, reference, silentReports());
    PulsePlayer person(server, ofPerson, silentReports());
    player.chooseDevice("speaker");
    person.chooseDevice("person");
    MicGate gate;
    std::optional<Clock::time_point> heard;
    bool stopsAtOnset = false;
    PulseCapture capture(server, reference,
        {[&](std::span<const std::uint8_t> pcm) {
             const float level = PCM::levelOfInt16LE(pcm);
             if (!heard && !PCM::isSilent(pcm, loud / 4))
                 heard = Clock::now();
             const bool wasOpen = gate.isOpen;
             gate.process({Bytes(pcm.begin(), pcm.end())}, level);
             if (stopsAtOnset && !wasOpen && gate.isOpen)
                 player.stop();
         },
            [](const std::string& sentence) { std::fprintf(stderr, "%s\n", sentence.c_str()); }, [] {}});
    capture.chooseDevice("person.monitor");
    capture.open();
    Witness atSpeaker(server, "speaker.monitor");
    Witness atPerson(server, "person.monitor");
    scheduler.run(1s);

    std::vector<double> toLoudspeaker;
    std::vector<double> toSilence;
    std::vector<double> toSession;
    std::vector<double> bargeIn;
    const Bytes request = bytesOf(speech("rms", "Actually, I would rather hear about the weather."));
    const Bytes reply = bytesOf(speech("slt",
        "I will remind you of the choir, which begins at seven, and of the fee, that goes up in January, "
        "and of the dentist, whom you wanted to call tomorrow in the afternoon."));
    for (int round = 0; round < rounds; ++round) {
        scheduler.run(std::chrono::milliseconds(900 + round * 7)); // another phase of the 40 ms chunks each time
        atSpeaker.reset();
        stopsAtOnset = false;
        auto start = Clock::now();
        player.play(reply);
        scheduler.runUntil([&] { return atSpeaker.began().has_value(); });
        toLoudspeaker.push_back(milliseconds(*atSpeaker.began() - start));
        scheduler.run(400ms);
        start = Clock::now();
        player.stop();
        scheduler.run(200ms);
        toSilence.push_back(milliseconds(*atSpeaker.lastLoud() - start));

        player.play(reply);
        scheduler.run(std::chrono::milliseconds(600));
        gate.reset();
        scheduler.run(200ms);
        stopsAtOnset = true;
        heard.reset();
        atPerson.reset();
        person.play(request);
        scheduler.run(1500ms);
        person.stop();
        if (heard && atPerson.began())
            toSession.push_back(milliseconds(*heard - *atPerson.began()));
        if (gate.opens > 0 && atPerson.began())
            bargeIn.push_back(milliseconds(*atSpeaker.lastLoud() - *atPerson.began()));
        player.stop();
    }
    print("session to loudspeaker", toLoudspeaker, "ms");
    print("stop to silence", toSilence, "ms");
    print("microphone to session", toSession, "ms");
    print("barge-in: first loud sample to silence", bargeIn, "ms");
}

double processorSeconds()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_usec);
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

double percentOfCore(const std::function<void()>& work, std::chrono::milliseconds length)
{
    const double before = processorSeconds();
    work();
    return 100 * (processorSeconds() - before) / std::chrono::duration<double>(length).count();
}

/// A resting assistant: the microphone is open, and the ear listens for words. Our process alone is measured.
void measureRest(const char* name, float level, const std::string& programFolder, std::chrono::milliseconds length)
{
    PrivatePulse pulse({"module-null-sink sink_name=speaker rate=48000 channels=1"});
    pulse.control("info");
    const std::string noise = pulse.folder() + "/noise";
    std::mt19937 chance(1);
    std::normal_distribution<float> sample(0, level / 4);
    std::vector<float> samples(24000 * 120);
    std::generate(samples.begin(), samples.end(), [&] { return sample(chance); });
    const Bytes pcm = PCM::floatToInt16LE(samples);
    std::ofstream(noise, std::ios::binary)
        .write(reinterpret_cast<const char*>(pcm.data()), static_cast<std::streamsize>(pcm.size()));
    const std::string play = "pacat -s " + pulse.address()
        + " -d speaker --latency-msec=500 --rate=24000 --channels=1 --format=s16le " + noise + " 2>/dev/null &";
    if (std::system(play.c_str()) != 0) // As lazy as it gets, so that the microphone comes at the pace that we ask for.
        return;

    RealScheduler scheduler;
    SoundServer server({pulse.address(), pulse.folder()}, scheduler);
    EchoReference reference;
    DeviceEar ear(SpeechModels::find(programFolder), scheduler);
    int onsets = 0;
    int chunks = 0;
    ear.start({[&] { ++onsets; }, [](const std::string&) {},
        [](const std::string& sentence) { std::fprintf(stderr, "%s\n", sentence.c_str()); }});
    PulseCapture capture(server, reference,
        {[&](std::span<const std::uint8_t> heard) {
             ++chunks;
             ear.captured(heard);
         },
            [](const std::string& sentence) { std::fprintf(stderr, "%s\n", sentence.c_str()); }, [] {}});
    capture.chooseDevice("speaker.monitor");
    capture.open();
    scheduler.run(12s);
    chunks = 0;
    print(name, {percentOfCore([&] { scheduler.run(length); }, length)}, "% of a core");
    std::fprintf(stderr, "%s: %d chunks heard, %d onsets\n", name, chunks, onsets);
}

void measureCanceller()
{
    const std::vector<std::int16_t> voice =
        speech("slt", "Your next event is the choir at seven. The monthly fee goes up in January.");
    EchoReference reference;
    CaptureCleaner cleaner(reference);
    std::array<std::int16_t, CaptureCleaner::chunkSamples> chunk;
    constexpr auto length = 60s;
    print("echo canceller, assistant speaking",
        {percentOfCore(
            [&] {
                for (std::size_t start = 0; start < 24000 * std::size_t{length.count()}; start += chunk.size()) {
                    for (std::size_t index = 0; index < chunk.size(); ++index)
                        chunk[index] = voice[(start + index) % voice.size()];
                    reference.played(chunk);
                    cleaner.clean(chunk);
                }
            },
            length)},
        "% of a core");
}

} // namespace
} // namespace quorvell::test

/// Argument: the folder of the program, beside which the speech models lie; "--brief" only sees that it still measures.
int main(int count, char** arguments)
{
    using namespace quorvell::test;
    if (count == 2 && std::string_view(arguments[1]) == "--brief") {
        measureLatencies(1);
        return 0;
    }
    const std::string program =
        count > 1 ? arguments[1] : std::filesystem::read_symlink("/proc/self/exe").parent_path().string();
    measureLatencies(12);
    measureCanceller();
    measureRest("rest in silence", 0, program, 15s);
    measureRest("rest in a quiet room", 0.008F, program, 15s);
    measureRest("rest beside a fan", 0.04F, program, 15s);
}
