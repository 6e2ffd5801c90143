// SPDX-License-Identifier: MIT
// Hears one kind of signal on a message bus while it lives.
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>

#include <functional>
#include <memory>

class QObject;

namespace quorvell {

/// Main thread.
class BusSignals {
public:
    using Heard = std::function<void(const QDBusMessage& signal)>;

    struct Kind {
        QString service;
        QString path; ///< Empty: of every object.
        QString interface;
        QString name;

        /// That the bus itself is gone; no connection to it comes back. The bus library tells it like a signal.
        static Kind busEnded();
    };

    BusSignals(const QDBusConnection& bus, const Kind& kind, Heard heard);
    ~BusSignals();
    BusSignals(const BusSignals&) = delete;
    BusSignals& operator=(const BusSignals&) = delete;

private:
    std::unique_ptr<QObject> m_receiver;
};

} // namespace quorvell
