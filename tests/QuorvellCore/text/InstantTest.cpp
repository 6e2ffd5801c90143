// SPDX-License-Identifier: MIT
// Catches moments that do not come back from their text form.
#include "QuorvellCore/text/Instant.h"

#include <gtest/gtest.h>

namespace quorvell {

TEST(Instant, textForms)
{
    const std::pair<const char*, const char*> rows[] = {{"2026-11-22T17:00:00.000Z", "2026-11-22T17:00:00.000Z"},
        {"2026-11-22T17:00:00Z", "2026-11-22T17:00:00.000Z"}, {"2026-11-22T17:00:00.1Z", "2026-11-22T17:00:00.100Z"},
        {"2026-11-22T17:00:00.1239999Z", "2026-11-22T17:00:00.123Z"},
        {"2026-11-22T17:00:00+01:00", "2026-11-22T16:00:00.000Z"},
        {"2026-12-31T23:30:00.000-01:30", "2027-01-01T01:00:00.000Z"},
        {"2024-02-29T00:00:00Z", "2024-02-29T00:00:00.000Z"}, {"1969-12-31T23:59:59.999Z", "1969-12-31T23:59:59.999Z"},
        {"0000-01-01T00:00:00Z", "0000-01-01T00:00:00.000Z"}, {"9999-12-31T23:59:59.999Z", "9999-12-31T23:59:59.999Z"}};
    for (const auto& [text, written] : rows)
        EXPECT_EQ(isoText(parseIsoText(text).value_or(Instant())), written) << text;
    for (const char* text : {"9999-12-31T23:59:59.999-00:01", "0000-01-01T00:00:00+00:01", "2025-02-29T00:00:00Z",
             "2026-13-01T00:00:00Z", "2026-11-22T24:00:00Z", "2026-11-22T17:60:00Z", "2026-11-22T17:00:60Z",
             "2026-11-22T17:00:00", "2026-11-22T17:00:00.Z", "2026-11-22T17:00:00.1234567890Z", "2026-11-22T17:00:00Z ",
             "2026-11-22 17:00:00Z", "2026-11-22T17:00:00+0100", "+026-11-22T17:00:00Z", ""})
        EXPECT_EQ(parseIsoText(text), std::nullopt) << text;
}

TEST(Instant, yearsBeyondTheFormStayAtItsEnds)
{
    EXPECT_EQ(isoText(Instant::max()), "9999-12-31T23:59:59.999Z");
    EXPECT_EQ(isoText(Instant::min()), "0000-01-01T00:00:00.000Z");
}

} // namespace quorvell
