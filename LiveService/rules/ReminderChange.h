#pragma once

#include "LiveService/rules/RuleSurroundings.h"

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

/// What an utterance does with reminders that are there already.
struct ReminderChange {
    enum class Kind { list, done, later };

    Kind kind = Kind::list;
    std::string task{}; ///< Words of the one that is meant; empty for what is due, or for all.
    std::string when{}; ///< Of later: until when, in the user's words.
    std::string days{}; ///< Of list: only those of these days, in the user's words; empty for all.

    bool operator==(const ReminderChange&) const = default;

    /// `core` is an utterance without its opening and closing words.
    static std::optional<ReminderChange> read(std::string_view core, const RuleSurroundings& around);
};

} // namespace quorvell
