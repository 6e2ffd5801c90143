// SPDX-License-Identifier: MIT
#include "QuorvellCore/reckoning/places/PlaceZones.h"

#include "QuorvellCore/reckoning/places/KnownPlaces.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/TextMatch.h"

#include <unicode/locid.h>
#include <unicode/normalizer2.h>
#include <unicode/timezone.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <array>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <span>

namespace quorvell {

namespace {

using Zones = std::vector<PlaceZone>;
using Index = std::map<std::string, Zones, std::less<>>; ///< By folded names.

std::string utf8(const icu::UnicodeString& text)
{
    std::string bytes;
    return text.toUTF8String(bytes);
}

/// Lower case, without accents and signs: "são paulo" is "sao paulo".
std::string folded(std::string_view name)
{
    UErrorCode status = U_ZERO_ERROR;
    const icu::Normalizer2* const parts = icu::Normalizer2::getNFDInstance(status);
    if (U_FAILURE(status))
        return TextMatch::normalized(name);
    const icu::UnicodeString whole = icu::UnicodeString::fromUTF8(repairUtf8(name));
    const icu::UnicodeString apart = parts->normalize(whole, status);
    icu::UnicodeString plain;
    for (std::int32_t place = 0; U_SUCCESS(status) && place < apart.length(); place = apart.moveIndex32(place, 1)) {
        if (const UChar32 letter = apart.char32At(place); u_charType(letter) != U_NON_SPACING_MARK)
            plain.append(letter);
    }
    std::string words = TextMatch::normalized(utf8(plain));
    std::erase(words, '\'');
    return words;
}

std::vector<std::string_view> partsOf(std::string_view text, char separator)
{
    std::vector<std::string_view> parts;
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t end = std::min(text.find(separator, start), text.size());
        parts.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return parts;
}

std::string inTitleCase(std::string_view name)
{
    std::string title(name);
    for (std::size_t place = 0; place < title.size(); ++place) {
        if ((place == 0 || title[place - 1] == ' ') && title[place] >= 'a' && title[place] <= 'z')
            title[place] = static_cast<char>(title[place] - 'a' + 'A');
    }
    return title;
}

std::string lastPart(std::string_view zone)
{
    std::string part(zone.substr(zone.rfind('/') + 1));
    std::ranges::replace(part, '_', ' ');
    return part;
}

/// Each with the city that it is named after; of all regions where none is given.
Zones zonesOf(const char* region)
{
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::StringEnumeration> ids(
        icu::TimeZone::createTimeZoneIDEnumeration(UCAL_ZONE_TYPE_CANONICAL_LOCATION, region, nullptr, status));
    Zones zones;
    while (U_SUCCESS(status) && ids) {
        const icu::UnicodeString* const id = ids->snext(status);
        if (!id)
            break;
        const std::string zone = utf8(*id);
        zones.push_back({lastPart(zone), zone});
    }
    return zones;
}

/// Those that do not keep the same time the whole year.
Zones apartByRules(const Zones& zones)
{
    Zones apart;
    std::vector<std::unique_ptr<icu::TimeZone>> kept;
    for (const PlaceZone& zone : zones) {
        std::unique_ptr<icu::TimeZone> rules(icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(zone.zone)));
        const bool isKnown = std::ranges::any_of(kept, [&](const auto& other) {
            return other->getRawOffset() == rules->getRawOffset()
                && other->useDaylightTime() == rules->useDaylightTime();
        });
        if (isKnown)
            continue;
        kept.push_back(std::move(rules));
        apart.push_back(zone);
    }
    return apart;
}

using Depth = PlaceZones::Depth;

/// Our own names are looked at first, then the names that the zones have, and only then what ICU has to work out for
/// all of them at once, which takes it some milliseconds.
class PlaceIndex {
public:
    PlaceIndex()
    {
        addOwn(KnownPlaces::zones(), Naming::ofZone);
        addOwn(KnownPlaces::cities(), Naming::asSaid);
        addOwn(KnownPlaces::regions(), Naming::asSaid);
        m_regions = namesIn(KnownPlaces::regions());
        for (const PlaceZone& zone : zonesOf(nullptr))
            m_index.try_emplace(folded(zone.place), Zones{zone});
    }

    /// Empty for a name that is not known.
    Zones find(std::string_view name, Depth depth) const
    {
        if (const auto found = m_index.find(name); found != m_index.end())
            return found->second;
        if (depth == Depth::ownNames)
            return {};
        static const std::map<std::string, std::string, std::less<>> countries = namedCountries();
        const auto country = countries.find(name);
        return country == countries.end() ? Zones() : zonesOfCountry(country->second);
    }

    bool isRegion(std::string_view name) const { return m_regions.contains(name); }

private:
    enum class Naming { asSaid, ofZone };

