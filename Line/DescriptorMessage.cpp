// SPDX-License-Identifier: MIT
#include "Line/DescriptorMessage.h"

#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <cstring>

namespace quorvell {

namespace {

/// Room for one byte and one descriptor. Stays where it is, since the message points into it.
class DescriptorBuffer {
public:
    DescriptorBuffer()
    {
        message.msg_iov = &m_content;
        message.msg_iovlen = 1;
        message.msg_control = m_control.data();
        message.msg_controllen = m_control.size();
    }
    DescriptorBuffer(const DescriptorBuffer&) = delete;
    DescriptorBuffer& operator=(const DescriptorBuffer&) = delete;

    msghdr message{};

private:
    char m_byte = 0; // A message that only carries a descriptor would be none.
    iovec m_content{&m_byte, 1};
    alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(int))> m_control{};
};

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

bool DescriptorMessage::send(int line, int descriptor)
{
    DescriptorBuffer buffer;
    cmsghdr* header = CMSG_FIRSTHDR(&buffer.message);
    header->cmsg_level = SOL_SOCKET;
    header->cmsg_type = SCM_RIGHTS;
    header->cmsg_len = CMSG_LEN(sizeof(int));
    std::memcpy(CMSG_DATA(header), &descriptor, sizeof(int));
    return ::sendmsg(line, &buffer.message, MSG_NOSIGNAL | MSG_DONTWAIT) == 1;
}

DescriptorMessage DescriptorMessage::receive(int line)
{
    DescriptorBuffer buffer;
    const ssize_t length = ::recvmsg(line, &buffer.message, MSG_DONTWAIT | MSG_CMSG_CLOEXEC);
    if (length < 0 && (errno == EAGAIN || errno == EINTR))
        return {Kind::nothingYet};
    if (length <= 0)
        return {Kind::ended};
    const int descriptor = descriptorIn(buffer.message);
    return {descriptor < 0 ? Kind::other : Kind::descriptor, descriptor};
}

} // namespace quorvell
