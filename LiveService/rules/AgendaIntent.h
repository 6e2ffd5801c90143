#pragma once

#include "LiveService/rules/SpokenDays.h"

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

/// What an utterance asks of the calendar.
struct AgendaIntent {
    enum class Kind {
        list, ///< What is on in `days`.
        findTime, ///< `minutes` that are free in `days`.
        add, ///< `title` at `start`.
        move, ///< The event that `title` names, of `days`: to `when`, or by `minutes`.
        cancel, ///< The event that `title` names, of `days`.
    };

    Kind kind = Kind::list;
    SpokenDays days{};
    int minutes = 0; ///< 0 for none that was named.
    std::string title{};
    std::string start{}; ///< In the form of the tools' dates.
    std::string end{};
    std::string when{}; ///< The user's words for the new time.

    bool operator==(const AgendaIntent&) const = default;

    /// `core` is an utterance without its opening and closing words.
    static std::optional<AgendaIntent> read(std::string_view core, const RuleSurroundings& around);
};

} // namespace quorvell
