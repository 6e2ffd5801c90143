// SPDX-License-Identifier: MIT
// Which alarms ring, from when to when. Pure: due alarms and now in, what starts, ends and was missed out.
#pragma once

#include "Quorvell/reminding/AlarmMark.h"
#include "Quorvell/reminding/ReminderSchedule.h"

#include <chrono>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace quorvell {

/// An alarm rings from its time until somebody stops it or puts it off, for ten minutes at most; then it counts as
/// missed. It does not begin to ring more than five minutes late, as after a restart or a sleep: who comes back then is
/// told instead. A value; not thread safe.
class AlarmRinging {
public:
    static constexpr std::chrono::minutes longest{10}; ///< From its time on, not from when it began to ring.
    static constexpr std::chrono::minutes latestStart{5};
    static constexpr std::chrono::minutes snooze{10}; ///< Where nobody says how long.
    static constexpr std::size_t mostAtOnce = 10; ///< The others are told together: it is loud enough.
    static constexpr const char* stopKey = "stop";
    static constexpr const char* snoozeKey = "snooze";

    static bool isAlarm(const Note& note) { return AlarmMark::of(note).has_value(); }
    /// Whether it begins to ring now: it is an alarm, and not too late.
    static bool mayBegin(const DueReminder& reminder, Instant now);
    /// Those that are due and can still be ringing, in this program or in another one.
    static std::vector<Note> audible(const std::vector<Note>& notes, Instant now, const Calendar& calendar);

    void begin(const DueReminder& reminder) { m_rings[reminder.note.id] = reminder; }
    void end(const std::string& id) { m_rings.erase(id); }
    std::size_t count() const { return m_rings.size(); }
    bool isRinging() const { return !m_rings.empty(); }
    bool isRinging(const std::string& id) const { return m_rings.contains(id); }
    /// When the first of them is given up.
    std::optional<Instant> nextEnd() const;
    /// Takes out those that nobody stopped in time.
    std::vector<DueReminder> giveUp(Instant now);

    /// It was heard, and that is that: the next time of one that repeats, else it is over and put away, since nobody
    /// looks for it again.
    static void stop(Note& note, Instant now, const Calendar& calendar);
    /// It rings again at `until`. One that repeats keeps its times.
    static void putOff(Note& note, Instant until, Instant now, const Calendar& calendar);

private:
    std::map<std::string, DueReminder> m_rings; ///< By id.
};

} // namespace quorvell
