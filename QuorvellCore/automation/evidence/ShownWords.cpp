// SPDX-License-Identifier: MIT
#include "QuorvellCore/automation/evidence/ShownWords.h"

#include "QuorvellCore/text/TextMatch.h"

#include <algorithm>
#include <optional>
#include <set>
#include <span>
#include <utility>

namespace quorvell {

namespace {

using Word = std::string_view;

/// Say nothing about what is shown: small words, and what things on a screen are called.
constexpr Word emptyWords[] = {"a", "about", "all", "also", "an", "and", "app", "appear", "appeared", "appears",
    "application", "are", "as", "at", "be", "been", "being", "box", "button", "by", "can", "contains", "dialog",
    "display", "displayed", "displays", "field", "file", "folder", "for", "form", "from", "had", "has", "have", "he",
    "here", "holds", "in", "into", "is", "it", "it's", "its", "just", "label", "list", "listed", "menu", "mode", "now",
    "of", "on", "one", "open", "opened", "opens", "or", "our", "page", "program", "read", "reads", "said", "say",
    "says", "screen", "see", "seen", "she", "should", "show", "showing", "shown", "shows", "site", "tab", "text",
    "that", "the", "their", "them", "then", "there", "these", "they", "this", "those", "title", "to", "up", "user",
    "view", "visible", "was", "website", "were", "which", "will", "window", "with", "you", "your"};
constexpr Word absenceWords[] = {"absent", "any", "cleared", "closed", "deleted", "didn't", "disappeared", "doesn't",
    "don't", "empty", "gone", "hidden", "isn't", "aren't", "wasn't", "missing", "never", "no", "none", "not", "nothing",
    "removed", "vanished", "without"};
constexpr Word onWords[] = {"activated", "active", "checked", "enabled", "selected", "ticked"};
constexpr Word offWords[] = {"deactivated", "deselected", "disabled", "inactive", "off", "unchecked", "unticked"};
constexpr Word onValues[] = {"1", "checked", "enabled", "on", "selected", "true", "yes"};
constexpr Word offValues[] = {"0", "disabled", "false", "no", "off", "unchecked"};
/// Longest first, so that of "confirmations" as much goes as of "confirmed".
constexpr Word endings[] = {
    "ations", "ation", "ments", "ment", "ions", "ion", "ing", "ers", "es", "ed", "er", "al", "ly", "s", "e"};
constexpr std::size_t shortestStem = 3; ///< Bytes.

bool isAmong(std::span<const Word> words, Word word)
{
    return std::ranges::find(words, word) != words.end();
}

std::vector<std::string> wordsOf(std::string_view text)
{
    const std::string line = TextMatch::normalized(text);
    std::vector<std::string> words;
    for (std::size_t from = 0; from < line.size();) {
        const std::size_t end = std::min(line.find(' ', from), line.size());
        words.push_back(line.substr(from, end - from));
        from = end + 1;
    }
    return words;
}

std::string stemOf(std::string word)
{
    for (bool isCut = true; std::exchange(isCut, false);)
        for (const Word ending : endings)
            if (word.ends_with(ending) && word.size() >= ending.size() + shortestStem) {
                word.resize(word.size() - ending.size());
                isCut = true;
                break;
            }
    return word;
}

using Stems = std::set<std::string>;

Stems stemsOf(std::string_view text)
{
    Stems stems;
    for (std::string& word : wordsOf(text))
        stems.insert(stemOf(std::move(word)));
    return stems;
}

enum class State { none, on, off };

struct Claim {
    struct Part {
        std::string word;
        std::string stem;
    };
    std::vector<Part> parts; ///< What must be shown, without the words of state and absence.
    std::vector<Part> rest; ///< Those.
    State state = State::none;
    bool saysAbsence = false;
};

/// "on" is a small word, but for "it is on", "switched on" and the like.
bool isStateOn(const std::vector<std::string>& words, std::size_t index)
{
    if (words[index] != "on")
        return false;
    constexpr Word before[] = {"set", "switched", "toggled", "turned"};
    return index + 1 == words.size() || (index > 0 && isAmong(before, words[index - 1]));
}

Claim claimOf(std::string_view text)
{
    Claim claim;
    const std::vector<std::string> words = wordsOf(text);
    constexpr Word carriers[] = {"set", "switched", "toggled", "turned"};
    for (std::size_t index = 0; index < words.size(); ++index) {
        const std::string& word = words[index];
        const bool isOn = isStateOn(words, index) || isAmong(onWords, word);
        const bool isOff = isAmong(offWords, word);
        const bool isAbsence = isAmong(absenceWords, word);
        if (isOn || isOff)
            claim.state = isOn ? State::on : State::off;
        claim.saysAbsence = claim.saysAbsence || isAbsence;
        if (isOn || isOff || isAbsence)
            claim.rest.push_back({word, stemOf(word)});
        else if (!isAmong(emptyWords, word) && !isAmong(carriers, word))
            claim.parts.push_back({word, stemOf(word)});
    }
    return claim;
}

bool holdsAll(const Stems& text, const std::vector<Claim::Part>& parts)
{
    return std::ranges::all_of(parts, [&](const Claim::Part& part) { return text.contains(part.stem); });
}

bool holdsState(const AutomationCandidate& element, State state)
{
    const std::string value = TextMatch::normalized(element.value);
    return state == State::on ? isAmong(onValues, value) : state == State::off && isAmong(offValues, value);
}

/// Of one word it must be the whole name: "Dark sidebar" says nothing about dark mode.
bool isNamed(const AutomationCandidate& element, const std::vector<Claim::Part>& parts)
{
    if (parts.size() > 1)
        return holdsAll(stemsOf(element.label), parts);
    const std::vector<Claim::Part> name = claimOf(element.label).parts;
    return !parts.empty() && name.size() == 1 && name.front().stem == parts.front().stem;
}

/// Every text that the screen shows, the titles first.
template <typename Take> void eachText(const AutomationObservation& observation, const Take& take)
{
    take(observation.app);
    take(observation.window);
    if (observation.page)
        take(*observation.page);
    for (const AutomationCandidate& element : observation.candidates) {
        take(element.label);
        if (!element.secure && !element.value.empty())
            take(element.value);
    }
}

std::vector<Stems> textsOf(const AutomationObservation& observation)
{
    std::vector<Stems> texts;
    eachText(observation, [&texts](std::string_view text) { texts.push_back(stemsOf(text)); });
    return texts;
}

constexpr std::size_t titles = 2; ///< Of textsOf: a single word is shown by them alone.

bool isStateShown(const Claim& claim, const std::vector<Stems>& texts, const AutomationObservation& observation)
{
    const auto saysAll = [&](const Stems& text) { return holdsAll(text, claim.parts) && holdsAll(text, claim.rest); };
    if (!claim.parts.empty() && std::ranges::any_of(texts, saysAll))
        return true;
    return !claim.saysAbsence && std::ranges::any_of(observation.candidates, [&](const AutomationCandidate& element) {
        return holdsState(element, claim.state) && isNamed(element, claim.parts);
    });
}

/// The words of the claim that no text shows which says at least two of them.
std::vector<std::string> missingWords(const Claim& claim, const std::vector<Stems>& texts)
{
    std::vector<bool> isShown(claim.parts.size());
    for (std::size_t place = 0; place < texts.size(); ++place) {
        std::vector<std::size_t> held;
        for (std::size_t index = 0; index < claim.parts.size(); ++index)
            if (texts[place].contains(claim.parts[index].stem))
                held.push_back(index);
        if (held.size() >= 2 || (claim.parts.size() == 1 && place < titles))
            for (const std::size_t index : held)
                isShown[index] = true;
    }
    std::vector<std::string> missing;
    for (std::size_t index = 0; index < claim.parts.size(); ++index)
        if (!isShown[index])
            missing.push_back(claim.parts[index].word);
    return missing;
}

} // namespace

ShownWords ShownWords::of(std::string_view text, const AutomationObservation& observation)
{
    if (text.size() > longestClaim)
        return {};
    const Claim claim = claimOf(text);
    const std::vector<Stems> texts = textsOf(observation);
    ShownWords shown{.saysAbsence = claim.saysAbsence};
    if (claim.rest.empty()) {
        shown.missing = missingWords(claim, texts);
        shown.isShown = !claim.parts.empty() && shown.missing.empty();
        return shown;
    }
    shown.isShown = isStateShown(claim, texts, observation);
    if (!shown.isShown)
        for (const auto& part : claim.parts)
            shown.missing.push_back(part.word);
    return shown;
}

bool ShownWords::anywhere(std::string_view text, const AutomationObservation& observation)
{
    if (text.size() > longestClaim)
        return false;
    Claim claim = claimOf(text);
    claim.parts.insert(claim.parts.end(), claim.rest.begin(), claim.rest.end());
    Stems all;
    for (Stems& one : textsOf(observation))
        all.merge(one);
    return !claim.parts.empty() && holdsAll(all, claim.parts);
}

bool ShownWords::asOneText(std::string_view text, const AutomationObservation& observation)
{
    const std::string phrase = " " + TextMatch::normalized(text.substr(0, longestClaim)) + " ";
    bool isThere = false;
    eachText(observation, [&](std::string_view shown) {
        isThere = isThere || (" " + TextMatch::normalized(shown) + " ").find(phrase) != std::string::npos;
    });
    return phrase.size() > 2 && isThere;
}

} // namespace quorvell
