// SPDX-License-Identifier: MIT
// Holds the sound thread while it lives: none of its callbacks runs meanwhile.
#pragma once

struct pa_threaded_mainloop;

namespace quorvell {

/// Never on the sound thread itself.
class PulseLock {
public:
    explicit PulseLock(pa_threaded_mainloop* loop);
    ~PulseLock();
    PulseLock(const PulseLock&) = delete;
    PulseLock& operator=(const PulseLock&) = delete;

private:
    pa_threaded_mainloop* m_loop;
};

} // namespace quorvell
