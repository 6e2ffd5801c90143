// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/calendar/WindowsZone.h"

#include <unicode/timezone.h>

namespace quorvell {

std::optional<std::string> zoneOfWindowsName(std::string_view name)
{
    constexpr std::size_t longestName = 64;
    if (name.size() > longestName)
        return std::nullopt;
    const icu::StringPiece piece(name.data(), static_cast<std::int32_t>(name.size()));
    icu::UnicodeString zone;
    UErrorCode status = U_ZERO_ERROR;
    icu::TimeZone::getIDForWindowsID(icu::UnicodeString::fromUTF8(piece), nullptr, zone, status);
    if (U_FAILURE(status) || zone.isEmpty())
        return std::nullopt;
    std::string text;
    return zone.toUTF8String(text);
}

} // namespace quorvell
