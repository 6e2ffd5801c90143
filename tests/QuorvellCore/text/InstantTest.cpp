// SPDX-License-Identifier: MIT
// Catches moments that do not come back from their text form.
#include "QuorvellCore/text/Instant.h"

#include <gtest/gtest.h>

namespace quorvell {
namespace {

TEST(Instant, textForms)
{
    struct Row {
        const char* text;
        const char* read; ///< As isoText writes it again; null when not readable.
    };
    const Row rows[] = {
        {"2026-11-22T17:00:00.000Z", "2026-11-22T17:00:00.000Z"},
        {"2026-11-22T17:00:00Z", "2026-11-22T17:00:00.000Z"},
        {"2026-11-22T17:00:00.1Z", "2026-11-22T17:00:00.100Z"},
        {"2026-11-22T17:00:00.1239999Z", "2026-11-22T17:00:00.123Z"},
        {"2026-11-22T17:00:00+01:00", "2026-11-22T16:00:00.000Z"},
        {"2026-12-31T23:30:00.000-01:30", "2027-01-01T01:00:00.000Z"},
        {"2024-02-29T00:00:00Z", "2024-02-29T00:00:00.000Z"},
        {"1969-12-31T23:59:59.999Z", "1969-12-31T23:59:59.999Z"},
        {"0000-01-01T00:00:00Z", "0000-01-01T00:00:00.000Z"},
        {"9999-12-31T23:59:59.999Z", "9999-12-31T23:59:59.999Z"},
        {"9999-12-31T23:59:59.999-00:01", nullptr},
        {"0000-01-01T00:00:00+00:01", nullptr},
        {"2025-02-29T00:00:00Z", nullptr},
        {"2026-13-01T00:00:00Z", nullptr},
        {"2026-11-22T24:00:00Z", nullptr},
        {"2026-11-22T17:60:00Z", nullptr},
        {"2026-11-22T17:00:60Z", nullptr},
        {"2026-11-22T17:00:00", nullptr},
        {"2026-11-22T17:00:00.Z", nullptr},
        {"2026-11-22T17:00:00.1234567890Z", nullptr},
        {"2026-11-22T17:00:00Z ", nullptr},
        {"2026-11-22 17:00:00Z", nullptr},
        {"2026-11-22T17:00:00+0100", nullptr},
        {"+026-11-22T17:00:00Z", nullptr},
        {"", nullptr},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        const auto instant = parseIsoText(row.text);
        EXPECT_EQ(instant ? isoText(*instant) : "", row.read ? row.read : "");
    }
}

TEST(Instant, yearsBeyondTheFormStayAtItsEnds)
{
    EXPECT_EQ(isoText(Instant::max()), "9999-12-31T23:59:59.999Z");
    EXPECT_EQ(isoText(Instant::min()), "0000-01-01T00:00:00.000Z");
}

} // namespace
} // namespace quorvell
