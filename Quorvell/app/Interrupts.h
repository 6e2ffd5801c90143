#pragma once

#include <QSocketNotifier>

#include <functional>
#include <memory>

namespace quorvell {

/// Ctrl+C, the wish of the system that the program ends, and a terminal of another size, as calls on the main thread.
/// One at a time.
class Interrupts {
public:
    explicit Interrupts(
        std::function<void()> interrupted, std::function<void()> resized = [] {});
    ~Interrupts();
    Interrupts(const Interrupts&) = delete;
    Interrupts& operator=(const Interrupts&) = delete;

private:
    std::function<void()> m_interrupted;
    std::function<void()> m_resized;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace quorvell
