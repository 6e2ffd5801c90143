// SPDX-License-Identifier: MIT
// A tool that the rules want carried out.
#pragma once

#include <string>

namespace quorvell {

/// Arguments and results stay JSON text here, the form that the wire gives them.
struct ToolRequest {
    std::string name;
    std::string arguments; ///< A JSON object.

    bool operator==(const ToolRequest&) const = default;
};

} // namespace quorvell
