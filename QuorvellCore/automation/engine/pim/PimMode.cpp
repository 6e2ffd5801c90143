// SPDX-License-Identifier: MIT
#include "QuorvellCore/automation/engine/pim/PimMode.h"

namespace quorvell {

std::string_view storedText(PimMode mode)
{
    switch (mode) {
    case PimMode::off:
        return "off";
    case PimMode::shadow:
        return "shadow";
    case PimMode::active:
        return "active";
    }
    return "off";
}

std::optional<PimMode> pimMode(std::string_view stored)
{
    for (const PimMode mode : allPimModes) {
        if (storedText(mode) == stored)
            return mode;
    }
    return std::nullopt;
}

} // namespace quorvell
