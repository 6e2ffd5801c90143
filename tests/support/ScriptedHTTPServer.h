// SPDX-License-Identifier: MIT
// A server on loopback that answers as a test says, byte for byte: also what no real one would.
#pragma once

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <list>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

namespace quorvell::test {

/// Each connection has a thread of its own.
class ScriptedHTTPServer {
public:
    struct Reply {
        enum class Then { goesOn, hangsUp, isSilent };

        std::string bytes{};
        Then then = Then::goesOn;
        std::string repeated{}; ///< Without end, behind the bytes.
        std::chrono::milliseconds every{0}; ///< Between repetitions.
    };
    using Script = std::function<Reply(const std::string& request)>;

    static Reply answer(int status, std::string_view body, std::string_view fields = {})
    {
        return {"HTTP/1.1 " + std::to_string(status) + " X\r\n" + std::string(fields)
            + "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + std::string(body)};
    }

    explicit ScriptedHTTPServer(Script script)
        : m_script(std::move(script))
        , m_listener(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        sockaddr_in address{.sin_family = AF_INET, .sin_port = 0, .sin_addr = {htonl(INADDR_LOOPBACK)}, .sin_zero = {}};
        socklen_t size = sizeof address;
        ::bind(m_listener, reinterpret_cast<sockaddr*>(&address), size);
        ::listen(m_listener, 64);
        ::getsockname(m_listener, reinterpret_cast<sockaddr*>(&address), &size);
        m_port = std::to_string(ntohs(address.sin_port));
        m_acceptor = std::jthread([this] { accept(); });
    }
    ~ScriptedHTTPServer()
    {
        ::shutdown(m_listener, SHUT_RDWR);
        m_acceptor.join();
        ::close(m_listener);
    }

    const std::string& port() const { return m_port; }
    std::string url(std::string_view path = "/") const { return "http://127.0.0.1:" + m_port + std::string(path); }
    int connections() const { return m_count; }
    /// Head and body of each.
    std::vector<std::string> requests() const
    {
        const std::lock_guard lock(m_mutex);
        return m_requests;
    }

private:
    struct Connection {
        explicit Connection(int accepted)
            : socket(accepted)
        {
        }
        int socket;
        std::jthread thread{};
        ~Connection()
        {
            ::shutdown(socket, SHUT_RDWR);
            thread.request_stop();
            thread.join();
            ::close(socket);
        }
    };

    void accept()
    {
        for (int socket = 0; (socket = ::accept(m_listener, nullptr, nullptr)) >= 0; ++m_count)
            m_connections.emplace_back(socket).thread =
                std::jthread([this, socket](const std::stop_token& stop) { serve(socket, stop); });
    }
    void serve(int socket, const std::stop_token& stop)
    {
        for (std::string request = received(socket); !request.empty(); request = received(socket)) {
            {
                const std::lock_guard lock(m_mutex);
                m_requests.push_back(request);
            }
            const Reply reply = m_script(request);
            bool isThere = hasSent(socket, reply.bytes);
            while (isThere && !reply.repeated.empty()) {
                pause(reply.every, stop);
                isThere = hasSent(socket, reply.repeated);
            }
            if (reply.then == Reply::Then::isSilent)
                pause(std::chrono::minutes(5), stop);
            if (reply.then == Reply::Then::hangsUp)
                ::shutdown(socket, SHUT_RDWR);
        }
    }
    static bool hasSent(int socket, std::string_view bytes)
    {
        ssize_t sent = 0;
        for (; !bytes.empty() && sent >= 0; bytes.remove_prefix(sent > 0 ? static_cast<std::size_t>(sent) : 0))
            sent = ::send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        return sent >= 0;
    }
    /// The next request; empty when there is none.
    static std::string received(int socket)
    {
        constexpr std::string_view lengthField = "\r\nContent-Length: ";
        std::string text;
        char bytes[16 * 1024];
        for (std::size_t wanted = 1; text.size() < wanted;) {
            const ssize_t count = ::recv(socket, bytes, sizeof bytes, 0);
            if (count <= 0)
                return {};
            text.append(bytes, static_cast<std::size_t>(count));
            const std::size_t head = text.find("\r\n\r\n");
            const std::size_t length = text.find(lengthField);
            wanted = head == text.npos
                ? text.size() + 1
                : head + 4 + (length < head ? std::stoul(text.substr(length + lengthField.size())) : 0);
        }
        return text;
    }
    static void pause(std::chrono::milliseconds time, const std::stop_token& stop)
    {
        std::mutex mutex;
        std::unique_lock lock(mutex);
        std::condition_variable_any().wait_for(lock, stop, time, [] { return false; });
    }

    Script m_script;
    int m_listener;
    std::string m_port;
    std::atomic<int> m_count = 0;
    mutable std::mutex m_mutex;
    std::vector<std::string> m_requests; ///< Guarded by the mutex.
    std::list<Connection> m_connections; ///< Of the accepting thread, and then of whoever has joined it.
    std::jthread m_acceptor;
};

} // namespace quorvell::test
