// SPDX-License-Identifier: MIT
// The notebook of another program: hands it changes and waits for its answers.
#pragma once

#include "Quorvell/handover/NotebookBus.h"
#include "QuorvellCore/notebook/Note.h"

#include <QDBusMessage>
#include <QObject>

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace quorvell {

/// What became of a change that was handed to the owner of the notebook.
struct [[nodiscard]] NotebookHandOver {
    enum class Outcome {
        stored,
        changed, ///< Based on a version that is no longer the current one.
        refused,
        ownerGone, ///< Nobody received it.
        noAnswer, ///< Somebody may have received it.
    };

    Outcome outcome = Outcome::noAnswer;
    std::optional<Note> note; ///< Stored: as it was; changed: as it stands now.
    std::string problem; ///< Of the owner, when changed or refused.
};

/// Hands changes to the program that owns the notebook. Main thread; the bus outlives it. Answers that are still due
/// when it dies never come.
class NotebookBusClient {
public:
    using Callback = std::function<void(const NotebookHandOver&)>;

    explicit NotebookBusClient(const NotebookBus& bus);
    ~NotebookBusClient();

    void add(const Note& note, Callback done);
    enum class Changed { byAssistant, byHand };
    /// `base` is `updated` of the version that was changed.
    void update(const Note& note, Instant base, Changed how, Callback done);
    void delete_(const std::string& id, Callback done);
    void forgetAll(Callback done);
    void savePicture(const std::string& id, const std::string& picture, Callback done);

private:
    QDBusMessage callTo(const char* method) const;
    void send(const QDBusMessage& call, Callback done);

    const NotebookBus& m_bus;
    std::unique_ptr<QObject> m_context; ///< Owns the calls that wait.
};

} // namespace quorvell
