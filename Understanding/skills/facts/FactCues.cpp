// SPDX-License-Identifier: MIT
#include "Understanding/skills/facts/FactCues.h"

namespace quorvell {

namespace {

using Cues = FactCues;
constexpr auto head = CuePlace::head;

constexpr CueWords table[] = {
    {Cues::remember, head,
        "remember|do not you forget|do not you ever forget|make sure you remember|be sure to remember|be aware|for the "
        "record|for future reference|do not "
        "forget|do not ever forget|never forget|do not let me "
        "forget|let me not forget|"
        "make sure i do not forget|make sure that i do not forget|make sure i remember|must not forget|"
        "i must not forget|i should not forget|i can not forget|i cannot forget|do not want to forget|"
        "i do not want to forget|not forget|must remember|i must remember|i have to remember|i need to remember|"
        "i should remember|i ought to remember|help me remember|help me to remember|keep in mind|bear in mind|"
        "do not let it slip my mind|do not let me miss"},
    {Cues::know, head,
        "know|you should know|i want you to know|for your information|"
        "learn|remember about me|remember this about me|remember something about me|know this about me|"
        "know something about me|note about me|keep in mind about me|save about me"},
};

} // namespace

std::span<const CueWords> FactCues::rows()
{
    return table;
}

} // namespace quorvell
