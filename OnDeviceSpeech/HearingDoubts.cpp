// SPDX-License-Identifier: MIT
#include "OnDeviceSpeech/HearingDoubts.h"

#include <algorithm>
#include <array>
#include <sstream>
#include <string_view>
#include <utility>

namespace quorvell {

namespace {

using Words = std::vector<std::string>;

struct TwinRow {
    std::string_view common;
    std::string_view rare;
    int margin; ///< Of Twin, where the common one was heard.
};

/// In five voices the wrong one of two mostly led by up to 117.
constexpr int usualMargin = 180;
constexpr int marginOfMinutes =
    300; ///< "Fifteen minutes" runs together: an artificial voice led by over 180 for "fifty".
constexpr int marginOfCommon = 30; ///< "Six thirty" is said a hundred times as often as "six thirteen".
constexpr int marginOfCommonMinutes = 100; ///< And "forty minutes" more often than "fourteen".
constexpr int always = 100'000; ///< "Four thirteen" was heard of "four thirty", and sounded like it by over 180.

constexpr TwinRow twinRows[] = {
    {"fifteen", "fifty", usualMargin},
    {"thirty", "thirteen", marginOfCommon},
    {"forty", "fourteen", marginOfCommon},
    {"sixty", "sixteen", marginOfCommon},
    {"seventy", "seventeen", usualMargin},
    {"eighty", "eighteen", usualMargin},
    {"ninety", "nineteen", marginOfCommon},
    {"thirteenth", "thirtieth", usualMargin},
    // Both searches heard one for the other in a voice that was new to them; what was really said led by over 800, or
    // by 191.
    {"eight", "ten", usualMargin},
    {"tuesday", "thursday", usualMargin},
};

constexpr std::string_view digits[] = {"one", "two", "three", "four", "five", "six", "seven", "eight", "nine"};

constexpr std::string_view times[] = {"one", "two", "three", "four", "five", "six", "seven", "eight", "nine", "ten",
    "eleven", "twelve", "thirteen", "fourteen", "fifteen", "sixteen", "seventeen", "eighteen", "nineteen", "twenty",
    "thirty", "forty", "fifty", "sixty", "ninety", "half", "quarter", "past", "noon", "midnight", "a.m.", "p.m.",
    "morning", "afternoon", "evening", "tonight", "today", "tomorrow", "monday", "tuesday", "wednesday", "thursday",
    "friday", "saturday", "sunday", "first", "second", "third", "fourth", "fifth", "sixth", "seventh", "eighth",
    "ninth", "tenth", "eleventh", "twelfth", "thirteenth", "fourteenth", "fifteenth", "sixteenth", "seventeenth",
    "eighteenth", "nineteenth", "twentieth", "thirtieth", "january", "february", "march", "april", "june", "july",
    "august", "september", "october", "november", "december", "minutes", "hours", "hour", "days", "weeks"};

/// Behind which somebody's name stands.
constexpr std::string_view beforeName[] = {
    "with", "call", "ring", "phone", "text", "email", "meet", "ask", "tell", "visit", "thank", "pay"};

Words wordsOf(const std::string& text)
{
    std::istringstream stream(text);
    Words words;
    for (std::string word; stream >> word;)
        words.push_back(std::move(word));
    return words;
}

std::string joined(const Words& words)
{
    std::string text;
    for (const std::string& word : words)
        text.append(text.empty() ? "" : " ").append(word);
    return text;
}

bool isTime(std::string_view word)
{
    return std::ranges::find(times, word) != std::end(times);
}

Words timesIn(const std::string& text)
{
    Words words = wordsOf(text);
    std::erase_if(words, [](const std::string& word) { return !isTime(word); });
    return words;
}

std::pair<std::string_view, int> twinOf(std::string_view word)
{
    for (const TwinRow& row : twinRows) {
        if (word == row.common)
            return {row.rare, row.margin};
        if (word == row.rare)
            return {row.common, row.margin == marginOfCommon ? always : usualMargin};
    }
    return {};
}

/// The words of `text` with the times of `other` in place of its own; nothing where they have not as many.
std::string withTimesOf(const std::string& text, const Words& other)
{
    Words words = wordsOf(text);
    std::size_t place = 0;
    for (std::string& word : words) {
        if (!isTime(word))
            continue;
        if (place == other.size())
            return {};
        word = other[place++];
    }
    return place == other.size() ? joined(words) : std::string();
}

/// Behind "half an hour", "ten minutes" from there on; 0 where no such length stands there.
std::size_t endOfSpan(const Words& words, std::size_t start)
{
    static constexpr std::string_view units[] = {"minute", "minutes", "hour", "hours", "days", "weeks"};
    constexpr std::size_t longestNumber = 3; // "half an", "one hundred twenty"
    const auto isUnit = [](const std::string& word) { return std::ranges::find(units, word) != std::end(units); };
    std::size_t end = start;
    while (end < words.size() && end - start < longestNumber && !isUnit(words[end])
        && (isTime(words[end]) || words[end] == "an" || words[end] == "a"))
        ++end;
    return end > start && end < words.size() && isUnit(words[end]) ? end + 1 : 0;
}

} // namespace

std::vector<HearingDoubts::Twin> HearingDoubts::twins(const std::string& text)
{
    std::vector<Twin> found;
    Words words = wordsOf(text);
    for (std::size_t place = 0; place < words.size(); ++place) {
        const auto [twin, margin] = twinOf(words[place]);
        // "Forty five" is one number, and "fourteen five" none.
        const bool isWhole =
            place + 1 == words.size() || std::ranges::find(digits, words[place + 1]) == std::end(digits);
        if (twin.empty() || !isWhole)
            continue;
        const std::string before = std::exchange(words[place], std::string(twin));
        const bool isLength = place + 1 < words.size() && words[place + 1] == "minutes";
        const int ofMinutes = margin == marginOfCommon ? marginOfCommonMinutes : std::max(margin, marginOfMinutes);
        found.push_back({joined(words), isLength ? ofMinutes : margin});
        words[place] = before;
    }
    return found;
}

std::optional<std::string> HearingDoubts::withSpan(const std::string& text)
{
    static constexpr std::string_view mistaken[] = {"and", "of", "an", "on", "end", "about"};
    static constexpr std::string_view ofAnother[] = {"before", "after", "earlier", "later", "ahead", "early"};
    Words words = wordsOf(text);
    for (std::size_t place = 0; place < words.size(); ++place) {
        if (place > 0 && words[place - 1] != "me")
            continue;
        if (std::ranges::find(mistaken, words[place]) != std::end(mistaken) && endOfSpan(words, place + 1) > 0) {
            words[place] = "in";
            return joined(words);
        }
        const std::size_t end = place > 0 ? endOfSpan(words, place) : 0;
        const bool isLost =
            end > 0 && (end == words.size() || std::ranges::find(ofAnother, words[end]) == std::end(ofAnother));
        if (isLost) {
            words.insert(words.begin() + static_cast<std::ptrdiff_t>(place), "in");
            return joined(words);
        }
    }
    return std::nullopt;
}

std::vector<std::string> HearingDoubts::otherTimes(const Decoder::Result& heard, const Decoder::Result& second)
{
    const Words own = timesIn(heard.text);
    std::vector<std::string> found;
    const auto add = [&](const std::string& text) {
        const Words other = timesIn(text);
        const std::string words = other == own ? std::string() : withTimesOf(heard.text, other);
        if (!words.empty() && found.size() < most && std::ranges::find(found, words) == found.end())
            found.push_back(words);
    };
    add(second.text);
    if (leastOfTimes(heard) < leastConfidence)
        std::ranges::for_each(heard.others, add);
    return found;
}

float HearingDoubts::leastOfTimes(const Decoder::Result& heard)
{
    float least = 1;
    for (const Decoder::Word& word : heard.words)
        least = isTime(word.text) ? std::min(least, word.confidence) : least;
    return least;
}

std::vector<std::string> HearingDoubts::faintNames(const Decoder::Result& heard)
{
    std::vector<std::string> names;
    for (std::size_t place = 1; place < heard.words.size(); ++place) {
        const bool isName = std::ranges::find(beforeName, heard.words[place - 1].text) != std::end(beforeName);
        if (isName && heard.words[place].text.size() > 2 && heard.words[place].text != "the"
            && heard.words[place].confidence < leastOfName)
            names.push_back(heard.words[place].text);
    }
    return names;
}

} // namespace quorvell
