// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/calendar/LocaleWords.h"

#include <unicode/dtfmtsym.h>
#include <unicode/gregocal.h>
#include <unicode/smpdtfmt.h>

#include <memory>

namespace quorvell {

namespace {

icu::UnicodeString unicodeText(std::string_view text)
{
    return icu::UnicodeString::fromUTF8(icu::StringPiece(text.data(), static_cast<std::int32_t>(text.size())));
}

std::string utf8Text(const icu::UnicodeString& text)
{
    std::string utf8;
    return text.toUTF8String(utf8);
}

/// Names come from the environment. What is no locale at all would make ICU fall over, and what names no language
/// would give bare abbreviations: both read as American English.
icu::Locale localeOf(const std::string& name)
{
    const icu::Locale place(name.c_str());
    const std::string_view language = place.isBogus() ? "" : place.getLanguage();
    return language.empty() || language == "c" || language == "posix" ? icu::Locale::getUS() : place;
}

/// A pattern's letters that stand for something: what is quoted ("HH 'h' mm") is text.
icu::UnicodeString withoutQuotedText(const icu::UnicodeString& pattern)
{
    icu::UnicodeString fields;
    bool isQuoted = false;
    for (std::int32_t index = 0; index < pattern.length(); ++index) {
        if (pattern[index] == u'\'')
            isQuoted = !isQuoted;
        else if (!isQuoted)
            fields += pattern[index];
    }
    return fields;
}

/// A day in one language among words in another would have to be pieced together by whoever hears it.
icu::Locale englishOf(const std::string& name)
{
    const icu::Locale place = localeOf(name);
    return std::string_view(place.getLanguage()) == "en" ? place : icu::Locale::getUS();
}

icu::DateFormatSymbols symbolsOf(const std::string& locale, UErrorCode& status)
{
    return icu::DateFormatSymbols(englishOf(locale), "gregorian", status);
}

} // namespace

ClockStyle clockStyle(const std::string& locale)
{
    ClockStyle style{true, "AM", "PM"};
    const std::unique_ptr<icu::DateFormat> format(
        icu::DateFormat::createTimeInstance(icu::DateFormat::kShort, localeOf(locale)));
    const auto* simple = dynamic_cast<const icu::SimpleDateFormat*>(format.get());
    if (!simple)
        return style;
    icu::UnicodeString written;
    const icu::UnicodeString pattern = withoutQuotedText(simple->toPattern(written));
    if (pattern.indexOf(u'h') < 0 && pattern.indexOf(u'K') < 0)
        return {false, {}, {}};

    UErrorCode status = U_ZERO_ERROR;
    std::int32_t count = 0;
    const auto symbols = symbolsOf(locale, status);
    if (const icu::UnicodeString* marks = symbols.getAmPmStrings(count); U_SUCCESS(status) && count >= 2) {
        style.beforeNoon = utf8Text(marks[0]);
        style.afterNoon = utf8Text(marks[1]);
    }
    return style;
}

std::array<std::string, 7> weekdayNames(const std::string& locale)
{
    std::array<std::string, 7> names{"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"};
    UErrorCode status = U_ZERO_ERROR;
    const auto symbols = symbolsOf(locale, status);
    std::int32_t count = 0;
    const icu::UnicodeString* found =
        symbols.getWeekdays(count, icu::DateFormatSymbols::STANDALONE, icu::DateFormatSymbols::WIDE);
    // ICU leaves entry 0 empty, so that Sunday is 1.
    for (std::size_t index = 0; U_SUCCESS(status) && count == 8 && index < names.size(); ++index)
        names[index] = utf8Text(found[index + 1]);
    return names;
}

std::string formatted(Instant instant, std::string_view pattern, const Calendar& calendar, const std::string& locale)
{
    UErrorCode status = U_ZERO_ERROR;
    const icu::Locale place = englishOf(locale);
    icu::SimpleDateFormat format(unicodeText(pattern), place, status);
    // The calendar alone knows the zone: what its clock shows is written as if it were UTC.
    auto gregorian = std::make_unique<icu::GregorianCalendar>(*icu::TimeZone::getGMT(), place, status);
    if (U_FAILURE(status))
        return {};
    format.adoptCalendar(gregorian.release());
    icu::UnicodeString text;
    format.format(static_cast<double>(calendar.localTime(instant).time_since_epoch().count()), text);
    return utf8Text(text);
}

} // namespace quorvell
