// SPDX-License-Identifier: MIT
#include "LiveService/server/LineListener.h"

#include "Line/DescriptorMessage.h"

#include <QObject>
#include <QTimer>
#include <unistd.h>

#include <utility>

namespace quorvell {

LineListener::LineListener(int descriptor, Reports reports)
    : m_descriptor(descriptor)
    , m_reports(std::move(reports))
    , m_notifier(descriptor, QSocketNotifier::Read)
{
    QObject::connect(&m_notifier, &QSocketNotifier::activated, &m_notifier, [this] { read(); });
}

void LineListener::read()
{
    const DescriptorMessage message = DescriptorMessage::receive(m_descriptor);
    switch (message.kind) {
    case DescriptorMessage::Kind::nothingYet:
    case DescriptorMessage::Kind::other:
        return;
    case DescriptorMessage::Kind::ended:
        m_notifier.setEnabled(false);
        // Later, since whoever is told may end this object.
        return QTimer::singleShot(0, &m_notifier, m_reports.ended);
    case DescriptorMessage::Kind::descriptor:
        return take(message.descriptor);
    }
}

void LineListener::take(int descriptor)
{
    auto socket = std::make_unique<QTcpSocket>();
    if (socket->setSocketDescriptor(descriptor))
        m_reports.arrived(std::move(socket));
    else
        ::close(descriptor);
}

} // namespace quorvell
