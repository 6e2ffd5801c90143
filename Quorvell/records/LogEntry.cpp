// SPDX-License-Identifier: MIT
#include "Quorvell/records/LogEntry.h"

#include "QuorvellCore/text/PrintableText.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace quorvell {

namespace {

/// "29 characters, after 204 ms, close code: 1006"
std::string readableDetails(const Json& details)
{
    constexpr std::string_view inMilliseconds = "_ms";
    std::string text;
    for (const auto& [key, value] : details.items()) {
        const bool isLength = key.ends_with(inMilliseconds);
        std::string name = isLength ? key.substr(0, key.size() - inMilliseconds.size()) : key;
        std::replace(name.begin(), name.end(), '_', ' ');
        text += text.empty() ? "" : ", ";
        text += key == "detail" ? "" : name + (isLength ? " " : ": ");
        text += readString(value).value_or(dumpJson(value)) + (isLength ? " ms" : "");
    }
    return printableLine(text, LogEntry::longestNote);
}

} // namespace

std::optional<LogEntry> LogEntry::read(std::string_view line)
{
    const auto json = parseJson(line, {longestLine, 8, 128});
    const auto event = json ? readString(*json, "event") : std::nullopt;
    const auto at = json ? readString(*json, "at") : std::nullopt;
    const auto instant = at ? parseIsoText(*at) : std::nullopt;
    if (!event || event->empty() || !instant)
        return std::nullopt;
    Json details = Json::object();
    for (const auto& [key, value] : json->items())
        if (key != "at" && key != "event" && key != "run")
            details[key] = value;
    return LogEntry{*instant, *event, readString(*json, "run").value_or(""), readableDetails(details), dumpJson(*json)};
}

} // namespace quorvell
