// SPDX-License-Identifier: MIT
// The phrase under its field names, instants in their text form, the rule as stored text or null; null for no phrase.
#pragma once

#include "QuorvellCore/reminders/phrase/ReminderPhrase.h"
#include "QuorvellCore/text/Json.h"

#include <optional>

namespace quorvell {

Json phraseJson(const std::optional<ReminderPhrase>& phrase);

} // namespace quorvell
