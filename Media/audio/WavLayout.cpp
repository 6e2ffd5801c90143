// SPDX-License-Identifier: MIT
#include "Media/audio/WavLayout.h"

#include <algorithm>
#include <array>
#include <limits>
#include <string_view>

namespace quorvell {

namespace {

constexpr std::uint64_t chunkHeaderSize = 8;
constexpr std::uint64_t riffHeaderSize = 12;
constexpr std::uint32_t unknownSize = 0xFFFFFFFF; ///< In RF64 files, and in those that a pipe has written.
/// What a program writes that does not know yet how much will follow, rounded as it likes: over two hours of speech.
constexpr std::uint32_t leastPlaceholder = 0x7F000000;
/// The decoder's limit for one plain RIFF file, some kilobytes for the header left out.
constexpr std::uint64_t largestData = std::numeric_limits<std::uint32_t>::max() - 65536;

using Bytes = std::vector<std::uint8_t>;

struct Chunk {
    std::array<std::uint8_t, 4> name{};
    std::uint32_t size = 0;
    std::uint64_t start = 0; ///< Of its content.

    bool is(std::string_view wanted) const { return std::equal(name.begin(), name.end(), wanted.begin()); }
};

std::uint32_t littleEndian32(std::span<const std::uint8_t> bytes)
{
    return static_cast<std::uint32_t>(bytes[0]) | static_cast<std::uint32_t>(bytes[1]) << 8
        | static_cast<std::uint32_t>(bytes[2]) << 16 | static_cast<std::uint32_t>(bytes[3]) << 24;
}

std::optional<Chunk> chunkAt(const ByteSource& source, std::uint64_t offset)
{
    std::array<std::uint8_t, chunkHeaderSize> bytes{};
    if (source.read(offset, bytes) != bytes.size())
        return std::nullopt;
    Chunk chunk;
    std::copy_n(bytes.begin(), 4, chunk.name.begin());
    chunk.size = littleEndian32(std::span(bytes).subspan(4));
    chunk.start = offset + chunkHeaderSize;
    return chunk;
}

bool isWaveFile(const ByteSource& source)
{
    const auto outer = chunkAt(source, 0);
    std::array<std::uint8_t, 4> kind{};
    return outer && (outer->is("RIFF") || outer->is("RF64")) && source.read(chunkHeaderSize, kind) == kind.size()
        && std::equal(kind.begin(), kind.end(), "WAVE");
}

void appendText(Bytes& bytes, std::string_view text)
{
    bytes.insert(bytes.end(), text.begin(), text.end());
}

void append32(Bytes& bytes, std::uint32_t value)
{
    for (const int shift : {0, 8, 16, 24})
        bytes.push_back(static_cast<std::uint8_t>(value >> shift));
}

void appendChunk(Bytes& bytes, std::string_view name, const Bytes& content)
{
    appendText(bytes, name);
    append32(bytes, static_cast<std::uint32_t>(content.size()));
    bytes.insert(bytes.end(), content.begin(), content.end());
    if (content.size() % 2 != 0)
        bytes.push_back(0);
}

/// Empty when the chunk is larger than a decoder's needs or is not all there.
Bytes contentOf(const ByteSource& source, const Chunk& chunk)
{
    if (chunk.size > WavLayout::largestFormatChunk)
        return {};
    Bytes content(chunk.size);
    return source.read(chunk.start, content) == content.size() ? content : Bytes();
}

WavLayout layoutOf(const ByteSource& source, const Chunk& data, const Bytes& format, const Bytes& fact)
{
    WavLayout layout;
    const std::uint64_t present = source.size() - std::min(source.size(), data.start);
    const std::uint64_t promised = data.size == unknownSize ? present : data.size;
    layout.dataStart = data.start;
    layout.dataSize = static_cast<std::uint32_t>(std::min({present, promised, largestData}));
    layout.breaksOff = present < promised && promised < leastPlaceholder;

    Bytes content;
    appendText(content, "WAVE");
    appendChunk(content, "fmt ", format);
    if (!fact.empty())
        appendChunk(content, "fact", fact);
    appendText(content, "data");
    append32(content, layout.dataSize);

    appendText(layout.header, "RIFF");
    append32(layout.header, static_cast<std::uint32_t>(content.size()) + layout.dataSize);
    layout.header.insert(layout.header.end(), content.begin(), content.end());
    return layout;
}

} // namespace

WavLayout WavLayout::whole(const ByteSource& source)
{
    return {{}, 0, static_cast<std::uint32_t>(std::min(source.size(), largestData))};
}

std::optional<WavLayout> WavLayout::find(const ByteSource& source)
{
    if (!isWaveFile(source))
        return std::nullopt;
    Bytes format;
    Bytes fact; // The number of frames, which compressed forms need.
    std::uint64_t offset = riffHeaderSize;
    for (int count = 0; count < mostChunks; ++count) {
        const auto chunk = chunkAt(source, offset);
        if (!chunk)
            return std::nullopt;
        if (chunk->is("data"))
            return format.empty() ? std::nullopt : std::optional(layoutOf(source, *chunk, format, fact));
        if (chunk->is("fmt "))
            format = contentOf(source, *chunk);
        if (chunk->is("fact"))
            fact = contentOf(source, *chunk);
        offset = chunk->start + chunk->size + chunk->size % 2;
    }
    return std::nullopt;
}

} // namespace quorvell
