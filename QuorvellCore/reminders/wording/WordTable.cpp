// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/wording/WordTable.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>

namespace quorvell {

namespace {

struct Row {
    std::string_view word;
    std::uint32_t terms;
    int value = 0;
};

constexpr auto weekday = WordTerms::weekday;
constexpr auto month = WordTerms::month;
constexpr auto number = WordTerms::number;
constexpr auto ordinal = WordTerms::ordinal;
constexpr auto wordToo = WordTerms::wordToo;
constexpr auto pluralWeekday = WordTerms::pluralWeekday;
constexpr auto relativeDay = WordTerms::relativeDay;
constexpr auto almostDay = WordTerms::almostDay;
constexpr auto part = WordTerms::part;
constexpr auto unit = WordTerms::unit;
constexpr auto noon = WordTerms::noon;
constexpr auto marker = WordTerms::marker;
constexpr auto besideTime = WordTerms::besideTime;
constexpr auto link = WordTerms::link;
constexpr auto governsDay = WordTerms::governsDay;
constexpr auto determiner = WordTerms::determiner;
constexpr auto notTime = WordTerms::notTime;
constexpr auto saidDate = WordTerms::saidDate;
constexpr auto spokenDate = WordTerms::spokenDate;
constexpr auto passedOver = WordTerms::passedOver;
constexpr auto shortName = WordTerms::shortName;

/// In the order of their bytes. Which readers look at a word is said only where its other terms do not tell.
constexpr Row rows[] = {
    {"&", passedOver},
    {"-", passedOver},
    {"/", passedOver},
    {"2moro", shortName | spokenDate},
    {"2morrow", shortName | spokenDate},
    {"2nite", shortName | spokenDate},
    {"@", besideTime | passedOver},
    {"a", number | link | determiner, 1},
    {"a.m", marker},
    {"a.m.", marker | besideTime},
    {"about", link | spokenDate},
    {"after", link | spokenDate | passedOver},
    {"afternoon", part},
    {"am", marker | besideTime},
    {"an", number | link | determiner, 1},
    {"and", link | passedOver},
    {"annually", passedOver},
    {"approximately", spokenDate},
    {"apr", month, 4},
    {"april", month, 4},
    {"around", link | spokenDate | passedOver},
    {"arvo", part | shortName | spokenDate},
    {"as", link},
    {"at", besideTime | link | spokenDate | passedOver},
    {"aug", month, 8},
    {"august", month, 8},
    {"because", link},
    {"before", link | governsDay | passedOver},
    {"beginning", passedOver},
    {"between", passedOver},
    {"bimonthly", passedOver},
    {"biweekly", passedOver},
    {"but", link},
    {"by", link | governsDay | passedOver},
    {"coming", link | governsDay | passedOver},
    {"daily", link | notTime},
    {"day", unit | saidDate},
    {"days", unit},
    {"dec", month, 12},
    {"december", month, 12},
    {"during", passedOver},
    {"each", besideTime | link | governsDay | passedOver},
    {"early", passedOver},
    {"eight", number, 8},
    {"eighteen", number, 18},
    {"eighteenth", ordinal, 18},
    {"eighth", ordinal, 8},
    {"eighty", number, 80},
    {"eleven", number, 11},
    {"eleventh", ordinal, 11},
    {"end", passedOver},
    {"ending", passedOver},
    {"eod", passedOver},
    {"evening", part},
    {"every", besideTime | link | governsDay | passedOver},
    {"everyday", spokenDate | passedOver},
    {"everynight", passedOver},
    {"exactly", spokenDate},
    {"except", passedOver},
    {"excluding", passedOver},
    {"feb", month, 2},
    {"february", month, 2},
    {"fifteen", number, 15},
    {"fifteenth", ordinal, 15},
    {"fifth", ordinal, 5},
    {"fifty", number, 50},
    {"first", ordinal, 1},
    {"five", number, 5},
    {"following", passedOver},
    {"for", link | passedOver},
    {"fortnight", unit},
    {"fortnightly", passedOver},
    {"fortnights", unit},
    {"forty", number, 40},
    {"four", number, 4},
    {"fourteen", number, 14},
    {"fourteenth", ordinal, 14},
    {"fourth", ordinal, 4},
    {"fri", weekday, 6},
    {"friday", weekday, 6},
    {"fridays", pluralWeekday},
    {"from", link | governsDay | passedOver},
    {"half", spokenDate | passedOver},
    {"her", link | determiner},
    {"his", link | determiner},
    {"hour", unit},
    {"hourly", passedOver},
    {"hours", unit},
    {"hr", unit},
    {"hrs", unit},
    {"i", link},
    {"if", link},
    {"in", link | spokenDate | passedOver},
    {"is", link},
    {"jan", month, 1},
    {"january", month, 1},
    {"jul", month, 7},
    {"july", month, 7},
    {"jun", month, 6},
    {"june", month, 6},
    {"last", passedOver},
    {"late", passedOver},
    {"later", passedOver},
    {"mar", month, 3},
    {"march", month, 3},
    {"may", month, 5},
    {"me", link},
    {"mid", passedOver},
    {"midday", noon},
    {"middle", passedOver},
    {"midnight", noon},
    {"min", unit},
    {"mins", unit},
    {"minute", unit},
    {"minutes", unit},
    {"mon", weekday | wordToo, 2},
    {"monday", weekday, 2},
    {"mondays", pluralWeekday},
    {"month", unit},
    {"monthly", link | notTime},
    {"months", unit},
    {"morning", part},
    {"my", link | determiner},
    {"next", besideTime | link | governsDay | passedOver},
    {"night", part},
    {"nine", number, 9},
    {"nineteen", number, 19},
    {"nineteenth", ordinal, 19},
    {"ninety", number, 90},
    {"ninth", ordinal, 9},
    {"noon", noon},
    {"noonish", besideTime | passedOver},
    {"not", link | passedOver},
    {"nov", month, 11},
    {"november", month, 11},
    {"o'clock", passedOver},
    {"oclock", passedOver},
    {"oct", month, 10},
    {"october", month, 10},
    {"of", link},
    {"on", link | governsDay | spokenDate | passedOver},
    {"once", passedOver},
    {"one", number, 1},
    {"or", link | passedOver},
    {"our", link | determiner},
    {"over", passedOver},
    {"p.m", marker},
    {"p.m.", marker | besideTime},
    {"past", passedOver},
    {"please", link},
    {"pm", marker | besideTime},
    {"quarter", spokenDate},
    {"quarterly", passedOver},
    {"recur", passedOver},
    {"repeat", passedOver},
    {"roughly", spokenDate},
    {"same", passedOver},
    {"sat", weekday | wordToo, 7},
    {"saturday", weekday, 7},
    {"saturdays", pluralWeekday},
    {"second", ordinal, 2},
    {"seconds", passedOver},
    {"secs", passedOver},
    {"sep", month, 9},
    {"sept", month, 9},
    {"september", month, 9},
    {"seven", number, 7},
    {"seventeen", number, 17},
    {"seventeenth", ordinal, 17},
    {"seventh", ordinal, 7},
    {"seventy", number, 70},
    {"sharp", link},
    {"since", link | passedOver},
    {"six", number, 6},
    {"sixteen", number, 16},
    {"sixteenth", ordinal, 16},
    {"sixth", ordinal, 6},
    {"sixty", number, 60},
    {"so", link},
    {"start", passedOver},
    {"starting", passedOver},
    {"sun", weekday | wordToo, 1},
    {"sunday", weekday, 1},
    {"sundays", pluralWeekday},
    {"ten", number, 10},
    {"tenth", ordinal, 10},
    {"that", link},
    {"the", link | determiner | spokenDate},
    {"their", link | determiner},
    {"then", link},
    {"third", ordinal, 3},
    {"thirteen", number, 13},
    {"thirteenth", ordinal, 13},
    {"thirtieth", ordinal, 30},
    {"thirty", number, 30},
    {"this", link | governsDay | passedOver},
    {"three", number | spokenDate, 3},
    {"through", passedOver},
    {"thru", passedOver},
    {"thu", weekday, 5},
    {"thur", weekday, 5},
    {"thurs", weekday, 5},
    {"thursday", weekday, 5},
    {"thursdays", pluralWeekday},
    {"til", passedOver},
    {"till", link | governsDay | passedOver},
    {"times", passedOver},
    {"tmr", shortName | spokenDate},
    {"tmro", shortName | spokenDate},
    {"tmrw", relativeDay},
    {"to", link | passedOver},
    {"today", relativeDay},
    {"todays", almostDay | notTime},
    {"tomorrow", relativeDay},
    {"tomorrows", almostDay | notTime | passedOver},
    {"tonight", relativeDay},
    {"tonights", almostDay | notTime | passedOver},
    {"tonite", shortName | spokenDate},
    {"tue", weekday, 3},
    {"tues", weekday, 3},
    {"tuesday", weekday, 3},
    {"tuesdays", pluralWeekday},
    {"twelfth", ordinal, 12},
    {"twelve", number | spokenDate, 12},
    {"twentieth", ordinal, 20},
    {"twenty", number, 20},
    {"twice", passedOver},
    {"two", number, 2},
    {"until", link | governsDay | passedOver},
    {"via", link},
    {"wed", weekday | wordToo, 4},
    {"wednesday", weekday, 4},
    {"wednesdays", pluralWeekday},
    {"weds", shortName | spokenDate},
    {"week", unit | link},
    {"weekdays", link},
    {"weekend", unit | passedOver},
    {"weekends", unit | passedOver},
    {"weekly", link | notTime},
    {"weeks", unit},
    {"when", link},
    {"while", link},
    {"with", link},
    {"within", passedOver},
    {"year", unit},
    {"yearly", link | notTime},
    {"years", unit},
    {"yesterday", passedOver},
    {"your", link | determiner},
    {"–", passedOver},
};

constexpr std::size_t byteOf(std::string_view word)
{
    return static_cast<unsigned char>(word.front());
}

/// Where the rows of each first byte begin.
constexpr auto firstByByte = [] {
    std::array<std::uint16_t, 257> first{};
    std::size_t row = 0;
    for (std::size_t byte = 0; byte < first.size(); ++byte) {
        while (row < std::size(rows) && byteOf(rows[row].word) < byte)
            ++row;
        first[byte] = static_cast<std::uint16_t>(row);
    }
    return first;
}();

constexpr bool isSorted()
{
    for (std::size_t row = 1; row < std::size(rows); ++row)
        if (!(rows[row - 1].word < rows[row].word))
            return false;
    return true;
}
static_assert(isSorted());

} // namespace

std::optional<WordTerms> WordTable::find(std::string_view word)
{
    for (std::size_t row = firstByByte[byteOf(word)]; row < firstByByte[byteOf(word) + 1]; ++row)
        if (rows[row].word == word)
            return WordTerms(rows[row].terms, rows[row].value);
    return std::nullopt;
}

} // namespace quorvell
