// SPDX-License-Identifier: MIT
// Catches zones of the computer misread, and names that lead out of their folder.
#include "Quorvell/files/SystemZone.h"

#include <gtest/gtest.h>

namespace quorvell {

TEST(SystemZone, readsZonesAndNothingElse)
{
    for (const char* zone : {"Europe/Berlin", "America/Argentina/Buenos_Aires", "Etc/GMT+5", "UTC"})
        EXPECT_TRUE(systemZoneFile(zone).starts_with("TZif")) << zone;
    for (const char* name :
        {"", "/etc/localtime", "../../../etc/passwd", "Europe", "Europe/Nowhere", "Europe/Berlin\n"})
        EXPECT_EQ(systemZoneFile(name), "") << name;
}

} // namespace quorvell
