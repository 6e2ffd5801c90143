// SPDX-License-Identifier: MIT
// Lines typed at a terminal, with editing, a history browsed with the arrow keys, and pastes told apart from typing.
#pragma once

#include "Quorvell/app/terminal/CommandHistoryFile.h"
#include "Quorvell/app/terminal/LineSource.h"
#include "Quorvell/app/terminal/PastedPieces.h"
#include "Quorvell/app/terminal/TerminalKeys.h"
#include "Quorvell/settings/TerminalColour.h"
#include "QuorvellCore/live/history/CommandHistory.h"

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>

#include <deque>
#include <memory>
#include <optional>
#include <string>

struct editline;

namespace quorvell {

/// The editor is fed from the event loop, so that nothing waits for the user. Main thread.
class TerminalLines : public LineSource {
public:
    /// How long half a key sequence may wait for the rest: a lone Escape is nothing.
    static constexpr std::chrono::milliseconds sequencePatience{50};

    /// Without a history file the history lasts as long as this object.
    TerminalLines(std::string prompt, std::optional<CommandHistoryFile> historyFile, TerminalColour colour);
    ~TerminalLines() override;

    void readNext(Report report) override;
    void aside(const std::function<void()>& print) override;
    bool dropTyped() override;
    void resized() override;

private:
    struct CloseEditor {
        void operator()(editline* editor) const;
    };

    static char* promptOf(editline* editor);
    static int nextKey(editline* editor, wchar_t* key);

    void openPrompt();
    void closePrompt();
    void inputArrived();
    void take(const TerminalInput& input);
    void browse(TerminalInput::Kind direction);
    void takeWaiting();
    void takeKeys(const std::string& text);
    void eraseLine();
    std::string line() const;
    void replaceLine(const std::string& text);
    void insert(const std::string& text, std::size_t position = 0);
    void finish(const std::optional<std::string>& line);

    TerminalColour m_colour;
    std::string m_prompt;
    std::optional<CommandHistoryFile> m_historyFile;
    CommandHistory m_history;
    TerminalKeys m_keys;
    PastedPieces m_pastes; ///< Of the line as it stands.
    PastedPieces m_draftPastes; ///< Of the line that browsing began with.
    std::deque<TerminalInput> m_waiting; ///< Typed while no line was asked for.
    std::size_t m_columns = 0; ///< Of the terminal when the line was begun.
    std::u32string m_queue; ///< For the editor, which takes one character at a time.
    Report m_report;
    std::unique_ptr<editline, CloseEditor> m_editor;
    std::unique_ptr<QSocketNotifier> m_notifier;
    QTimer m_patience;
    QObject m_context; ///< Receives the signals; goes first.
};

} // namespace quorvell
