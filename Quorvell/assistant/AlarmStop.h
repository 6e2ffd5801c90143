// SPDX-License-Identifier: MIT
// Silences what rings when the user plainly says or types "stop", without waiting for a model.
#pragma once

#include "Quorvell/notebook/Notebook.h"
#include "Quorvell/session/reports/ActionWatch.h"
#include "QuorvellCore/reminders/calendar/Calendar.h"
#include "QuorvellCore/text/Instant.h"

#include <functional>

namespace quorvell {

/// Whichever program rings: it hears of it through the notebook. Main thread.
class AlarmStop final : public ActionWatch {
public:
    struct Ports {
        Notebook& notebook; ///< Borrowed.
        std::function<Instant()> now;
        std::function<Calendar()> calendar;
    };

    explicit AlarmStop(Ports ports);

    void stopped() override;

private:
    Ports m_ports;
};

} // namespace quorvell
