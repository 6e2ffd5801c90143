// SPDX-License-Identifier: MIT
#include "LiveService/server/LineListener.h"

#include <QObject>
#include <QTimer>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <utility>

namespace quorvell {

namespace {

/// What came with a message; -1 when nothing did. An assistant hands over one at a time, and more find no room.
int descriptorIn(msghdr& message)
{
    for (cmsghdr* header = CMSG_FIRSTHDR(&message); header; header = CMSG_NXTHDR(&message, header)) {
        if (header->cmsg_level != SOL_SOCKET || header->cmsg_type != SCM_RIGHTS
            || header->cmsg_len != CMSG_LEN(sizeof(int)))
            continue;
        int descriptor = -1;
        std::memcpy(&descriptor, CMSG_DATA(header), sizeof(int));
        return descriptor;
    }
    return -1;
}

} // namespace

LineListener::LineListener(int descriptor, Reports reports)
    : m_descriptor(descriptor)
    , m_reports(std::move(reports))
    , m_notifier(descriptor, QSocketNotifier::Read)
{
    QObject::connect(&m_notifier, &QSocketNotifier::activated, &m_notifier, [this] { read(); });
}

void LineListener::read()
{
    char byte = 0;
    iovec content{&byte, 1};
    alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(int))> control{};
    msghdr message{};
    message.msg_iov = &content;
    message.msg_iovlen = 1;
    message.msg_control = control.data();
    message.msg_controllen = control.size();
    const ssize_t length = ::recvmsg(m_descriptor, &message, MSG_DONTWAIT | MSG_CMSG_CLOEXEC);
    if (length < 0 && (errno == EAGAIN || errno == EINTR))
        return;
    if (length <= 0) {
        m_notifier.setEnabled(false);
        // Later, since whoever is told may end this object.
        return QTimer::singleShot(0, &m_notifier, m_reports.ended);
    }
    const int descriptor = descriptorIn(message);
    if (descriptor < 0)
        return;
    auto socket = std::make_unique<QTcpSocket>();
    if (socket->setSocketDescriptor(descriptor))
        m_reports.arrived(std::move(socket));
    else
        ::close(descriptor);
}

} // namespace quorvell
