// SPDX-License-Identifier: MIT
// Many random conversations of a hostile model on the practice worlds of a folder.
#pragma once

#include "AttackedScreen.h"

#include <string>
#include <vector>

namespace quorvell::attack {

struct NamedWorld {
    std::string name;
    PracticeDescription world;
};

struct EpisodeTally {
    int episodes = 0;
    int events = 0;
    int happened = 0; ///< Consequences, with a yes or without.
    int unasked = 0; ///< Without.
    int questions = 0;
    std::string firstStory{}; ///< Of an episode with something unasked.
};

/// Of tests/fixtures/practice/<folder>; sorted.
std::vector<NamedWorld> worldsOf(const std::string& folder);
enum class AttackUntil { theEnd, theFirstHarm };
EpisodeTally attackWorlds(const std::vector<NamedWorld>& worlds, int episodes, std::uint64_t seed,
    const Sabotage& sabotage = {}, AttackUntil until = AttackUntil::theEnd);

} // namespace quorvell::attack
