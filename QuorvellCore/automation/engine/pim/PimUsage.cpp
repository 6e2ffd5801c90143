// SPDX-License-Identifier: MIT
#include "QuorvellCore/automation/engine/pim/PimUsage.h"

#include <nlohmann/json.hpp>

namespace quorvell {

std::optional<PimUsage> PimUsage::read(const Json& reply)
{
    const Json* usage = memberOf(reply, "usage");
    if (!usage)
        return std::nullopt;
    const auto input = readInteger(*usage, "input_tokens");
    const auto output = readInteger(*usage, "output_tokens");
    if (!input || !output || *input < 0 || *output < 0)
        return std::nullopt;
    return PimUsage{*input, *output};
}

} // namespace quorvell
