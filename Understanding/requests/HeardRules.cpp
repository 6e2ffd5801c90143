// SPDX-License-Identifier: MIT
#include "Understanding/requests/HeardRules.h"

#include "QuorvellCore/text/Pattern.h"
#include "Understanding/dialogue/MisheardTime.h"
#include "Understanding/dialogue/ToolResults.h"
#include "Understanding/requests/CallEffect.h"
#include "Understanding/requests/RequestRules.h"
#include "Understanding/time/TimeWords.h"
#include "Understanding/words/ListPlace.h"
#include "Understanding/words/RequestText.h"

#include <algorithm>
#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace quorvell {

namespace {

using Words = std::vector<std::string>;

std::string badlyHeard(HeardDoubts::Trouble trouble)
{
    switch (trouble) {
    case HeardDoubts::Trouble::noise:
        return "I hear you badly, there is too much noise around you. I have changed nothing. Please say it again, or "
               "type it.";
    case HeardDoubts::Trouble::telephone:
        return "I hear you badly, as over a telephone line. I have changed nothing. Please say it again, or type it.";
    case HeardDoubts::Trouble::none:
    case HeardDoubts::Trouble::unclear:
        break;
    }
    return "I am not sure what you said, so I have changed nothing. Please say it again.";
}

Words wordsOf(const std::string& text)
{
    std::istringstream stream(text);
    Words words;
    for (std::string word; stream >> word;)
        words.push_back(std::move(word));
    return words;
}

std::string joined(const Words& words, std::size_t from, std::size_t end)
{
    std::string text;
    for (std::size_t place = from; place < end; ++place)
        text.append(text.empty() ? "" : " ").append(words[place]);
    return text;
}

/// Of each text the words that not all of them share, with the unit behind a number: "8:15 am", "50 minutes".
std::vector<std::string> differences(const std::vector<std::string>& texts)
{
    std::vector<Words> split;
    std::ranges::transform(texts, std::back_inserter(split), wordsOf);
    std::size_t shortest = split.front().size();
    for (const Words& words : split)
        shortest = std::min(shortest, words.size());
    const auto agree = [&](const auto& wordAt) {
        return std::ranges::all_of(split, [&](const Words& words) { return wordAt(words) == wordAt(split.front()); });
    };
    std::size_t front = 0;
    while (front < shortest && agree([&](const Words& words) { return words[front]; }))
        ++front;
    std::size_t back = 0;
    while (back < shortest - front && agree([&](const Words& words) { return words[words.size() - 1 - back]; }))
        ++back;
    static const Pattern unit("^(?:am|pm|minutes?|hours?|seconds?|days?|weeks?|o'clock)$", Pattern::Case::insensitive);
    if (back > 0 && unit.find(split.front()[split.front().size() - back]))
        --back;
    if (front > 0 && front < shortest && unit.find(split.front()[front]))
        --front;
    std::vector<std::string> pieces;
    pieces.reserve(split.size());
    for (const Words& words : split)
        pieces.push_back(joined(words, front, words.size() - back));
    return pieces;
}

std::string whichQuestion(const std::vector<std::string>& pieces)
{
    std::string question = "Did you say ";
    for (std::size_t place = 0; place < pieces.size(); ++place)
        question += (place == 0 ? "" : place + 1 == pieces.size() ? ", or " : ", ") + pieces[place];
    return question + "?";
}

/// Asked again with a way to answer that sounds like nothing else.
std::string placesQuestion(const std::vector<std::string>& pieces)
{
    static constexpr const char* places[] = {"the first is ", "the second is ", "the third is "};
    std::string question = "I am still not sure. Please say which one: ";
    for (std::size_t place = 0; place < std::min(pieces.size(), std::size(places)); ++place)
        question += (place == 0 ? "" : ", ") + (places[place] + pieces[place]);
    return question + ".";
}

RuleStep askWhichReading(OpenReadings readings, std::string question, RequestMemory memory)
{
    memory.readings = std::move(readings);
    return RuleStep::asking({.kind = &HeardRules::whichReading, .question = std::move(question)}, std::move(memory));
}

/// A reading that tells no moment in full, "nine at 9:30", is hardly what was said where another one does.
bool isLikely(const RuleStep& step, const RuleStep& heard, const RuleSurroundings& around)
{
    const auto* call = std::get_if<ToolRequest>(&step.answer);
    const auto* own = std::get_if<ToolRequest>(&heard.answer);
    return !own || !MisheardTime::isWhole(*own, around) || (call && MisheardTime::isWhole(*call, around));
}

/// The reading whose own piece was said, and no other's: "8:15", "at 8:15 am".
std::optional<std::size_t> readingNamed(const std::string& core, const std::vector<std::string>& pieces)
{
    std::optional<std::size_t> named;
    const std::string said = " " + core + " ";
    for (std::size_t place = 0; place < pieces.size(); ++place) {
        const std::string number = pieces[place].substr(0, pieces[place].find(' '));
        const bool isSaid = said.find(" " + number + " ") != std::string::npos;
        if (isSaid && named)
            return std::nullopt;
        if (isSaid)
            named = place;
    }
    return named;
}

/// Neither reading, but the time itself: "9:15".
std::optional<std::string> withTimeSaid(const std::string& core, const OpenReadings& readings, const LocalTime& around)
{
    static const Pattern lead("^(?:no,? )?(?:i said |it'?s |at |in |on |for )*", Pattern::Case::insensitive);
    const auto match = lead.find(core);
    const std::string time = core.substr(match ? match->range.end : 0);
    const std::string& whole = readings.whole.front();
    const std::size_t place = whole.find(readings.pieces.front());
    const std::string& piece = readings.pieces.front();
    if (time.empty() || place == std::string::npos || piece.empty() || !TimeWords::isTime(time, around))
        return std::nullopt;
    static const Pattern half(" [ap]m$", Pattern::Case::insensitive);
    const bool keepsHalf = half.find(piece) && !half.find(time);
    return whole.substr(0, place) + time + (keepsHalf ? piece.substr(piece.size() - 3) : "")
        + whole.substr(place + piece.size());
}

std::optional<RuleStep> takeReading(
    const std::string& core, const PendingQuestion&, RequestMemory memory, const RuleSurroundings& around)
{
    OpenReadings readings = std::exchange(memory.readings, {});
    if (readings.whole.empty())
        return std::nullopt;
    memory.pending = readings.before;
    const auto place = ListPlace::read(core);
    const bool isChoice = readings.whole.size() > 1;
    std::optional<std::size_t> chosen = place ? place->among(readings.whole.size())
        : isChoice                            ? readingNamed(core, readings.pieces)
                                              : std::nullopt;
    if (chosen)
        return RequestRules::answerWords(readings.whole[*chosen], memory, around);
    if (const auto words = withTimeSaid(core, readings, around))
        return RequestRules::answerWords(*words, memory, around);
    static const Pattern yes("^(?:yes|yeah|yep|correct|right|that'?s right|sure)$", Pattern::Case::insensitive);
    if (!isChoice && yes.find(core))
        return RequestRules::answerWords(readings.whole.front(), memory, around);
    static const Pattern neither("^(?:no|nope|neither|none)\\b", Pattern::Case::insensitive);
    if (neither.find(core))
        return RuleStep{"Then please say it again.", std::move(memory)};
    return std::nullopt;
}

/// The answer to "Did you say ...?", before it is taken for words that stand by themselves.
std::optional<RuleStep> chosenReading(
    std::string_view words, const RequestMemory& memory, const RuleSurroundings& around)
{
    constexpr std::ptrdiff_t mostSpaces = 4; // A longer line that has the hour in it is a request of its own.
    static const Pattern lead("^(?:no,? )?i (?:said|meant?) (?:at |in |on |for )?", Pattern::Case::insensitive);
    std::string core = RequestText::withoutClosing(RequestText::withoutOpening(words));
    if (const auto match = lead.find(core))
        core.erase(0, match->range.end);
    if (memory.pending.kind != &HeardRules::whichReading || std::ranges::count(core, ' ') > mostSpaces)
        return std::nullopt;
    return takeReading(core, memory.pending, memory, around);
}

bool isSame(const RuleStep& one, const RuleStep& other)
{
    return one.answer == other.answer && one.memory.wish == other.memory.wish
        && one.memory.pending == other.memory.pending;
}

} // namespace

