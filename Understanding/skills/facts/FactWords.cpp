// SPDX-License-Identifier: MIT
#include "Understanding/skills/facts/FactWords.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/time/TimeVocabulary.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

namespace quorvell {

namespace {

struct Form {
    std::string_view said;
    std::string_view told;
};

constexpr std::array irregular{Form{"am", "Is"}, Form{"'m", "Is"}, Form{"’m", "Is"}, Form{"have", "Has"},
    Form{"'ve", "Has"}, Form{"’ve", "Has"}, Form{"do", "Does"}, Form{"go", "Goes"}, Form{"don't", "Doesn't"},
    Form{"don’t", "Doesn't"}, Form{"dont", "Doesn't"}};
constexpr std::array unchanged{"was", "can", "can't", "cannot", "will", "won't", "would", "must", "used", "grew",
    "should", "never", "always", "usually", "often", "only", "really", "also", "had", "got", "were", "did", "left",
    "put", "lent", "gave", "took", "bought", "met", "went", "made", "saw", "said", "told", "kept", "lost", "found",
    "paid", "sold", "sent", "wrote", "ate", "drank", "drove", "came", "became", "broke", "brought", "built", "chose",
    "felt", "fell", "hid", "held", "knew", "quit", "ran", "spent", "taught", "thought", "won", "wore", "woke", "began"};

bool endsWithAny(std::string_view text, std::initializer_list<std::string_view> ends)
{
    return std::ranges::any_of(ends, [text](std::string_view end) { return text.ends_with(end); });
}

/// The third person of a verb.
std::string thirdPerson(const std::string& verb)
{
    const std::string lower = lowerCased(verb);
    const auto form = std::ranges::find(irregular, lower, &Form::said);
    if (form != irregular.end())
        return std::string(form->told);
    // What was, stays as it was: "retired".
    if (std::ranges::find(unchanged, lower) != unchanged.end() || (lower.size() > 4 && lower.ends_with("ed")))
        return withUpperCaseFirst(lower);
    if (endsWithAny(lower, {"s", "x", "ch", "sh", "o"}))
        return withUpperCaseFirst(lower) + "es";
    const bool endsInY = lower.size() > 1 && lower.back() == 'y'
        && std::string_view("aeiou").find(lower[lower.size() - 2]) == std::string_view::npos;
    return withUpperCaseFirst(endsInY ? lower.substr(0, lower.size() - 1) + "ies" : lower + "s");
}

/// "Always" and the like stand before the verb.
std::string predicate(const std::string& words)
{
    static const Pattern adverb("^(always|never|usually|often|only|really|also)\\s+(\\S+)(.*)$", Pattern::caseless);
    static const Pattern verb("^(\\S+)(.*)$");
    if (const auto match = adverb.find(words))
        return withUpperCaseFirst(lowerCased(match->texts[0])) + " " + lowerCased(thirdPerson(match->texts[1]))
            + match->texts[2];
    const auto match = verb.find(words);
    return match ? thirdPerson(match->texts[0]) + match->texts[1] : words;
}

std::string aboutThem(std::string text)
{
    struct Pronoun {
        Pattern said;
        const char* told;
    };
    static const Pronoun words[] = {{Pattern("\\b(?:my|our)\\b", Pattern::caseless), "their"},
        {Pattern("\\b(?:mine|ours)\\b", Pattern::caseless), "theirs"},
        {Pattern("\\b(?:myself|ourselves)\\b", Pattern::caseless), "themselves"},
        {Pattern("\\b(?:me|us)\\b", Pattern::caseless), "them"},
        {Pattern("\\b(?:i|we)(?:['’](?:m|re)| am)\\b", Pattern::caseless), "they are"},
        {Pattern("\\b(?:i|we)\\b", Pattern::caseless), "they"}};
    for (const Pronoun& word : words)
        text = word.said.replaceAll(text, word.told);
    return text;
}

/// By which words that tell something are known.
constexpr std::string_view verbs =
    "(?:is|are|was|were|isn['’]?t|aren['’]?t|has|have|had|can|cannot|can['’]?t|will|won['’]?t|does|doesn['’]?t|did|said"
    "|likes?|loves?|hates?|lives?|works?|prefers?|needs?|speaks?|plays?|goes|wants?|eats?|drinks?|owes?|wears?|hurts?|"
    "aches?"
    "|weighs|costs?|opens|closes|starts|ends|begins|leaves|comes|gets|takes|keeps|sits|stands|sleeps|drives|studies|"
    "teaches"
    "|uses|belongs|means|smokes|snores|knows|thinks|moved|broke|died|turns|makes|sells|grows|lies|enjoys|dislikes)";

} // namespace

bool FactWords::isStatement(std::string_view content)
{
    static const Pattern statement(
        "^(?:that|this)\\b|^(?:i|we)\\b|\\S " + std::string(verbs) + "\\b", Pattern::caseless);
    return statement.find(content).has_value();
}

bool FactWords::isSecret(std::string_view content)
{
    static const Pattern secret(
        "\\b(?:pin|pin code|password|passcode|passphrase|card number|iban|cvv|puk)\\b.*(?: (?:is|are|was)\\b|\\d)",
        Pattern::caseless);
    return secret.find(content).has_value();
}

std::optional<std::string> FactWords::read(std::string_view content, Certainty certainty)
{
    static const Pattern lead(
        "^(?:that|this|about me|something about me)\\b[:,]?\\s*(?:that\\b\\s*)?", Pattern::caseless);
    // Without a verb it is a thing to do: "don't forget my keys".
    static const Pattern personal(
        "^(?:(?:i|we)(?:['’](?:m|ve|re))? .+|(?:my|our) \\S+.*?(?: " + std::string(verbs) + "\\b|['’]s \\S).*)$",
        Pattern::caseless);
    static const Pattern duty(
        "^(?:i|we)(?:['’]ve)? (?:have|need|want|must|should|ought|got|has) to\\b|^(?:i|we) must\\b|^to\\b",
        Pattern::caseless);
    // What is so for a day only is a note.
    static const std::string weekday(TimeVocabulary::weekday);
    static const Pattern passing(
        "^(?:i|we)(?: have|['’]ve)?(?: just)? (?:left|put|lent|gave|hid|kept|parked|stored|paid|took|bought"
        "|sent|returned|borrowed|ordered|booked|told|saw|met)\\b"
        "|\\b(?:today|tonight|tomorrow|yesterday|right now|parked|at \\d+|on "
            + weekday + "|(?:this|next) (?:week|month|morning|afternoon|evening|" + weekday + "))\\b",
        Pattern::caseless);
    static const Pattern subject("^i\\b\\s*(['’]m|['’]ve)?\\s*(.*)$", Pattern::caseless);
    std::string said = trimmed(content);
    if (const auto match = lead.find(said); match && match->range.start == 0)
        said = said.substr(match->range.end);
    said = trimmed(said, ".!,:");
    // Secrets go to where they are refused, never into a note.
    const bool isTold = certainty == Certainty::told || isSecret(said);
    if (said.empty() || duty.find(said) || (!isTold && (!personal.find(said) || passing.find(said))))
        return std::nullopt;
    const auto person = subject.find(said);
    std::string fact = person ? predicate(trimmed(person->texts[0] + " " + person->texts[1])) : said;
    return withUpperCaseFirst(aboutThem(std::move(fact))) + ".";
}

} // namespace quorvell
