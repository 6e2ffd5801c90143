// SPDX-License-Identifier: MIT
// Catches places in the wrong zone, and words that are taken for a place.
#include "QuorvellCore/reckoning/places/PlaceZones.h"

#include <gtest/gtest.h>

namespace quorvell {

TEST(PlaceZones, findsCitiesStatesCountriesAndZones)
{
    const struct Row {
        const char* words;
        const char* zones; ///< "place=zone", apart by blanks.
    } rows[] = {
        {"Tokyo", "Tokyo=Asia/Tokyo "},
        {"são paulo", "Sao Paulo=America/Sao_Paulo "},
        {"NYC", "NYC=America/New_York "},
        {"the UK", "UK=Europe/London "},
        {"Dallas, Texas", "Dallas=America/Chicago "},
        {"paris france", "Paris=Europe/Paris "},
        {"paris texas", "Paris Texas=America/Chicago "},
        {"london ontario", "London Ontario=America/Toronto "},
        {"Lagos, Nigeria", "Lagos=Africa/Lagos "},
        {"abilene texas", "Abilene Texas=America/Chicago "},
        {"nepal", "Nepal=Asia/Katmandu "},
        {"eastern", "Eastern time=America/New_York "},
        {"indonesia", "Jakarta=Asia/Jakarta Makassar=Asia/Makassar Jayapura=Asia/Jayapura "},
        {"atlantis", ""},
        {"the dentist", ""},
        {"difference between berlin and sydney", ""},
        {"lunch with bob in berlin germany", ""},
        {"", ""},
    };
    for (const Row& row : rows) {
        std::string zones;
        for (const PlaceZone& zone : PlaceZones::find(row.words))
            zones += zone.place + "=" + zone.zone + " ";
        EXPECT_EQ(zones, row.zones) << row.words;
    }
    EXPECT_TRUE(PlaceZones::find(std::string(100'000, 'a')).empty());
}

} // namespace quorvell
