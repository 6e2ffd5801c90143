// SPDX-License-Identifier: MIT
// Catches sums that come out wrong, or lose digits without a word, and units with a wrong factor.
#include "QuorvellCore/reckoning/sums/Sum.h"

#include "QuorvellCore/reckoning/sums/Units.h"

#include <gtest/gtest.h>

namespace quorvell {
namespace {

std::string worked(std::string_view text)
{
    const Sum sum = Sum::of(text);
    switch (sum.verdict) {
    case Sum::Verdict::isNone:
        return "none";
    case Sum::Verdict::dividesByZero:
        return "by zero";
    case Sum::Verdict::hasNoValue:
        return "no value";
    case Sum::Verdict::isValue:
        break;
    }
    return (sum.value.isShownWhole() ? "" : "about ") + sum.value.text();
}

TEST(Sum, countsAsOnPaper)
{
    const struct Row {
        const char* text;
        const char* value;
    } rows[] = {
        {"0.1 + 0.2", "0.3"},
        {"2 + 3 * 4", "14"},
        {"(2 + 3) * 4", "20"},
        {"5 - 3 - 1", "1"},
        {"2 ^ 3 ^ 2", "512"},
        {"-2 ^ 2", "minus 4"},
        {"8 / 4 / 2", "1"},
        {"15 % * 80", "12"},
        {"1 / 3", "about 0.333333"},
        {"1 / 3 * 3", "1"},
        {"2 / 3 * 100000", "about 66,666.6667"},
        {"sqrt 144", "12"},
        {"sqrt(2)", "about 1.4142"},
        {"cbrt 27", "3"},
        {"sqrt (1/4)", "0.5"},
        {"2 ^ 0.5", "about 1.4142"},
        {"2 ^ -2", "0.25"},
        {"10 ^ 14", "100,000,000,000,000"},
        {"2 ^ 100", "about 1.268 times 10 to the power of 30"},
        {"1 / 0", "by zero"},
        {"1 / (2 - 2)", "by zero"},
        {"0 ^ -1", "no value"},
        {"sqrt (0 - 1)", "no value"},
        {"9 ^ 9 ^ 9", "no value"},
        {"1,250.50 * 2", "2501"},
        {"0.0000001 * 1", "about 1.000 times 10 to the power of -7"},
        {"", "none"},
        {"1 +", "none"},
        {"(1", "none"},
        {"1 1", "none"},
        {"1..2", "none"},
        {"1234567890123456 + 1", "none"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(worked(row.text), row.value) << row.text;
    EXPECT_EQ(worked(std::string(250, '(')), "none");
    EXPECT_EQ(worked(std::string(250, '-') + "1"), "1") << "signs in a row are bounded by the length";
    EXPECT_EQ(worked(std::string(10'000, '1')), "none");
}

TEST(Units, comeToWhatTheyShould)
{
    const struct Row {
        const char* amount;
        const char* from;
        const char* to;
        const char* text;
    } rows[] = {
        {"5", "miles", "km", "8.04672 kilometres"},
        {"1", "litre", "cups", "4.2268 cups"},
        {"1", "lb", "oz", "16 ounces"},
        {"350", "fahrenheit", "celsius", "176.6667 degrees Celsius"},
        {"20", "c", "f", "68 degrees Fahrenheit"},
        {"0", "k", "celsius", "minus 273.15 degrees Celsius"},
        {"1", "gallon", "pints", "8 pints"},
        {"1", "british gallon", "uk pints", "8 British pints"},
        {"1", "acre", "square feet", "43,560 square feet"},
        {"1", "square mile", "acres", "640 acres"},
        {"1", "stone", "pounds", "14 pounds"},
        {"1", "nautical mile", "metres", "1852 metres"},
        {"1", "kwh", "kj", "3600 kilojoules"},
        {"1", "mph", "kmh", "1.609344 kilometres per hour"},
        {"1", "tablespoon", "teaspoons", "3 teaspoons"},
        {"1", "quart", "cups", "4 cups"},
        {"1", "gib", "mib", "1024 mebibytes"},
    };
    for (const Row& row : rows) {
        const Unit* from = Units::named(row.from);
        const Unit* to = Units::named(row.to);
        ASSERT_TRUE(from && to) << row.from << " " << row.to;
        EXPECT_EQ(Units::text(*Units::convert(*ExactNumber::parse(row.amount), *from, *to), *to), row.text);
    }
    EXPECT_FALSE(Units::convert(ExactNumber::of(1), *Units::named("kilo"), *Units::named("cup")));
    EXPECT_FALSE(Units::named("eggs"));
}

} // namespace
} // namespace quorvell
