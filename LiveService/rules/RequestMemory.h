// SPDX-License-Identifier: MIT
// What one conversation keeps in mind between two utterances. Values: copied to the worker that thinks, and back.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace quorvell {

/// One of the instants that the user's words could mean.
struct TimeChoice {
    std::string date; ///< "2026-11-22 17:00", the user's zone.
    std::string when; ///< The same in words.

    bool operator==(const TimeChoice&) const = default;
};

/// A note, a reminder or an event that a tool named. The id is for the tools and is never spoken.
struct FoundThing {
    enum class Kind { note, reminder, event };

    std::string id{};
    std::string title{};
    std::string start{}; ///< In the form of the tools' dates, as `end`; empty where it was not told.
    std::string end{};
    Kind kind = Kind::note;
    bool repeats = false;

    bool operator==(const FoundThing&) const = default;
};

/// What was asked back and is still open.
struct PendingQuestion {
    enum class Kind {
        none,
        whichTime, ///< Which of `choices`.
        reminderTime, ///< When the reminder is to be.
        reminderTask, ///< What the reminder at `date` is for.
        wholeReminder, ///< Neither task nor time is known.
        whichNote, ///< Which of the found notes.
        noteText, ///< What the note is to say.
        noteTopic, ///< What the note that is to be read is about.
        keepOrRemind, ///< Whether `task` is to be written down, or to be reminded of.
        confirm, ///< Whether `tool` is really to be called with `arguments`.
        whichReminder, ///< Which of the found ones is done or put off: the call is to be made again with its id.
        whichEvent, ///< Which of the found events is moved or cancelled.
        occurrences, ///< Whether that is to be done with one time of the found event, or with all of its series.
        eventTime, ///< When the event `task` is to be.
        newEventTime, ///< When the event `task` is to be instead.
        eventTitle, ///< What the event at `date` is.
    };
    static constexpr int patience = 1; ///< So many answers that fit nothing are asked about again.

    Kind kind = Kind::none;
    std::string question{}; ///< As it was asked.
    std::string task{};
    std::string date{};
    std::string repeat{}; ///< Stored form; empty for none.
    std::vector<TimeChoice> choices{};
    std::string tool{}; ///< Of the call that is to be made again; empty when the answer makes another one.
    std::string arguments{}; ///< A JSON object.
    int misses = 0;

    bool operator==(const PendingQuestion&) const = default;
};

/// What is to be done with an event that the calendar is being asked for.
struct EventWish {
    enum class Kind { none, move, cancel, tellNext };
    /// How much of an event that repeats is meant.
    enum class Scope { open, one, all };

    Kind kind = Kind::none;
    std::string title{}; ///< Words of it.
    std::string
        when{}; ///< The new time in the user's words; empty when it is moved by `minutes`. Of tellNext: behind it.
    int minutes = 0;
    Scope scope = Scope::open;

    bool operator==(const EventWish&) const = default;
};

struct RequestMemory {
    /// What is to be done with the notes that a search under way finds.
    enum class SearchPurpose { tell, read, readNewest, listNotes };

    /// What was last set, kept or changed, and "it" therefore means; or what was asked, and a further day is asked
    /// about.
    enum class Topic { none, reminder, event, note, events, freeTime };

    static constexpr std::size_t mostTold = 5; ///< Things of a list; more nobody keeps in mind.

    PendingQuestion pending{};
    Topic topic = Topic::none;
    std::string request{}; ///< The user's own words for the reminder under way, over all its turns.
    std::vector<FoundThing> found{}; ///< What was last told as a list: "the second one" is one of them.
    SearchPurpose purpose = SearchPurpose::tell;
    std::string reminder{}; ///< Id of the one last talked about; empty for none.
    std::string reminderDate{}; ///< When it is, in the form of the tools' dates; empty when that was not told.
    int freeMinutes = 0; ///< How long the free time was to be that was last asked for.
    FoundThing event{}; ///< The one last talked about; without an id there is none.
    EventWish wish{};
    std::string days{}; ///< "tomorrow": what a list under way is of, in words. Empty for everything.
    std::string firstDay{}; ///< Of them, "2026-11-22"; empty for everything.
    std::string lastDay{};
    std::string lastReply{}; ///< For "say that again".

    /// Whether a list under way tells of that date.
    bool tellsOf(const std::string& date) const
    {
        const std::string day = date.substr(0, firstDay.size());
        return firstDay.empty() || (day >= firstDay && day <= lastDay);
    }

    bool operator==(const RequestMemory&) const = default;
};

} // namespace quorvell
