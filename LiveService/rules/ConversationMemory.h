// What one conversation keeps in mind between two utterances. Values: copied to the worker that thinks, and back.
#pragma once

#include <string>
#include <vector>

namespace quorvell {

/// One of the instants that the user's words could mean.
struct TimeChoice {
    std::string date; ///< "2026-11-22 17:00", the user's zone.
    std::string when; ///< The same in words.

    bool operator==(const TimeChoice&) const = default;
};

/// A note that the last search found. The id is for the tools and is never spoken.
struct FoundNote {
    std::string id;
    std::string title;

    bool operator==(const FoundNote&) const = default;
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
    };
    static constexpr int patience = 1; ///< So many answers that fit nothing are asked about again.

    Kind kind = Kind::none;
    std::string question{}; ///< As it was asked.
    std::string task{};
    std::string date{};
    std::string repeat{}; ///< Stored form; empty for none.
    std::vector<TimeChoice> choices{};
    int misses = 0;

    bool operator==(const PendingQuestion&) const = default;
};

struct ConversationMemory {
    /// What is to be done with the notes that a search under way finds.
    enum class SearchPurpose { tell, read, readNewest, listNotes, listReminders };

    PendingQuestion pending{};
    std::string request{}; ///< The user's own words for the reminder under way, over all its turns.
    std::vector<FoundNote> found{};
    SearchPurpose purpose = SearchPurpose::tell;
    std::string lastReply{}; ///< For "say that again".

    bool operator==(const ConversationMemory&) const = default;
};

} // namespace quorvell
