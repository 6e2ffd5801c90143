// SPDX-License-Identifier: MIT
// An utterance in the plain form in which requests of the calendar are read: one spelling for each thing, lower case.
#pragma once

#include "Understanding/dialogue/RuleSurroundings.h"
#include "Understanding/dialogue/memory/EventSearch.h"

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

struct CalendarWords {
    static const std::string calendar; ///< A pattern: "calendar", "schedule" and the like.
    static const std::string occasion; ///< A pattern: what nobody says but of something with a time.
    static const std::string noun; ///< A pattern: "meetings", "event" and the like.

    std::string plain{}; ///< "show me todays events": small letters, contractions apart, common slips of keys mended.

    static CalendarWords of(std::string_view core);
    /// A name as they spelled it: "Ted's party".
    static std::string asSaid(const std::string& name, std::string_view core);

    /// On a sunday "this week" is the one that begins, and late on it "the weekend" is the next.
    static SpokenDays asMeant(SpokenDays days, const RuleSurroundings& around);
    /// What belongs to somebody else: "the list", "my alarm", a note about a meeting.
    static bool isOfOthers(std::string_view plain);
    /// "Parents evening", "movie night": a part of the day that belongs to a name.
    static bool namesPartOfDay(const std::string& plain);
    /// Words of a time that nobody understood; "movie night" and "sprint 12" are names.
    static bool holdsTimeWords(std::string_view name);

    /// The event that `subject`, a part of `plain`, names: its days, whether all or the next are meant, and a name.
    /// Its time is unclear where the words say more of it than was understood. Nothing for more than anything is
    /// called.
    static std::optional<EventSearch> search(std::string subject, const RuleSurroundings& around);
};

} // namespace quorvell
