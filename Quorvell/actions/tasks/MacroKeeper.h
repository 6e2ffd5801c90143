// SPDX-License-Identifier: MIT
// The ways that are known, for as long as the program runs, and told to whoever stores them.
#pragma once

#include "QuorvellCore/automation/engine/macros/MacroBook.h"
#include "QuorvellCore/text/Instant.h"

#include <functional>
#include <string_view>
#include <vector>

namespace quorvell {

/// Main thread. A task is given a copy of the ways; what it finds out comes back as a value.
class MacroKeeper {
public:
    struct Ports {
        std::function<Instant()> now;
        std::function<void(const MacroBook&)> store; ///< Called after each change.
    };

    MacroKeeper(Ports ports, MacroBook book);

    std::vector<VerifiedMacro> macros() const { return m_book.macros(); }
    void learn(std::string_view goal, std::vector<MacroStep> steps);
    void drop(const VerifiedMacro& macro);

private:
    Ports m_ports;
    MacroBook m_book;
};

} // namespace quorvell
