// SPDX-License-Identifier: MIT
#include "QuorvellCore/live/wire/transport/SessionDescriptionBounds.h"

#include <algorithm>

namespace quorvell {

namespace {

constexpr std::string_view version = "v=0";

bool isLine(std::string_view line)
{
    const bool isLong = line.size() > SessionDescriptionBounds::lineBytes;
    const auto isControl = [](char byte) { return (byte >= 0 && byte < ' ' && byte != '\t') || byte == '\x7F'; };
    return !isLong && line.size() >= 2 && line[0] >= 'a' && line[0] <= 'z' && line[1] == '='
        && std::none_of(line.begin(), line.end(), isControl);
}

/// Takes the first line away, and the end of it.
std::string_view takeLine(std::string_view& rest)
{
    const std::size_t end = std::min(rest.find('\n'), rest.size());
    std::string_view line = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    if (line.ends_with('\r'))
        line.remove_suffix(1);
    return line;
}

} // namespace

bool SessionDescriptionBounds::hold(std::string_view sdp)
{
    if (sdp.size() > bytes)
        return false;
    std::size_t lineCount = 0, mediaCount = 0, candidateCount = 0;
    while (!sdp.empty()) {
        const std::string_view line = takeLine(sdp);
        if (!isLine(line) || (lineCount == 0 && line != version))
            return false;
        mediaCount += static_cast<std::size_t>(line.starts_with("m="));
        candidateCount += static_cast<std::size_t>(line.starts_with("a=candidate:"));
        if (++lineCount > lines || mediaCount > media || candidateCount > candidates)
            return false;
    }
    return lineCount > 0;
}

} // namespace quorvell
