#include "Quorvell/app/StatusLine.h"

#include "QuorvellCore/text/Characters.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <ostream>
#include <utility>

namespace quorvell {

namespace {

constexpr const char* dim = "\x1b[2m";
constexpr const char* plain = "\x1b[0m";
constexpr const char* eraseLine = "\r\x1b[K";

std::size_t columns()
{
    constexpr std::size_t usual = 80;
    winsize size{};
    return ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 1 ? size.ws_col : usual;
}

} // namespace

void StatusLine::show(const std::string& text)
{
    const std::string fitting = firstCharacters(text, columns() - 1);
    if (fitting == m_text)
        return;
    hide();
    m_text = fitting;
    if (!m_text.empty())
        m_out << dim << m_text << plain << std::flush;
}

void StatusLine::hide()
{
    if (!std::exchange(m_text, {}).empty())
        m_out << eraseLine << std::flush;
}

void StatusLine::aside(const std::function<void()>& print)
{
    const std::string text = m_text;
    hide();
    print();
    show(text);
}

} // namespace quorvell