    static std::set<std::string, std::less<>> namesIn(std::span<const KnownPlaces::Row> rows)
    {
        std::set<std::string, std::less<>> names;
        for (const KnownPlaces::Row& row : rows) {
            for (const std::string_view name : partsOf(row.names, '|'))
                names.emplace(name);
        }
        return names;
    }

    void addOwn(std::span<const KnownPlaces::Row> rows, Naming naming)
    {
        for (const KnownPlaces::Row& row : rows) {
            const auto zones = partsOf(row.zones, '|');
            for (const std::string_view name : partsOf(row.names, '|')) {
                Zones places;
                for (const std::string_view zone : zones)
                    places.push_back(place(zone, zones.size() == 1 && naming == Naming::asSaid ? name : ""));
                m_index.try_emplace(std::string(name), std::move(places));
            }
        }
    }

    /// `said` is the name that stands for it; empty for the zone's own.
    static PlaceZone place(std::string_view zone, std::string_view said)
    {
        if (const std::size_t equals = zone.find('='); equals != std::string_view::npos)
            return {std::string(zone.substr(equals + 1)), std::string(zone.substr(0, equals))};
        if (said.starts_with("the "))
            said.remove_prefix(4);
        if (said.empty())
            return {lastPart(zone), std::string(zone)};
        constexpr std::size_t longestShortName = 3; // "uk", "nyc"
        std::string name = inTitleCase(said);
        if (said.size() <= longestShortName)
            name = utf8(icu::UnicodeString::fromUTF8(name).toUpper(icu::Locale::getRoot()));
        return {std::move(name), std::string(zone)};
    }

    /// Codes of countries by their folded names.
    static std::map<std::string, std::string, std::less<>> namedCountries()
    {
        std::map<std::string, std::string, std::less<>> codes;
        for (const char* const* code = icu::Locale::getISOCountries(); *code; ++code)
            codes.emplace(folded(nameOf(*code)), *code);
        return codes;
    }

    static std::string nameOf(const std::string& country)
    {
        icu::UnicodeString name;
        icu::Locale("", country.c_str()).getDisplayCountry(icu::Locale::getEnglish(), name);
        return utf8(name);
    }

    static Zones zonesOfCountry(const std::string& country)
    {
        Zones zones = apartByRules(zonesOf(country.c_str()));
        if (zones.size() == 1)
            zones.front().place = nameOf(country);
        return zones;
    }

    Index m_index;
    std::set<std::string, std::less<>> m_regions;
};

const PlaceIndex& index()
{
    static const PlaceIndex places;
    return places;
}

/// Whether it may be a town that nobody here knows, and no other words.
bool mayBeTown(std::string_view name)
{
    constexpr std::ptrdiff_t mostBlanks = 1;
    constexpr auto others =
        std::to_array<std::string_view>({"and", "between", "with", "in", "of", "to", "the", "difference", "time", "for",
            "from", "am", "pm", "evening", "morning", "afternoon", "night", "my", "clock", "hours", "is", "at"});
    const auto words = partsOf(name, ' ');
    return std::ranges::count(name, ' ') <= mostBlanks && name.find_first_of("0123456789") == std::string_view::npos
        && std::ranges::none_of(
            words, [&](std::string_view word) { return std::ranges::find(others, word) != others.end(); });
}

/// The zone that a city and what it lies in have in common: "dallas" and "texas".
Zones agreeing(const Zones& city, const Zones& around, std::string_view words)
{
    for (const PlaceZone& zone : city) {
        if (std::ranges::find(around, zone.zone, &PlaceZone::zone) != around.end())
            return {zone};
    }
    // Another one of that name: "Paris, Texas".
    return around.size() == 1 ? Zones{{inTitleCase(words), around.front().zone}} : Zones();
}

Zones found(std::string name, Depth depth)
{
    const auto known = [depth](std::string_view said) { return index().find(said, depth); };
    if (name.starts_with("the ") && known(name).empty())
        name.erase(0, 4);
    if (Zones zones = known(name); !zones.empty())
        return zones;
    for (std::size_t space = name.rfind(' '); space != std::string::npos && space > 0;
         space = name.rfind(' ', space - 1)) {
        const std::string first = name.substr(0, space);
        const std::string last = name.substr(space + 1);
        const Zones city = known(first);
        const Zones around = known(last);
        if (!city.empty() && !around.empty())
            return agreeing(city, around, name);
        if (around.size() == 1 && index().isRegion(last) && mayBeTown(first))
            return {{inTitleCase(name), around.front().zone}};
    }
    return {};
}

} // namespace

std::vector<PlaceZone> PlaceZones::find(std::string_view words, Depth depth)
{
    constexpr std::size_t longest = 200; // bytes
    const std::string name = folded(words.substr(0, longest));
    if (static_cast<std::size_t>(std::ranges::count(name, ' ')) >= mostWords)
        return {};
    Zones zones = found(name, Depth::ownNames);
    return zones.empty() && depth == Depth::all ? found(name, Depth::all) : zones;
}

} // namespace quorvell
