// SPDX-License-Identifier: MIT
#include "Quorvell/session/tools/ToolRegistry.h"

#include <algorithm>

namespace quorvell {

void ToolRegistry::add(std::string name, ToolHandler handler)
{
    const auto [position, isNew] = m_owners.try_emplace(std::move(name), std::move(handler));
    if (!isNew && std::find(m_clashes.begin(), m_clashes.end(), position->first) == m_clashes.end())
        m_clashes.push_back(position->first);
}

const ToolHandler* ToolRegistry::owner(std::string_view name) const
{
    const auto found = m_owners.find(name);
    return found == m_owners.end() ? nullptr : &found->second;
}

std::vector<std::string> ToolRegistry::names() const
{
    std::vector<std::string> names;
    names.reserve(m_owners.size());
    for (const auto& owner : m_owners)
        names.push_back(owner.first);
    return names;
}

} // namespace quorvell
