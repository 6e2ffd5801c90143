// SPDX-License-Identifier: MIT
// One tool's declaration, with the properties that any tool of its kind accepts. Internal to this folder's sources.
#pragma once

#include "QuorvellCore/live/tools/ToolSchema.h"
#include "QuorvellCore/text/Json.h"

#include <string_view>
#include <vector>

namespace quorvell::tool_declarations {

const Json& planUpdateProperty();
const Json& nextStepProperty();

/// Adds `plan_update` and `then` where the tool accepts them.
Json declaration(
    std::string_view name, std::string_view description, const std::vector<tool_schema::Property>& properties = {});

} // namespace quorvell::tool_declarations
