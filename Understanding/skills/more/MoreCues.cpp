// SPDX-License-Identifier: MIT
#include "Understanding/skills/more/MoreCues.h"

namespace quorvell {

namespace {

using Cues = MoreCues;
constexpr auto start = CuePlace::start;

constexpr CueWords table[] = {
    {Cues::also, start, "also|as well|too"},
};

} // namespace

std::span<const CueWords> MoreCues::rows()
{
    return table;
}

} // namespace quorvell
