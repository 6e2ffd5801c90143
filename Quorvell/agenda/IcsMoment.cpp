// SPDX-License-Identifier: MIT
#include "Quorvell/agenda/IcsMoment.h"

#include "Quorvell/agenda/IcsLimits.h"
#include "Quorvell/agenda/IcsZoneRules.h"
#include "Quorvell/files/SystemZone.h"
#include "QuorvellCore/reminders/calendar/WindowsZone.h"

#include <array>
#include <cstdio>

namespace quorvell {

namespace {

using std::chrono::floor;
using std::chrono::seconds;

constexpr int firstYear = 1900;
constexpr int lastYear = 2200;

IcsLocalTime localOf(const CalendarParts& parts)
{
    return LocalDay(std::chrono::year(parts.year) / parts.month / parts.day) + std::chrono::hours(parts.hour)
        + std::chrono::minutes(parts.minute) + seconds(parts.second);
}

Instant instantIn(const Calendar& calendar, IcsLocalTime local)
{
    const LocalDay day = floor<std::chrono::days>(local);
    return calendar.instant(day, local - day);
}

Instant asUtc(IcsLocalTime local)
{
    return Instant(local.time_since_epoch());
}

} // namespace

std::optional<IcsMoment> IcsMoment::from(const icaltimetype& time)
{
    if (icaltime_is_null_time(time) != 0 || time.year < firstYear || time.year > lastYear)
        return std::nullopt;
    const auto day = Calendar::dayOf(time.year, time.month, time.day);
    if (!day || time.hour < 0 || time.hour > 24 || time.minute < 0 || time.minute > 59 || time.second < 0)
        return std::nullopt;
    IcsMoment moment;
    moment.local = *day;
    if (time.is_date != 0) {
        moment.kind = Kind::date;
        return moment;
    }
    moment.local += std::chrono::hours(time.hour) + std::chrono::minutes(time.minute) + seconds(time.second);
    moment.kind = icaltime_is_utc(time) != 0 ? Kind::utc : Kind::floating;
    return moment;
}

std::optional<IcsMoment> IcsMoment::read(icalproperty* property)
{
    icalvalue* value = property ? icalproperty_get_value(property) : nullptr;
    if (!value)
        return std::nullopt;
    std::optional<IcsMoment> moment;
    switch (icalvalue_isa(value)) {
    case ICAL_DATE_VALUE:
        moment = from(icalvalue_get_date(value));
        break;
    case ICAL_DATETIME_VALUE:
        moment = from(icalvalue_get_datetime(value));
        break;
    case ICAL_DATETIMEPERIOD_VALUE: {
        const icaldatetimeperiodtype both = icalvalue_get_datetimeperiod(value);
        moment = from(icaltime_is_null_time(both.time) == 0 ? both.time : both.period.start);
        break;
    }
    default:
        return std::nullopt;
    }
    icalparameter* zone = icalproperty_get_first_parameter(property, ICAL_TZID_PARAMETER);
    const char* name = zone ? icalparameter_get_tzid(zone) : nullptr;
    if (moment && moment->kind == Kind::floating && name) {
        moment->kind = Kind::zoned;
        moment->zone = name;
    }
    return moment;
}

icaltimetype IcsMoment::time() const
{
    const LocalDay day = floor<std::chrono::days>(local);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss clock(local - day);
    icaltimetype time = icaltime_null_time();
    time.year = static_cast<int>(date.year());
    time.month = static_cast<int>(static_cast<unsigned>(date.month()));
    time.day = static_cast<int>(static_cast<unsigned>(date.day()));
    time.is_date = kind == Kind::date ? 1 : 0;
    if (kind == Kind::date)
        return time;
    time.hour = static_cast<int>(clock.hours().count());
    time.minute = static_cast<int>(clock.minutes().count());
    time.second = static_cast<int>(clock.seconds().count());
    if (kind == Kind::utc)
        time.zone = icaltimezone_get_utc_timezone();
    return time;
}

std::string IcsMoment::text() const
{
    const icaltimetype value = time();
    std::array<char, 64> buffer{};
    if (kind == Kind::date)
        std::snprintf(buffer.data(), buffer.size(), "%04d%02d%02d", value.year, value.month, value.day);
    else
        std::snprintf(buffer.data(), buffer.size(), "%04d%02d%02dT%02d%02d%02d%s", value.year, value.month, value.day,
            value.hour, value.minute, value.second, kind == Kind::utc ? "Z" : "");
    return buffer.data();
}

std::optional<IcsLocalTime> IcsMoment::readText(const std::string& text)
{
    const auto moment = from(icaltime_from_string(text.c_str()));
    return moment ? std::optional(moment->local) : std::nullopt;
}

void IcsMoment::writeTo(icalproperty* property) const
{
    icalproperty_remove_parameter_by_kind(property, ICAL_TZID_PARAMETER);
    icalproperty_remove_parameter_by_kind(property, ICAL_VALUE_PARAMETER);
    icalproperty_set_value(property, kind == Kind::date ? icalvalue_new_date(time()) : icalvalue_new_datetime(time()));
    if (kind == Kind::date)
        icalproperty_add_parameter(property, icalparameter_new_value(ICAL_VALUE_DATE));
    if (kind == Kind::zoned)
        icalproperty_add_parameter(property, icalparameter_new_tzid(zone.c_str()));
}

IcsZones::IcsZones(icalcomponent* root, const Calendar& user)
    : m_root(root)
    , m_user(user)
{
}

const IcsZones::Zone& IcsZones::zone(const std::string& name) const
{
    static const Zone unknown;
    auto found = m_zones.find(name);
    if (found != m_zones.end())
        return found->second;
    if (m_zones.size() >= IcsLimits::mostZones || name.size() > IcsLimits::longestZoneName) {
        m_hasRefused = true;
        return unknown;
    }
    return m_zones.emplace(name, look(name)).first->second;
}

IcsZones::Zone IcsZones::look(const std::string& name) const
{
    Zone zone{known(name), nullptr};
    if (!zone.known)
        zone.described = described(name);
    return zone;
}

/// Some programs put their own name before the zone's: "/example.org/2007/Europe/Berlin".
std::optional<Calendar> IcsZones::known(const std::string& name) const
{
    const auto calendarIn = [this](std::string_view place) {
        return Calendar::create(place, m_user.locale(), systemZoneFile(place));
    };
    auto calendar = calendarIn(name);
    std::size_t slash = name.find('/');
    for (int parts = 1; !calendar && slash != std::string::npos && parts < IcsLimits::mostZoneParts; ++parts) {
        calendar = calendarIn(std::string_view(name).substr(slash + 1));
        slash = name.find('/', slash + 1);
    }
    if (const auto place = calendar ? std::nullopt : zoneOfWindowsName(name))
        calendar = calendarIn(*place);
    return calendar;
}

icaltimezone* IcsZones::described(const std::string& name) const
{
    if (!m_root || icalcomponent_isa(m_root) != ICAL_VCALENDAR_COMPONENT)
        return nullptr;
    icaltimezone* zone = icalcomponent_get_timezone(m_root, name.c_str());
    if (!zone || IcsZoneRules::canBeFollowed(icaltimezone_get_component(zone), lastYear))
        return zone;
    m_hasRefused = true;
    return nullptr;
}

Instant IcsZones::instant(const IcsMoment& moment) const
{
    if (moment.kind == IcsMoment::Kind::utc)
        return asUtc(moment.local);
    if (moment.kind == IcsMoment::Kind::zoned) {
        const Zone& its = zone(moment.zone);
        if (its.known)
            return instantIn(*its.known, moment.local);
        if (its.described)
            return Instant(seconds(icaltime_as_timet_with_zone(moment.time(), its.described)));
    }
    return instantIn(m_user, moment.local);
}

IcsMoment IcsZones::moment(Instant instant, const IcsMoment& like) const
{
    if (like.kind == IcsMoment::Kind::utc)
        return like.at(IcsLocalTime(floor<seconds>(instant.time_since_epoch())));
    if (like.kind == IcsMoment::Kind::date)
        return like.at(m_user.day(instant));
    if (like.kind == IcsMoment::Kind::zoned) {
        const Zone& its = zone(like.zone);
        if (its.known)
            return like.at(localOf(its.known->parts(instant)));
        if (its.described) {
            const auto time = floor<seconds>(instant.time_since_epoch()).count();
            const auto local =
                IcsMoment::from(icaltime_from_timet_with_zone(static_cast<time_t>(time), 0, its.described));
            return like.at(local ? local->local : IcsLocalTime());
        }
    }
    return like.at(localOf(m_user.parts(instant)));
}

IcsMoment IcsZones::newMoment(Instant instant, bool allDay) const
{
    if (allDay)
        return {IcsMoment::Kind::date, m_user.day(instant), {}};
    const bool isPlace = m_user.zone().find('/') != std::string::npos && !m_user.zone().starts_with("Etc/");
    if (!isPlace)
        return {IcsMoment::Kind::utc, IcsLocalTime(floor<seconds>(instant.time_since_epoch())), {}};
    return {IcsMoment::Kind::zoned, localOf(m_user.parts(instant)), m_user.zone()};
}

} // namespace quorvell
