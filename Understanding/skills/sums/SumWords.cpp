// SPDX-License-Identifier: MIT
#include "Understanding/skills/sums/SumWords.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/time/SpokenWords.h"

#include <array>

namespace quorvell {

namespace {

const Pattern& lead()
{
    static const Pattern pattern("^(?:(?:please|quickly|tell me|can you|could you|do you know|work out|figure "
                                 "out|find|calculate|compute|evaluate|solve|give me|what do (?:i|you|we) get (?:if "
                                 "(?:i|you|we) |when (?:i|you|we) |for )?"
                                 "|how much (?:is|are|does|would be|will)|what(?:['’]?s| is| are| does| would be| "
                                 "will)?|(?:the )?(?:result|value|answer|total) (?:of|to|for)|equals?|the)\\b[ ,:]*)+",
        Pattern::caseless);
    return pattern;
}

/// "two thousand five hundred", "three point five", and any other number that is said, in digits.
std::string withDigits(const std::string& text)
{
    const SpokenWords words(text);
    std::string written;
    for (std::size_t place = 0; place < words.size();) {
        long long total = 0;
        std::size_t end = place;
        while (end < words.size()) {
            const auto number = words.at(end) == "a" ? std::nullopt : words.cardinal(end);
            if (!number || (end > place && !words.areJoined(end - 1, end + 1)))
                break;
            const std::string_view scale = words.at(end + number->words);
            const long long factor = scale == "thousand" ? 1000
                : scale == "million"                     ? 1'000'000
                : scale == "billion"                     ? 1'000'000'000
                                                         : 1;
            total += number->value * factor;
            end += number->words + (factor > 1 ? 1 : 0);
            if (factor == 1)
                break;
        }
        const bool isZero = words.at(place) == "zero" || words.at(place) == "nought";
        if (end == place && !isZero) {
            written += words.original(place);
            ++place;
            continue;
        }
        written += std::string(words.spaceBefore(place)) + std::to_string(total);
        place = isZero ? place + 1 : end;
        if (words.at(place) == "point") {
            std::string decimals;
            std::size_t next = place + 1;
            for (; next < words.size(); ++next) {
                const auto digit = words.small(next);
                const bool isNought = words.at(next) == "zero" || words.at(next) == "oh" || words.at(next) == "nought";
                if (!isNought && (!digit || digit->value > 9))
                    break;
                decimals += isNought ? "0" : std::to_string(digit->value);
            }
            written += decimals.empty() ? "" : "." + decimals;
            place = decimals.empty() ? place : next;
        }
        written += words.after(place - 1);
    }
    return trimmed(written);
}

struct Rewrite {
    Pattern said;
    const char* signs;
};

/// What stands around the numbers: "$1" and "$2" are them.
struct Form {
    Pattern said;
    std::string_view signs;
};

std::string filled(std::string_view signs, const PatternMatch& match)
{
    std::string text;
    for (std::size_t place = 0; place < signs.size(); ++place) {
        if (signs[place] == '$' && place + 1 < signs.size())
            text += match.texts[static_cast<std::size_t>(signs[++place] - '1')];
        else
            text += signs[place];
    }
    return text;
}

std::string withForms(std::string text)
{
    static const std::string n = "([\\d.,]+|\\(.+\\))";
    static const Form forms[] = {
        {Pattern("^(?:sum|total) of " + n + " and " + n + "$"), "$1 + $2"},
        {Pattern("^(?:difference (?:between|of)) " + n + " and " + n + "$"), "$1 - $2"},
        {Pattern("^product of " + n + " and " + n + "$"), "$1 * $2"},
        {Pattern("^quotient of " + n + " and " + n + "$"), "$1 / $2"},
        {Pattern("^add " + n + " (?:and|to|with|plus) " + n + "$"), "$1 + $2"},
        {Pattern("^" + n + " added to " + n + "$"), "$2 + $1"},
        {Pattern("^(?:subtract|take|take away|deduct) " + n + " (?:from|away from|off) " + n + "$"), "$2 - $1"},
        {Pattern("^" + n + " (?:subtracted|taken|deducted) from " + n + "$"), "$2 - $1"},
        {Pattern("^multiply " + n + " (?:by|and|with|times) " + n + "$"), "$1 * $2"},
        {Pattern("^divide " + n + " (?:by|through) " + n + "$"), "$1 / $2"},
        {Pattern("^" + n + " ?(?:%|percent|per cent) (?:off|less than|discount on|off of) " + n + "$"),
            "$2 * (1 - $1 %)"},
        {Pattern("^(?:an? )?" + n
             + " ?(?:%|percent|per cent) (?:tip|tax|vat|discount|commission|interest) (?:on|of|for) [$€£]?" + n
             + "(?: (?:dollars|euros|pounds|bucks))?$"),
            "$1 % * $2"},
        {Pattern("^" + n + " (?:plus|\\+|and) " + n + " ?(?:%|percent|per cent)(?: tip| tax| vat)?$"),
            "$1 * (1 + $2 %)"},
        {Pattern("^" + n + " (?:minus|-|less) " + n + " ?(?:%|percent|per cent)$"), "$1 * (1 - $2 %)"},
        {Pattern("^(?:percent|percentage|per cent|percentage) (?:of )?" + n + " is " + n + "$"), "$2 / $1 * 100"},
        {Pattern("^" + n + " is (?:what|which) (?:percent|percentage|per cent|%) of " + n + "$"), "$1 / $2 * 100"},
        {Pattern("^" + n + " as (?:a )?(?:percent|percentage|per cent|%) of " + n + "$"), "$1 / $2 * 100"},
        {Pattern("^average of " + n + " and " + n + "$"), "($1 + $2) / 2"},
        {Pattern("^average of " + n + ",? " + n + ",?(?: and)? " + n + "$"), "($1 + $2 + $3) / 3"},
    };
    for (const Form& form : forms) {
        if (const auto match = form.said.find(text))
            return filled(form.signs, *match);
    }
    return text;
}

std::string withSigns(std::string text)
{
    static const Rewrite rewrites[] = {
        {Pattern("\\b(?:plus|added to)\\b"), "+"},
        {Pattern("\\b(?:minus|take away|less|subtract)\\b"), "-"},
        {Pattern(
             "\\b(?:times|multiplied by|multiplied with|multiply by)\\b|(?<=[\\d)] )x(?= [\\d(])|(?<=\\d)x(?=\\d)|×|·"),
            "*"},
        {Pattern("\\b(?:divided by|divide by|over)\\b|÷"), "/"},
        {Pattern("\\b(?:to the power of|raised to the power of|raised to|to the)\\b|\\*\\*"), "^"},
        {Pattern("\\bsquared\\b|²"), "^2"},
        {Pattern("\\bcubed\\b|³"), "^3"},
        {Pattern("\\b(?:square root|squareroot|sqrt)(?: of)?\\b|√"), "sqrt"},
        {Pattern("\\b(?:cube|cubic) root(?: of)?\\b"), "cbrt"},
        {Pattern("\\b(?:a |one |1 )?half of\\b"), "(1/2) *"},
        {Pattern("\\b(?:a |one |1 )?third of\\b"), "(1/3) *"},
        {Pattern("\\b(?:a |one |1 )?quarter of\\b"), "(1/4) *"},
        {Pattern("\\b(?:two|2) thirds of\\b"), "(2/3) *"},
        {Pattern("\\b(?:three|3) quarters of\\b"), "(3/4) *"},
        {Pattern("\\b(?:a |one |1 )?tenth of\\b"), "(1/10) *"},
        {Pattern("\\b(?:double|twice)\\b"), "2 *"},
        {Pattern("\\btriple\\b"), "3 *"},
        {Pattern("(?:%|\\bpercent|\\bper cent|\\bpercents) (?:of)\\b"), "% *"},
        {Pattern("\\b(?:percent|per cent)\\b"), "%"},
        {Pattern("−|–"), "-"},
        {Pattern("(?<=[%)\\d]) of (?=[\\d(])"), " * "},
        {Pattern("\\b(?:the|of)\\b"), ""},
    };
    for (const Rewrite& rewrite : rewrites)
        text = rewrite.said.replaceAll(text, rewrite.signs);
    return trimmed(text);
}

} // namespace

std::string SumWords::asked(std::string_view core)
{
    static const Pattern tail("(?:\\s*(?:=|\\?|\\bequals?(?: to)?(?: what)?|\\bis(?: what| how much)?|\\bmake|\\bcome "
                              "to|\\bplease|[.!]))+\\s*$",
        Pattern::caseless);
    return withDigits(trimmed(tail.replaceAll(lead().replaceAll(lowerCased(trimmed(core)), ""), "")));
}

std::optional<std::string> SumWords::expression(std::string_view core)
{
    constexpr std::size_t longest = 200; // bytes
    static const Pattern isSum("^[-\\d.,+*/^%() a-z]*$");
    static const Pattern words("\\b(?!sqrt\\b|cbrt\\b)[a-z]+");
    // "2027-02-03", "24/7" and "10-12" are none where nobody asked what they come to.
    static const Pattern isBareSum("[+*^√×÷%]|\\d [-/x] \\d|[a-z]{4}|^add ");
    if (core.size() > longest)
        return std::nullopt;
    const std::string said = asked(core);
    const bool isAsked = lead().find(lowerCased(trimmed(core))).has_value();
    if (said.find_first_of("0123456789") == std::string::npos || (!isAsked && !isBareSum.find(said)))
        return std::nullopt;
    static const Pattern date("\\b\\d{4}-\\d{1,2}-\\d{1,2}\\b|\\d:\\d");
    const std::string signs = withSigns(withForms(said));
    const bool isReadable = isSum.find(signs) && !words.find(signs) && !date.find(signs);
    return isReadable ? std::optional(signs) : std::nullopt;
}

} // namespace quorvell
