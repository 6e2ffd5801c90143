// SPDX-License-Identifier: MIT
#include "Understanding/skills/sums/NumberQuestions.h"

#include "QuorvellCore/reckoning/sums/Sum.h"
#include "QuorvellCore/text/Pattern.h"

#include <cstdint>
#include <cstdlib>

namespace quorvell {

namespace {

using Said = std::optional<std::string>;

const std::string numberLead =
    "^(?:what(?: is|['’]s)?|whats|calculate|work out|find|tell me|check|how much is)? ?(?:if |whether )?(?:the )?";

Said prime(const std::string& core)
{
    static const Pattern form(
        numberLead + "(?:is )?(?:the number )?(\\d{1,9}) (?:is )?(?:a )?prime(?: number)?[?. ]*$", Pattern::caseless);
    const auto match = form.find(core);
    if (!match)
        return std::nullopt;
    const std::int64_t number = std::atoll(match->texts[0].c_str());
    for (std::int64_t divisor = 2; divisor * divisor <= number; ++divisor) {
        if (number % divisor == 0)
            return "No, " + std::to_string(number) + " is " + std::to_string(divisor) + " times "
                + std::to_string(number / divisor) + ".";
    }
    return number > 1 ? "Yes, " + std::to_string(number) + " is prime."
                      : "No, " + std::to_string(number) + " is not prime.";
}

Said factorial(const std::string& core)
{
    static const Pattern form(
        numberLead + "(?:(\\d{1,2}) factorial|factorial of (\\d{1,2})|(\\d{1,2})!)[?. ]*$", Pattern::caseless);
    constexpr int most = 20; // the last that 64 bits hold
    const auto match = form.find(core);
    const int number = match ? std::atoi((match->texts[0] + match->texts[1] + match->texts[2]).c_str()) : most + 1;
    if (number > most)
        return std::nullopt;
    std::int64_t product = 1;
    for (int factor = 2; factor <= number; ++factor)
        product *= factor;
    return "The factorial of " + std::to_string(number) + " is " + std::to_string(product) + ".";
}

/// "The sum of 5, 6 and 7"
Said sumOf(const std::string& core)
{
    static const Pattern form(
        numberLead + "(sum|product) of ([\\d., ]+?(?:(?:,|and|&)[\\d., and]+)+)[?. ]*$", Pattern::caseless);
    static const Pattern between("(?:,? and |, ?| & )", Pattern::caseless);
    const auto match = form.find(core);
    if (!match)
        return std::nullopt;
    const bool isSum = match->texts[0] == "sum" || match->texts[0] == "Sum";
    const Sum sum = Sum::of(between.replaceAll(match->texts[1], isSum ? " + " : " * "));
    if (sum.verdict != Sum::Verdict::isValue)
        return std::nullopt;
    return "That is " + std::string(sum.value.isShownWhole() ? "" : "about ") + sum.value.text() + ".";
}

/// What would be taken for a note: "log of 100".
Said notWorkedOut(const std::string& core)
{
    static const Pattern form(numberLead
            + "(?:log|logarithm|ln|sine?|cosine|cos|tangent|tan|arc\\w+) (?:of )?-?\\d[\\d.,]*(?: degrees)?[?. "
              "]*$|^solve .*=.*$"
              "|^solve .*\\bequals?\\b.*$",
        Pattern::caseless);
    return form.find(core) ? Said("I work out sums, powers, roots, percentages and units, but not that.")
                           : std::nullopt;
}

} // namespace

std::optional<std::string> NumberQuestions::answer(const std::string& core)
{
    for (const auto reader : {prime, factorial, sumOf, notWorkedOut}) {
        if (auto said = reader(core))
            return said;
    }
    return std::nullopt;
}

} // namespace quorvell
