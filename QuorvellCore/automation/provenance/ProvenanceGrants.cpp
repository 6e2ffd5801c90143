// SPDX-License-Identifier: MIT
#include "QuorvellCore/automation/provenance/ProvenanceGrants.h"

#include <algorithm>

namespace quorvell {

void ProvenanceGrants::allow(std::string_view tool, std::string_view app)
{
    // An application that nobody knows the name of could be any.
    if (!tool.empty() && !app.empty() && !covers(tool, app))
        m_grants.push_back({std::string(tool), std::string(app)});
}

void ProvenanceGrants::withdraw(std::string_view tool, std::string_view app)
{
    std::erase_if(m_grants, [&](const Grant& grant) { return grant.tool == tool && grant.app == app; });
}

bool ProvenanceGrants::covers(std::string_view tool, std::string_view app) const
{
    return std::any_of(
        m_grants.begin(), m_grants.end(), [&](const Grant& grant) { return grant.tool == tool && grant.app == app; });
}

} // namespace quorvell
