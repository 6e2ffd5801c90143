// SPDX-License-Identifier: MIT
#include "QuorvellCore/automation/engine/pim/SharedPimBreaker.h"

#include <utility>

namespace quorvell {

SharedPimBreaker::SharedPimBreaker(Clock now)
    : m_now(std::move(now))
{
}

bool SharedPimBreaker::allows()
{
    const std::lock_guard guard(m_lock);
    return m_breaker.allows(m_now());
}

void SharedPimBreaker::record(bool answered)
{
    const std::lock_guard guard(m_lock);
    m_breaker.record(answered, m_now());
}

PimBreaker SharedPimBreaker::value() const
{
    const std::lock_guard guard(m_lock);
    return m_breaker;
}

} // namespace quorvell
