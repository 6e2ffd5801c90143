// SPDX-License-Identifier: MIT
// Whatever is let through to the library that reads descriptions of calls keeps within what was promised to it.
#include "QuorvellCore/live/wire/transport/SessionDescriptionBounds.h"
#include "fuzzing.h"

#include <algorithm>

void quorvell::search(std::string_view sdp)
{
    using Bounds = SessionDescriptionBounds;
    if (!Bounds::hold(sdp))
        return;
    const auto newLines = static_cast<std::size_t>(std::count(sdp.begin(), sdp.end(), '\n'));
    require(sdp.size() <= Bounds::bytes && newLines <= Bounds::lines);
    require(sdp.starts_with("v=0") && sdp.find('\0') == sdp.npos);
    std::size_t longest = 0;
    for (std::size_t start = 0; start < sdp.size();) {
        const std::size_t end = std::min(sdp.find('\n', start), sdp.size());
        longest = std::max(longest, end - start);
        start = end + 1;
    }
    require(longest <= Bounds::lineBytes + 1 && Bounds::hold(sdp.substr(0, sdp.rfind('\n'))));
}
