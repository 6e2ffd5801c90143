// SPDX-License-Identifier: MIT
// Ctrl+C, the wish of the system that the program ends, and a terminal of another size, as calls on the main thread.
#pragma once

#include <QSocketNotifier>

#include <functional>
#include <memory>

namespace quorvell {

/// One at a time.
class Interrupts {
public:
    struct Reports {
        std::function<void()> interrupted; ///< Ctrl+C.
        std::function<void()> ended{}; ///< The system wants it to end, or the terminal is gone. Default: as Ctrl+C.
        std::function<void()> resized{};
    };

    explicit Interrupts(Reports reports);
    ~Interrupts();
    Interrupts(const Interrupts&) = delete;
    Interrupts& operator=(const Interrupts&) = delete;

private:
    void report(int signal) const;

    Reports m_reports;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace quorvell
