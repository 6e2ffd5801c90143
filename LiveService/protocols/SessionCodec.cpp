// SPDX-License-Identifier: MIT
#include "LiveService/protocols/SessionCodec.h"

namespace quorvell {

std::string SessionCodec::resumption(std::string_view) const
{
    return {};
}

std::string SessionCodec::goAway(std::chrono::milliseconds) const
{
    return {};
}

} // namespace quorvell
