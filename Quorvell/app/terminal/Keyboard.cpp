// SPDX-License-Identifier: MIT
#include "Quorvell/app/terminal/Keyboard.h"

#include <unistd.h>

#include <array>
#include <cerrno>
#include <string_view>
#include <utility>

namespace quorvell {

Keyboard::Keyboard(std::function<void(char key)> pressed)
    : m_pressed(std::move(pressed))
    , m_notifier(std::make_unique<QSocketNotifier>(STDIN_FILENO, QSocketNotifier::Read))
{
    m_isRaw = tcgetattr(STDIN_FILENO, &m_before) == 0;
    if (m_isRaw) {
        termios raw = m_before;
        raw.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO); // Ctrl+C stays a signal.
        raw.c_cc[VMIN] = 1;
        raw.c_cc[VTIME] = 0;
        tcsetattr(STDIN_FILENO, TCSADRAIN, &raw);
    }
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, &m_context, [this] { readKeys(); });
}

Keyboard::~Keyboard()
{
    if (m_isRaw)
        tcsetattr(STDIN_FILENO, TCSADRAIN, &m_before);
}

void Keyboard::readKeys()
{
    std::array<char, 64> bytes;
    const auto count = read(STDIN_FILENO, bytes.data(), bytes.size());
    if (count < 0 && (errno == EINTR || errno == EAGAIN))
        return;
    if (count <= 0) {
        m_notifier->setEnabled(false);
        return m_pressed(endOfInput);
    }
    constexpr char escape = '\x1b';
    for (const char key : std::string_view(bytes.data(), static_cast<std::size_t>(count))) {
        if (key == escape)
            return; // The rest is one key.
        m_pressed(key);
    }
}

} // namespace quorvell
