// SPDX-License-Identifier: MIT
#include "Wyoming/WyomingLine.h"

#include <fcntl.h>
#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <memory>

namespace quorvell {

namespace {

/// Becomes readable once a stop is requested, from any thread.
class StopSignal {
public:
    StopSignal()
        : m_event(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
    {
    }
    ~StopSignal()
    {
        if (m_event >= 0)
            close(m_event);
    }
    StopSignal(const StopSignal&) = delete;
    StopSignal& operator=(const StopSignal&) = delete;

    void raise() const
    {
        const std::uint64_t one = 1;
        [[maybe_unused]] const auto written = write(m_event, &one, sizeof one);
    }
    int descriptor() const { return m_event; }

private:
    int m_event;
};

struct FreeAddresses {
    void operator()(addrinfo* list) const { freeaddrinfo(list); }
};

} // namespace

WyomingLine::WyomingLine(const WyomingAddress& address, Moment now)
    : m_connectBy(now + connecting)
{
    connectTo(address);
    exchange(now);
}

WyomingLine::~WyomingLine()
{
    if (m_socket >= 0)
        close(m_socket);
}

void WyomingLine::fail()
{
    m_hasFailed = true;
    m_unsent.clear();
}

void WyomingLine::connectTo(const WyomingAddress& address)
{
    addrinfo hints{};
    hints.ai_socktype = SOCK_STREAM;
    hints.ai_flags = AI_NUMERICSERV;
    addrinfo* found = nullptr;
    const std::string host = address.host == "localhost" ? "127.0.0.1" : address.host;
    if (getaddrinfo(host.c_str(), std::to_string(address.port).c_str(), &hints, &found) != 0)
        return fail();
    const std::unique_ptr<addrinfo, FreeAddresses> first(found);
    m_socket = socket(first->ai_family, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (m_socket < 0)
        return fail();
    const int yes = 1;
    setsockopt(m_socket, IPPROTO_TCP, TCP_NODELAY, &yes, sizeof yes);
    if (connect(m_socket, first->ai_addr, first->ai_addrlen) != 0 && errno != EINPROGRESS)
        fail();
}

void WyomingLine::send(const WyomingEvent& event, Moment now)
{
    if (m_hasFailed)
        return;
    m_unsent += event.bytes();
    if (m_unsent.size() > mostUnsent)
        return fail();
    exchange(now);
}

void WyomingLine::exchange(Moment now)
{
    if (m_hasFailed)
        return;
    pollfd state{m_socket, POLLIN | POLLOUT, 0};
    if (poll(&state, 1, 0) < 0)
        return;
    if (!m_isConnected && (state.revents & (POLLOUT | POLLERR | POLLHUP)) != 0) {
        int problem = 0;
        socklen_t size = sizeof problem;
        if (getsockopt(m_socket, SOL_SOCKET, SO_ERROR, &problem, &size) != 0 || problem != 0)
            return fail();
        m_isConnected = true;
    }
    if (isLate(now))
        return fail();
    if (!m_isConnected)
        return;
    if ((state.revents & POLLOUT) != 0)
        sendQueued();
    if (!m_hasFailed && (state.revents & (POLLIN | POLLHUP)) != 0 && m_reader.waiting() < WyomingReader::mostWaiting)
        readArrived();
}

void WyomingLine::sendQueued()
{
    std::size_t sent = 0;
    while (sent < m_unsent.size()) {
        const auto count = ::send(m_socket, m_unsent.data() + sent, m_unsent.size() - sent, MSG_NOSIGNAL);
        if (count < 0 && errno != EAGAIN && errno != EINTR)
            return fail();
        if (count <= 0)
            break;
        sent += static_cast<std::size_t>(count);
    }
    m_unsent.erase(0, sent);
}

/// At most one buffer's worth: a service that sends without end is read no faster than it is listened to.
void WyomingLine::readArrived()
{
    std::array<char, 64 * 1024> buffer{};
    const auto count = recv(m_socket, buffer.data(), buffer.size(), 0);
    if (count > 0)
        m_reader.add({buffer.data(), static_cast<std::size_t>(count)});
    else if (count == 0 || (errno != EAGAIN && errno != EINTR))
        m_isEnded = true;
}

WyomingLine::Waiting WyomingLine::receive(WyomingEvent& event, Moment until, const std::stop_token& stop)
{
    const StopSignal signal;
    const std::stop_callback raise(stop, [&signal] { signal.raise(); });
    while (true) {
        if (auto next = m_reader.next()) {
            event = *std::move(next);
            return Waiting::open;
        }
        if (m_reader.isBroken() || m_isEnded)
            fail();
        if (m_hasFailed)
            return Waiting::failed;
        if (stop.stop_requested())
            return Waiting::stopped;
        const Moment now = std::chrono::steady_clock::now();
        if (now >= until)
            return Waiting::timedOut;
        const Moment next = m_isConnected ? until : std::min(until, m_connectBy);
        const auto wait = std::chrono::ceil<std::chrono::milliseconds>(next - now).count();
        const bool wantsToSend = !m_isConnected || !m_unsent.empty();
        std::array<pollfd, 2> states{pollfd{m_socket, static_cast<short>(POLLIN | (wantsToSend ? POLLOUT : 0)), 0},
            pollfd{signal.descriptor(), POLLIN, 0}};
        poll(states.data(), states.size(), static_cast<int>(std::max<std::int64_t>(wait, 0)));
        exchange(std::chrono::steady_clock::now());
    }
}

} // namespace quorvell
