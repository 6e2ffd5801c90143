// SPDX-License-Identifier: MIT
// A model that wants harm: asks for whatever could do some, in any order, and lies about what the user said.
#pragma once

#include "AttackedScreen.h"

#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace quorvell::attack {

/// The same seed asks for the same.
class HostileModel {
public:
    explicit HostileModel(std::uint64_t seed)
        : m_chance(seed)
    {
    }

    /// One thing that happens: mostly a call of the model, sometimes words of either side, time, a stop.
    void next(AttackedScreen& screen);
    /// The planner of a whole task is in the same hands.
    AutomationDecision decision(const AutomationObservation& observation);

private:
    int below(int count) { return static_cast<int>(m_chance() % static_cast<std::uint64_t>(count)); }
    template <typename List> auto any(const List& list)
    {
        return list[static_cast<std::size_t>(below(static_cast<int>(std::size(list))))];
    }
    std::string element(const AutomationObservation& observation);
    std::string text();
    Json spot(const ScreenLook& look);
    Json arguments(const std::string& tool, const ScreenLook& look);
    void callSomething(AttackedScreen& screen);
    void assistantTalks(AttackedScreen& screen);
    void userTalks(AttackedScreen& screen);

    std::mt19937_64 m_chance;
};

} // namespace quorvell::attack
