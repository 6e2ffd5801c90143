// SPDX-License-Identifier: MIT
#include "QuorvellCore/live/tools/ToolTable.h"

#include <algorithm>

namespace quorvell {

std::span<const ToolTraits> ToolTraits::all()
{
    return toolTable;
}

const ToolTraits* ToolTraits::find(std::string_view name)
{
    const auto* row = std::ranges::find(toolTable, name, &ToolTraits::name);
    return row == toolTable.end() ? nullptr : row;
}

const ToolOutcome* ToolTraits::outcome(ToolStatus status) const
{
    const auto* row = std::ranges::find(outcomes, status, &ToolOutcome::status);
    return row == outcomes.end() || status == ToolStatus::none ? nullptr : row;
}

} // namespace quorvell
