// SPDX-License-Identifier: MIT
// What one conversation keeps in mind between two utterances. Values: copied to the worker that thinks, and back.
#pragma once

#include "Understanding/dialogue/memory/AlarmTalk.h"
#include "Understanding/dialogue/memory/AsideQuestion.h"
#include "Understanding/dialogue/memory/DoneAct.h"
#include "Understanding/dialogue/memory/EventSearch.h"
#include "Understanding/dialogue/memory/FoundThing.h"
#include "Understanding/dialogue/memory/FurtherWish.h"
#include "Understanding/dialogue/memory/ListTalk.h"
#include "Understanding/dialogue/memory/OpenReadings.h"
#include "Understanding/dialogue/memory/PassingTalk.h"
#include "Understanding/dialogue/memory/PendingQuestion.h"
#include "Understanding/dialogue/memory/TakingBack.h"
#include "Understanding/dialogue/memory/ThingBatch.h"
#include "Understanding/dialogue/memory/Wish.h"
#include "Understanding/time/SpokenDays.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

struct RequestMemory {
    /// What is to be done with the notes that a search under way finds.
    enum class SearchPurpose { tell, read, readNewest, listNotes, remove };
    /// What was last asked of the calendar, where a further day may be asked about.
    enum class CalendarQuestion { none, events, freeTime };

    using Batch = ThingBatch;

    static constexpr std::size_t mostActs = 50; ///< That are kept to be taken back.
    static constexpr std::size_t mostTold = 5; ///< Things of a list; more nobody keeps in mind.

    PendingQuestion pending{};
    std::string_view topic{}; ///< The skill of what was last set, kept, changed or asked for: "it". A literal.
    PassingTalk passing{};
    std::string request{}; ///< The user's own words for the reminder under way, over all its turns.
    std::vector<FoundThing> found{}; ///< What was last told as a list: "the second one" is one of them.
    SearchPurpose purpose = SearchPurpose::tell;
    FoundThing reminder{}; ///< The one last talked about; without an id there is none.
    FoundThing event{}; ///< The same of events.
    AlarmTalk alarms{};
    CalendarQuestion asked = CalendarQuestion::none;
    EventSearch events{}; ///< Under way, while the calendar is asked; its aim is none otherwise.
    std::vector<FoundThing> untold{}; ///< Of the list last told of the calendar: "read me the rest".
    int freeMinutes = 0; ///< How long the free time was to be that was last asked for.
    Wish wish{};
    Batch batch{}; ///< Forgotten when the question whether they should go is.
    std::optional<SpokenDays> days{}; ///< What a list under way is of; nothing for everything.
    ListTalk lists{};
    std::string lastReply{}; ///< For "say that again".
    OpenReadings readings{}; ///< While the user is asked what they said.
    std::vector<DoneAct> acts{}; ///< What was changed and not taken back, the newest last.
    std::vector<DoneAct> takenBack{}; ///< For "redo", until something else is done; the newest last.
    TakingBack takingBack{}; ///< Under way, or asked about.
    std::optional<DateParts> askedDay{}; ///< The one day that the calendar was last asked about.
    std::size_t askedDayAt = 0; ///< In that utterance.
    std::size_t tookBackAt = 0; ///< Utterance that took something back; 0 for none.
    std::size_t failedAt = 0; ///< Utterance that wished for something which was not done; 0 for none.
    std::vector<AsideQuestion> aside{}; ///< The newest last.
    FurtherWish further{};
    std::size_t turn = 0; ///< Utterances so far.
    std::string words{}; ///< The last request that was no answer, without its opening and closing words.
    std::optional<ToolRequest> call{}; ///< The last one that was made.
    std::string remark{}; ///< What is said behind what the call under way does; empty for nothing.
    std::vector<ToolRequest> eventsToCome{}; ///< Of several that are put in by one request, behind the call under way.

    /// "tomorrow"; empty for everything.
    std::string daysInWords() const { return days ? days->words : std::string(); }
    /// Whether a list under way tells of that thing.
    bool tellsOf(const FoundThing& thing) const { return !days || (thing.start && days->hold(*thing.start)); }

    /// "It" is a matter of that skill from now on.
    void talkOf(std::string_view skill)
    {
        topic = skill;
        asked = CalendarQuestion::none;
    }

    bool operator==(const RequestMemory&) const = default;
};

} // namespace quorvell
