// The assistant's own voice must not take a turn, and a person who speaks over it must. The signal goes through the
// same cleaning and the same gate as in a conversation, faster than it would be heard.

#include "Quorvell/audio/Resampler.h"
#include "Quorvell/audio/WavFile.h"
#include "Quorvell/sound/CaptureCleaner.h"
#include "QuorvellCore/live/gate/MicGate.h"
#include "QuorvellCore/live/gate/PCM.h"
#include "SoundRig.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>
#include <random>

namespace quorvell::test {
namespace {

using namespace std::chrono_literals;

constexpr std::size_t chunkSamples = 960;
constexpr std::size_t rate = 24000;

/// Of signal in each row: ten minutes when QUORVELL_LONG is set.
std::size_t seconds()
{
    return std::getenv("QUORVELL_LONG") ? 600 : 30;
}

std::vector<std::int16_t> voice(const TemporaryFolder& folder, const std::string& name, const std::string& text)
{
    const std::string path = folder / (name + ".wav");
    const std::string command = "flite -voice " + name + " -t '" + text + "' -o " + path;
    EXPECT_EQ(std::system(command.c_str()), 0);
    return WavFile::read(path, static_cast<int>(rate)).samples.value_or(std::vector<std::int16_t>(1));
}

const std::string reply =
    "I will remind you to call the dentist on Sunday the twenty second of November at five in the "
    "afternoon. You asked me to look at the letter from the bank, and there is nothing to worry "
    "about. It says that the monthly fee goes up by two euros in January. Shall I keep a note of "
    "it, so that we can come back to it next week? Good. Your next event is the choir, at seven.";
const std::string request = "Wait, that is enough for now, thank you. Tell me about the weather instead.";

/// From loudspeaker to microphone: the direct way and 60 ms of reflections that die away.
class Room {
public:
    /// With `distortion` the loudspeaker bends loud sound, as small ones do.
    Room(const std::vector<std::int16_t>& played, double gain, std::chrono::milliseconds delay, double distortion)
        : m_delay(static_cast<std::size_t>(delay.count()) * rate / 1000)
    {
        for (const std::int16_t sample : played) {
            const double sound = sample * gain;
            m_played.push_back(distortion == 0 ? sound : std::tanh(sound * distortion / 32768) * 32768 / distortion);
        }
        m_reflections.push_back({0, 1});
        std::normal_distribution<double> strength(0, 0.5);
        for (int count = 0; count < 40; ++count) {
            const std::size_t after = 48 + m_chance() % (rate * 60 / 1000);
            m_reflections.push_back({after, strength(m_chance) * std::exp(-6.9 * static_cast<double>(after) / 1440)});
        }
    }
    std::int16_t at(std::size_t time, double person)
    {
        double sum = person + m_hiss(m_chance);
        for (const auto& [after, strength] : m_reflections) {
            if (time >= m_delay + after)
                sum += strength * m_played[(time - m_delay - after) % m_played.size()];
        }
        return static_cast<std::int16_t>(std::clamp(sum, -32768.0, 32767.0));
    }

private:
    std::mt19937 m_chance{7};
    std::normal_distribution<double> m_hiss{0, 4};
    std::vector<double> m_played;
    std::size_t m_delay;
    std::vector<std::pair<std::size_t, double>> m_reflections;
};

struct Proof {
    int opens = 0; ///< While only the assistant spoke.
    int missed = 0; ///< Interruptions that did not open the gate in time.
    std::vector<int> onsetMs; ///< From the person's first word to the open gate.
    float loudestEcho = 0; ///< Level, while only the assistant spoke.
};

/// The person, if there is one, says three seconds every ten, from the fourth on.
Proof prove(
    Room room, const std::vector<std::int16_t>& played, const std::vector<std::int16_t>& person, double loudness)
{
    EchoReference reference;
    CaptureCleaner cleaner(reference);
    MicGate gate;
    Proof proof;
    bool wasHeard = true;
    const std::size_t length = seconds() * rate;
    for (std::size_t start = 0; start + chunkSamples <= length; start += chunkSamples) {
        const std::size_t phase = start % (10 * rate);
        const bool isSpeaking = loudness > 0 && phase >= 4 * rate && phase < 7 * rate;
        std::vector<std::int16_t> chunk(chunkSamples);
        std::vector<std::int16_t> loudspeaker(chunkSamples);
        for (std::size_t index = 0; index < chunkSamples; ++index) {
            const double words = isSpeaking ? loudness * person[(phase + index - 4 * rate) % person.size()] : 0;
            chunk[index] = room.at(start + index, words);
            loudspeaker[index] = played[(start + index) % played.size()];
        }
        reference.played(loudspeaker);
        cleaner.clean(chunk);
        const Bytes pcm = PCM::floatToInt16LE(toFloat(chunk));
        const float level = PCM::levelOfInt16LE(pcm);
        const int before = gate.opens;
        gate.process({pcm}, level);
        const bool opened = gate.opens > before;
        if (loudness > 0 && phase == 4 * rate) {
            proof.missed += wasHeard ? 0 : 1;
            wasHeard = gate.isOpen;
        }
        if (isSpeaking && opened && !wasHeard) {
            wasHeard = true;
            proof.onsetMs.push_back(static_cast<int>((phase - 4 * rate + chunkSamples) * 1000 / rate));
        }
        const bool isAlone = loudness == 0 || phase < 4 * rate || phase > 9 * rate;
        proof.opens += opened && isAlone ? 1 : 0;
        proof.loudestEcho = isAlone && phase > 0 ? std::max(proof.loudestEcho, level) : proof.loudestEcho;
    }
    proof.missed += wasHeard ? 0 : 1;
    return proof;
}

/// The loudspeaker's monitor is the microphone here, and the person is another program that plays beside us.
TEST(EchoProof, holdsThroughTheSoundServer)
{
    const TemporaryFolder folder;
    const auto length = std::getenv("QUORVELL_LONG") ? 60s : 5s;
    const auto played = voice(folder, "slt", reply);
    voice(folder, "rms", request);
    SoundRig rig({"module-null-sink sink_name=speaker rate=48000 channels=1 norewinds=1"});
    MicGate bare;
    MicGate clean;
    const auto into = [](MicGate& gate) {
        return [&gate](std::span<const std::uint8_t> pcm) {
            gate.process({Bytes(pcm.begin(), pcm.end())}, PCM::levelOfInt16LE(pcm));
        };
    };
    const PulseCapture::Reports toClean{into(clean), [](const std::string&) {}, [] {}};
    const PulseCapture::Reports toBare{into(bare), [](const std::string&) {}, [] {}};
    PulseCapture cleaned(rig.server, rig.playedHere, toClean);
    PulseCapture uncleaned(rig.server, rig.heardBeside, toBare);
    for (PulseCapture* capture : {&cleaned, &uncleaned}) {
        capture->chooseDevice("speaker.monitor");
        capture->open();
    }
    ASSERT_TRUE(rig.waitFor([&] { return clean.chunksHeard > 5 && bare.chunksHeard > 5; }));
    const Bytes pcm = PCM::floatToInt16LE(toFloat(std::span(played)));
    for (auto given = 0s; given < length + 10s; given += std::chrono::seconds(pcm.size() / 48000))
        rig.player.play(pcm);
    rig.scheduler.run(length);
    EXPECT_EQ(clean.opens, 0);
    EXPECT_GT(bare.opens, 0) << "there was no echo to take out";
    const std::string interrupt =
        "paplay -s " + rig.pulse.address() + " -d speaker " + folder.path() + "/rms.wav 2>/dev/null &";
    ASSERT_EQ(std::system(interrupt.c_str()), 0);
    EXPECT_TRUE(rig.waitFor([&] { return clean.opens > 0; })) << "the person is not heard";
}

TEST(EchoProof, ownVoiceNeverTakesATurnAndAPersonDoes)
{
    const TemporaryFolder folder;
    const auto played = voice(folder, "slt", reply);
    const auto person = voice(folder, "rms", request);
    struct Row {
        const char* name;
        double echo; ///< How loud the loudspeaker is in the microphone.
        std::chrono::milliseconds delay;
        double distortion; ///< 0 for none.
        double person; ///< 0 for nobody.
    };
    const Row rows[] = {
        {"as loud as the loudspeaker itself", 1.0, 60ms, 0, 0},
        {"quieter, through a slow device", 0.3, 250ms, 0, 0},
        {"a small loudspeaker that distorts", 0.3, 60ms, 2, 0},
        {"a person over it", 0.3, 60ms, 0, 0.7},
        {"a person over a loud loudspeaker", 0.7, 60ms, 0, 0.7},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const Proof proof = prove(Room(played, row.echo, row.delay, row.distortion), played, person, row.person);
        EXPECT_EQ(proof.opens, 0);
        EXPECT_LT(proof.loudestEcho, MicGate::openLevel);
        EXPECT_EQ(proof.missed, 0);
        int worst = 0;
        for (const int onset : proof.onsetMs)
            worst = std::max(worst, onset);
        std::cout << row.name << ": " << seconds() << " s, " << proof.opens << " false turns, loudest echo "
                  << proof.loudestEcho << ", " << proof.onsetMs.size() << " interruptions heard, " << proof.missed
                  << " missed, after " << worst << " ms at most\n";
    }
}

} // namespace
} // namespace quorvell::test