const QuestionKind HeardRules::whichReading{takeReading};

RuleStep HeardRules::answerTyped(std::string_view words, const RequestMemory& memory, const RuleSurroundings& around)
{
    const auto chosen = chosenReading(words, memory, around);
    return chosen ? *chosen : RequestRules::answerWords(words, memory, around);
}

RuleStep HeardRules::answer(
    std::string_view words, const HeardDoubts& doubts, const RequestMemory& memory, const RuleSurroundings& around)
{
    const auto chosen = chosenReading(words, memory, around);
    RuleStep step = chosen ? *chosen : RequestRules::answerWords(words, memory, around);
    if (!CallEffect::leadsToChange(step, memory))
        return step;
    if (doubts.trouble != HeardDoubts::Trouble::none)
        return {badlyHeard(doubts.trouble), memory};
    OpenReadings readings{.whole = {std::string(words)}, .before = memory.pending};
    for (const std::string& other : doubts.orElse) {
        const RuleStep otherwise = RequestRules::answerWords(other, memory, around);
        if (!isSame(otherwise, step) && isLikely(otherwise, step, around))
            readings.whole.push_back(other);
    }
    if (readings.whole.size() > 1) {
        // An answer that is itself in doubt would be asked about for ever.
        if (memory.pending.kind == &whichReading && memory.readings.whole.size() == 1)
            return {badlyHeard(HeardDoubts::Trouble::unclear), memory};
        if (memory.pending.kind == &whichReading)
            return askWhichReading(memory.readings, placesQuestion(memory.readings.pieces), memory);
        readings.pieces = differences(readings.whole);
        std::string question = whichQuestion(readings.pieces);
        return askWhichReading(std::move(readings), std::move(question), memory);
    }
    const auto* call = std::get_if<ToolRequest>(&step.answer);
    if (!call || chosen)
        return step;
    if (auto piece = MisheardTime::in(words, *call, around)) {
        readings.pieces = {*piece};
        return askWhichReading(
            std::move(readings), "I heard \"" + *piece + "\" where a day or an hour belongs. Is that right?", memory);
    }
    if (doubts.faintNames.empty())
        return step;
    return RuleStep::asking({.kind = &ToolResults::confirmation,
                                .question = "Did you say " + RequestText::written(doubts.faintNames.front()) + "?",
                                .tool = call->name,
                                .arguments = call->arguments},
        std::move(step.memory));
}

} // namespace quorvell
