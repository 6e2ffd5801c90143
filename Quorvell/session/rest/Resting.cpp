// SPDX-License-Identifier: MIT
#include "Quorvell/session/rest/Resting.h"

#include <utility>

namespace quorvell {

Resting::Resting(Scheduler& scheduler, DozeListener* listener, Owner& owner, SessionLimits limits)
    : m_scheduler(scheduler)
    , m_dozeListener(listener)
    , m_owner(owner)
    , m_limits(limits)
{
}

void Resting::begin()
{
    end();
    m_dozeFailed = false;
    m_dozes = 0;
}

void Resting::doze()
{
    if (m_doze != Doze::awake || !canRest())
        return;
    m_dozedAt = m_scheduler.now();
    ++m_dozes;
    setDoze(Doze::dozing);
    listen();
}

void Resting::dozeAgain()
{
    if (m_doze != Doze::waking)
        return;
    m_wakingLimit.cancel();
    m_heardWhileDozing.clear();
    setDoze(Doze::dozing);
    listen();
}

void Resting::listen()
{
    DozeListener::Reports reports;
    reports.onset = [this] {
        if (m_doze == Doze::dozing)
            m_owner.onsetAtRest();
    };
    reports.heard = [this](const std::string& words) { heard(words); };
    reports.failed = [this](const std::string& sentence) { failed(sentence); };
    m_dozeListener->start(std::move(reports));
}

void Resting::wake()
{
    if (m_doze != Doze::dozing)
        return;
    m_dozeListener->stop();
    setDoze(Doze::waking);
    m_wakingLimit = m_scheduler.after(m_limits.waking, [this] {
        if (m_doze == Doze::waking)
            m_owner.wakingTookTooLong();
    });
    m_owner.wakingBegan();
}

void Resting::heard(const std::string& words)
{
    if (m_doze != Doze::dozing || words.empty())
        return;
    m_heardWhileDozing = words;
    m_owner.wordsHeardAtRest(words);
    wake();
}

void Resting::failed(const std::string& sentence)
{
    if (m_doze != Doze::dozing)
        return;
    m_dozeFailed = true;
    m_owner.restFailed(sentence);
    wake();
}

std::string Resting::finishWaking()
{
    if (m_doze != Doze::waking)
        return {};
    m_wakingLimit.cancel();
    setDoze(Doze::awake);
    return std::exchange(m_heardWhileDozing, {});
}

void Resting::end()
{
    if (m_doze == Doze::dozing)
        m_dozeListener->stop();
    m_wakingLimit.cancel();
    m_heardWhileDozing.clear();
    setDoze(Doze::awake);
}

void Resting::captured(std::span<const std::uint8_t> pcm)
{
    if (m_doze == Doze::dozing)
        m_dozeListener->captured(pcm);
}

void Resting::setDoze(Doze doze)
{
    if (std::exchange(m_doze, doze) != doze)
        m_owner.dozeChanged(doze);
}

} // namespace quorvell
