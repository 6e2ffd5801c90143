// SPDX-License-Identifier: MIT
// A line about alarms or timers, cut at that noun, and the words around it that say nothing by themselves. Pure.
#pragma once

#include "QuorvellCore/text/Pattern.h"

#include <optional>
#include <string>

namespace quorvell {

struct AlarmLine {
    std::string front{}; ///< What is to be done, and words that tell which one.
    std::string back{}; ///< Times and names.
    bool isOfTimers = false;
    bool isPlural = false;

    /// Nothing for a line without the noun.
    static std::optional<AlarmLine> cut(const std::string& core);
    /// Whether the words speak of such a thing, and want something else.
    static bool isOfOthers(const std::string& core);
    /// "7:00 p.m." as "7:00 pm": its full stops end no sentence.
    static std::string withPlainHalves(const std::string& words);
    /// What is asked rather than wished for. "Can you" and the like are gone already.
    static bool isQuestion(const std::string& core);

    /// Takes a pattern away at the start; tells whether it was there.
    static bool take(const Pattern& pattern, std::string& text);
    static std::string withoutArticles(std::string words);
    /// Behind the noun: without the words that only lead to a time or a name.
    static std::string withoutLead(std::string words);
    /// "Called pasta" at the end, taken away.
    static std::string takeName(std::string& words);
    static std::string withoutEdges(const std::string& words);
    /// A time as its reader wants it: "at 7", "in 20 minutes", "tomorrow" of "tomorrow's".
    static std::string asTime(std::string words);
    /// The words that tell which one is meant; `front` is without the verb.
    std::string which(const std::string& front) const;

    bool operator==(const AlarmLine&) const = default;
};

} // namespace quorvell
