// SPDX-License-Identifier: MIT
// The assistant's own voice must not take a turn, and a person who speaks over it must. The signal goes through the
// same cleaning and the same gate as in a conversation, faster than it would be heard.

#include "Media/audio/Resampler.h"
#include "Media/audio/WavFile.h"
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

constexpr std::size_t chunkSamples = CaptureCleaner::chunkSamples;
constexpr std::size_t rate = 24000;

/// Of signal in each row: ten minutes when QUORVELL_LONG is set.
std::size_t seconds()
{
    return std::getenv("QUORVELL_LONG") ? 600 : 20;
}

std::vector<std::int16_t> voice(const TemporaryFolder& folder, const std::string& name, const std::string& text)
{
    const std::string path = folder / (name + ".wav");
    const std::string command = "flite -voice " + name + " -t '" + text + "' -o " + path;
    EXPECT_EQ(std::system(command.c_str()), 0);
    return WavFile::read(path, static_cast<int>(rate)).samples.value_or(std::vector<std::int16_t>(rate));
}

const std::string reply =
    "I will remind you to call the dentist on Sunday the twenty second of November at five in the "
    "afternoon. You asked me to look at the letter from the bank, and there is nothing to worry "
    "about. It says that the monthly fee goes up by two euros in January. Shall I keep a note of "
    "it, so that we can come back to it next week? Good. Your next event is the choir, at seven.";
const std::string request = "Wait, that is enough for now, thank you. Tell me about the weather instead.";

struct Row {
    const char* name;
    double echo; ///< How loud the loudspeaker is in the microphone. 0: headphones.
    std::chrono::milliseconds delay;
    double distortion; ///< As small loudspeakers bend loud sound; 0 for none.
    double person; ///< 0 for nobody.
    double noise; ///< Of the room, in 16-bit units.
    int latestMs; ///< Until the person is heard.
    bool isSilent = false; ///< The assistant says nothing.
};

/// From loudspeaker to microphone: the direct way and 60 ms of reflections that die away.
class Room {
public:
    Room(const Row& row, const std::vector<std::int16_t>& played)
        : m_hiss(0, row.noise)
        , m_delay(static_cast<std::size_t>(row.delay.count()) * rate / 1000)
        , m_echo(played.size())
    {
        std::vector<double> heard; // begins with its own end, so that reflections reach across the start
        for (std::size_t index = played.size() - longest; index < 2 * played.size(); ++index) {
            const double sound = played[index % played.size()] * row.echo;
            const double bend = row.distortion;
            heard.push_back(bend == 0 ? sound : std::tanh(sound * bend / 32768) * 32768 / bend);
        }
        reflect(heard.data() + longest, 1);
        std::normal_distribution<double> strength(0, 0.5);
        for (int count = 0; count < 40; ++count) {
            const std::size_t after = 48 + m_chance() % (longest - 48);
            reflect(heard.data() + longest - after,
                strength(m_chance) * std::exp(-6.9 * static_cast<double>(after) / longest));
        }
    }
    std::int16_t at(std::size_t time, double person)
    {
        const double echo = time < m_delay + longest ? 0 : m_echo[(time - m_delay) % m_echo.size()];
        return static_cast<std::int16_t>(std::clamp(person + m_hiss(m_chance) + echo, -32768.0, 32767.0));
    }

private:
    static constexpr std::size_t longest = rate * 60 / 1000;

    void reflect(const double* sound, double strength)
    {
        double* const sums = m_echo.data(); // an unoptimised build is slow with iterators
        for (std::size_t index = 0; index < m_echo.size(); ++index)
            sums[index] += strength * sound[index];
    }

    std::mt19937 m_chance{7};
    std::normal_distribution<double> m_hiss;
    std::size_t m_delay;
    std::vector<double> m_echo; ///< Of the whole of what is played, again and again.
};

struct Proof {
    int opens = 0; ///< While only the assistant spoke.
    int missed = 0; ///< Interruptions that did not open the gate in time.
    std::vector<int> onsetMs; ///< From the person's first word to the open gate.
    float loudestEcho = 0; ///< Level, while only the assistant spoke.
};

