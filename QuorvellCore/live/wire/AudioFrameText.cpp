#include "QuorvellCore/live/wire/AudioFrameText.h"

#include "QuorvellCore/text/Base64.h"

namespace quorvell {

std::string audioFrameText(std::string_view type, std::string_view key, std::span<const std::uint8_t> pcm)
{
    const std::string sound = base64Encode(pcm);
    std::string text;
    text.reserve(sound.size() + type.size() + key.size() + 32);
    text.append("{\"type\":\"").append(type).append("\",\"").append(key).append("\":\"");
    text.append(sound).append("\"}");
    return text;
}

} // namespace quorvell
