// SPDX-License-Identifier: MIT
#include "QuorvellCore/safety/SpokenConsent.h"

#include "QuorvellCore/safety/SpokenWords.h"
#include "QuorvellCore/safety/words/OneOf.h"
#include "QuorvellCore/safety/words/WordMatcher.h"
#include "QuorvellCore/text/Apostrophes.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/CodePoints.h"
#include "QuorvellCore/text/LowerCase.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

namespace quorvell {

namespace {

using Words = std::vector<std::string_view>;

constexpr auto yesFillers =
    std::to_array<std::string_view>({"oh", "um", "umm", "uh", "uhm", "er", "erm", "ah", "hmm", "well", "so", "and"});
constexpr auto yesLeads = std::to_array<std::string_view>(
    {"yes", "yeah", "yep", "yup", "yea", "ya", "yah", "sure", "ok", "okay", "alright", "absolutely", "definitely",
        "certainly", "ofcourse", "please", "fine", "perfect", "correct", "right", "exactly", "that's", "thats"});
constexpr auto goAheadVerbs = std::to_array<std::string_view>(
    {"go", "do", "open", "send", "continue", "proceed", "carry", "click", "press", "tap", "hit", "submit", "post",
        "reply", "save", "sign", "log", "fill", "join", "visit", "load", "launch", "type", "accept", "agree", "allow"});
constexpr auto yesExtras = std::to_array<std::string_view>({"it", "that", "this", "them", "those", "these", "the", "a",
    "an", "one", "now", "then", "just", "thanks", "thank", "you", "can", "may", "quorvell", "for", "me", "us", "to",
    "on", "in", "up", "ahead", "away", "again", "too", "also", "thing", "sounds", "good", "great", "cool", "lovely",
    "page", "site", "website", "link", "profile", "tab", "email", "mail", "message", "form", "button", "file", "delete",
    "remove", "buy", "pay", "order", "install", "change"});

/// What people say instead of the verb that they were asked with.
constexpr auto repeats =
    std::to_array<std::string_view>({"remember", "keep", "bear", "mind", "note", "write", "down", "put", "add"});

/// One of these anywhere means doubt. Most are no part of a yes anyway; those made only of words that are ("go away",
/// "just a", "one thing", "then again") would pass for one.
constexpr auto doubts = std::to_array<std::string_view>(
    {"no", "nope", "nah", "not", "don't", "dont", "never", "can't", "cant", "cannot", "won't", "wont", "shouldn't",
        "stop", "wait", "waiting", "hold on", "hold off", "hold it", "hang on", "one moment", "a moment", "one second",
        "one thing", "just a", "one sec", "a second", "a sec", "a minute", "one minute", "pause", "cancel", "abort",
        "undo", "go back", "go away", "then again", "but", "except", "unless", "until", "although", "though", "however",
        "before", "after", "later", "another time", "maybe", "perhaps", "possibly", "probably", "might", "unsure",
        "uncertain", "i guess", "i suppose", "let me", "i'll think", "think about", "never mind", "nevermind",
        "forget it", "leave it", "actually", "instead", "rather", "if", "what", "which", "why", "how", "who"});

const WordMatcher& doubtWords()
{
    constexpr auto noEndings = std::to_array<std::string_view>({""});
    static const WordMatcher matcher(doubts, noEndings);
    return matcher;
}

/// Both with a space at each end; the last one may belong to the next phrase as well.
void replaceAll(std::string& text, std::string_view from, std::string_view to)
{
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size() - 1))
        text.replace(at, from.size(), to);
}

Words split(std::string_view spaced)
{
    Words words;
    for (std::size_t start = 1; start < spaced.size();) {
        const std::size_t end = spaced.find(' ', start);
        words.push_back(spaced.substr(start, end - start));
        start = end + 1;
    }
    return words;
}

/// Word by word as they were heard, one space around each: lower case, without commas, full stops, colons, quotes and
/// the like at their ends. Whatever else stands in a word stays, so that it is no word of a yes. A dash between two is
/// none.
std::string heardWords(std::string_view answer)
{
    constexpr std::string_view atEnds = ",.!?;:'\"“”„‚«»";
    constexpr std::string_view dashes = "-‐‑‒–—―";
    const std::string lower = withPlainApostrophes(lowerCased(answer));
    std::string words = " ";
    for (std::size_t start = 0; start < lower.size();) {
        std::size_t end = start;
        std::size_t next = start;
        while (next < lower.size() && !isWhiteSpace(nextCodePoint(lower, next)))
            end = next;
        const std::string word = trimmed(std::string_view(lower).substr(start, end - start), atEnds);
        if (!trimmed(word, dashes).empty())
            words += word + ' ';
        start = next;
    }
    return words;
}

bool confirms(std::string_view word)
{
    return isOneOf(yesLeads, word) || isOneOf(goAheadVerbs, word);
}

/// A yes in front, and behind it only what confirms it or is in `echoed`.
bool isYes(std::string_view answer, const Words& echoed)
{
    std::string spaced = heardWords(answer);
    replaceAll(spaced, " all right ", " alright ");
    replaceAll(spaced, " of course ", " ofcourse ");
    const Words words = split(spaced);
    const auto first =
        std::find_if_not(words.begin(), words.end(), [](std::string_view word) { return isOneOf(yesFillers, word); });
    if (first == words.end() || !confirms(*first))
        return false;
    return std::all_of(first, words.end(), [&echoed](std::string_view word) {
        return confirms(word) || isOneOf(yesExtras, word)
            || std::find(echoed.begin(), echoed.end(), word) != echoed.end();
    });
}

} // namespace

bool SpokenConsent::hesitates(std::string_view answer)
{
    return answer.find('?') != std::string_view::npos
        || doubtWords().firstInWritten(withPlainApostrophes(lowerCased(answer)));
}

bool SpokenConsent::isStillThinking(std::string_view answer)
{
    const std::string spaced = heardWords(answer);
    const Words words = split(spaced);
    return answer.find('?') == std::string_view::npos
        && std::all_of(words.begin(), words.end(), [](std::string_view word) { return isOneOf(yesFillers, word); });
}

bool SpokenConsent::isAffirmative(std::string_view answer)
{
    return !hesitates(answer) && isYes(answer, {});
}

bool SpokenConsent::agreesTo(std::string_view question, std::string_view answer)
{
    const std::string asked = spokenWords(question);
    const std::string heard = heardWords(question);
    Words echoed = split(asked);
    const Words asWritten = split(heard);
    echoed.insert(echoed.end(), asWritten.begin(), asWritten.end());
    echoed.insert(echoed.end(), repeats.begin(), repeats.end());
    return !hesitates(answer) && isYes(answer, echoed);
}

} // namespace quorvell
