// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/phrase/PhraseWords.h"

#include "QuorvellCore/reminders/calendar/DecimalNumber.h"

#include <algorithm>

namespace quorvell {

namespace {

constexpr std::size_t tellingLetters = 3; ///< Enough to tell any two weekdays or months apart.

template <std::size_t Size>
std::optional<int> positionByFirstLetters(const std::array<std::string_view, Size>& names, std::string_view word)
{
    for (std::size_t index = 0; index < Size; ++index) {
        if (word.substr(0, tellingLetters) == names[index].substr(0, tellingLetters))
            return static_cast<int>(index) + 1;
    }
    return std::nullopt;
}

} // namespace

std::optional<int> PhraseWords::weekday(std::string_view word)
{
    return positionByFirstLetters(weekdays, word);
}

std::optional<int> PhraseWords::month(std::string_view word)
{
    return positionByFirstLetters(months, word);
}

std::optional<int> PhraseWords::amount(std::string_view word)
{
    const auto found =
        std::find_if(numberWords.begin(), numberWords.end(), [&](const auto& entry) { return entry.first == word; });
    return found != numberWords.end() ? std::optional(found->second) : decimalNumber(word);
}

std::optional<DayPart> PhraseWords::part(std::string_view word)
{
    constexpr std::array<std::pair<std::string_view, DayPart>, 4> parts = {{{"morning", DayPart::morning},
        {"afternoon", DayPart::afternoon}, {"evening", DayPart::evening}, {"night", DayPart::night}}};
    const auto found = std::find_if(parts.begin(), parts.end(), [&](const auto& entry) { return entry.first == word; });
    return found != parts.end() ? std::optional(found->second) : std::nullopt;
}

int PhraseWords::hour(DayPart part)
{
    switch (part) {
    case DayPart::morning:
        return 9;
    case DayPart::afternoon:
        return 14;
    case DayPart::evening:
        return 18;
    case DayPart::night:
        return 20;
    }
    return defaultHour;
}

} // namespace quorvell
