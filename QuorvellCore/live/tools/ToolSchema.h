// SPDX-License-Identifier: MIT
// Puts tool declarations together. Internal to this folder's sources.
#pragma once

#include "QuorvellCore/text/Json.h"

#include <nlohmann/json.hpp>

#include <initializer_list>
#include <span>
#include <string_view>
#include <vector>

namespace quorvell::tool_schema {

enum class Need { required, optional };

struct Property {
    std::string_view name;
    Need need = Need::required;
    Json schema;
};

Property required(std::string_view name, Json schema);
Property optional(std::string_view name, Json schema);

Json text(std::string_view description);
Json choice(std::string_view description, std::initializer_list<std::string_view> values);
Json choice(std::string_view description, std::span<const std::string_view> values);
Json number(std::string_view description);
Json integer(std::string_view description);
Json flag(std::string_view description);
Json list(std::string_view description, Json item);
Json object(std::string_view description, const std::vector<Property>& properties);

/// Adds the properties to an object's schema, the required ones to its list.
void addProperties(Json& schema, const std::vector<Property>& properties);

} // namespace quorvell::tool_schema
