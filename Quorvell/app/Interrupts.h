#pragma once

#include <QSocketNotifier>

#include <functional>
#include <memory>

namespace quorvell {

/// Ctrl+C and the wish of the system that the program ends, as a call on the main thread. One at a time.
class Interrupts {
public:
    explicit Interrupts(std::function<void()> interrupted);
    ~Interrupts();
    Interrupts(const Interrupts&) = delete;
    Interrupts& operator=(const Interrupts&) = delete;

private:
    std::function<void()> m_interrupted;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace quorvell
