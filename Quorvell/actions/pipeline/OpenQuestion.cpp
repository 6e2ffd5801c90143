// SPDX-License-Identifier: MIT
#include "Quorvell/actions/pipeline/OpenQuestion.h"

#include "Quorvell/actions/pipeline/FoundAgain.h"
#include "QuorvellCore/safety/SpokenWords.h"

#include <utility>
#include <variant>

namespace quorvell {

using QuestionEnd = ActionObserver::QuestionEnd;

OpenQuestion::OpenQuestion(Scheduler& scheduler, ConsentWords& consent, Ended ended)
    : m_scheduler(scheduler)
    , m_consent(consent)
    , m_ended(std::move(ended))
    , m_self(std::make_shared<OpenQuestion*>(this))
{
}

bool OpenQuestion::isInTheseWords(const std::string& question) const
{
    return m_pending && spokenWords(m_pending->question) == spokenWords(question);
}

bool OpenQuestion::isAbout(const PendingAction& action) const
{
    const auto again = foundAgain(m_pending->action.action, *m_pending->look, *action.look);
    const auto* const same = std::get_if<ScreenAction>(&again);
    return same && *same == action.action.action && m_pending->purpose == action.purpose;
}

void OpenQuestion::open(PendingAction action)
{
    end(QuestionEnd::dropped);
    ++m_number;
    renew(std::move(action));
}

void OpenQuestion::renew(PendingAction action)
{
    m_pending = std::move(action);
    m_pending->number = m_number;
    m_pending->askedAt = m_scheduler.now();
    m_lapse = m_scheduler.after(PendingAction::longestWait, [this] { end(QuestionEnd::dropped); });
    putAgain();
}

/// What the user answers is known before the model asks for it, and ends the matter where it is no.
void OpenQuestion::putAgain()
{
    using Event = ConsentWords::Event;
    m_consent.ask(m_pending->question, [self = std::weak_ptr(m_self), number = m_number](Event event) {
        const auto question = self.lock();
        if (!question || event == Event::agreed || number != (*question)->m_number)
            return;
        (*question)->drop(event == Event::declined ? QuestionEnd::refused : QuestionEnd::dropped);
    });
}

PendingAction OpenQuestion::take()
{
    m_lapse.cancel();
    return *std::exchange(m_pending, std::nullopt);
}

void OpenQuestion::end(QuestionEnd end)
{
    if (m_pending)
        m_consent.withdraw(m_pending->question);
    drop(end);
}

void OpenQuestion::drop(QuestionEnd end)
{
    m_lapse.cancel();
    if (const auto ended = std::exchange(m_pending, std::nullopt))
        m_ended(ended->action, end);
}

void OpenQuestion::dropIfTooOld()
{
    if (m_pending && m_scheduler.now() - m_pending->askedAt >= PendingAction::longestWait)
        end(QuestionEnd::dropped);
}

void OpenQuestion::noteLook(const ScreenLook& look)
{
    const bool isOfScreen =
        m_pending && (targetOf(m_pending->action.action) || dependsOnFront(m_pending->action.action));
    if (isOfScreen && m_pending->look->observation.app != look.observation.app)
        end(QuestionEnd::dropped);
}

} // namespace quorvell
