// SPDX-License-Identifier: MIT
#include "Media/audio/OggPages.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <optional>
#include <string_view>
#include <vector>

namespace quorvell {

namespace {

constexpr std::size_t headSize = 27; ///< Before the lengths of the page's segments.
constexpr std::size_t sumStart = 22; ///< Where the sum stands, which counts itself as zeros.
constexpr std::size_t sumSize = 4;

struct Page {
    std::uint32_t stream = 0;
    std::uint32_t number = 0;
    bool isFirst = false; ///< Of its stream.
    bool isLast = false;
    std::uint64_t size = 0;
};

std::uint32_t littleEndian(const std::vector<std::uint8_t>& bytes, std::size_t start)
{
    return static_cast<std::uint32_t>(bytes[start]) | static_cast<std::uint32_t>(bytes[start + 1]) << 8
        | static_cast<std::uint32_t>(bytes[start + 2]) << 16 | static_cast<std::uint32_t>(bytes[start + 3]) << 24;
}

constexpr std::array<std::uint32_t, 256> sumsOfBytes()
{
    constexpr std::uint32_t polynomial = 0x04C11DB7;
    std::array<std::uint32_t, 256> sums{};
    for (std::uint32_t byte = 0; byte < sums.size(); ++byte) {
        std::uint32_t sum = byte << 24;
        for (int bit = 0; bit < 8; ++bit)
            sum = (sum << 1) ^ ((sum & 0x80000000U) != 0 ? polynomial : 0);
        sums[byte] = sum;
    }
    return sums;
}

std::uint32_t sumOf(const std::vector<std::uint8_t>& page)
{
    static constexpr auto sums = sumsOfBytes();
    std::uint32_t sum = 0;
    for (std::size_t index = 0; index < page.size(); ++index) {
        const bool isOfSum = index >= sumStart && index < sumStart + sumSize;
        sum = (sum << 8) ^ sums[((sum >> 24) ^ (isOfSum ? 0U : page[index])) & 0xFFU];
    }
    return sum;
}

std::optional<Page> pageAt(const ByteSource& source, std::uint64_t offset)
{
    using namespace std::string_view_literals;
    std::vector<std::uint8_t> bytes(headSize);
    if (source.read(offset, bytes) != headSize || !std::equal(bytes.begin(), bytes.begin() + 4, "OggS"sv.begin()))
        return std::nullopt;
    bytes.resize(headSize + bytes[headSize - 1]);
    if (source.read(offset, bytes) != bytes.size())
        return std::nullopt;
    bytes.resize(std::accumulate(bytes.begin() + headSize, bytes.end(), bytes.size()));
    if (source.read(offset, bytes) != bytes.size() || sumOf(bytes) != littleEndian(bytes, sumStart))
        return std::nullopt;
    constexpr std::size_t marks = 5;
    return Page{littleEndian(bytes, 14), littleEndian(bytes, 18), (bytes[marks] & 2U) != 0, (bytes[marks] & 4U) != 0,
        bytes.size()};
}

} // namespace

bool OggPages::areWhole(const ByteSource& source)
{
    if (source.size() > largestFile)
        return false;
    std::optional<Page> before;
    for (std::uint64_t offset = 0; offset < source.size(); offset += before->size) {
        const auto page = pageAt(source, offset);
        const bool isNext =
            page && (page->isFirst || !before || before->stream != page->stream || page->number == before->number + 1);
        if (!isNext)
            return false;
        before = page;
    }
    return before && before->isLast;
}

} // namespace quorvell
