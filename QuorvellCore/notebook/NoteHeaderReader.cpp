// SPDX-License-Identifier: MIT
#include "QuorvellCore/notebook/NoteHeaderReader.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace quorvell {

namespace {

/// Header values are texts, numbers and lists of small objects. Deeper ones are nobody's.
constexpr JsonLimits limits{.maximumDepth = 16};

std::string_view withoutBlanks(std::string_view text)
{
    const auto isBlank = [](char letter) { return letter == ' ' || letter == '\t'; };
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

/// What a JSON string says that is written in ASCII and without escapes. Nothing for any other value.
std::optional<std::string_view> unescapedText(std::string_view value)
{
    if (value.size() < 2 || !value.starts_with('"') || !value.ends_with('"'))
        return std::nullopt;
    const std::string_view inside = value.substr(1, value.size() - 2);
    const bool isPlain = std::all_of(inside.begin(), inside.end(), [](char letter) {
        const auto byte = static_cast<unsigned char>(letter);
        return byte >= 0x20 && byte < 0x80 && letter != '"' && letter != '\\';
    });
    return isPlain ? std::optional(inside) : std::nullopt;
}

bool isReadable(std::string_view value)
{
    return unescapedText(value) || parseJson(value, limits);
}

} // namespace

void NoteHeaderReader::readLine(std::string_view line)
{
    const std::size_t colon = line.find(':');
    const auto position =
        colon == std::string_view::npos ? std::nullopt : positionOf(withoutBlanks(line.substr(0, colon)));
    if (!position)
        return;
    const std::string_view value = withoutBlanks(line.substr(colon + 1));
    std::string_view& known = m_values[*position];
    if (known.empty() || isReadable(value))
        known = value;
}

/// Files of our own have their keys in the order of the table, so the search goes on where the last one ended.
std::optional<std::size_t> NoteHeaderReader::positionOf(std::string_view key)
{
    for (std::size_t count = 0; count < noteHeaderKeys.size(); ++count) {
        const std::size_t position = m_next;
        m_next = (m_next + 1) % noteHeaderKeys.size();
        if (noteHeaderKeys[position] == key)
            return position;
    }
    return std::nullopt;
}

std::optional<Json> NoteHeaderReader::value(NoteHeaderKey key) const
{
    const std::string_view value = m_values[static_cast<std::size_t>(key)];
    return value.empty() ? std::nullopt : parseJson(value, limits);
}

std::optional<std::string> NoteHeaderReader::text(NoteHeaderKey key) const
{
    if (const auto plain = unescapedText(m_values[static_cast<std::size_t>(key)]))
        return std::string(*plain);
    const auto found = value(key);
    return found ? readString(*found) : std::nullopt;
}

std::optional<Instant> NoteHeaderReader::instant(NoteHeaderKey key) const
{
    if (const auto plain = unescapedText(m_values[static_cast<std::size_t>(key)]))
        return parseIsoText(*plain);
    const auto found = text(key);
    return found ? parseIsoText(*found) : std::nullopt;
}

std::optional<std::int64_t> NoteHeaderReader::integer(NoteHeaderKey key) const
{
    const auto found = value(key);
    return found ? readInteger(*found) : std::nullopt;
}

bool NoteHeaderReader::flag(NoteHeaderKey key) const
{
    const auto found = value(key);
    return found && readBool(*found).value_or(false);
}

std::vector<std::string> NoteHeaderReader::texts(NoteHeaderKey key) const
{
    const auto found = value(key);
    return found ? readStrings(*found).value_or(std::vector<std::string>{}) : std::vector<std::string>{};
}

std::vector<std::int64_t> NoteHeaderReader::integers(NoteHeaderKey key) const
{
    const auto found = value(key);
    std::vector<std::int64_t> integers;
    if (!found || !found->is_array())
        return integers;
    for (const Json& element : *found) {
        const auto integer = readInteger(element);
        if (!integer)
            return {};
        integers.push_back(*integer);
    }
    return integers;
}

} // namespace quorvell
