// SPDX-License-Identifier: MIT
// The fields in the head of a request or an answer. Pure.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

namespace http_fields {

using Fields = std::map<std::string, std::string, std::less<>>;

/// The next line, taken off with its end.
std::string_view takeLine(std::string_view& rest);
/// Of whole lines. Nothing when one of them is no field.
std::optional<Fields> read(std::string_view lines);
/// Empty when there is none of this name (in lower case).
std::string_view value(const Fields& fields, std::string_view name);
/// Whether a list of tokens names this one (in lower case), in any case.
bool has(const Fields& fields, std::string_view name, std::string_view token);
std::string_view withoutBlanks(std::string_view text);

} // namespace http_fields

} // namespace quorvell
