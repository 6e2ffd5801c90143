// SPDX-License-Identifier: MIT
// The one JSON type and the only ways in and out. Nothing here throws; JSON from outside is read through the readers.
#pragma once

#include <nlohmann/json_fwd.hpp>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// Keeps the order of its keys. Equality depends on that order.
using Json = nlohmann::ordered_json;

struct JsonLimits {
    std::size_t maximumBytes = 16 * 1024 * 1024;
    std::size_t maximumDepth = 64; ///< Nested arrays and objects, judged before parsing.
    std::size_t maximumMembers = 1024; ///< Of one object: objects are searched in order, so long ones cost squares.
};

/// Any JSON value, fragments such as "7" included. Nothing when malformed or beyond the limits.
/// A key that occurs twice keeps its last value.
std::optional<Json> parseJson(std::string_view text, const JsonLimits& limits = {});

/// Compact, keys in their own order, "/" not escaped, bad UTF-8 replaced by U+FFFD.
std::string dumpJson(const Json& value);

/// As dumpJson with the keys of every object sorted by their bytes.
std::string dumpSortedJson(const Json& value);

/// The member of an object; null when `value` is no object or has no such key. The pointer lives as long as `value`.
const Json* memberOf(const Json& value, std::string_view key);

// Readers of one value: nothing when the type is another one. A null is nothing.
std::optional<std::string> readString(const Json& value);
std::optional<std::int64_t> readInteger(const Json& value); ///< Integers, and doubles that are whole and fit.
std::optional<double> readNumber(const Json& value); ///< Integers and doubles.
std::optional<bool> readBool(const Json& value);
std::optional<std::vector<std::string>> readStrings(const Json& value); ///< An array of strings only.

// The same for a member of an object.
std::optional<std::string> readString(const Json& object, std::string_view key);
std::optional<std::int64_t> readInteger(const Json& object, std::string_view key);
std::optional<double> readNumber(const Json& object, std::string_view key);
std::optional<bool> readBool(const Json& object, std::string_view key);
std::optional<std::vector<std::string>> readStrings(const Json& object, std::string_view key);

} // namespace quorvell
