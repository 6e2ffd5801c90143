#include "Quorvell/app/LogEntry.h"

#include "Quorvell/app/ConversationText.h"

#include <nlohmann/json.hpp>

namespace quorvell {

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
    return LogEntry{
        *instant, *event, readString(*json, "run").value_or(""), ConversationText::summary(details), dumpJson(*json)};
}

} // namespace quorvell
