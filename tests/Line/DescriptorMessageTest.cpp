// SPDX-License-Identifier: MIT
// Faults: a descriptor that does not arrive or leaks into other programs, and a line without one that is taken for one.
#include "Line/DescriptorMessage.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>

namespace quorvell {

namespace {

using Kind = DescriptorMessage::Kind;

std::array<int, 2> socketPair()
{
    std::array<int, 2> ends{-1, -1};
    EXPECT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()), 0);
    return ends;
}

} // namespace

TEST(DescriptorMessage, carriesOneDescriptor)
{
    const auto [near, far] = socketPair();
    EXPECT_EQ(DescriptorMessage::receive(far).kind, Kind::nothingYet);

    const auto [ours, theirs] = socketPair();
    ASSERT_TRUE(DescriptorMessage::send(near, theirs));
    ::close(theirs);
    const DescriptorMessage message = DescriptorMessage::receive(far);
    ASSERT_EQ(message.kind, Kind::descriptor);
    EXPECT_TRUE(::fcntl(message.descriptor, F_GETFD) & FD_CLOEXEC);
    ASSERT_EQ(::write(ours, "x", 1), 1);
    char letter = 0;
    EXPECT_EQ(::read(message.descriptor, &letter, 1), 1);
    EXPECT_EQ(letter, 'x');
    ::close(message.descriptor);
    ::close(ours);

    ASSERT_EQ(::write(near, "x", 1), 1);
    EXPECT_EQ(DescriptorMessage::receive(far).kind, Kind::other);

    ::close(near);
    EXPECT_EQ(DescriptorMessage::receive(far).kind, Kind::ended);
    EXPECT_FALSE(DescriptorMessage::send(far, far)); // And no signal ends this program.
    ::close(far);
}

} // namespace quorvell
