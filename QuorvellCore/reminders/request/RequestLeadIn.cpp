// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/request/RequestLeadIn.h"

#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/Pattern.h"

#include <algorithm>
#include <initializer_list>
#include <string_view>

namespace quorvell {

namespace {

bool holdsAny(std::string_view text, std::initializer_list<std::string_view> parts)
{
    for (const std::string_view part : parts)
        if (text.find(part) != std::string_view::npos)
            return true;
    return false;
}

std::string withoutMatch(const Pattern& pattern, std::string text)
{
    const auto match = pattern.find(text);
    return match ? text.erase(match->range.start, match->range.end - match->range.start) : text;
}

/// Most tasks hold none of the words, and are spared the search.
std::string withoutOpening(std::string task)
{
    static const Pattern opening(
        R"(^[\s,]*(?:(?:hey|hi|hello|ok|okay)[\s,]+)?(?:quorvell[\s,]+)?(?:please[\s,]+|kindly\s+)?)"
        R"((?:(?:can|could|would|will)\s+you\s+(?:please\s+|kindly\s+)?)?)"
        R"((?:remind\s+me\s+(?:please\s+)?(?:to\s+|about\s+|that\s+)?)"
        R"(|(?:don['’]?t|do\s+not|never)\s+let\s+me\s+forget\s+(?:to\s+|about\s+|that\s+)?)"
        R"(|(?:set|make|create|add|give)\s+(?:up\s+)?(?:me\s+)?an?\s+reminder\s+(?:to\s+|for\s+|about\s+|that\s+)))",
        Pattern::Case::insensitive);
    return holdsAny(task, {"emind", "EMIND", "orget", "ORGET"}) ? withoutMatch(opening, std::move(task)) : task;
}

std::string withoutClosing(std::string task)
{
    static const Pattern closing(
        R"((?<=\S)(?<!\bsay)(?:[\s,]+please|\s*,\s*(?:thanks|thank you))[\s,.!?]*$)", Pattern::Case::insensitive);
    constexpr std::size_t longest = 16; // Bytes of a closing word and the marks behind it.
    const std::string end =
        asciiLowerCased(std::string_view(task).substr(task.size() - std::min(task.size(), longest)));
    return holdsAny(end, {"please", "thank"}) ? withoutMatch(closing, std::move(task)) : task;
}

} // namespace

std::string withoutPoliteWords(std::string task)
{
    return withoutClosing(withoutOpening(std::move(task)));
}

} // namespace quorvell
