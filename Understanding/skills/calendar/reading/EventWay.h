// SPDX-License-Identifier: MIT
// A form of words, and what is wished of an event in it.
#pragma once

#include "QuorvellCore/text/Pattern.h"
#include "Understanding/dialogue/memory/EventSearch.h"

#include <string>

namespace quorvell {

struct EventWay {
    EventWay(const std::string& pattern, EventSearch::Aim what)
        : form(pattern)
        , aim(what)
    {
    }

    Pattern form;
    EventSearch::Aim aim;
};

} // namespace quorvell
