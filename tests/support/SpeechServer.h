// SPDX-License-Identifier: MIT
// A Wyoming service of the tests: one connection after the other, each answered as the test says.
#pragma once

#include "Wyoming/WyomingLine.h"

#include <arpa/inet.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <functional>
#include <string>
#include <thread>

namespace quorvell::test {

/// On a thread of its own; ends when the test does, whatever it was doing.
class SpeechServer {
public:
    /// Gets what came so far, each time more did, and answers with bytes; `isOver` hangs up behind them.
    struct Answer {
        std::string bytes{};
        bool isOver = false;
    };
    using Answering = std::function<Answer(const std::string& received)>;

    explicit SpeechServer(Answering answering)
        : m_answering(std::move(answering))
    {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        bind(m_listener, reinterpret_cast<const sockaddr*>(&address), size);
        listen(m_listener, 8);
        getsockname(m_listener, reinterpret_cast<sockaddr*>(&address), &size);
        m_address = {"127.0.0.1", ntohs(address.sin_port)};
        m_thread = std::jthread([this](const std::stop_token& stop) { run(stop); });
    }
    ~SpeechServer()
    {
        m_thread.request_stop();
        m_thread.join();
        close(m_listener);
    }
    SpeechServer(const SpeechServer&) = delete;
    SpeechServer& operator=(const SpeechServer&) = delete;

    const WyomingAddress& address() const { return m_address; }
    int connections() const { return m_connections; }

    /// Answers once the sound, or the text, is whole.
    static Answering whenAsked(std::string answer, bool isOver = false)
    {
        return [answer = std::move(answer), isOver](const std::string& received) {
            const bool isAsked =
                received.find("audio-stop") != std::string::npos || received.find("synthesize") != std::string::npos;
            return isAsked ? Answer{answer, isOver} : Answer{};
        };
    }

private:
    static bool waitFor(int descriptor, short events, const std::stop_token& stop)
    {
        while (!stop.stop_requested()) {
            pollfd state{descriptor, events, 0};
            if (poll(&state, 1, 20) > 0)
                return true;
        }
        return false;
    }
    void run(const std::stop_token& stop)
    {
        while (waitFor(m_listener, POLLIN, stop)) {
            const int peer = accept4(m_listener, nullptr, nullptr, SOCK_NONBLOCK);
            ++m_connections;
            serve(peer, stop);
            close(peer);
        }
    }
    void serve(int peer, const std::stop_token& stop)
    {
        std::string received;
        std::array<char, 65536> buffer{};
        while (waitFor(peer, POLLIN, stop)) {
            const auto count = recv(peer, buffer.data(), buffer.size(), 0);
            if (count <= 0)
                return;
            received.append(buffer.data(), static_cast<std::size_t>(count));
            const Answer answer = m_answering(received);
            std::size_t sent = 0;
            while (sent < answer.bytes.size() && waitFor(peer, POLLOUT, stop)) {
                const auto taken = ::send(peer, answer.bytes.data() + sent, answer.bytes.size() - sent, MSG_NOSIGNAL);
                if (taken < 0)
                    return;
                sent += static_cast<std::size_t>(taken);
            }
            if (answer.isOver)
                return;
        }
    }

    Answering m_answering;
    int m_listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    WyomingAddress m_address;
    std::atomic<int> m_connections = 0;
    std::jthread m_thread;
};

} // namespace quorvell::test
