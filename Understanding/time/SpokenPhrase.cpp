// SPDX-License-Identifier: MIT
#include "Understanding/time/SpokenPhrase.h"

#include "QuorvellCore/reminders/request/RequestPhrase.h"
#include "QuorvellCore/reminders/spoken/SpokenTimes.h"
#include "Understanding/time/SpokenToWritten.h"
#include "Understanding/words/RequestText.h"

namespace quorvell {

std::optional<ReminderPhrase> SpokenPhrase::read(std::string_view words, const LocalTime& around)
{
    if (RequestText::isStory(words))
        return std::nullopt;
    return requestPhrase(withDigits(words), around.now, around.calendar);
}

std::string SpokenPhrase::withDigits(std::string_view words)
{
    return RequestText::isStory(words) ? std::string(words) : withWrittenTimes(spokenToWritten(words));
}

} // namespace quorvell
