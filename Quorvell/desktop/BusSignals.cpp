// SPDX-License-Identifier: MIT
#include "Quorvell/desktop/BusSignals.h"

#include <QObject>

#include <utility>

namespace quorvell {

/// The bus calls slots by name only, so this one class has one.
class BusSignalReceiver : public QObject {
    Q_OBJECT

public:
    explicit BusSignalReceiver(BusSignals::Heard heard)
        : m_heard(std::move(heard))
    {
    }

    Q_SLOT void receive(const QDBusMessage& signal) { m_heard(signal); }

private:
    BusSignals::Heard m_heard;
};

BusSignals::Kind BusSignals::Kind::busEnded()
{
    return {QString(), QStringLiteral("/org/freedesktop/DBus/Local"), QStringLiteral("org.freedesktop.DBus.Local"),
        QStringLiteral("Disconnected")};
}

BusSignals::BusSignals(const QDBusConnection& bus, const Kind& kind, Heard heard)
    : m_receiver(std::make_unique<BusSignalReceiver>(std::move(heard)))
{
    // Ends with the receiver.
    QDBusConnection(bus).connect(
        kind.service, kind.path, kind.interface, kind.name, m_receiver.get(), SLOT(receive(QDBusMessage)));
}

BusSignals::~BusSignals() = default;

} // namespace quorvell

#include "BusSignals.moc"
