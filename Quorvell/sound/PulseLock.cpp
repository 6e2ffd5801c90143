// SPDX-License-Identifier: MIT
#include "Quorvell/sound/PulseLock.h"

#include <pulse/thread-mainloop.h>

namespace quorvell {

PulseLock::PulseLock(pa_threaded_mainloop* loop)
    : m_loop(loop)
{
    pa_threaded_mainloop_lock(m_loop);
}

PulseLock::~PulseLock()
{
    pa_threaded_mainloop_unlock(m_loop);
}

} // namespace quorvell
