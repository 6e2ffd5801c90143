// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/phrase/PhrasePatterns.h"

namespace quorvell {

PhrasePatterns::PhrasePatterns()
    : repeat(R"(\b(?:every|each)\s+(day|morning|evening|night|weekday|week|month|year|monday|tuesday|wednesday)"
             R"(|thursday|friday|saturday|sunday)s?\b|\b(daily|weekly|monthly|yearly|weekdays)\b)")
    , offset(R"(\bin\s+(\d+|a|an|one|two|three|four|five|six|seven|eight|nine|ten|eleven|twelve|fifteen|twenty)"
             R"(|thirty|forty[- ]five|half an)\s*(minutes?|mins?|hours?|hrs?|days?|weeks?)\b)")
    , namedDay(R"(\b(today|tonight|tomorrow|tmrw|day after tomorrow)\b(?:\s+(morning|afternoon|evening|night))?)")
    , thisPart(R"(\bthis\s+(morning|afternoon|evening)\b)")
    , weekday(R"(\b(?:on\s+)?(next\s+|this\s+|coming\s+)?(sunday|monday|tuesday|wednesday|thursday|friday|saturday)"
              R"(|sun|mon|tues|tue|wed|thurs|thur|thu|fri|sat)\b(?:\s+(morning|afternoon|evening|night))?)")
    , nextWeek(R"(\bnext\s+week\b)")
    , dayAndMonth(R"(\b(?:on\s+)?(?:the\s+)?(\d{1,2})(?:st|nd|rd|th)?\s+(?:of\s+)?)"
                  R"((jan|feb|mar|apr|may|jun|jul|aug|sep|sept|oct|nov|dec)[a-z]*\b)"
                  R"(|\b(jan|feb|mar|apr|may|jun|jul|aug|sep|sept|oct|nov|dec)[a-z]*\s+(\d{1,2})(?:st|nd|rd|th)?\b)")
    , dayOfMonth(R"(\b(?:on\s+)?the\s+(\d{1,2})(?:st|nd|rd|th)\b)")
    , clock(R"(\b(?:at\s+|by\s+|@\s*)?(\d{1,2})(?::|\.)(\d{2})\s*(am|pm|a\.m\.|p\.m\.)?)"
            R"(|\b(?:at\s+|by\s+|@\s*)?(\d{1,2})\s*(am|pm|a\.m\.|p\.m\.))"
            R"(|\b(?:at|by|@)\s*(\d{1,2})\b(?!\s*(?:minutes?|mins?|hours?|hrs?|days?|weeks?|st|nd|rd|th|%)))"
            R"(|\b(?:at\s+)?(noon|midday|midnight)\b)")
    // "at 5 the plumber", whose next word only begins like a unit or a suffix, and "@5" with no word before it.
    , secondChanceClock(R"((?:\b(?:at|by)\s*(\d{1,2})\b(?=\s*(?:min|hour|hr|day|week|st|nd|rd|th)))"
                        R"(|(?<!\w)@\s*(\d{1,2})\b(?![:.]\d)))"
                        R"((?!\s*(?:(?:minutes?|mins?|hours?|hrs?|days?|weeks?|st|nd|rd|th)\b|%)))")
    , part(R"(\b(?:in the\s+)?(morning|afternoon|evening|night)\b)")
    , leadIn(R"(^\s*(?:hey\s+)?(?:quorvell,?\s+)?(?:please\s+)?(?:can you\s+|could you\s+)?)"
             R"((?:set a reminder\s+(?:to|for)\s+|remind me\s+(?:to\s+|about\s+|that\s+)?|reminder\s*:?\s*(?:to\s+)?))",
          Pattern::Case::insensitive)
{
}

const PhrasePatterns& PhrasePatterns::all()
{
    static const PhrasePatterns patterns;
    return patterns;
}

} // namespace quorvell
