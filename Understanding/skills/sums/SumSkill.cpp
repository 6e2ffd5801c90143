// SPDX-License-Identifier: MIT
#include "Understanding/skills/sums/SumSkill.h"

#include "QuorvellCore/reckoning/sums/Sum.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/dialogue/ToolResults.h"
#include "Understanding/skills/sums/AmountSums.h"
#include "Understanding/skills/sums/NumberQuestions.h"
#include "Understanding/skills/sums/SumWords.h"
#include "Understanding/skills/sums/UnitWords.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace quorvell {

namespace {

using Found = std::optional<Request>;

Request saying(std::string text, bool isBeyond = false)
{
    return {.answer = [text = std::move(text), isBeyond](RequestMemory memory, const RuleSurroundings&) {
        RuleStep step = ToolResults::say(text, std::move(memory));
        step.isNotUnderstood = isBeyond;
        return step;
    }};
}

std::string worked(const Sum& sum, std::string_view core)
{
    constexpr std::size_t longestEcho = 60; // bytes
    static const Pattern isPercentage(
        "\\b(?:what|which) (?:percent|percentage|per cent)\\b|\\bas an? percent|percent(?:age)? (?:of )?[\\d.,]+ is\\b",
        Pattern::caseless);
    // An amount in cents is told in cents: "20% tip on 64.50".
    static const Pattern cents("\\d\\.\\d\\d\\b");
    static const Pattern tenths("\\.\\d$");
    const std::string plain = sum.value.text();
    const std::string value = (sum.value.isShownWhole() ? "" : "about ") + plain
        + (cents.find(core) && tenths.find(plain) && sum.value.isShownWhole() ? "0" : "");
    if (isPercentage.find(core))
        return "That is " + value + " percent.";
    static const Pattern order("^(?:add|divide|multiply|subtract|take|deduct)\\b");
    const std::string asked = SumWords::asked(core);
    return (!order.find(asked) && asked.size() <= longestEcho ? withUpperCaseFirst(asked) + " is " : "That is ") + value
        + ".";
}

std::optional<std::string> answerSum(const std::string& core)
{
    const auto expression = SumWords::expression(core);
    const Sum sum = expression ? Sum::of(*expression) : Sum();
    switch (sum.verdict) {
    case Sum::Verdict::isNone:
        return std::nullopt;
    case Sum::Verdict::dividesByZero:
        return "That divides by zero, which has no result.";
    case Sum::Verdict::hasNoValue:
        return "That has no result that I can work out.";
    case Sum::Verdict::isValue:
        break;
    }
    return sum.steps > 0 ? std::optional(worked(sum, core)) : std::nullopt;
}

std::optional<std::string> answerDivisible(const std::string& core)
{
    static const Pattern form("^(?:tell me (?:if|whether) |check (?:if|whether) )?(?:is )?([\\d,]{1,15}) (?:is "
                              ")?(?:evenly )?divisible by ([\\d,]{1,15})[?. ]*$",
        Pattern::caseless);
    const auto match = form.find(core);
    const auto number = match ? ExactNumber::parse(match->texts[0]) : std::nullopt;
    const auto divisor = match ? ExactNumber::parse(match->texts[1]) : std::nullopt;
    if (!number || !divisor)
        return std::nullopt;
    if (divisor->isZero())
        return "Nothing can be divided by zero.";
    const auto left = ExactNumber::remainder(*number, *divisor);
    const auto quotient = ExactNumber::quotient(*number, *divisor);
    if (!left || !quotient)
        return std::nullopt;
    return left->isZero()
        ? "Yes, " + number->text() + " divided by " + divisor->text() + " is " + quotient->text() + "."
        : "No, " + number->text() + " divided by " + divisor->text() + " leaves " + left->text() + ".";
}

/// "Three quarters of 200".
std::optional<std::string> answerFraction(const std::string& core)
{
    static const Pattern form(
        "^(?:(?:what|how much) (?:is|are) |what['’]s |whats |calculate |work out "
        ")?(\\d{1,4}|an?|one|two|three|four|five|six"
        "|seven|eight|nine) (hal(?:f|ves)|thirds?|quarters?|fifths?|sixths?|sevenths?|eighths?|ninths?|tenths?) of "
        "([\\d.,]{1,15})[?. ]*$",
        Pattern::caseless);
    constexpr std::array counts{"a", "an", "one", "two", "three", "four", "five", "six", "seven", "eight", "nine"};
    constexpr int first = 1; // of the numbers among them, behind two articles
    constexpr std::array parts{"hal", "third", "quarter", "fifth", "sixth", "seventh", "eighth", "ninth", "tenth"};
    constexpr int halves = 2;
    const auto match = form.find(core);
    if (!match)
        return std::nullopt;
    const std::string said = lowerCased(match->texts[0]);
    const auto word = std::ranges::find(counts, said) - counts.begin();
    const auto part = std::ranges::find_if(parts, [&](std::string_view name) {
        return lowerCased(match->texts[1]).starts_with(name);
    }) - parts.begin();
    const std::string count = word == static_cast<std::ptrdiff_t>(counts.size())
        ? said
        : std::to_string(std::max<std::ptrdiff_t>(word - first, 1));
    const Sum sum = Sum::of(count + " / " + std::to_string(part + halves) + " * " + match->texts[2]);
    if (sum.verdict != Sum::Verdict::isValue)
        return std::nullopt;
    return "That is " + std::string(sum.value.isShownWhole() ? "" : "about ") + sum.value.text() + ".";
}

/// "Divide 144 by 12 and add 5".
std::optional<std::string> answerChain(const std::string& core)
{
    static const Pattern form(
        "^(.+?),? (?:and then|then|and) (add|plus|subtract|minus|take away|take off|multiply (?:it |that )?by"
        "|times|divide (?:it |that )?by) ([\\d.,]{1,15})[?. ]*$",
        Pattern::caseless);
    const auto match = form.find(core);
    const auto start = match ? SumWords::expression(match->texts[0]) : std::nullopt;
    if (!start)
        return std::nullopt;
    const std::string word = lowerCased(match->texts[1]);
    const std::string sign = word == "add" || word == "plus" ? "+"
        : word.starts_with("multiply") || word == "times"    ? "*"
        : word.starts_with("divide")                         ? "/"
                                                             : "-";
    const Sum first = Sum::of(*start);
    const Sum sum = Sum::of("(" + *start + ") " + sign + " " + match->texts[2]);
    if (first.steps == 0 || sum.verdict != Sum::Verdict::isValue)
        return std::nullopt;
    return "That is " + std::string(sum.value.isShownWhole() ? "" : "about ") + sum.value.text() + ".";
}

Found readPlain(const std::string& asked, const RuleSurroundings&)
{
    static const Pattern more("^(?:and |what about |how about )+(?=\\d|half |a (?:third|quarter) )", Pattern::caseless);
    const std::string core = more.replaceAll(asked, "what is ");
    for (const auto reader : {answerFraction, answerChain, NumberQuestions::answer}) {
        if (auto said = reader(core))
            return saying(*std::move(said));
    }
    if (auto said = AmountSums::answer(core))
        return saying(*std::move(said));
    if (UnitWords::isCurrency(core))
        return saying("Exchange rates change all the time, so that needs an online model.", true);
    if (auto said = answerDivisible(core))
        return saying(*std::move(said));
    if (auto said = UnitWords::answer(core))
        return saying(*std::move(said));
    auto said = answerSum(core);
    return said ? Found(saying(*std::move(said))) : std::nullopt;
}

} // namespace

constinit const Skill SumSkill::row{
    .name = "sums",
    .readPlain = readPlain,
};

} // namespace quorvell
