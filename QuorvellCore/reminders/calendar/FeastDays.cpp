// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/calendar/FeastDays.h"

#include <unicode/calendar.h>
#include <unicode/locid.h>
#include <unicode/timezone.h>

#include <algorithm>
#include <memory>
#include <utility>

namespace quorvell {

namespace {

using std::chrono::days;
using std::chrono::month;
using std::chrono::sys_days;
using std::chrono::weekday;
using std::chrono::year;

enum class Rule {
    fixed, ///< `first` is the day of the month.
    nth, ///< `first` is which `second` (0 Sunday to 6 Saturday) of the month it is; 5 is the last.
    easter, ///< `first` days behind Easter Sunday.
    afterNth, ///< The day `month` days behind the `first` `second` of November.
    advent, ///< `first` is which Sunday of Advent, 1 to 4.
    hebrew, ///< Day `first` of month `inMonth` (from 0, with the Adar of leap years) of the Jewish calendar.
    islamic, ///< The same by Umm al-Qura, the calendar of Saudi Arabia.
    chinese, ///< The same of the Chinese calendar.
};

struct Row {
    std::string_view names; ///< Apart by "|".
    std::string_view otherNames; ///< That mean another day elsewhere, or something else: believed in questions.
    std::string_view said;
    Rule rule = Rule::fixed;
    unsigned inMonth = 0;
    int first = 0;
    unsigned second = 0;
};

constexpr unsigned sunday = 0;
constexpr unsigned monday = 1;
constexpr unsigned thursday = 4;
constexpr int last = 5;

constexpr Row rows[] = {
    {"new years day", "new year|new years|the new year", "New Year's Day", Rule::fixed, 1, 1},
    {"epiphany", "three kings day|three kings", "Epiphany", Rule::fixed, 1, 6},
    {"burns night", "", "Burns Night", Rule::fixed, 1, 25},
    {"", "australia day", "Australia Day", Rule::fixed, 1, 26},
    {"groundhog day", "", "Groundhog Day", Rule::fixed, 2, 2},
    {"valentines day|valentines|saint valentines day|st valentines day", "valentine day", "Valentine's Day",
        Rule::fixed, 2, 14},
    {"", "womens day|international womens day", "International Women's Day", Rule::fixed, 3, 8},
    {"st patricks day|saint patricks day", "st patrick day|paddys day|st paddys day", "Saint Patrick's Day",
        Rule::fixed, 3, 17},
    {"april fools day|april fool day", "april fools", "April Fools' Day", Rule::fixed, 4, 1},
    {"earth day", "", "Earth Day", Rule::fixed, 4, 22},
    {"st georges day|saint georges day", "", "Saint George's Day", Rule::fixed, 4, 23},
    {"anzac day", "", "Anzac Day", Rule::fixed, 4, 25},
    {"", "kings day|koningsdag", "King's Day", Rule::fixed, 4, 27},
    {"may day", "workers day|international workers day", "May Day", Rule::fixed, 5, 1},
    {"star wars day", "", "Star Wars Day", Rule::fixed, 5, 4},
    {"cinco de mayo", "", "Cinco de Mayo", Rule::fixed, 5, 5},
    {"juneteenth", "", "Juneteenth", Rule::fixed, 6, 19},
    {"", "midsummer day|midsummers day", "Midsummer Day", Rule::fixed, 6, 24},
    {"", "canada day", "Canada Day", Rule::fixed, 7, 1},
    {"", "independence day|fourth of july|4th of july|july 4th|july fourth", "Independence Day", Rule::fixed, 7, 4},
    {"", "bastille day", "Bastille Day", Rule::fixed, 7, 14},
    {"", "assumption|assumption day|assumption of mary", "Assumption Day", Rule::fixed, 8, 15},
    {"", "german unity day|day of german unity", "the Day of German Unity", Rule::fixed, 10, 3},
    {"halloween", "hallowe en", "Halloween", Rule::fixed, 10, 31},
    {"all saints day", "all saints", "All Saints' Day", Rule::fixed, 11, 1},
    {"all souls day", "all souls|day of the dead", "All Souls' Day", Rule::fixed, 11, 2},
    {"bonfire night|guy fawkes night", "guy fawkes day|guy fawkes", "Bonfire Night", Rule::fixed, 11, 5},
    {"", "veterans day", "Veterans Day", Rule::fixed, 11, 11},
    {"", "remembrance day|armistice day", "Remembrance Day", Rule::fixed, 11, 11},
    {"st martins day|saint martins day", "martinmas", "Saint Martin's Day", Rule::fixed, 11, 11},
    {"st andrews day|saint andrews day", "", "Saint Andrew's Day", Rule::fixed, 11, 30},
    {"st nicholas day|saint nicholas day", "st nicholas|saint nicholas", "Saint Nicholas Day", Rule::fixed, 12, 6},
    {"christmas eve|xmas eve", "", "Christmas Eve", Rule::fixed, 12, 24},
    {"christmas|christmas day|xmas|xmas day", "noel", "Christmas Day", Rule::fixed, 12, 25},
    {"boxing day|st stephens day|saint stephens day", "", "Boxing Day", Rule::fixed, 12, 26},
    {"new years eve|nye|hogmanay", "new year eve|old years night|silvester", "New Year's Eve", Rule::fixed, 12, 31},
    {"", "martin luther king day|mlk day|martin luther king jr day", "Martin Luther King Day", Rule::nth, 1, 3, monday},
    {"", "presidents day|washingtons birthday", "Presidents' Day", Rule::nth, 2, 3, monday},
    {"", "mothers day|mother day", "Mother's Day, as most countries keep it,", Rule::nth, 5, 2, sunday},
    {"", "memorial day", "Memorial Day", Rule::nth, 5, last, monday},
    {"", "fathers day|father day", "Father's Day", Rule::nth, 6, 3, sunday},
    {"", "early may bank holiday", "the early May bank holiday", Rule::nth, 5, 1, monday},
    {"", "spring bank holiday|late may bank holiday", "the spring bank holiday", Rule::nth, 5, last, monday},
    {"", "august bank holiday|summer bank holiday", "the summer bank holiday in England", Rule::nth, 8, last, monday},
    {"", "labor day|labour day", "Labor Day in the United States", Rule::nth, 9, 1, monday},
    {"", "columbus day|indigenous peoples day", "Columbus Day", Rule::nth, 10, 2, monday},
    {"", "canadian thanksgiving|thanksgiving in canada", "Thanksgiving in Canada", Rule::nth, 10, 2, monday},
    {"thanksgiving|thanksgiving day", "turkey day", "Thanksgiving in the United States", Rule::nth, 11, 4, thursday},
    {"black friday", "", "Black Friday", Rule::afterNth, 1, 4, thursday},
    {"cyber monday", "", "Cyber Monday", Rule::afterNth, 4, 4, thursday},
    {"", "election day|us election day", "Election Day in the United States", Rule::afterNth, 1, 1, monday},
    {"", "mothering sunday|british mothers day|mothers day in the uk|mothers day in britain", "Mothering Sunday",
        Rule::easter, 0, -21},
    {"rose monday", "carnival monday|rosenmontag", "Rose Monday", Rule::easter, 0, -48},
    {"shrove tuesday|pancake day|pancake tuesday", "mardi gras|fat tuesday", "Shrove Tuesday", Rule::easter, 0, -47},
    {"ash wednesday", "lent", "Ash Wednesday", Rule::easter, 0, -46},
    {"palm sunday", "", "Palm Sunday", Rule::easter, 0, -7},
    {"maundy thursday|holy thursday", "", "Maundy Thursday", Rule::easter, 0, -3},
    {"good friday", "", "Good Friday", Rule::easter, 0, -2},
    {"holy saturday|easter saturday", "", "Easter Saturday", Rule::easter, 0, -1},
    {"easter|easter sunday|easter day", "", "Easter Sunday", Rule::easter, 0, 0},
    {"easter monday", "", "Easter Monday", Rule::easter, 0, 1},
    {"ascension day", "ascension", "Ascension Day", Rule::easter, 0, 39},
    {"pentecost|whit sunday", "whitsun|whitsunday", "Whit Sunday", Rule::easter, 0, 49},
    {"whit monday", "pentecost monday", "Whit Monday", Rule::easter, 0, 50},
    {"corpus christi", "", "Corpus Christi", Rule::easter, 0, 60},
    {"", "advent|first advent|first sunday of advent|advent sunday", "the first Sunday of Advent", Rule::advent, 0, 1},
    {"", "second advent|second sunday of advent", "the second Sunday of Advent", Rule::advent, 0, 2},
    {"", "third advent|third sunday of advent", "the third Sunday of Advent", Rule::advent, 0, 3},
    {"", "fourth advent|fourth sunday of advent", "the fourth Sunday of Advent", Rule::advent, 0, 4},
    {"", "chinese new year|lunar new year|chinese new years|spring festival", "Chinese New Year", Rule::chinese, 0, 1},
    {"", "passover|pesach", "the first day of Passover, which begins the evening before,", Rule::hebrew, 7, 15},
    {"", "rosh hashanah|jewish new year|rosh hashana", "Rosh Hashanah, which begins the evening before,", Rule::hebrew,
        0, 1},
    {"", "yom kippur", "Yom Kippur, which begins the evening before,", Rule::hebrew, 0, 10},
    {"", "hanukkah|chanukah|hanukah|hannukah", "the first day of Hanukkah, which begins the evening before,",
        Rule::hebrew, 2, 25},
    {"", "ramadan|ramzan|ramadhan", "the first day of Ramadan, which the moon may still move by a day,", Rule::islamic,
        8, 1},
    {"", "eid|eid al fitr|eid ul fitr", "Eid al-Fitr, which the moon may still move by a day,", Rule::islamic, 9, 1},
    {"", "eid al adha|eid ul adha|bakrid|bakra eid", "Eid al-Adha, which the moon may still move by a day,",
        Rule::islamic, 11, 10},
};

using Names = FeastDays::Names;

template <typename Test> bool hasAny(std::string_view names, const Test& isIt)
{
    for (std::size_t start = 0; start < names.size();) {
        const std::size_t end = std::min(names.find('|', start), names.size());
        if (isIt(names.substr(start, end - start)))
            return true;
        start = end + 1;
    }
    return false;
}

const Row* rowOf(std::string name, Names among)
{
    for (const std::string_view apostrophe : {"'", "’"}) {
        for (std::size_t place = 0; (place = name.find(apostrophe, place)) != std::string::npos;)
            name.erase(place, apostrophe.size());
    }
    if (name.starts_with("the "))
        name.erase(0, 4);
    const auto isIt = [&name](std::string_view other) { return other == name; };
    const auto row = std::ranges::find_if(rows, [&](const Row& candidate) {
        return hasAny(candidate.names, isIt) || (among == Names::all && hasAny(candidate.otherNames, isIt));
    });
    return row == std::ranges::end(rows) ? nullptr : &*row;
}

/// Of the calendar that the moon of `rule` goes by; null for the others.
const char* moonLocaleOf(Rule rule)
{
    switch (rule) {
    case Rule::hebrew:
        return "@calendar=hebrew";
    case Rule::islamic:
        return "@calendar=islamic-umalqura";
    case Rule::chinese:
        return "@calendar=chinese";
    case Rule::fixed:
    case Rule::nth:
    case Rule::easter:
    case Rule::afterNth:
    case Rule::advent:
        break;
    }
    return nullptr;
}

constexpr int longestYear = 400; ///< Days; more than any calendar's year has.

/// The library's moon is some minutes off, which counts where a new moon comes about midnight in Beijing: of the years
/// to 2050 in these two, beside the published calendar.
sys_days asPublished(sys_days reckoned)
{
    using namespace std::chrono;
    constexpr std::pair<sys_days, sys_days> off[] = {
        {2027y / February / 7, 2027y / February / 6},
        {2030y / February / 2, 2030y / February / 3},
    };
    for (const auto& [wrong, right] : off)
        if (reckoned == wrong)
            return right;
    return reckoned;
}

/// The first of `count` days from `from` on that another calendar has as `row` says.
std::optional<sys_days> byMoon(const Row& row, sys_days from, int count)
{
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::Calendar> calendar(icu::Calendar::createInstance(
        *icu::TimeZone::getGMT(), icu::Locale::createCanonical(moonLocaleOf(row.rule)), status));
    for (sys_days day = from; U_SUCCESS(status) && day < from + days(count); day += days(1)) {
        calendar->setTime(std::chrono::duration<double, std::milli>(day.time_since_epoch()).count(), status);
        const bool isDay = calendar->get(UCAL_DATE, status) == row.first
            && calendar->get(UCAL_MONTH, status) == static_cast<int>(row.inMonth)
            && calendar->get(UCAL_IS_LEAP_MONTH, status) == 0;
        if (U_SUCCESS(status) && isDay)
            return row.rule == Rule::chinese ? asPublished(day) : day;
    }
    return std::nullopt;
}

sys_days nth(year of, unsigned inMonth, int which, unsigned onDay)
{
    if (which == last)
        return of / month(inMonth) / weekday(onDay)[std::chrono::last];
    return of / month(inMonth) / weekday(onDay)[static_cast<unsigned>(which)];
}

std::optional<sys_days> dayOf(const Row& row, year of)
{
    constexpr unsigned november = 11;
    switch (row.rule) {
    case Rule::fixed:
        return of / month(row.inMonth) / std::chrono::day(static_cast<unsigned>(row.first));
    case Rule::nth:
        return nth(of, row.inMonth, row.first, row.second);
    case Rule::easter:
        return FeastDays::easter(of) + days(row.first);
    case Rule::afterNth:
        return nth(of, november, row.first, row.second) + days(row.inMonth);
    case Rule::advent: {
        // The fourth Sunday is the last before Christmas.
        const sys_days eve = of / std::chrono::December / 24;
        const sys_days fourth = eve - (weekday(eve) - std::chrono::Sunday);
        return fourth - days(7 * (4 - row.first));
    }
    case Rule::hebrew:
    case Rule::islamic:
    case Rule::chinese:
        return byMoon(row, of / std::chrono::January / 1, longestYear);
    }
    return {};
}

} // namespace

std::optional<FeastDay> FeastDays::in(year of, std::string_view name, Names among)
{
    const Row* const row = of.ok() ? rowOf(std::string(name), among) : nullptr;
    const auto day = row ? dayOf(*row, of) : std::nullopt;
    return day ? std::optional(FeastDay{std::string(row->said), *day}) : std::nullopt;
}

std::optional<FeastDay> FeastDays::next(sys_days from, std::string_view name, Names among)
{
    const Row* const row = rowOf(std::string(name), among);
    const year now = std::chrono::year_month_day(from).year();
    if (!row || !now.ok())
        return std::nullopt;
    // Twelve moons are less than a year: a day may come twice in one.
    auto day = moonLocaleOf(row->rule) ? byMoon(*row, from, longestYear) : dayOf(*row, now);
    if (day && *day < from)
        day = dayOf(*row, now + std::chrono::years(1));
    return day ? std::optional(FeastDay{std::string(row->said), *day}) : std::nullopt;
}

std::vector<std::string> FeastDays::on(sys_days day)
{
    std::vector<std::string> names;
    for (const Row& row : rows) {
        const auto found =
            moonLocaleOf(row.rule) ? byMoon(row, day, 1) : dayOf(row, std::chrono::year_month_day(day).year());
        if (found == day)
            names.emplace_back(row.said);
    }
    return names;
}

bool FeastDays::mayBegin(std::string_view word)
{
    const auto begins = [word](std::string_view name) { return name.starts_with(word); };
    return !word.empty() && std::ranges::any_of(rows, [&](const Row& row) { return hasAny(row.names, begins); });
}

sys_days FeastDays::easter(year of)
{
    // The anonymous Gregorian computus: `golden` is the year's place in the moon's cycle of 19 years, `epact` the age
    // of the moon, corrected for the leap days that centuries leave out.
    const int number = static_cast<int>(of);
    const int golden = number % 19;
    const int century = number / 100;
    const int skipped = century - century / 4 - (8 * century + 13) / 25;
    const int epact = (skipped + 19 * golden + 15) % 30;
    const int fullMoon = epact - epact / 28 * (1 - 29 / (epact + 1) * ((21 - golden) / 11));
    const int sundayShift = (number + number / 4 + fullMoon + 2 - century + century / 4) % 7;
    const int behindMarch28 = fullMoon - sundayShift;
    return sys_days(of / std::chrono::March / 28) + days(behindMarch28);
}

} // namespace quorvell
