// SPDX-License-Identifier: MIT
// Which owner carries out which tool.
#pragma once

#include "Quorvell/session/tools/ToolReply.h"
#include "QuorvellCore/live/wire/vocabulary/LiveFunctionCall.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// Carries out one tool.
/// May answer later; runs on the main thread.
using ToolHandler = std::function<void(const LiveFunctionCall&, ToolReply)>;

/// Which owner carries out which tool. Filled at start-up.
class ToolRegistry {
public:
    /// A name that already has an owner keeps the first one and is remembered in `clashes`.
    void add(std::string name, ToolHandler handler);

    const ToolHandler* owner(std::string_view name) const;
    bool has(std::string_view name) const { return owner(name) != nullptr; }
    std::vector<std::string> names() const;

    /// Names that were registered twice; start-up fails when there are any.
    const std::vector<std::string>& clashes() const { return m_clashes; }

private:
    std::map<std::string, ToolHandler, std::less<>> m_owners;
    std::vector<std::string> m_clashes;
};

} // namespace quorvell
