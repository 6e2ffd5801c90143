// SPDX-License-Identifier: MIT
// The live service as a child of this program.
#pragma once

#include "Quorvell/connections/access/ChildLine.h"
#include "Quorvell/connections/access/LiveAccessSource.h"

#include <QByteArray>
#include <QObject>
#include <QProcess>
#include <QTimer>

#include <chrono>
#include <memory>
#include <string>
#include <vector>

namespace quorvell {

/// It starts when it is first looked for, stays, ends with this object (its standard input closes, so also when this
/// program is killed), and is started anew when it has died. Its standard input is a line that only the two of them
/// have (ChildLine): the key, made here, comes over it and so is never in a list of processes, and every connection
/// too. Main thread.
class OnDeviceService : public LiveAccessSource {
public:
    struct Command {
        std::string program;
        std::vector<std::string> arguments;
    };

    static constexpr std::chrono::milliseconds usualPatience{30'000}; ///< The speech models are read first.

    explicit OnDeviceService(Command command, std::chrono::milliseconds patience = usualPatience);
    ~OnDeviceService() override;

    void find(std::function<void(const Found&)> found) override;

private:
    void startChild();
    void connectChild();
    void readOutput();
    void readErrors();
    void childEnded();
    void childFailedToStart();
    void giveUp();
    void discardChild();
    void answer(const Found& found);

    Command m_command;
    std::chrono::milliseconds m_patience;
    std::string m_key;
    std::shared_ptr<ChildLine> m_line; ///< To the child that runs; who has an access to it has it too.
    std::optional<LiveAccess> m_access; ///< Once the child has said that it is ready.
    std::vector<std::function<void(const Found&)>> m_waiting;
    QByteArray m_output; ///< Of the child until it is ready.
    QByteArray m_errors; ///< The end of what the child said on standard error.
    QTimer m_deadline;
    std::unique_ptr<QProcess> m_child;
    QObject m_context; ///< Receives the child's signals; goes first.
};

} // namespace quorvell
