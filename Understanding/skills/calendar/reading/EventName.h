// SPDX-License-Identifier: MIT
// Which events a name means. Pure.
#pragma once

#include "Understanding/dialogue/memory/FoundThing.h"

#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

struct EventName {
    /// "meeting", "events": what every event may be called.
    static bool isNoun(std::string_view word);
    /// Of those, "events": says nothing of what it is.
    static bool isAnyNoun(std::string_view word);
    /// "Meetings", "appointments": people call all of their events so.
    static bool isLoosePlural(std::string_view noun);
    /// Words between the others that name nothing: "the", "i have".
    static bool isIdle(std::string_view word);
    /// What is to be looked for by words: "doctor" of "my appointment with the doctor".
    static std::string words(std::string_view name);
    /// Those of exactly that title; else those whose titles hold all its words; else all of them but the nouns.
    static std::vector<FoundThing> fitting(const std::vector<FoundThing>& events, std::string_view name);
    /// Those whose titles hold all its words but the nouns, as they are or with one letter other than it was typed.
    static std::vector<FoundThing> alike(const std::vector<FoundThing>& events, std::string_view name);
    /// Those whose titles hold all its words, whatever else.
    static std::vector<FoundThing> holdingAll(const std::vector<FoundThing>& events, std::string_view name);
    /// Those that are called so; all of them where none is.
    static std::vector<FoundThing> called(const std::vector<FoundThing>& events, std::string_view noun);
};

} // namespace quorvell
