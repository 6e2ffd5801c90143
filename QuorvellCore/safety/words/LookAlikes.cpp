// SPDX-License-Identifier: MIT
#include "QuorvellCore/safety/words/LookAlikes.h"

#include <unicode/locid.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/uspoof.h>

#include <algorithm>
#include <cstdint>

namespace quorvell {

namespace {

icu::UnicodeString normalizedBy(const icu::Normalizer2* form, const icu::UnicodeString& text)
{
    UErrorCode status = U_ZERO_ERROR;
    icu::UnicodeString normal = form->normalize(text, status);
    return U_SUCCESS(status) ? normal : text;
}

const icu::Normalizer2* compatibilityForm()
{
    UErrorCode status = U_ZERO_ERROR;
    return icu::Normalizer2::getNFKCInstance(status);
}

const icu::Normalizer2* composedForm()
{
    UErrorCode status = U_ZERO_ERROR;
    return icu::Normalizer2::getNFCInstance(status);
}

/// Composed before, so that a mark that is left belongs to no letter of any language written in Latin: an ornament, or
/// a stroke through a word.
bool isUnseenOrOrnament(UChar32 point)
{
    const auto type = u_charType(point);
    return u_hasBinaryProperty(point, UCHAR_DEFAULT_IGNORABLE_CODE_POINT) || type == U_NON_SPACING_MARK
        || type == U_ENCLOSING_MARK;
}

icu::UnicodeString plainUnits(std::string_view text)
{
    const auto source = icu::UnicodeString::fromUTF8({text.data(), static_cast<std::int32_t>(text.size())});
    icu::UnicodeString composed = source;
    if (const icu::Normalizer2* form = compatibilityForm())
        composed = normalizedBy(form, source);
    icu::UnicodeString kept;
    for (std::int32_t index = 0; index < composed.length();) {
        const UChar32 point = composed.char32At(index);
        if (!isUnseenOrOrnament(point))
            kept.append(point);
        index += U16_LENGTH(point);
    }
    return kept;
}

icu::UnicodeString skeleton(const icu::UnicodeString& text)
{
    UErrorCode status = U_ZERO_ERROR;
    // Lives as long as the program; searching with it changes nothing in it.
    static const USpoofChecker* const checker = uspoof_open(&status);
    icu::UnicodeString alike;
    if (checker)
        uspoof_getSkeletonUnicodeString(checker, 0, text, alike, &status);
    return checker && U_SUCCESS(status) ? alike : text;
}

std::string utf8(const icu::UnicodeString& text)
{
    std::string bytes;
    return text.toUTF8String(bytes);
}

} // namespace

std::string plainForm(std::string_view text)
{
    return utf8(plainUnits(text).toLower(icu::Locale::getRoot()));
}

std::string asItLooks(std::string_view text)
{
    // Alphabets differ in which of their letters look alike in capitals, so those are compared before they are lost;
    // "I" has become "l" by then, while "i" stays itself.
    icu::UnicodeString alike = skeleton(skeleton(plainUnits(text)).toLower(icu::Locale::getRoot()));
    if (const icu::Normalizer2* form = composedForm())
        alike = normalizedBy(form, alike);
    std::string bytes = utf8(alike);
    std::replace(bytes.begin(), bytes.end(), 'i', 'l');
    return bytes;
}

} // namespace quorvell
