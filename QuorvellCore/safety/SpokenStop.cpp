// SPDX-License-Identifier: MIT
#include "QuorvellCore/safety/SpokenStop.h"

#include "QuorvellCore/safety/SpokenWords.h"
#include "QuorvellCore/safety/words/OneOf.h"

#include <array>
#include <string>

namespace quorvell {

namespace {

constexpr auto stops = std::to_array<std::string_view>({"stop", "cancel", "abort", "halt", "wait", "enough"});
constexpr auto stopPhrases = std::to_array<std::string_view>({" never mind ", " hold on ", " hang on ", " hold it ",
    " forget it ", " leave it ", " don't do it ", " don't do that "});
/// What may stand around it.
constexpr auto around = std::to_array<std::string_view>({"no", "nope", "oh", "hey", "ok", "okay", "please", "now", "it",
    "that", "this", "everything", "all", "right", "there", "quorvell", "thanks", "thank", "you", "just", "actually",
    "immediately", "at", "once", "doing", "and", "a", "moment", "second", "minute", "so", "well"});
constexpr std::size_t longest = 120; ///< Bytes; whoever says more asks for something.

} // namespace

bool isPlainStop(std::string_view said)
{
    if (said.size() > longest)
        return false;
    std::string words = spokenWords(said);
    bool stopsSomething = false;
    for (const std::string_view phrase : stopPhrases)
        for (std::size_t at = words.find(phrase); at != std::string::npos; at = words.find(phrase, at)) {
            words.replace(at, phrase.size(), " ");
            stopsSomething = true;
        }
    for (std::size_t start = 1; start < words.size();) {
        const std::size_t end = words.find(' ', start);
        const std::string_view word = std::string_view(words).substr(start, end - start);
        if (isOneOf(stops, word))
            stopsSomething = true;
        else if (!isOneOf(around, word))
            return false;
        start = end + 1;
    }
    return stopsSomething;
}

} // namespace quorvell
