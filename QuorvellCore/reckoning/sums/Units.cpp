// SPDX-License-Identifier: MIT
// Factors are the legal ones, and exact: the international yard and pound of 1959, the gallons and cups of the United
// States and, where they are named so, of Britain.
#include "QuorvellCore/reckoning/sums/Units.h"

#include <algorithm>

namespace quorvell {

namespace {

using Kind = Unit::Kind;

struct Row {
    Unit unit;
    std::string_view names; ///< Besides the two that are said; apart by "|".
};

constexpr Row rows[] = {
    // In micrometres.
    {{Kind::length, "millimetre", "millimetres", 1000}, "mm|millimeter|millimeters"},
    {{Kind::length, "centimetre", "centimetres", 10'000}, "cm|centimeter|centimeters|cms"},
    {{Kind::length, "decimetre", "decimetres", 100'000}, "dm|decimeter|decimeters"},
    {{Kind::length, "metre", "metres", 1'000'000}, "m|meter|meters"},
    {{Kind::length, "kilometre", "kilometres", 1'000'000'000}, "km|kilometer|kilometers|kms|k m"},
    {{Kind::length, "inch", "inches", 25'400}, "in"},
    {{Kind::length, "foot", "feet", 304'800}, "ft"},
    {{Kind::length, "yard", "yards", 914'400}, "yd|yds"},
    {{Kind::length, "mile", "miles", 1'609'344'000}, "mi"},
    {{Kind::length, "nautical mile", "nautical miles", 1'852'000'000}, "nmi"},
    {{Kind::length, "micrometre", "micrometres", 1}, "micrometer|micrometers|micron|microns"},
    // In milligrams.
    {{Kind::mass, "milligram", "milligrams", 1}, "mg"},
    {{Kind::mass, "gram", "grams", 1000}, "g|gramme|grammes|gr"},
    {{Kind::mass, "kilogram", "kilograms", 1'000'000}, "kg|kilo|kilos|kgs|kilogramme|kilogrammes"},
    {{Kind::mass, "tonne", "tonnes", 1'000'000'000}, "t|metric ton|metric tons"},
    {{Kind::mass, "ton", "tons", 90'718'474'000, 100}, "short ton|short tons|us ton|us tons"},
    {{Kind::mass, "ounce", "ounces", 28'349'523'125, 1'000'000}, "oz"},
    {{Kind::mass, "pound", "pounds", 45'359'237, 100}, "lb|lbs"},
    {{Kind::mass, "stone", "stone", 635'029'318, 100}, "stones|st"},
    // In microlitres.
    {{Kind::volume, "millilitre", "millilitres", 1000},
        "ml|milliliter|milliliters|cc|cubic centimetre|cubic centimetres"},
    {{Kind::volume, "centilitre", "centilitres", 10'000}, "cl|centiliter|centiliters"},
    {{Kind::volume, "decilitre", "decilitres", 100'000}, "dl|deciliter|deciliters"},
    {{Kind::volume, "litre", "litres", 1'000'000}, "l|liter|liters|lt"},
    {{Kind::volume, "cubic metre", "cubic metres", 1'000'000'000}, "cubic meter|cubic meters|m3"},
    {{Kind::volume, "teaspoon", "teaspoons", 492'892'159'375, 100'000'000}, "tsp|tsps"},
    {{Kind::volume, "tablespoon", "tablespoons", 1'478'676'478'125, 100'000'000}, "tbsp|tbsps"},
    {{Kind::volume, "fluid ounce", "fluid ounces", 2'957'352'956'25, 10'000'000}, "fl oz|floz"},
    {{Kind::volume, "cup", "cups", 236'588'236'5, 10'000}, "us cup|us cups"},
    {{Kind::volume, "pint", "pints", 473'176'473, 1000}, "pt|us pint|us pints"},
    {{Kind::volume, "quart", "quarts", 946'352'946, 1000}, "qt"},
    {{Kind::volume, "gallon", "gallons", 3'785'411'784, 1000}, "gal|gals|us gallon|us gallons"},
    {{Kind::volume, "British pint", "British pints", 568'261'25, 100},
        "british pint|british pints|uk pint|uk pints|imperial pint|imperial pints"},
    {{Kind::volume, "British gallon", "British gallons", 454'609'0, 1},
        "british gallon|british gallons|uk gallon|uk gallons|imperial gallon|imperial gallons"},
    // In square millimetres.
    {{Kind::area, "square millimetre", "square millimetres", 1}, "square millimeter|square millimeters|mm2"},
    {{Kind::area, "square centimetre", "square centimetres", 100}, "square centimeter|square centimeters|cm2"},
    {{Kind::area, "square metre", "square metres", 1'000'000}, "square meter|square meters|m2|sqm|sq m"},
    {{Kind::area, "square kilometre", "square kilometres", 1'000'000'000'000},
        "square kilometer|square kilometers|km2"},
    {{Kind::area, "hectare", "hectares", 10'000'000'000}, "ha"},
    {{Kind::area, "acre", "acres", 40'468'564'224, 10}, ""},
    {{Kind::area, "square inch", "square inches", 64'516, 100}, "sq in"},
    {{Kind::area, "square foot", "square feet", 9'290'304, 100}, "sq ft|sqft"},
    {{Kind::area, "square yard", "square yards", 83'612'736, 100}, "sq yd"},
    {{Kind::area, "square mile", "square miles", 2'589'988'110'336, 1}, "sq mi"},
    // In millimetres an hour.
    {{Kind::speed, "kilometre per hour", "kilometres per hour", 1'000'000},
        "kmh|kph|km h|kilometer per hour|kilometers per hour|kilometers an hour|kilometres an hour|km per hour"},
    {{Kind::speed, "mile per hour", "miles per hour", 1'609'344}, "mph|miles an hour"},
    {{Kind::speed, "metre per second", "metres per second", 3'600'000}, "meters per second|meter per second|m s|mps"},
    {{Kind::speed, "knot", "knots", 1'852'000}, "kt|kts"},
    // In milliseconds.
    {{Kind::time, "millisecond", "milliseconds", 1}, "ms"},
    {{Kind::time, "second", "seconds", 1000}, "s|sec|secs"},
    {{Kind::time, "minute", "minutes", 60'000}, "min|mins"},
    {{Kind::time, "hour", "hours", 3'600'000}, "h|hr|hrs"},
    {{Kind::time, "day", "days", 86'400'000}, ""},
    {{Kind::time, "week", "weeks", 604'800'000}, "wk|wks"},
    {{Kind::time, "fortnight", "fortnights", 1'209'600'000}, ""},
    {{Kind::time, "year of 365 days", "years of 365 days", 31'536'000'000}, "year|years"},
    // In bits; large ones by powers of 1000, as disks are sold, but for those that say otherwise.
    {{Kind::data, "bit", "bits", 1}, ""},
    {{Kind::data, "byte", "bytes", 8}, ""},
    {{Kind::data, "kilobyte", "kilobytes", 8000}, "kb"},
    {{Kind::data, "megabyte", "megabytes", 8'000'000}, "mb|meg|megs"},
    {{Kind::data, "gigabyte", "gigabytes", 8'000'000'000}, "gb|gig|gigs"},
    {{Kind::data, "terabyte", "terabytes", 8'000'000'000'000}, "tb"},
    {{Kind::data, "kibibyte", "kibibytes", 8192}, "kib"},
    {{Kind::data, "mebibyte", "mebibytes", 8'388'608}, "mib"},
    {{Kind::data, "gibibyte", "gibibytes", 8'589'934'592}, "gib"},
    {{Kind::data, "megabit", "megabits", 1'000'000}, "mbit"},
    // In joules.
    {{Kind::energy, "joule", "joules", 1}, "j"},
    {{Kind::energy, "kilojoule", "kilojoules", 1000}, "kj"},
    {{Kind::energy, "calorie", "calories", 4184}, "kcal|kilocalorie|kilocalories|food calorie|food calories"},
    {{Kind::energy, "watt hour", "watt hours", 3600}, "wh"},
    {{Kind::energy, "kilowatt hour", "kilowatt hours", 3'600'000}, "kwh"},
    // In milliwatts.
    {{Kind::power, "watt", "watts", 1000}, "w"},
    {{Kind::power, "kilowatt", "kilowatts", 1'000'000}, "kw"},
    {{Kind::power, "horsepower", "horsepower", 745'699'871'582, 1'000'000}, "hp"},
    {{Kind::power, "metric horsepower", "metric horsepower", 73'549'875, 100}, "ps"},
    // In pascals.
    {{Kind::pressure, "pascal", "pascals", 1}, "pa"},
    {{Kind::pressure, "hectopascal", "hectopascals", 100}, "hpa|millibar|millibars|mbar"},
    {{Kind::pressure, "kilopascal", "kilopascals", 1000}, "kpa"},
    {{Kind::pressure, "bar", "bar", 100'000}, "bars"},
    {{Kind::pressure, "psi", "psi", 6'894'757'293'168, 1'000'000'000}, "pounds per square inch"},
    {{Kind::pressure, "atmosphere", "atmospheres", 101'325}, "atm"},
    // In kelvins.
    {{Kind::temperature, "kelvin", "kelvin", 1}, "k|kelvins"},
    {{Kind::temperature, "degree Celsius", "degrees Celsius", 1, 1, 27'315},
        "celsius|c|centigrade|degrees c|degree celsius|degrees celsius|degrees centigrade"},
    {{Kind::temperature, "degree Fahrenheit", "degrees Fahrenheit", 5, 9, 45'967},
        "fahrenheit|f|degrees f|degree fahrenheit|degrees fahrenheit"},
};

constexpr long long hundred = 100;

bool isOneOf(std::string_view names, std::string_view name)
{
    for (std::size_t start = 0; start < names.size();) {
        const std::size_t end = std::min(names.find('|', start), names.size());
        if (names.substr(start, end - start) == name)
            return true;
        start = end + 1;
    }
    return false;
}

} // namespace

const Unit* Units::named(std::string_view name)
{
    const auto* const row = std::ranges::find_if(rows, [name](const Row& candidate) {
        return candidate.unit.one == name || candidate.unit.many == name || isOneOf(candidate.names, name);
    });
    return row == std::ranges::end(rows) ? nullptr : &row->unit;
}

std::optional<ExactNumber> Units::convert(const ExactNumber& amount, const Unit& from, const Unit& to)
{
    if (from.kind != to.kind)
        return std::nullopt;
    const auto shifted = ExactNumber::sum(amount, ExactNumber::of(from.shiftHundredths, hundred));
    const auto base =
        shifted ? ExactNumber::product(*shifted, ExactNumber::of(from.numerator, from.denominator)) : shifted;
    const auto there = base ? ExactNumber::quotient(*base, ExactNumber::of(to.numerator, to.denominator)) : base;
    return there ? ExactNumber::difference(*there, ExactNumber::of(to.shiftHundredths, hundred)) : there;
}

std::string Units::text(const ExactNumber& amount, const Unit& unit)
{
    const std::string number = amount.text();
    return number + " " + std::string(number == "1" ? unit.one : unit.many);
}

} // namespace quorvell
