// SPDX-License-Identifier: MIT
#include "Understanding/skills/sums/AmountSums.h"

#include "QuorvellCore/reckoning/sums/Sum.h"
#include "QuorvellCore/reckoning/sums/Units.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/sums/SumWords.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace quorvell {

namespace {

constexpr std::size_t longest = 120; ///< Bytes; nobody needs more for a sum.

/// A number and what there are so many of.
struct Counted {
    std::string number;
    std::string noun; ///< Empty for a bare number.
    TextRange range; ///< Of both.
};

std::vector<Counted> countedIn(const std::string& text)
{
    static const std::string operation =
        "(?:plus|minus|times|multiplied|divided|by|over|less|and|of|percent|per|squared|cubed|to|power|root|off|from|"
        "tip"
        "|tax|vat|take|away|added|subtracted|deducted|x|is|as|or|in|into|are|what|until|before|after)\\b";
    static const Pattern counted("([$€£]?)(\\d[\\d.,]*)(?: ?((?!" + operation + ")[a-z]+(?: (?!" + operation
        + ")[a-z]+){0,2}(?: of (?!" + operation + "|the\\b|\\d)[a-z]+)?))?");
    std::vector<Counted> all;
    for (const PatternMatch& match : counted.findAll(text)) {
        const std::string& sign = match.texts[0];
        const std::string money = sign == "$" ? "dollars" : sign == "€" ? "euros" : sign == "£" ? "pounds" : "";
        all.push_back({match.texts[1], match.texts[2].empty() ? money : match.texts[2], match.range});
    }
    return all;
}

/// "apple" of "apples", so that one and many are the same thing.
std::string plain(std::string noun)
{
    const std::size_t end = std::min(noun.find(" of "), noun.size());
    if (end > 3 && noun[end - 1] == 's' && noun[end - 2] != 's')
        noun.erase(end - 1, 1);
    return noun;
}

bool isOne(const ExactNumber& number)
{
    return number.text() == "1";
}

std::string amount(const ExactNumber& value, const std::string& noun)
{
    if (const Unit* unit = Units::named(noun))
        return Units::text(value, *unit);
    std::string named = plain(noun);
    const bool isKnownAsMany = named != noun;
    if (isOne(value) || (!isKnownAsMany && value.text() == "0"))
        return value.text() + " " + (isOne(value) ? named : noun);
    if (!isKnownAsMany && !noun.ends_with('s'))
        named.insert(std::min(named.find(" of "), named.size()), "s");
    else
        named = noun;
    return value.text() + " " + named;
}

/// All of them in that unit: "300 g" beside "2 kg" are 0.3. Nothing where one cannot be.
std::optional<std::vector<Counted>> allIn(const std::string& noun, std::vector<Counted> all)
{
    const Unit* to = Units::named(noun);
    for (Counted& one : all) {
        if (one.noun.empty() || plain(one.noun) == plain(noun))
            continue;
        const Unit* from = Units::named(one.noun);
        const auto number = ExactNumber::parse(one.number);
        const bool goes = to && from && number && to->kind != Unit::Kind::temperature;
        const auto there = goes ? Units::convert(*number, *from, *to) : std::nullopt;
        if (!there || !there->isShownWhole())
            return std::nullopt;
        one = {there->text(), noun, one.range};
    }
    return all;
}

/// In the first unit in which all of them come out even.
std::optional<std::vector<Counted>> broughtTogether(const std::vector<Counted>& all)
{
    for (const Counted& one : all) {
        auto together = one.noun.empty() ? std::nullopt : allIn(one.noun, all);
        if (together)
            return together;
    }
    return std::nullopt;
}

std::string withoutNouns(const std::string& text, const std::vector<Counted>& all)
{
    std::string left;
    std::size_t end = 0;
    for (const Counted& one : all) {
        left += text.substr(end, one.range.start - end) + one.number;
        end = one.range.end;
    }
    return left + text.substr(end);
}

Sum workedAmount(const std::string& sum)
{
    const auto expression = SumWords::expression("what is " + sum);
    return expression ? Sum::of(*expression) : Sum();
}

/// What the result counts; nothing where the sum makes no sense of things.
std::optional<std::string> nounOf(const std::string& sum, const std::vector<Counted>& all)
{
    static const Pattern adds("\\bplus\\b|\\bminus\\b|\\bless\\b|\\band\\b|\\btake away\\b|\\badded\\b|[+]| - ");
    static const Pattern multiplies("\\b(?:times|multiplied|divided|over|squared|cubed|power|half|third|quarter|double"
                                    "|twice|triple|root)\\b|[*/×÷^√]| x ");
    static const Pattern divides("\\b(?:divided|over)\\b|[/÷]");
    const auto named = std::ranges::count_if(all, [](const Counted& one) { return !one.noun.empty(); });
    const auto first = std::ranges::find_if(all, [](const Counted& one) { return !one.noun.empty(); });
    const bool mixes = adds.find(sum) && multiplies.find(sum);
    const bool isShare = named == 1 && !adds.find(sum);
    if (first == all.end() || mixes || (!adds.find(sum) && !isShare))
        return std::nullopt;
    if (divides.find(sum) && first != all.begin())
        return std::nullopt;
    return first->noun;
}

/// "How many working hours are 8.5 times 5."
std::optional<std::string> howMany(const std::string& core)
{
    static const Pattern form("^how (?:many|much) ((?:[a-z]+ ){1,3}?)(?:is|are|do|does|would be|make|makes|come to|is "
                              "it|are there)(?: there)?(?: in)? (\\d.+?|half .+|.+ percent .+)$");
    const auto match = form.find(core);
    const Sum sum = match ? workedAmount(match->texts[1]) : Sum();
    if (sum.verdict != Sum::Verdict::isValue || sum.steps == 0)
        return std::nullopt;
    return withUpperCaseFirst(SumWords::asked(match->texts[1])) + " is " + (sum.value.isShownWhole() ? "" : "about ")
        + amount(sum.value, trimmed(match->texts[0])) + ".";
}

} // namespace

std::optional<std::string> AmountSums::answer(std::string_view core)
{
    static const Pattern isAsked("^(?:please |tell me |can you (?:tell me |work out )?)*(?:what|how|whats|calculate"
                                 "|compute|work out|figure out)\\b");
    // "Add 2 eggs and 3 lemons" may be for a list.
    static const Pattern order("^(?:add|subtract|take|deduct|multiply|divide|put|set)\\b");
    static const Pattern sure("\\b(?:plus|minus|times|divided by|multiplied by|half of)\\b|[*+×÷]");
    static const Pattern tail("[?!. ]+$");
    if (core.size() > longest)
        return std::nullopt;
    const std::string said = tail.replaceAll(lowerCased(trimmed(core)), "");
    if (auto text = howMany(said))
        return text;
    const std::string text = SumWords::asked(said);
    if (!isAsked.find(said) && (order.find(text) || !sure.find(text)))
        return std::nullopt;
    const auto all = broughtTogether(countedIn(text));
    if (!all)
        return std::nullopt;
    static const Pattern joins("\\band\\b");
    const std::string sum = joins.replaceAll(withoutNouns(text, *all), "plus");
    const auto noun = nounOf(sum, *all);
    const Sum result = noun ? workedAmount(sum) : Sum();
    if (result.verdict != Sum::Verdict::isValue || result.steps == 0)
        return std::nullopt;
    return withUpperCaseFirst(text) + " is " + (result.value.isShownWhole() ? "" : "about ")
        + amount(result.value, *noun) + ".";
}

} // namespace quorvell
