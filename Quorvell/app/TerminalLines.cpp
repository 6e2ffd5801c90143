#include "Quorvell/app/TerminalLines.h"

#include "QuorvellCore/text/Characters.h"

#include <editline/readline.h>
#include <poll.h>
#include <unistd.h>

#include <clocale>
#include <cstdlib>
#include <utility>

namespace quorvell {

namespace {

TerminalLines* editing = nullptr; ///< The library's callback takes no argument.

/// Where nothing was typed to its end the cursor still stands behind the prompt.
void endPromptLine()
{
    [[maybe_unused]] const auto written = write(STDOUT_FILENO, "\n", 1);
}

bool hasHungUp()
{
    pollfd terminal{STDIN_FILENO, POLLIN, 0};
    return poll(&terminal, 1, 0) > 0 && (terminal.revents & (POLLHUP | POLLERR | POLLNVAL)) != 0;
}

} // namespace

TerminalLines::TerminalLines(std::string prompt)
    : m_prompt(std::move(prompt))
    , m_notifier(std::make_unique<QSocketNotifier>(STDIN_FILENO, QSocketNotifier::Read))
{
    // The editor counts columns by the locale's characters.
    std::setlocale(LC_CTYPE, "");
    editing = this;
    m_notifier->setEnabled(false);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, &m_context, [this] { keyPressed(); });
}

TerminalLines::~TerminalLines()
{
    if (m_report) {
        rl_callback_handler_remove();
        endPromptLine();
    }
    editing = nullptr;
}

void TerminalLines::readNext(Report report)
{
    m_report = std::move(report);
    rl_callback_handler_install(m_prompt.c_str(), &TerminalLines::lineTyped);
    m_notifier->setEnabled(true);
}

void TerminalLines::keyPressed()
{
    if (hasHungUp())
        return finishLine(std::nullopt);
    rl_callback_read_char();
}

void TerminalLines::lineTyped(char* text)
{
    std::optional<std::string> line;
    if (text != nullptr)
        line = repairUtf8(text);
    std::free(text);
    if (editing != nullptr)
        editing->finishLine(std::move(line));
}

void TerminalLines::finishLine(std::optional<std::string> line)
{
    m_notifier->setEnabled(false);
    rl_callback_handler_remove();
    if (line && !trimmed(*line).empty())
        add_history(line->c_str());
    if (!line) // The cursor still stands behind the prompt.
        [[maybe_unused]]
        const auto written = write(STDOUT_FILENO, "\n", 1);
    if (const Report report = std::exchange(m_report, nullptr))
        report(std::move(line));
}

} // namespace quorvell
