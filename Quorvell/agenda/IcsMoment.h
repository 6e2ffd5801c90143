// SPDX-License-Identifier: MIT
// Moments as calendar files write them, and the zones they are in. Only for the sources of this room.
#pragma once

#include "QuorvellCore/reminders/calendar/Calendar.h"

#include <libical/ical.h>

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

using IcsLocalTime = std::chrono::local_time<std::chrono::seconds>;

struct IcsMoment {
    enum class Kind { date, utc, zoned, floating };

    Kind kind = Kind::floating;
    IcsLocalTime local{}; ///< By the clock of its zone; of utc by that of UTC.
    std::string zone; ///< Of zoned: as the file names it.

    static std::optional<IcsMoment> read(icalproperty* property);
    static std::optional<IcsMoment> from(const icaltimetype& time);
    icaltimetype time() const; ///< Without its zone.

    /// "20261122", "20261122T170000" or "20261122T170000Z".
    std::string text() const;
    static std::optional<IcsLocalTime> readText(const std::string& text);

    /// The same kind of moment at another time.
    IcsMoment at(IcsLocalTime newLocal) const { return {kind, newLocal, zone}; }

    /// As one of the same series: some programs leave the zone out where it is that of the series.
    IcsMoment like(const IcsMoment& start) const { return kind == Kind::floating ? start.at(local) : *this; }

    /// Gives the property this value, its kind and its zone.
    void writeTo(icalproperty* property) const;
};

/// Turns moments into instants and back. Zones are found by name; where the name is unknown, the file's own description
/// counts, and else the user's zone.
class IcsZones {
public:
    /// Both are borrowed.
    IcsZones(icalcomponent* root, const Calendar& user);

    const Calendar& user() const { return m_user; }
    Instant instant(const IcsMoment& moment) const;
    /// `instant` as a moment of the same kind and zone.
    IcsMoment moment(Instant instant, const IcsMoment& like) const;

    /// How a new moment of the user's is written: by the name of their zone, so that it stays at its hour whatever
    /// becomes of the zone's rules.
    IcsMoment newMoment(Instant instant, bool allDay) const;

    /// Whether a moment stands by the user's clock because what the file says of its zone cannot be followed.
    bool hasRefused() const { return m_hasRefused; }

private:
    /// Both absent for one that nobody knows.
    struct Zone {
        std::optional<Calendar> known;
        icaltimezone* described = nullptr; ///< By the file.
    };

    const Zone& zone(const std::string& name) const;
    Zone look(const std::string& name) const;
    std::optional<Calendar> known(const std::string& name) const;
    icaltimezone* described(const std::string& name) const;

    icalcomponent* m_root;
    const Calendar& m_user;
    mutable std::map<std::string, Zone> m_zones;
    mutable bool m_hasRefused = false;
};

} // namespace quorvell
