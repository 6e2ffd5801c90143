#pragma once

#include "Quorvell/app/LineSource.h"

#include <QObject>
#include <QSocketNotifier>

#include <memory>
#include <string>

namespace quorvell {

/// Lines typed at a terminal, with editing and a history that lasts as long as the program. The editor is fed from the
/// event loop, so that nothing waits for the user. One at a time: the editing library has one state.
class TerminalLines : public LineSource {
public:
    explicit TerminalLines(std::string prompt);
    ~TerminalLines() override;

    void readNext(Report report) override;

private:
    static void lineTyped(char* text);
    void keyPressed();
    void finishLine(std::optional<std::string> line);

    std::string m_prompt;
    Report m_report;
    std::unique_ptr<QSocketNotifier> m_notifier;
    QObject m_context;
};

} // namespace quorvell
