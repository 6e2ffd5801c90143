// SPDX-License-Identifier: MIT
// A fixed list of tool names, also asked as a set.
#pragma once

#include <algorithm>
#include <span>
#include <string_view>

namespace quorvell {

/// The names are literals.
class ToolNames {
public:
    constexpr explicit ToolNames(std::span<const std::string_view> names)
        : m_names(names)
    {
    }

    constexpr auto begin() const { return m_names.begin(); }
    constexpr auto end() const { return m_names.end(); }
    constexpr std::size_t size() const { return m_names.size(); }
    constexpr bool contains(std::string_view name) const
    {
        return std::find(m_names.begin(), m_names.end(), name) != m_names.end();
    }

private:
    std::span<const std::string_view> m_names;
};

} // namespace quorvell
