#include "OnDeviceSpeech/HeardReadings.h"

#include "OnDeviceSpeech/WordMarks.h"

#include <algorithm>
#include <iterator>

namespace quorvell {

namespace {

using Words = std::vector<HeardWord>;
using Time = std::chrono::milliseconds;

/// Of the fixed words that the grammar heard, the trigram must have heard at least this many hundredths too.
constexpr std::size_t confirmedShare = 60;

Time middle(const HeardWord& word)
{
    return (word.start + word.end) / 2;
}

bool isSame(const HeardWord& left, const HeardWord& right)
{
    const bool isAtSameTime = (middle(left) >= right.start && middle(left) < right.end)
        || (middle(right) >= left.start && middle(right) < left.end);
    return isAtSameTime && withoutMark(left.text) == withoutMark(right.text);
}

bool isIn(const HeardWord& word, const Words& words)
{
    return std::any_of(words.begin(), words.end(), [&](const HeardWord& other) { return isSame(word, other); });
}

struct Stretch {
    Time start{};
    Time end{};

    bool holds(const HeardWord& word) const { return middle(word) >= start && middle(word) < end; }
};

Words wordsWithin(const Words& words, const Stretch& stretch)
{
    Words inside;
    std::copy_if(words.begin(), words.end(), std::back_inserter(inside),
        [&](const HeardWord& word) { return stretch.holds(word); });
    return inside;
}

bool haveSameText(const Words& left, const Words& right)
{
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
        [](const HeardWord& a, const HeardWord& b) { return withoutMark(a.text) == withoutMark(b.text); });
}

/// The grammar heard this word as part of a request's beginning or of a time, not as one of any words.
bool isFixedIn(const HeardWord& word, const Words& grammar)
{
    return std::any_of(grammar.begin(), grammar.end(),
        [&](const HeardWord& other) { return !isFreeWord(other.text) && isSame(word, other); });
}

/// One run of the trigram's words that stand against the open model's.
struct SureRun {
    Words words;
    Stretch stretch() const { return {words.front().start, words.back().end}; }
};

/// Runs of time words, and runs of other words that the grammar confirms.
std::vector<SureRun> sureRuns(const HeardReadings& heard)
{
    std::vector<SureRun> runs;
    enum class Kind { none, time, beginning };
    Kind last = Kind::none;
    for (const HeardWord& word : heard.trigram) {
        const Kind kind = isTimeWord(word.text) ? Kind::time
            : isFixedIn(word, heard.grammar)    ? Kind::beginning
                                                : Kind::none;
        if (kind != Kind::none && kind != last) {
            runs.emplace_back();
        }
        if (kind != Kind::none) {
            runs.back().words.push_back(word);
        }
        last = kind;
    }
    // Where grammar and open model say the same against the trigram, they are two to one.
    std::erase_if(runs, [&](const SureRun& run) {
        const Words open = wordsWithin(heard.open, run.stretch());
        return !open.empty() && haveSameText(open, wordsWithin(heard.grammar, run.stretch()));
    });
    return runs;
}

} // namespace

bool HeardReadings::isCommand() const
{
    std::size_t fixed = 0;
    std::size_t confirmed = 0;
    for (const HeardWord& word : grammar) {
        if (!isFreeWord(word.text)) {
            ++fixed;
            confirmed += isIn(word, trigram) ? 1 : 0;
        }
    }
    return fixed > 0 && 100 * confirmed >= confirmedShare * fixed;
}

Words HeardReadings::merged() const
{
    Words result = open;
    for (const SureRun& run : sureRuns(*this)) {
        const Stretch stretch = run.stretch();
        std::erase_if(result, [&](const HeardWord& word) { return stretch.holds(word) || isIn(word, run.words); });
        const auto place = std::find_if(
            result.begin(), result.end(), [&](const HeardWord& word) { return middle(word) >= stretch.start; });
        result.insert(place, run.words.begin(), run.words.end());
    }
    for (HeardWord& word : result) {
        word.text = withoutMark(word.text);
    }
    return result;
}

} // namespace quorvell
