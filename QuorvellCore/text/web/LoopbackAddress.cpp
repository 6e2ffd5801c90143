// SPDX-License-Identifier: MIT
#include "QuorvellCore/text/web/LoopbackAddress.h"

#include <algorithm>
#include <charconv>
#include <system_error>

namespace quorvell {

bool isLoopbackAddress(std::string_view host)
{
    int numbers = 0;
    for (; !host.empty(); ++numbers) {
        const std::size_t end = std::min(host.find('.'), host.size());
        unsigned number = 256;
        const auto [stop, problem] = std::from_chars(host.data(), host.data() + end, number);
        const bool isPlain = end == 1 || (end > 1 && host.front() != '0');
        if (problem != std::errc{} || stop != host.data() + end || !isPlain || number > 255
            || (numbers == 0 && number != 127) || end + 1 == host.size())
            return false;
        host.remove_prefix(std::min(end + 1, host.size()));
    }
    return numbers == 4;
}

} // namespace quorvell
