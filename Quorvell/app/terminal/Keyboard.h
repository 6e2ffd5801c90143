// SPDX-License-Identifier: MIT
// Single keys of the terminal, unseen, as they are pressed; the terminal is put back at the end.
#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <termios.h>

#include <functional>
#include <memory>

namespace quorvell {

/// Main thread.
class Keyboard {
public:
    static constexpr char endOfInput = 4; ///< Ctrl+D, and a terminal that went away.

    /// Reports the first byte of each key; those that send several bytes, such as arrows, are passed over.
    explicit Keyboard(std::function<void(char key)> pressed);
    ~Keyboard();
    Keyboard(const Keyboard&) = delete;
    Keyboard& operator=(const Keyboard&) = delete;

private:
    void readKeys();

    std::function<void(char)> m_pressed;
    termios m_before{};
    bool m_isRaw = false;
    std::unique_ptr<QSocketNotifier> m_notifier;
    QObject m_context; ///< Receives the signal; goes first.
};

} // namespace quorvell
