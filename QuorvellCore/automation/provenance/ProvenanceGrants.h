// SPDX-License-Identifier: MIT
// Which questions about where words came from the user has switched off by hand.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// Each for one tool in one application; a new conversation begins with none. Nothing but the user's own hand adds one,
/// and none ever covers a verdict of the guard. A value.
class ProvenanceGrants {
public:
    struct Grant {
        std::string tool;
        std::string app;
        bool operator==(const Grant&) const = default;
    };

    void allow(std::string_view tool, std::string_view app);
    void withdraw(std::string_view tool, std::string_view app);
    bool covers(std::string_view tool, std::string_view app) const;
    /// To be shown, in the order in which they were given.
    const std::vector<Grant>& all() const { return m_grants; }

    bool operator==(const ProvenanceGrants&) const = default;

private:
    std::vector<Grant> m_grants;
};

} // namespace quorvell
