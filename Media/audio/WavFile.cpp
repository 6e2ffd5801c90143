// SPDX-License-Identifier: MIT
#include "Media/audio/WavFile.h"

#include "Media/audio/FileSource.h"
#include "Media/audio/MemorySource.h"
#include "Media/audio/OggPages.h"
#include "Media/audio/Resampler.h"
#include "Media/audio/WavLayout.h"

#include <fcntl.h>
#include <sndfile.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string_view>
#include <system_error>

namespace quorvell {

namespace {

constexpr std::size_t framesAtOnce = 4096;
constexpr const char* recordAgain = " Save it as a WAV file, for example with 16 bits and 24000 Hz, and try again.";

struct CloseSound {
    void operator()(SNDFILE* file) const { sf_close(file); }
};
using Sound = std::unique_ptr<SNDFILE, CloseSound>;

/// What matters of a recording, one part after another, as the sound library reads a file.
struct PlainWav {
    const ByteSource& source;
    const WavLayout& layout;
    sf_count_t position = 0;

    sf_count_t headerSize() const { return static_cast<sf_count_t>(layout.header.size()); }
    sf_count_t size() const { return headerSize() + layout.dataSize; }
    sf_count_t seek(sf_count_t offset, int origin);
    sf_count_t read(std::span<std::uint8_t> into);
};

sf_count_t PlainWav::seek(sf_count_t offset, int origin)
{
    const sf_count_t base = origin == SEEK_SET ? 0 : origin == SEEK_CUR ? position : size();
    sf_count_t target = 0;
    if (__builtin_add_overflow(base, offset, &target))
        return -1;
    position = std::clamp<sf_count_t>(target, 0, size());
    return position;
}

sf_count_t PlainWav::read(std::span<std::uint8_t> into)
{
    std::size_t done = 0;
    if (position < headerSize())
        done = MemorySource(layout.header).read(static_cast<std::uint64_t>(position), into);
    const sf_count_t inSound = position + static_cast<sf_count_t>(done) - headerSize();
    if (inSound >= 0 && inSound < layout.dataSize) {
        const auto left = static_cast<std::size_t>(layout.dataSize - inSound);
        const auto rest = into.subspan(done, std::min(left, into.size() - done));
        done += source.read(layout.dataStart + static_cast<std::uint64_t>(inSound), rest);
    }
    position += static_cast<sf_count_t>(done);
    return static_cast<sf_count_t>(done);
}

PlainWav& plainWav(void* data)
{
    return *static_cast<PlainWav*>(data);
}

SF_VIRTUAL_IO plainWavAccess()
{
    SF_VIRTUAL_IO access{};
    access.get_filelen = [](void* data) { return plainWav(data).size(); };
    access.seek = [](sf_count_t offset, int origin, void* data) { return plainWav(data).seek(offset, origin); };
    access.read = [](void* into, sf_count_t count, void* data) -> sf_count_t {
        if (count <= 0)
            return 0;
        return plainWav(data).read({static_cast<std::uint8_t*>(into), static_cast<std::size_t>(count)});
    };
    access.write = [](const void*, sf_count_t, void*) -> sf_count_t { return 0; };
    access.tell = [](void* data) { return plainWav(data).position; };
    return access;
}

std::string firstFour(const ByteSource& source)
{
    std::array<std::uint8_t, 4> begin{};
    return {begin.begin(), begin.begin() + static_cast<std::ptrdiff_t>(source.read(0, begin))};
}

/// Forms without chunks to be stepped over, told by how they begin.
bool isCompressed(const ByteSource& source)
{
    const std::string begin = firstFour(source);
    const auto byte = [&begin](std::size_t index) { return static_cast<unsigned char>(begin[index]); };
    const bool isMpegFrame = begin.size() == 4 && byte(0) == 0xFF && (byte(1) & 0xE6) == 0xE2; // Sync, and layer III.
    return begin == "fLaC" || begin == "OggS" || begin.starts_with("ID3") || isMpegFrame;
}

WavReading refused(std::string problem)
{
    return {std::nullopt, std::move(problem)};
}

std::optional<std::string> problemOf(const SF_INFO& info, const std::string& name)
{
    if (info.channels < 1 || info.channels > WavFile::highestChannelCount)
        return name + " has " + std::to_string(info.channels) + " channels." + recordAgain;
    if (info.samplerate < Resampler::lowestRateHz || info.samplerate > Resampler::highestRateHz)
        return name + " has a sample rate of " + std::to_string(info.samplerate) + " Hz." + recordAgain;
    return std::nullopt;
}

std::string tooLong(const std::string& name)
{
    return name + " is longer than " + std::to_string(WavFile::longestRecording.count())
        + " minutes. Cut it into shorter pieces and play them one after another.";
}

/// The mean of the channels of each frame.
std::vector<float> mixedToMono(std::span<const float> interleaved, std::size_t channels)
{
    std::vector<float> mono(interleaved.size() / channels);
    for (std::size_t frame = 0; frame < mono.size(); ++frame) {
        float sum = 0;
        for (std::size_t channel = 0; channel < channels; ++channel)
            sum += interleaved[frame * channels + channel];
        mono[frame] = sum / static_cast<float>(channels);
    }
    return mono;
}

void append(std::vector<std::int16_t>& samples, std::span<const float> more)
{
    const auto converted = toInt16(more);
    samples.insert(samples.end(), converted.begin(), converted.end());
}

/// Reads in blocks and counts them, because a header may promise less than follows; so memory is bounded by
/// `longestRecording`.
WavReading readSamples(SNDFILE* sound, const SF_INFO& info, const std::string& name, int sampleRateHz)
{
    const auto channels = static_cast<std::size_t>(info.channels);
    const auto seconds = std::chrono::seconds(WavFile::longestRecording).count();
    const auto mostFrames = static_cast<sf_count_t>(info.samplerate) * seconds;
    if (info.frames > mostFrames && info.frames != SF_COUNT_MAX) // Unknown until it was read.
        return refused(tooLong(name));
    Resampler resampler(info.samplerate, sampleRateHz, Resampler::Quality::best);
    std::vector<float> block(framesAtOnce * channels);
    std::vector<std::int16_t> samples;
    sf_count_t framesRead = 0;
    while (const sf_count_t frames = sf_readf_float(sound, block.data(), framesAtOnce)) {
        if (frames < 0)
            break;
        framesRead += frames;
        if (framesRead > mostFrames)
            return refused(tooLong(name));
        const std::span read(block.data(), static_cast<std::size_t>(frames) * channels);
        append(samples, resampler.process(mixedToMono(read, channels)));
    }
    append(samples, resampler.finish());
    if (samples.empty())
        return refused(name + " holds no sound." + recordAgain);
    const bool isShort = info.frames != SF_COUNT_MAX && framesRead < info.frames;
    return {std::move(samples), {}, info.samplerate, !isShort && sf_error(sound) == SF_ERR_NO_ERROR};
}

WavReading readSource(const ByteSource& source, const std::string& name, int sampleRateHz)
{
    const auto layout = isCompressed(source) ? std::optional(WavLayout::whole(source)) : WavLayout::find(source);
    if (!layout)
        return refused(name + " is not a WAV, FLAC, Ogg or MP3 file, or is damaged." + recordAgain);
    PlainWav file{source, *layout};
    SF_VIRTUAL_IO access = plainWavAccess();
    SF_INFO info{};
    const Sound sound(sf_open_virtual(&access, SFM_READ, &info, &file));
    if (!sound)
        return refused(name + " holds sound in a form that cannot be read." + recordAgain);
    if (auto problem = problemOf(info, name))
        return refused(*std::move(problem));
    WavReading reading = readSamples(sound.get(), info, name, sampleRateHz);
    reading.isWhole &= !layout->breaksOff && (firstFour(source) != "OggS" || OggPages::areWhole(source));
    return reading;
}

std::string couldNotWrite(const std::string& path, int reason)
{
    return "Could not write " + path + (reason != 0 ? std::string(": ") + std::strerror(reason) : std::string())
        + ". Choose a folder that exists and that you may write to.";
}

/// Takes the descriptor and closes it.
bool writeSamples(int descriptor, std::span<const std::int16_t> samples, int sampleRateHz)
{
    SF_INFO info{};
    info.samplerate = sampleRateHz;
    info.channels = 1;
    info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
    const Sound sound(sf_open_fd(descriptor, SFM_WRITE, &info, SF_TRUE));
    const auto count = static_cast<sf_count_t>(samples.size());
    return sound && sf_write_short(sound.get(), samples.data(), count) == count;
}

} // namespace

WavReading WavFile::read(const std::string& path, int sampleRateHz)
{
    const FileSource::Made file = FileSource::open(path);
    return file.source ? readSource(*file.source, path, sampleRateHz) : refused(file.problem);
}

WavReading WavFile::read(std::span<const std::uint8_t> bytes, int sampleRateHz)
{
    return readSource(MemorySource(bytes), "The recording", sampleRateHz);
}

std::optional<std::string> WavFile::problemOfWriting(const std::string& path)
{
    const std::filesystem::path folder = std::filesystem::path(path).parent_path();
    std::error_code failure;
    const auto type = std::filesystem::status(path, failure).type();
    if (type == std::filesystem::file_type::directory || path.empty())
        return couldNotWrite(path, path.empty() ? ENOENT : EISDIR);
    if (std::filesystem::exists(path, failure) && type != std::filesystem::file_type::regular)
        return "Could not write " + path
            + ": it is a device or a pipe, and only files are replaced. Choose another name.";
    if (access(folder.empty() ? "." : folder.c_str(), W_OK | X_OK) != 0)
        return couldNotWrite(path, errno);
    return std::nullopt;
}

std::optional<std::string> WavFile::write(
    const std::string& path, std::span<const std::int16_t> samples, int sampleRateHz)
{
    if (auto problem = problemOfWriting(path))
        return problem;
    std::string temporary = path + ".XXXXXX";
    const int descriptor = ::mkostemp(temporary.data(), O_CLOEXEC);
    if (descriptor < 0)
        return couldNotWrite(path, errno);
    errno = 0;
    if (writeSamples(descriptor, samples, sampleRateHz) && std::rename(temporary.c_str(), path.c_str()) == 0)
        return std::nullopt;
    const int reason = errno;
    std::remove(temporary.c_str());
    return couldNotWrite(path, reason);
}

} // namespace quorvell
