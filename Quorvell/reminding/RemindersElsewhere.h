// SPDX-License-Identifier: MIT
// Lets a conversation tell of reminders that another program fired, the one that owns the notebook.
#pragma once

#include "Quorvell/notebook/Notebook.h"
#include "QuorvellCore/reminders/calendar/Calendar.h"

#include <functional>
#include <map>
#include <string>

namespace quorvell {

/// Main thread.
class RemindersElsewhere {
public:
    /// What was shown longer ago is no news.
    static constexpr std::chrono::minutes news{2};

    struct Ports {
        Notebook& notebook; ///< Borrowed.
        std::function<Instant()> now;
        std::function<Calendar()> calendar;
        std::function<void(const std::string& sentence)> announce;
    };

    explicit RemindersElsewhere(Ports ports);

private:
    void look(const std::string& id);

    Ports m_ports;
    std::map<std::string, Instant> m_known; ///< By id: the occurrence that was shown last.
    NotebookObservation m_observation;
};

} // namespace quorvell
