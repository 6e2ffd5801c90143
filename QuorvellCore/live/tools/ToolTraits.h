// SPDX-License-Identifier: MIT
// What is true of a tool, whoever carries it out: a new tool is one row of ToolTable.h.
#pragma once

#include "QuorvellCore/live/tools/ToolGroup.h"
#include "QuorvellCore/live/tools/ToolOutcome.h"

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

namespace quorvell {

/// Set by name, as the flags that most tools don't have are left out.
struct ToolTraits {
    static constexpr std::size_t mostOutcomes = 4;

    std::string_view name;
    ToolGroup group = ToolGroup::screen;
    std::string_view running; ///< Told while it runs, behind "Working:".
    bool isTiered = false; ///< Needs the engine on this computer that carries out whole goals.
    bool actsOnScreen = false; ///< One at a time: the next is chosen on the screen that this one leaves behind.
    bool changes = false; ///< Leaves something behind: on the screen, in what is the user's, or with others.
    bool isOfSession = false; ///< The conversation itself carries it out, without an owner.
    bool interrupts = false; ///< Its result does not wait for the end of the sentence that is being spoken.
    bool namesNextStep = false; ///< May carry `then`.
    std::uint8_t planPlace = 0; ///< Its place among those that may carry `plan_update`, from 1; others have none.
    std::array<ToolOutcome, mostOutcomes> outcomes = {}; ///< Those that are told in words of their own, first.

    /// In the order in which the tools are declared.
    static std::span<const ToolTraits> all();
    /// Null when there is no such tool.
    static const ToolTraits* find(std::string_view name);

    /// Null when it is told like that of any tool.
    const ToolOutcome* outcome(ToolStatus status) const;
};

} // namespace quorvell
