// SPDX-License-Identifier: MIT
#include "Quorvell/reminding/RemindersElsewhere.h"

#include "Quorvell/reminding/ReminderNotices.h"
#include "QuorvellCore/reminders/state/ReminderState.h"

#include <utility>

namespace quorvell {

RemindersElsewhere::RemindersElsewhere(Ports ports)
    : m_ports(std::move(ports))
{
    for (const Note& note : m_ports.notebook.notes())
        if (note.reviewed)
            m_known[note.id] = *note.reviewed;
    m_observation = m_ports.notebook.observe([this](const NotebookChanges& changes) {
        for (const std::string& id : changes.gone)
            m_known.erase(id);
        for (const std::string& id : changes.changed)
            look(id);
    });
}

void RemindersElsewhere::look(const std::string& id)
{
    const auto note = m_ports.notebook.note(id);
    if (!note || !note->reviewed || std::exchange(m_known[id], *note->reviewed) == *note->reviewed)
        return;
    // What this program fires it has told already.
    const Instant now = m_ports.now();
    const bool isNews = *note->reviewed <= now && now - *note->reviewed <= news;
    if (!m_ports.notebook.isOwner() && isNews && ReminderState::isPending(*note))
        m_ports.announce(ReminderNotice::single({*note, *note->reviewed}, now, m_ports.calendar()).announcement);
}

} // namespace quorvell
