// SPDX-License-Identifier: MIT
// Whatever is let through to the library that reads descriptions of calls keeps within what was promised to it.
#include "QuorvellCore/live/wire/transport/SessionDescriptionBounds.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using Bounds = quorvell::SessionDescriptionBounds;
    const std::string_view sdp(reinterpret_cast<const char*>(data), size);
    if (!Bounds::hold(sdp))
        return 0;
    const auto newLines = static_cast<std::size_t>(std::count(sdp.begin(), sdp.end(), '\n'));
    if (size > Bounds::bytes || newLines > Bounds::lines || !sdp.starts_with("v=0") || sdp.find('\0') != sdp.npos)
        std::abort();
    std::size_t longest = 0;
    for (std::size_t start = 0; start < size;) {
        const std::size_t end = std::min(sdp.find('\n', start), size);
        longest = std::max(longest, end - start);
        start = end + 1;
    }
    if (longest > Bounds::lineBytes + 1 || !Bounds::hold(sdp.substr(0, sdp.rfind('\n'))))
        std::abort();
    return 0;
}
