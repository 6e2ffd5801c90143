// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/phrase/ReminderPhraseJson.h"

#include <nlohmann/json.hpp>

namespace quorvell {

Json phraseJson(const std::optional<ReminderPhrase>& phrase)
{
    if (!phrase)
        return nullptr;
    Json alternatives = Json::array();
    for (const Instant instant : phrase->alternatives)
        alternatives.push_back(isoText(instant));
    Json object = Json::object();
    object["task"] = phrase->task;
    object["date"] = isoText(phrase->date);
    object["hasTime"] = phrase->hasTime;
    object["alternatives"] = std::move(alternatives);
    object["repeatRule"] = phrase->repeatRule ? Json(phrase->repeatRule->stored()) : Json(nullptr);
    object["timeWords"] = phrase->timeWords;
    object["isAmbiguous"] = phrase->isAmbiguous();
    return object;
}

} // namespace quorvell