/// The person, if there is one, says three seconds every ten, from the fourth on.
Proof prove(const Row& row, const std::vector<std::int16_t>& played, const std::vector<std::int16_t>& person)
{
    Room room(row, played);
    EchoReference reference;
    CaptureCleaner cleaner(reference);
    MicGate gate;
    Proof proof;
    bool wasHeard = true;
    const std::size_t length = seconds() * rate;
    for (std::size_t start = 0; start + chunkSamples <= length; start += chunkSamples) {
        const std::size_t phase = start % (10 * rate);
        const bool isSpeaking = row.person > 0 && phase >= 4 * rate && phase < 7 * rate;
        std::array<std::int16_t, chunkSamples> chunk;
        std::array<std::int16_t, chunkSamples> loudspeaker;
        for (std::size_t index = 0; index < chunkSamples; ++index) {
            const double words = isSpeaking ? row.person * person[(phase + index - 4 * rate) % person.size()] : 0;
            chunk[index] = room.at(start + index, words);
            loudspeaker[index] = played[(start + index) % played.size()];
        }
        if (!row.isSilent)
            reference.played(loudspeaker);
        cleaner.clean(chunk);
        const Bytes pcm = PCM::floatToInt16LE(toFloat(chunk));
        const float level = PCM::levelOfInt16LE(pcm);
        const int before = gate.opens;
        gate.process({pcm}, level);
        const bool opened = gate.opens > before;
        if (row.person > 0 && phase == 4 * rate) {
            proof.missed += wasHeard ? 0 : 1;
            wasHeard = gate.isOpen;
        }
        if (isSpeaking && opened && !wasHeard) {
            wasHeard = true;
            proof.onsetMs.push_back(static_cast<int>((phase - 4 * rate + chunkSamples) * 1000 / rate));
        }
        const bool isAlone = row.person == 0 || phase < 4 * rate || phase > 9 * rate;
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
    const auto length = std::getenv("QUORVELL_LONG") ? 60s : 4s;
    const auto played = voice(folder, "slt", reply);
    voice(folder, "rms", request);
    SoundRig rig({"module-null-sink sink_name=speaker rate=48000 channels=1 norewinds=1"});
    MicGate bare;
    MicGate clean;
    const auto into = [](MicGate& gate) -> PulseCapture::Reports {
        const auto hear = [&gate](std::span<const std::uint8_t> pcm) {
            gate.process({Bytes(pcm.begin(), pcm.end())}, PCM::levelOfInt16LE(pcm));
        };
        return {hear, [](const std::string&) {}, [] {}};
    };
    PulseCapture cleaned(rig.server, rig.playedHere, into(clean));
    PulseCapture uncleaned(rig.server, rig.heardBeside, into(bare));
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
    auto person = voice(folder, "rms", request);
    person.erase(person.begin(), std::find_if(person.begin(), person.end(), [](int sample) { return sample > 500; }));
    const Row rows[] = {
        {"as loud as the loudspeaker itself", 1.0, 60ms, 0, 0, 4, 0},
        {"quieter, through a slow device", 0.3, 250ms, 0, 0, 4, 0},
        {"a small loudspeaker that distorts", 0.3, 60ms, 2, 0, 4, 0},
        {"a person over it", 0.3, 60ms, 0, 0.7, 4, 1500},
        {"a person over a loud loudspeaker", 0.7, 60ms, 0, 0.7, 4, 1500},
        {"a person with headphones on", 0, 0ms, 0, 0.7, 4, 300},
        {"headphones that leak, beside a fan", 0.01, 0ms, 0, 0.7, 200, 300},
        {"a person beside a loud fan, after silence", 0, 0ms, 0, 0.7, 400, 300, true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const Proof proof = prove(row, played, person);
        EXPECT_EQ(proof.opens, 0);
        EXPECT_LT(proof.loudestEcho, MicGate::openLevel);
        EXPECT_EQ(proof.missed, 0);
        const int worst = proof.onsetMs.empty() ? 0 : std::ranges::max(proof.onsetMs);
        EXPECT_LE(worst, row.latestMs);
        std::cout << row.name << ": " << seconds() << " s, " << proof.opens << " false turns, loudest echo "
                  << proof.loudestEcho << ", " << proof.onsetMs.size() << " interruptions heard, " << proof.missed
                  << " missed, after " << worst << " ms at most\n";
    }
}

} // namespace
} // namespace quorvell::test
