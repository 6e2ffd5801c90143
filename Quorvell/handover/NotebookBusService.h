// SPDX-License-Identifier: MIT
// Carries out what other programs hand to the owner of the notebook.
#pragma once

#include "Quorvell/handover/NotebookBus.h"
#include "Quorvell/notebook/NotebookStore.h"

#include <QDBusMessage>
#include <QDBusVirtualObject>

#include <functional>
#include <optional>
#include <string>

namespace quorvell {

/// Main thread; bus and store outlive it.
class NotebookBusService final : public QDBusVirtualObject {
public:
    NotebookBusService(const NotebookBus& bus, NotebookStore& store);
    ~NotebookBusService() override;

    QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

private:
    /// Sends the one answer to a call, then or later.
    using Answer =
        std::function<void(const char* outcome, const std::optional<Note>& note, const std::string& problem)>;

    using Changing = void (NotebookStore::*)(const std::string&, FullNotebook::Change, NotebookCallback);

    void carryOut(const std::string& method, const QVariantList& arguments, const Answer& answer);
    void add(const Note& note, const Answer& answer);
    void update(const Note& note, const std::string& base, Changing how, const Answer& answer);
    void savePicture(const std::string& id, const QByteArray& picture, const Answer& answer);
    NotebookCallback answering(const std::string& id, const Answer& answer) const;

    QDBusConnection m_connection;
    NotebookStore& m_store;
};

} // namespace quorvell
