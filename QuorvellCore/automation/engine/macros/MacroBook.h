// SPDX-License-Identifier: MIT
// The ways that are known, and those that were gone only once so far.
#pragma once

#include "QuorvellCore/automation/engine/macros/VerifiedMacro.h"

#include <string_view>

namespace quorvell {

/// A value: the program loads one, learns from each task that ended well, and stores it.
class MacroBook {
public:
    static constexpr std::size_t mostMacros = 200; ///< Beyond it the one that was verified longest ago is forgotten.
    static constexpr int mostVerified = 1'000'000; ///< Runs are counted no further.

    /// After a task that reached its goal, all of whose steps were verified. A way that is gone the second time can be
    /// replayed; another way to the same goal takes the place of the one before. False where it cannot be kept.
    bool learn(std::string_view goal, std::vector<MacroStep> steps, Instant now);

    /// Of a macro that no longer fits.
    void drop(const VerifiedMacro& macro);

    /// Those that may be replayed.
    std::vector<VerifiedMacro> macros() const;

    /// All that is known, the last verified first.
    const std::vector<VerifiedMacro>& entries() const { return m_entries; }
    /// From a file. False where it breaks the rules of what is kept.
    bool add(VerifiedMacro macro);

    bool operator==(const MacroBook&) const = default;

private:
    void put(VerifiedMacro macro);

    std::vector<VerifiedMacro> m_entries;
};

} // namespace quorvell
