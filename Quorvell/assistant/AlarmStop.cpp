// SPDX-License-Identifier: MIT
#include "Quorvell/assistant/AlarmStop.h"

#include "Quorvell/reminding/AlarmRinging.h"

#include <utility>

namespace quorvell {

AlarmStop::AlarmStop(Ports ports)
    : m_ports(std::move(ports))
{
}

void AlarmStop::stopped()
{
    const Instant now = m_ports.now();
    const Calendar calendar = m_ports.calendar();
    for (const Note& note : AlarmRinging::audible(m_ports.notebook.notes(), now, calendar))
        m_ports.notebook.update(
            note.id, [now, calendar](Note& stored) { AlarmRinging::stop(stored, now, calendar); },
            [](const NotebookVerdict&) {}); // One that could not be stored rings on, and can be stopped again.
}

} // namespace quorvell
