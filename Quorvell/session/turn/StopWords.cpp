// SPDX-License-Identifier: MIT
#include "Quorvell/session/turn/StopWords.h"

#include "QuorvellCore/safety/SpokenStop.h"

#include <utility>

namespace quorvell {

StopWords::StopWords(Scheduler& scheduler, std::function<void()> said)
    : m_scheduler(scheduler)
    , m_said(std::move(said))
{
}

void StopWords::hear(const std::string& words)
{
    if (isPlainStop(words))
        m_timer = m_scheduler.after(settle, [this] { tell(); });
    else
        m_timer.cancel();
}

void StopWords::complete(const std::string& words)
{
    if (isPlainStop(words))
        tell();
    forget();
}

void StopWords::forget()
{
    m_timer.cancel();
    m_isTold = false;
}

void StopWords::tell()
{
    if (!std::exchange(m_isTold, true))
        m_said();
}

} // namespace quorvell
