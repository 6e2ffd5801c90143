// SPDX-License-Identifier: MIT
#include "QuorvellCore/text/LowerCase.h"

#include "QuorvellCore/text/CodePoints.h"

#include <unicode/bytestream.h>
#include <unicode/casemap.h>
#include <unicode/edits.h>

#include <algorithm>

namespace quorvell {

namespace {

std::string lowerCasedNoting(std::string_view text, icu::Edits* edits)
{
    std::string lower;
    icu::StringByteSink<std::string> sink(&lower, static_cast<std::int32_t>(text.size()));
    UErrorCode status = U_ZERO_ERROR;
    const icu::StringPiece source(text.data(), static_cast<std::int32_t>(text.size()));
    icu::CaseMap::utf8ToLower("", 0, source, sink, edits, status);
    return lower;
}

bool isInsideCharacter(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

} // namespace

std::string asciiLowerCased(std::string_view text)
{
    std::string lower(text);
    for (char& letter : lower) {
        if (letter >= 'A' && letter <= 'Z')
            letter = static_cast<char>(letter + ('a' - 'A'));
    }
    return lower;
}

std::string lowerCased(std::string_view text)
{
    return isAscii(text) ? asciiLowerCased(text) : lowerCasedNoting(text, nullptr);
}

LowerCasedText::LowerCasedText(std::string_view input)
    : m_inputSize(input.size())
{
    if (isAscii(input)) {
        m_text = asciiLowerCased(input);
        return;
    }
    icu::Edits edits;
    m_text = lowerCasedNoting(input, &edits);
    m_starts.reserve(m_text.size() + 1);
    UErrorCode status = U_ZERO_ERROR;
    for (auto edit = edits.getFineIterator(); edit.next(status);) {
        auto start = static_cast<std::size_t>(edit.sourceIndex());
        for (std::int32_t offset = 0; offset < edit.newLength(); ++offset) {
            const std::size_t here = static_cast<std::size_t>(edit.sourceIndex()) + static_cast<std::size_t>(offset);
            if (!edit.hasChange() && !isInsideCharacter(input[here]))
                start = here;
            m_starts.push_back(start);
        }
    }
    m_starts.push_back(m_inputSize);
}

std::size_t LowerCasedText::inputPosition(std::size_t position) const
{
    if (m_starts.empty())
        return std::min(position, m_inputSize);
    return m_starts[std::min(position, m_text.size())];
}

std::size_t LowerCasedText::inputEndPosition(std::size_t position) const
{
    if (m_starts.empty())
        return std::min(position, m_inputSize);
    position = std::min(position, m_text.size());
    const bool isBoundary = position == 0 || m_starts[position - 1] != m_starts[position];
    if (isBoundary)
        return m_starts[position];
    return *std::upper_bound(
        m_starts.begin() + static_cast<std::ptrdiff_t>(position), m_starts.end(), m_starts[position]);
}

} // namespace quorvell
