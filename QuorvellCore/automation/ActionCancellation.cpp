// SPDX-License-Identifier: MIT
#include "QuorvellCore/automation/ActionCancellation.h"

namespace quorvell {

bool ActionCancellation::isCancelled() const
{
    const std::lock_guard guard(m_lock);
    return m_isCancelled;
}

void ActionCancellation::cancel()
{
    const std::lock_guard guard(m_lock);
    m_isCancelled = true;
}

} // namespace quorvell
