// SPDX-License-Identifier: MIT
#include "Understanding/skills/sums/UnitWords.h"

#include "QuorvellCore/reckoning/sums/Units.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/sums/SumWords.h"

namespace quorvell {

namespace {

struct Amount {
    ExactNumber number;
    const Unit* unit = nullptr;
};

const Unit* unitIn(std::string words)
{
    static const Pattern lead("^(?:the|a|an) ");
    static const Pattern substance(" of .+$");
    words = trimmed(lead.replaceAll(words, ""));
    const Unit* unit = Units::named(words);
    return unit ? unit : Units::named(trimmed(substance.replaceAll(words, "")));
}

/// "5 miles", "a litre", "half a cup", "5 feet 10 inches".
std::optional<Amount> amountIn(const std::string& words)
{
    static const Pattern form("^(?:(minus )?([-]?[\\d.,]+)|(half an?|half)|(an?|one|the)|) ?(.+)$");
    static const Pattern feet("^([\\d.]+) ?(?:feet|foot|ft) (?:and )?([\\d.]+)(?: ?(?:inch|inches|in))?$");
    if (const auto match = feet.find(words)) {
        const auto whole = ExactNumber::parse(match->texts[0]);
        const auto more = ExactNumber::parse(match->texts[1]);
        const auto inches = whole ? ExactNumber::product(*whole, ExactNumber::of(12)) : whole;
        const auto sum = inches && more ? ExactNumber::sum(*inches, *more) : std::nullopt;
        return sum ? std::optional(Amount{*sum, Units::named("inch")}) : std::nullopt;
    }
    const auto match = form.find(words);
    const Unit* unit = match ? unitIn(match->texts[4]) : nullptr;
    if (!unit)
        return std::nullopt;
    if (!match->texts[2].empty())
        return Amount{ExactNumber::of(1, 2), unit};
    std::string digits = match->texts[1];
    const bool isNegative = !match->texts[0].empty() || digits.starts_with('-');
    std::erase(digits, '-');
    auto number = digits.empty() ? ExactNumber::of(1) : ExactNumber::parse(digits);
    if (number && isNegative)
        number = ExactNumber::product(*number, ExactNumber::of(-1));
    return number ? std::optional(Amount{*number, unit}) : std::nullopt;
}

std::string_view measured(Unit::Kind kind)
{
    switch (kind) {
    case Unit::Kind::length:
        return "lengths";
    case Unit::Kind::mass:
        return "weights";
    case Unit::Kind::volume:
        return "volumes";
    case Unit::Kind::area:
        return "areas";
    case Unit::Kind::speed:
        return "speeds";
    case Unit::Kind::time:
        return "time";
    case Unit::Kind::data:
        return "data";
    case Unit::Kind::energy:
        return "energy";
    case Unit::Kind::pressure:
        return "pressure";
    case Unit::Kind::power:
        return "power";
    case Unit::Kind::temperature:
        return "temperatures";
    }
    return "";
}

std::string converted(const Amount& amount, const Unit& to)
{
    const auto value = Units::convert(amount.number, *amount.unit, to);
    if (!value)
        return withUpperCaseFirst(std::string(to.many)) + " measure " + std::string(measured(to.kind)) + " and "
            + std::string(amount.unit->many) + " " + std::string(measured(amount.unit->kind))
            + ", so one does not follow from the other.";
    return withUpperCaseFirst(Units::text(amount.number, *amount.unit))
        + (amount.number.text() == "1" ? " is " : " are ") + (value->isShownWhole() ? "" : "about ")
        + Units::text(*value, to) + ".";
}

std::string readable(std::string_view core)
{
    static const Pattern degree("[°º] ?(?=[cfk]\\b)|[°º]");
    static const Pattern glued("(?<=\\d)(?=[a-z])");
    static const Pattern many("^how (?:many|much) ", Pattern::caseless);
    // What is asked for would go with "how much is".
    std::string text = many.find(core) ? "many " + SumWords::asked(many.replaceAll(core, "")) : SumWords::asked(core);
    return glued.replaceAll(degree.replaceAll(text, " degrees "), " ");
}

} // namespace

std::optional<std::string> UnitWords::answer(std::string_view core)
{
    static const Pattern many(
        "^many (.+?)(?: are| is| do| does| would| make| makes| equals?| there| you get| i get)* "
        "(?:in|is|are|make|makes|equals?|to|fit in|per|out of|from) (.+?)(?: have| make| equal)?$");
    static const Pattern into("^(?:convert |change |express |turn )?(.+?) (?:in|to|into|as|is how many|are how "
                              "many|equals how many|is what in|expressed in|converted to|in terms of) (.+)$");
    constexpr std::size_t longest = 100; // bytes
    if (core.size() > longest)
        return std::nullopt;
    const std::string text = readable(core);
    if (const auto match = many.find(text)) {
        const Unit* to = unitIn(match->texts[0]);
        const auto amount = to ? amountIn(match->texts[1]) : std::nullopt;
        return amount ? std::optional(converted(*amount, *to)) : std::nullopt;
    }
    const auto match = into.find(text);
    const Unit* to = match ? unitIn(match->texts[1]) : nullptr;
    const auto amount = to ? amountIn(match->texts[0]) : std::nullopt;
    return amount ? std::optional(converted(*amount, *to)) : std::nullopt;
}

bool UnitWords::isCurrency(std::string_view core)
{
    static const std::string money =
        "(?:dollars?|euros?|pounds?(?: sterling)?|usd|eur|gbp|cad|aud|chf|jpy|inr|cny|yen|yuan|rupees?|francs?|pesos?|"
        "rubles?|roubles?|kron(?:a|e|or|er)|liras?|won|zloty|rand|reais|real|bitcoins?|btc|ethereum|[$€£¥])";
    static const std::string sure =
        "(?:dollars?|euros?|sterling|usd|eur|gbp|yen|yuan|rupees?|francs?|pesos?|rubles?|bitcoins?|btc|[$€£¥])";
    static const Pattern rate(
        "\\b(?:exchange|currency|conversion) rates?\\b|\\bcurrency convert|\\bconvert (?:the )?currency\\b",
        Pattern::caseless);
    static const Pattern two("^(?:please )?(?:what|how|convert|exchange|change|is|tell|give|show|\\d|the).*(?:^|[^a-z])"
            + money + "(?:$|[^a-z]).*(?:^|[^a-z])" + money + "(?:$|[^a-z])",
        Pattern::caseless);
    static const Pattern one("(?:^|[^a-z])" + sure + "(?:$|[^a-z])", Pattern::caseless);
    constexpr std::size_t longest = 120; // bytes
    return core.size() <= longest && (rate.find(core) || (two.find(core) && one.find(core)));
}

} // namespace quorvell
