// SPDX-License-Identifier: MIT
// Catches recordings misread, taken though broken, or written so that they do not come back.
#include "Media/audio/WavFile.h"

#include "TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sndfile.h>
#include <sys/stat.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <numbers>
#include <tuple>

namespace quorvell {
namespace {

namespace fs = std::filesystem;

constexpr int wantedRateHz = 24000;
constexpr double toneHz = 440;

class WavFileTest : public testing::Test {
protected:
    std::string path(const std::string& name) const { return folder / name; }

    /// A tone in the first channel, silence in the others.
    std::string record(int format, int rateHz, int channels, double seconds) const
    {
        SF_INFO info{};
        info.format = format;
        info.samplerate = rateHz;
        info.channels = channels;
        const std::string file = path("tone");
        SNDFILE* sound = sf_open(file.c_str(), SFM_WRITE, &info);
        std::vector<float> frame(static_cast<std::size_t>(channels));
        for (int index = 0; index < static_cast<int>(seconds * rateHz); ++index) {
            frame[0] = 0.5F * static_cast<float>(std::sin(2 * std::numbers::pi * toneHz * index / rateHz));
            sf_writef_float(sound, frame.data(), 1);
        }
        sf_close(sound);
        return file;
    }

    test::TemporaryFolder folder;
};

double rms(const std::vector<std::int16_t>& samples)
{
    double sum = 0;
    for (const auto sample : samples)
        sum += static_cast<double>(sample) * sample;
    return std::sqrt(sum / static_cast<double>(samples.size())) / 32768;
}

double risingCrossings(const std::vector<std::int16_t>& samples)
{
    double count = 0;
    for (std::size_t index = 1; index < samples.size(); ++index)
        count += samples[index - 1] < 0 && samples[index] >= 0 ? 1 : 0;
    return count;
}

TEST_F(WavFileTest, readsCommonFormatsAsMonoAtTheWantedRate)
{
    const std::tuple<const char*, int, int, int> rows[] = {
        {"telephone, A-law", SF_FORMAT_WAV | SF_FORMAT_ALAW, 8000, 1},
        {"recogniser's rate", SF_FORMAT_WAV | SF_FORMAT_PCM_16, 16000, 1},
        {"already as wanted", SF_FORMAT_WAV | SF_FORMAT_PCM_16, 24000, 1},
        {"compact disc", SF_FORMAT_WAV | SF_FORMAT_PCM_16, 44100, 2},
        {"studio", SF_FORMAT_WAV | SF_FORMAT_PCM_24, 96000, 2},
        {"8 bits, unsigned", SF_FORMAT_WAV | SF_FORMAT_PCM_U8, 11025, 1},
        {"floats, six channels", SF_FORMAT_WAVEX | SF_FORMAT_FLOAT, 48000, 6},
        {"large file header", SF_FORMAT_RF64 | SF_FORMAT_PCM_32, 32000, 2},
        {"compressed", SF_FORMAT_WAV | SF_FORMAT_IMA_ADPCM, 22050, 1},
        {"FLAC", SF_FORMAT_FLAC | SF_FORMAT_PCM_16, 44100, 2},
        {"Ogg Vorbis", SF_FORMAT_OGG | SF_FORMAT_VORBIS, 44100, 1},
        {"Ogg Opus", SF_FORMAT_OGG | SF_FORMAT_OPUS, 48000, 1},
        {"MP3", SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III, 44100, 1},
    };
    for (const auto& [name, format, rateHz, channels] : rows) {
        SCOPED_TRACE(name);
        const auto reading = WavFile::read(record(format, rateHz, channels, 0.5), wantedRateHz);
        ASSERT_TRUE(reading.samples) << reading.problem;
        EXPECT_TRUE(reading.isWhole);
        EXPECT_NEAR(static_cast<double>(reading.samples->size()), 0.5 * wantedRateHz, 0.5 * wantedRateHz * 0.05);
        EXPECT_NEAR(risingCrossings(*reading.samples), 0.5 * toneHz, 0.5 * toneHz * 0.06);
        EXPECT_NEAR(rms(*reading.samples), 0.5 / std::numbers::sqrt2 / channels, 0.02);
    }
}

TEST_F(WavFileTest, refusesWithASentence)
{
    const int wav = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
    const auto keep = [this](const std::string& from, const char* name) {
        fs::rename(from, path(name));
        return path(name);
    };
    std::ofstream(path("text.wav")) << "RIFF is not enough to make a recording of a text";
    std::ofstream(path("empty.wav")).close();
    std::ofstream(path("text.mp3")) << "ID3 is not enough either";
    const std::tuple<const char*, std::string, const char*> rows[] = {
        {"missing", path("missing.wav"), "Could not open"},
        {"a folder", folder.path(), "is not a file"},
        {"no sound file", path("text.wav"), "is not a WAV, FLAC, Ogg or MP3 file"},
        {"empty", path("empty.wav"), "is not a WAV, FLAC"},
        {"no music", path("text.mp3"), "in a form that cannot be read"},
        {"another sound format", keep(record(SF_FORMAT_AU | SF_FORMAT_PCM_16, 8000, 1, 0.1), "a"),
            "is not a WAV, FLAC"},
        {"header only", keep(record(wav, 24000, 1, 0), "b"), "holds no sound"},
        {"too slow", keep(record(wav, 1000, 1, 1), "c"), "sample rate of 1000 Hz"},
        {"too long, packed", keep(record(SF_FORMAT_FLAC | SF_FORMAT_PCM_16, 4000, 1, 600.5), "e"), "longer than 10"},
        {"too long", keep(record(SF_FORMAT_WAV | SF_FORMAT_PCM_U8, 4000, 1, 600.5), "d"), "longer than 10 minutes"},
    };
    for (const auto& [name, file, sentence] : rows) {
        SCOPED_TRACE(name);
        const auto reading = WavFile::read(file, wantedRateHz);
        EXPECT_FALSE(reading.samples);
        EXPECT_NE(reading.problem.find(sentence), std::string::npos) << reading.problem;
    }
}

TEST_F(WavFileTest, givesWhatABrokenOffFileHolds)
{
    const std::string file = record(SF_FORMAT_WAV | SF_FORMAT_PCM_16, 24000, 1, 1);
    fs::resize_file(file, 44 + 24000); // The header still promises 48000 bytes.
    std::ifstream stream(file, std::ios::binary);
    const std::vector<std::uint8_t> bytes((std::istreambuf_iterator<char>(stream)), {});
    for (const WavReading& reading : {WavFile::read(file, wantedRateHz), WavFile::read(bytes, wantedRateHz)}) {
        ASSERT_TRUE(reading.samples) << reading.problem;
        EXPECT_EQ(reading.samples->size(), 12000U);
        EXPECT_FALSE(reading.isWhole);
    }
}

TEST_F(WavFileTest, tellsWhatIsDamaged)
{
    enum class Damage { end, byte, gone };
    const std::tuple<const char*, int, Damage> rows[] = {
        {"FLAC that breaks off", SF_FORMAT_FLAC | SF_FORMAT_PCM_16, Damage::end},
        {"FLAC with a wrong byte", SF_FORMAT_FLAC | SF_FORMAT_PCM_16, Damage::byte},
        {"Vorbis that breaks off", SF_FORMAT_OGG | SF_FORMAT_VORBIS, Damage::end},
        {"Vorbis with a wrong byte", SF_FORMAT_OGG | SF_FORMAT_VORBIS, Damage::byte},
        {"Opus without its middle", SF_FORMAT_OGG | SF_FORMAT_OPUS, Damage::gone},
    };
    for (const auto& [name, format, damage] : rows) {
        std::ifstream stream(record(format, 48000, 1, 3), std::ios::binary);
        std::vector<std::uint8_t> bytes((std::istreambuf_iterator<char>(stream)), {});
        const auto middle = static_cast<std::ptrdiff_t>(bytes.size() / 2);
        if (damage == Damage::end)
            bytes.resize(bytes.size() - 200);
        else if (damage == Damage::byte)
            bytes[bytes.size() / 2] ^= 0x40;
        else
            bytes.erase(bytes.begin() + middle, bytes.begin() + middle + 1000);
        EXPECT_FALSE(WavFile::read(bytes, wantedRateHz).isWhole) << name;
    }
    // A pipe cannot be written to a second time, so its header promises a size that nobody knew.
    std::ifstream stream(record(SF_FORMAT_WAV | SF_FORMAT_PCM_16, 24000, 1, 1), std::ios::binary);
    std::vector<std::uint8_t> bytes((std::istreambuf_iterator<char>(stream)), {});
    bytes[43] = 0x7F;
    EXPECT_TRUE(WavFile::read(bytes, wantedRateHz).isWhole);
}

TEST_F(WavFileTest, writesWhatItReads)
{
    const std::vector<std::int16_t> samples = {0, 1, -1, 32767, -32768, 1234};
    EXPECT_EQ(WavFile::write(path("out.wav"), samples, wantedRateHz), std::nullopt);
    EXPECT_EQ(WavFile::read(path("out.wav"), wantedRateHz).samples, samples);
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), {}), 1);

    EXPECT_EQ(WavFile::problemOfWriting(path("out.wav")), std::nullopt);
    EXPECT_EQ(WavFile::problemOfWriting("out.wav"), std::nullopt);
    for (const std::string& place : {path("missing/out.wav"), folder.path()}) {
        const auto problem = WavFile::write(place, samples, wantedRateHz);
        ASSERT_TRUE(problem);
        EXPECT_NE(problem->find("Choose a folder"), std::string::npos);
        EXPECT_EQ(WavFile::problemOfWriting(place), problem);
    }
    ASSERT_EQ(::mkfifo(path("pipe").c_str(), 0600), 0);
    std::ofstream(path("out.wav.part")) << "somebody's";
    EXPECT_NE(WavFile::write(path("pipe"), samples, wantedRateHz), std::nullopt);
    EXPECT_NE(WavFile::problemOfWriting(""), std::nullopt);
    EXPECT_TRUE(fs::is_fifo(path("pipe")));
    EXPECT_EQ(WavFile::write(path("out.wav"), samples, wantedRateHz), std::nullopt);
    EXPECT_EQ(fs::file_size(path("out.wav.part")), 10U) << "a neighbour is not written over";
}

} // namespace
} // namespace quorvell
