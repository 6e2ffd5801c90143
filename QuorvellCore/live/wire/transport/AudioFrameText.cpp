// SPDX-License-Identifier: MIT
#include "QuorvellCore/live/wire/transport/AudioFrameText.h"

#include "QuorvellCore/text/Base64.h"

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

/// Steps through the text of a flat JSON object.
class Cursor {
public:
    explicit Cursor(std::string_view text)
        : m_rest(text)
    {
    }

    /// Past white space and this sign; false, and no further, when another one follows.
    bool take(char sign)
    {
        m_rest.remove_prefix(std::min(m_rest.find_first_not_of(" \t\r\n"), m_rest.size()));
        if (!m_rest.starts_with(sign))
            return false;
        m_rest.remove_prefix(1);
        return true;
    }

    /// What stands between two quotation marks. Its characters are not judged.
    std::optional<std::string_view> takeQuoted()
    {
        if (!take('"'))
            return std::nullopt;
        const std::size_t end = m_rest.find('"');
        if (end == std::string_view::npos)
            return std::nullopt;
        const std::string_view inner = m_rest.substr(0, end);
        m_rest.remove_prefix(end + 1);
        return inner;
    }

    /// Past everything that `pattern`, JSON without white space, consists of.
    bool takeAll(std::string_view pattern)
    {
        Cursor wanted(pattern);
        while (!wanted.m_rest.empty()) {
            const char sign = wanted.m_rest.front();
            if (sign == '"' ? takeQuoted() != wanted.takeQuoted() : !take(sign) || !wanted.take(sign))
                return false;
        }
        return true;
    }

    bool isAtEnd() const { return m_rest.find_first_not_of(" \t\r\n") == std::string_view::npos; }

private:
    std::string_view m_rest;
};

/// A JSON string that means what it shows: printable ASCII, no escapes.
bool isPlain(std::string_view text)
{
    return std::all_of(
        text.begin(), text.end(), [](char letter) { return letter >= ' ' && letter <= '~' && letter != '\\'; });
}

/// Keeps the value of one key; false when there was one before.
bool keepOnce(std::optional<std::string_view>& kept, std::string_view value)
{
    return !std::exchange(kept, value).has_value();
}

/// Of an object of plain strings: the one whose characters were not judged, and one that says what it is.
struct PlainObject {
    std::optional<std::string_view> sound;
    std::optional<std::string_view> label;
};

std::optional<PlainObject> takePlainObject(Cursor& cursor, std::string_view soundKey, std::string_view labelKey)
{
    constexpr int mostMembers = 8;
    PlainObject object;
    char before = '{';
    for (int member = 0; member < mostMembers && cursor.take(before); ++member) {
        before = ',';
        const auto name = cursor.takeQuoted();
        const auto value = name && cursor.take(':') ? cursor.takeQuoted() : std::nullopt;
        if (!value || !isPlain(*name))
            return std::nullopt;
        if (*name == soundKey) {
            if (!keepOnce(object.sound, *value))
                return std::nullopt;
        } else if (!isPlain(*value) || (*name == labelKey && !keepOnce(object.label, *value))) {
            return std::nullopt;
        }
    }
    return object.sound && object.label && cursor.take('}') ? std::optional(object) : std::nullopt;
}

} // namespace

std::string audioFrameText(std::string_view type, std::string_view key, std::span<const std::uint8_t> pcm)
{
    const std::string sound = base64Encode(pcm);
    std::string text;
    text.reserve(sound.size() + type.size() + key.size() + 32);
    text.append("{\"type\":\"").append(type).append("\",\"").append(key).append("\":\"");
    text.append(sound).append("\"}");
    return text;
}

std::optional<Bytes> readAudioFrameText(std::string_view text, std::string_view type, std::string_view key)
{
    Cursor cursor(text);
    const auto object = takePlainObject(cursor, key, "type");
    if (!object || object->label != type || !cursor.isAtEnd())
        return std::nullopt;
    return base64Decode(*object->sound); // judges the characters that were skipped
}

std::string audioBlobText(const AudioEnvelope& envelope, std::string_view mimeType, std::span<const std::uint8_t> pcm)
{
    const std::string sound = base64Encode(pcm);
    std::string text;
    text.reserve(envelope.before.size() + sound.size() + mimeType.size() + envelope.after.size() + 32);
    text.append(envelope.before).append("{\"data\":\"").append(sound);
    text.append("\",\"mimeType\":\"").append(mimeType).append("\"}").append(envelope.after);
    return text;
}

std::optional<AudioBlob> readAudioBlobText(std::string_view text, const AudioEnvelope& envelope)
{
    Cursor cursor(text);
    if (!cursor.takeAll(envelope.before))
        return std::nullopt;
    const auto object = takePlainObject(cursor, "data", "mimeType");
    if (!object || !cursor.takeAll(envelope.after) || !cursor.isAtEnd())
        return std::nullopt;
    auto pcm = base64Decode(*object->sound); // judges the characters that were skipped
    return pcm ? std::optional(AudioBlob{std::move(*pcm), std::string(*object->label)}) : std::nullopt;
}

} // namespace quorvell
