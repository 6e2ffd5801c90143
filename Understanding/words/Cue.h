// SPDX-License-Identifier: MIT
// What a few words of a request hint at, however they were put.
#pragma once

#include <cstdint>
#include <string_view>

namespace quorvell {

/// Known by its name. Each skill has cues of its own; those of several stand in CommonCues.
struct Cue {
    /// What it does to the words around it, besides hinting.
    enum Trait : std::uint16_t {
        takesDown = 1, ///< What follows is the user's to say, and hints at nothing: "remind me".
        keeps = 2, ///< The same where "that" or a colon follows.
        makes = 4,
        thing = 8, ///< Behind a cue that makes, what follows is the user's to say: "make a note".
        container = 16, ///< Its preposition belongs to it: "in my notes".
        ofWriting = 32, ///< What follows may speak of calendars and the like without asking for them.
        asksForWriting = 64, ///< Counts there nevertheless: "what does my note about the car say".
        content = 128, ///< Stays part of what the request is about: "lunch".
        cutsClosing = 256, ///< A last "instead" is no part of what is taken down.
        followsTime = 512, ///< Asks for something even behind a time: "at 5 remind me to eat".
        hinders = 1024, ///< What is named cannot stay as it is: "I can't do lunch".
        names = 2048, ///< Names a thing that later words may be about.
        tells = 4096, ///< Unless it only tells of it: "I have lunch".
    };

    std::string_view name{};
    std::uint16_t traits = 0;

    constexpr bool is(Trait trait) const { return (traits & trait) != 0; }
    constexpr bool operator==(const Cue& other) const { return name == other.name; }
};

} // namespace quorvell
