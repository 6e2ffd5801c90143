// SPDX-License-Identifier: MIT
#include "QuorvellCore/text/SecondPerson.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/Pattern.h"

#include <algorithm>
#include <array>

namespace quorvell {

namespace {

/// The verb as "you" has it: "likes" is "like".
std::string secondPerson(const std::string& verb)
{
    struct Form {
        std::string_view told;
        std::string_view said;
    };
    static constexpr std::array forms{Form{"is", "are"}, Form{"was", "were"}, Form{"has", "have"}, Form{"does", "do"},
        Form{"doesn't", "don't"}, Form{"isn't", "aren't"}, Form{"goes", "go"}, Form{"hasn't", "haven't"},
        Form{"studies", "study"}, Form{"teaches", "teach"}, Form{"watches", "watch"}, Form{"can", "can"},
        Form{"can't", "can't"}, Form{"cannot", "cannot"}, Form{"will", "will"}, Form{"never", "never"},
        Form{"always", "always"}};
    static constexpr auto regular = std::to_array<std::string_view>({"likes", "loves", "hates", "lives", "works",
        "prefers", "needs", "speaks", "plays", "wants", "eats", "drinks", "owes", "wears", "owns", "drives", "uses",
        "knows", "smokes", "sleeps", "takes", "enjoys", "dislikes", "collects", "parks", "pays", "cooks", "starts",
        "buys", "visits", "stays", "supports", "reads", "runs", "rides", "keeps", "weighs", "grows", "sings"});
    const auto form = std::ranges::find(forms, std::string_view(verb), &Form::told);
    if (form != forms.end())
        return std::string(form->said);
    return std::ranges::find(regular, verb) != regular.end() ? verb.substr(0, verb.size() - 1) : std::string();
}

} // namespace

std::optional<std::string> SecondPerson::of(std::string_view fact)
{
    static const Pattern their("\\btheir\\b", Pattern::caseless);
    static const Pattern themselves("\\bthemselves\\b", Pattern::caseless);
    static const Pattern they("\\b(?:they|them)\\b", Pattern::caseless);
    static const Pattern verb("^(\\S+) (.+)$");
    const std::string text(fact);
    const auto direct = [&](const std::string& said) {
        return withUpperCaseFirst(
            they.replaceAll(themselves.replaceAll(their.replaceAll(said, "your"), "yourself"), "you"));
    };
    const auto match = verb.find(text);
    const std::string second = match ? secondPerson(lowerCased(match->texts[0])) : std::string();
    if (!second.empty())
        return direct("You " + second + " " + match->texts[1]);
    static const Pattern speaksOfThem("^(?:their|they)\\b", Pattern::caseless);
    return speaksOfThem.find(text) ? std::optional(direct(text)) : std::nullopt;
}

} // namespace quorvell
