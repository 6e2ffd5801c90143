// SPDX-License-Identifier: MIT
#include "QuorvellCore/live/prompt/HelpMode.h"

namespace quorvell {

std::string_view nameOf(HelpMode mode)
{
    switch (mode) {
    case HelpMode::guide:
        return "guide";
    case HelpMode::auto_:
        return "auto";
    case HelpMode::do_:
        return "do";
    }
    return {};
}

std::optional<HelpMode> helpModeNamed(std::string_view name)
{
    for (const HelpMode mode : {HelpMode::guide, HelpMode::auto_, HelpMode::do_})
        if (nameOf(mode) == name)
            return mode;
    return std::nullopt;
}

} // namespace quorvell
