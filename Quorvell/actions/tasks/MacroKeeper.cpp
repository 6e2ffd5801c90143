// SPDX-License-Identifier: MIT
#include "Quorvell/actions/tasks/MacroKeeper.h"

#include <utility>

namespace quorvell {

MacroKeeper::MacroKeeper(Ports ports, MacroBook book)
    : m_ports(std::move(ports))
    , m_book(std::move(book))
{
}

void MacroKeeper::learn(std::string_view goal, std::vector<MacroStep> steps)
{
    if (m_book.learn(goal, std::move(steps), m_ports.now()))
        m_ports.store(m_book);
}

void MacroKeeper::drop(const VerifiedMacro& macro)
{
    m_book.drop(macro);
    m_ports.store(m_book);
}

} // namespace quorvell
