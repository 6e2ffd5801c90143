#include "QuorvellCore/live/wire/AudioFrameText.h"

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

    bool isAtEnd() { return m_rest.find_first_not_of(" \t\r\n") == std::string_view::npos; }

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
    constexpr int mostMembers = 8;
    std::optional<std::string_view> sound;
    std::optional<std::string_view> foundType;
    Cursor cursor(text);
    char before = '{';
    for (int member = 0; member < mostMembers && cursor.take(before); ++member) {
        before = ',';
        const auto name = cursor.takeQuoted();
        const auto value = name && cursor.take(':') ? cursor.takeQuoted() : std::nullopt;
        if (!value || !isPlain(*name))
            return std::nullopt;
        if (*name == key) {
            if (!keepOnce(sound, *value))
                return std::nullopt;
        } else if (!isPlain(*value) || (*name == "type" && !keepOnce(foundType, *value))) {
            return std::nullopt;
        }
    }
    if (foundType != type || !sound || !cursor.take('}') || !cursor.isAtEnd())
        return std::nullopt;
    return base64Decode(*sound); // judges the characters that were skipped
}

} // namespace quorvell
