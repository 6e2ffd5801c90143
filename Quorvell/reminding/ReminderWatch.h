// SPDX-License-Identifier: MIT
// Fires reminders and rings alarms: each occurrence once, none lost, whether the computer slept, was off or had its
// clock set.
#pragma once

#include "Quorvell/loop/EventLog.h"
#include "Quorvell/notebook/Notebook.h"
#include "Quorvell/reminding/AlarmRinging.h"
#include "Quorvell/reminding/AlarmSound.h"
#include "Quorvell/reminding/Notifier.h"
#include "Quorvell/reminding/PresenceWatch.h"
#include "Quorvell/reminding/ReminderNotices.h"
#include "Quorvell/reminding/WallClockTimer.h"
#include "QuorvellCore/reminders/calendar/Calendar.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quorvell {

/// Main thread. Silent while another program owns the notebook: that one fires them.
class ReminderWatch {
public:
    /// All are borrowed and outlive the watch.
    struct Ports {
        Notebook& notebook;
        WallClockTimer& timer;
        Notifier& notifier;
        PresenceWatch& presence;
        EventLog& log;
        std::function<Calendar()> calendar; ///< Asked each time: the user may travel.
        /// Says it as well where somebody listens: in an open conversation, on a terminal. Empty where nobody does.
        std::function<void(const std::string& sentence)> announce;
        /// For when nothing on this desktop shows notices.
        std::function<void()> couldNotShow = nullptr;
        AlarmSound* sound = nullptr; ///< Without it alarms are only shown and said.
        /// For when an alarm rings and cannot be heard.
        std::function<void()> couldNotSound = nullptr;
    };

    explicit ReminderWatch(Ports ports);
    ~ReminderWatch();
    ReminderWatch(const ReminderWatch&) = delete;
    ReminderWatch& operator=(const ReminderWatch&) = delete;

    /// Fires what is due, withdraws what is settled and sets the next alarm. To be called once at the start; changes of
    /// the notes are seen to from then on.
    void look();

private:
    void fire(const std::vector<DueReminder>& due, Instant now, const Calendar& calendar);
    void show(ReminderNotice notice);
    void ring(const DueReminder& reminder, Instant now, const Calendar& calendar);
    /// Those that nobody stopped are told as missed; the sound is as long as one of the others rings.
    void endRings(Instant now, const Calendar& calendar);
    std::optional<Instant> nextLook(Instant now, const Calendar& calendar);
    void writeMarks(const std::vector<DueReminder>& reminders);
    void writeMark(const DueReminder& reminder);
    void withdrawSettled();
    void cameBack();
    void actionTaken(const std::string& key, const std::string& action);
    void change(const std::string& id, std::function<void(Note&)> change);
    const std::vector<Note>& notesWithMarks();

    Ports m_ports;
    std::map<std::string, ReminderNotice> m_open; ///< By key; shown and not acted upon.
    std::map<std::string, Instant> m_unwritten; ///< By id: shown, but the note does not say so yet.
    std::vector<Note> m_marked; ///< The notes with those marks, while there are any.
    AlarmRinging m_rings; ///< Each is open too; its note says nothing of it until it ends, so that it survives a crash.
    bool m_isLooking = false;
    NotebookObservation m_observation;
    std::shared_ptr<bool> m_life = std::make_shared<bool>(true); ///< Answers that come after the end find it gone.
};

} // namespace quorvell
