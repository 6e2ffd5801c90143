// SPDX-License-Identifier: MIT
#include "Understanding/time/SpokenPhrase.h"

#include "QuorvellCore/reminders/request/RequestPhrase.h"
#include "QuorvellCore/reminders/spoken/SpokenTimes.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/time/SpokenToWritten.h"
#include "Understanding/time/TimeVocabulary.h"
#include "Understanding/words/RequestText.h"

namespace quorvell {

namespace {

/// "Tuesday 10 to 12", "2 to 4 tomorrow afternoon": beside a day two numbers are hours, and "from" says so. "10 to 8"
/// may be ten minutes before eight and stays.
std::string withLedHours(std::string words)
{
    static const std::string hour("(?:1[0-2]|[1-9])");
    static const std::string month("(?:jan(?:uary)?|feb(?:ruary)?|mar(?:ch)?|apr(?:il)?|may|june?|july?|aug(?:ust)?"
                                   "|sept?(?:ember)?|oct(?:ober)?|nov(?:ember)?|dec(?:ember)?)");
    static const std::string range("(?:(?:5|10) to [5-9]\\b(?!:))");
    static const std::string hours("(?!" + range + ")" + hour + " (?:to|till|until) " + hour + "\\b(?![:./-]|\\d)");
    static const std::string day("(?:today|tonight|tomorrow|tmrw|" + std::string(TimeVocabulary::weekday)
        + "|\\d{1,2}(?:st|nd|rd|th)?(?: of)? " + month + "|" + month
        + " \\d{1,2}(?:st|nd|rd|th)?|the \\d{1,2}(?:st|nd|rd|th))");
    static const Pattern behind("\\b" + day + "(?: morning| afternoon| evening)?,? ()" + hours
            + "(?! (?:people|of|percent|minutes?|hours?|days?|weeks?|" + month + ")\\b)",
        Pattern::caseless);
    static const Pattern ahead("(?<!\\bfrom )(?<!\\bbetween )(?<!\\bat )(?<![\\d:./-])(?<!\\d )\\b()" + hours
            + ",? (?:on )?(?:today|tonight|tomorrow|tmrw|" + std::string(TimeVocabulary::weekday)
            + "|in the (?:morning|afternoon|evening))\\b",
        Pattern::caseless);
    // "4.30 to 5.15", "10:30-11:15", "10 am to 1 pm" are hours wherever they stand.
    static const Pattern pointed("(?<!\\d)(?<![\\d£$€./:-])(\\d{1,2})\\.([0-5]\\d)(?: (?:to|till|until) | ?[-–] "
                                 "?)(\\d{1,2})\\.([0-5]\\d)(?![\\d.])",
        Pattern::caseless);
    if (const auto match = pointed.find(words)) {
        const auto& part = match->texts;
        words = words.substr(0, match->range.start) + part[0] + ":" + part[1] + " to " + part[2] + ":" + part[3]
            + words.substr(match->range.end);
    }
    static const std::string clear("(?:\\d{1,2}:\\d\\d(?: ?[ap]\\.?m\\b\\.?)?|\\d{1,2} ?[ap]\\.?m\\b\\.?)");
    static const Pattern marked("(?<!\\bfrom )(?<!\\bbetween )(?<![\\d:./-])\\b(?:at )?()" + clear
            + "()(?: (?:to|till|until) | ?[-–] ?)()" + clear + "(?![:/\\d-])",
        Pattern::caseless);
    if (const auto match = marked.find(words))
        return words.substr(0, match->range.start) + "from "
            + words.substr(match->groups[0]->start, match->groups[1]->start - match->groups[0]->start) + " to "
            + words.substr(match->groups[2]->start);
    for (const Pattern* form : {&behind, &ahead})
        if (const auto match = form->find(words))
            return words.insert(match->groups[0]->start, "from ");
    return words;
}

} // namespace

std::optional<ReminderPhrase> SpokenPhrase::read(std::string_view words, const LocalTime& around)
{
    if (RequestText::isStory(words))
        return std::nullopt;
    return requestPhrase(withDigits(words), around.now, around.calendar);
}

std::string SpokenPhrase::withDigits(std::string_view words)
{
    return RequestText::isStory(words) ? std::string(words) : withLedHours(withWrittenTimes(spokenToWritten(words)));
}

} // namespace quorvell
