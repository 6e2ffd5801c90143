// SPDX-License-Identifier: MIT
#include "Quorvell/connections/access/ChildLine.h"

#include "Line/DescriptorMessage.h"

#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <utility>

namespace quorvell {

namespace {

void closeDescriptor(int& descriptor)
{
    if (descriptor >= 0)
        ::close(std::exchange(descriptor, -1));
}

} // namespace

ChildLine::ChildLine()
{
    std::array<int, 2> ends{-1, -1};
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0)
        return;
    m_ours = ends[0];
    m_childs = ends[1];
}

ChildLine::~ChildLine()
{
    hangUp();
    closeDescriptor(m_childs);
}

void ChildLine::childStarted()
{
    closeDescriptor(m_childs);
}

void ChildLine::write(std::string_view text)
{
    // Short, into an empty line: it fits at once. A child that is gone is noticed by its end.
    static_cast<void>(::send(m_ours, text.data(), text.size(), MSG_NOSIGNAL | MSG_DONTWAIT));
}

void ChildLine::hangUp()
{
    closeDescriptor(m_ours);
}

int ChildLine::connect()
{
    std::array<int, 2> ends{-1, -1};
    if (m_ours < 0 || ::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0)
        return -1;
    if (!DescriptorMessage::send(m_ours, ends[1]))
        closeDescriptor(ends[0]);
    closeDescriptor(ends[1]);
    return ends[0];
}

} // namespace quorvell
