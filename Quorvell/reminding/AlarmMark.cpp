// SPDX-License-Identifier: MIT
#include "Quorvell/reminding/AlarmMark.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <system_error>
#include <vector>

namespace quorvell {

namespace {

constexpr std::string_view ringWord = "ring";
constexpr std::string_view timerWord = "timer";
constexpr std::string_view pausedWord = "paused";
constexpr std::string_view snoozedWord = "snoozed";

std::vector<std::string_view> wordsOf(std::string_view text)
{
    constexpr std::size_t most = 6; ///< One more than there can be, so that what follows is noticed.
    std::vector<std::string_view> words;
    while (!text.empty() && words.size() < most) {
        const std::size_t end = std::min(text.find(' '), text.size());
        words.push_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return words;
}

std::optional<std::chrono::seconds> secondsIn(std::string_view digits)
{
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    const bool isWhole = error == std::errc() && end == digits.data() + digits.size();
    const std::chrono::seconds length(isWhole ? value : 0);
    return length.count() > 0 && length <= AlarmMark::longestTimer ? std::optional(length) : std::nullopt;
}

} // namespace

std::optional<AlarmMark> AlarmMark::of(const Note& note)
{
    return note.then ? fromStored(*note.then) : std::nullopt;
}

std::optional<AlarmMark> AlarmMark::fromStored(std::string_view text)
{
    const auto words = wordsOf(text);
    if (words.empty() || words[0] != ringWord)
        return std::nullopt;
    if (words.size() == 1)
        return AlarmMark{};
    if (words.size() == 3 && words[1] == snoozedWord) {
        const auto until = parseIsoText(words[2]);
        return until ? std::optional(AlarmMark{.snoozedUntil = until}) : std::nullopt;
    }
    const bool isRunning = words.size() == 3;
    const bool isPaused = words.size() == 5 && words[3] == pausedWord;
    const auto length = isRunning || isPaused ? secondsIn(words[2]) : std::nullopt;
    const auto left = isPaused ? secondsIn(words[4]) : std::nullopt;
    if (words[1] != timerWord || !length || (isPaused && !left))
        return std::nullopt;
    return AlarmMark{.kind = Kind::timer, .length = *length, .left = left};
}

std::string AlarmMark::stored() const
{
    std::string text(ringWord);
    if (!isTimer())
        return snoozedUntil ? text + " " + std::string(snoozedWord) + " " + isoText(*snoozedUntil) : text;
    text += " " + std::string(timerWord) + " " + std::to_string(length.count());
    return left ? text + " " + std::string(pausedWord) + " " + std::to_string(left->count()) : text;
}

} // namespace quorvell
