// SPDX-License-Identifier: MIT
// The text of tests/fixtures/live/<side>/<name>.json.
#pragma once

#include "QuorvellCore/text/Json.h"

#include <nlohmann/json.hpp>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <string>

namespace quorvell {

inline std::filesystem::path fixtureFolder(const std::string& side)
{
    return std::filesystem::path(QUORVELL_FIXTURES) / "live" / side;
}

inline std::string fixtureText(const std::string& side, const std::string& name)
{
    std::ifstream file(fixtureFolder(side) / (name + ".json"));
    return {std::istreambuf_iterator<char>(file), {}};
}

inline std::set<std::string> fixtureNames(const std::string& side)
{
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(fixtureFolder(side)))
        names.insert(entry.path().stem().string());
    return names;
}

/// The messages of tests/fixtures/live/<name>.jsonl by their names; each line is {"name", "message"}.
inline std::map<std::string, std::string> fixtureLines(const std::string& name)
{
    std::map<std::string, std::string> messages;
    std::ifstream file(std::filesystem::path(QUORVELL_FIXTURES) / "live" / (name + ".jsonl"));
    for (std::string line; std::getline(file, line);) {
        const auto entry = parseJson(line).value_or(Json());
        const Json* message = memberOf(entry, "message");
        messages[readString(entry, "name").value_or("")] = message ? dumpJson(*message) : "";
    }
    return messages;
}

/// The same message without white space, keys in the order of the file.
inline std::string compact(const std::string& text)
{
    return dumpJson(parseJson(text).value_or(Json()));
}

} // namespace quorvell
