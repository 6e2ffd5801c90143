// SPDX-License-Identifier: MIT
#include "Understanding/words/ListPlace.h"

#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/Pattern.h"

#include <algorithm>
#include <array>
#include <string>

namespace quorvell {

namespace {

struct Place {
    std::array<std::string_view, 4> names; ///< In lower case.
    int index;
};

constexpr std::array places{Place{{"first", "1st", "one", "1"}, 0}, Place{{"second", "2nd", "two", "2"}, 1},
    Place{{"third", "3rd", "three", "3"}, 2}, Place{{"fourth", "4th", "four", "4"}, 3},
    Place{{"fifth", "5th", "five", "5"}, 4}, Place{{"sixth", "6th", "six", "6"}, 5},
    Place{{"seventh", "7th", "seven", "7"}, 6}, Place{{"eighth", "8th", "eight", "8"}, 7},
    Place{{"last", "latter", "final", "bottom"}, ListPlace::last}};

} // namespace

std::optional<ListPlace> ListPlace::read(std::string_view words)
{
    // A bare number is a time or an amount, and "one" alone no place.
    static const Pattern form(
        "^(?:the |that )?(?:(first|second|third|fourth|fifth|sixth|seventh|eighth|last|latter|final|bottom"
        "|[1-8](?:st|nd|rd|th))|(?:note |reminder |event |item )?(?:number |no\\. ?|# ?)"
        "(one|two|three|four|five|six|seven|eight|[1-8]))"
        "(?: (?:one|1|note|reminder|event|thing|item|of them|of those))*$",
        Pattern::Case::insensitive);
    const auto match = form.find(words);
    if (!match)
        return std::nullopt;
    const std::string name = lowerCased(match->texts[0].empty() ? match->texts[1] : match->texts[0]);
    const auto place = std::ranges::find_if(
        places, [&](const Place& row) { return std::ranges::find(row.names, name) != row.names.end(); });
    return place != places.end() ? std::optional(ListPlace{place->index}) : std::nullopt;
}

std::optional<std::size_t> ListPlace::among(std::size_t count) const
{
    const auto place = index == last ? count - 1 : static_cast<std::size_t>(index);
    return place < count ? std::optional(place) : std::nullopt;
}

} // namespace quorvell
