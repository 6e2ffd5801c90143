// SPDX-License-Identifier: MIT
// The connection to the desktop's sound server, which microphone and loudspeaker share.
#pragma once

#include "Quorvell/loop/GuardedPost.h"
#include "Quorvell/loop/Scheduler.h"
#include "Quorvell/sound/SoundDevices.h"
#include "Quorvell/sound/SoundProblem.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

struct pa_context;
struct pa_server_info;
struct pa_threaded_mainloop;

namespace quorvell {

class ServerWatch;

/// Finds the server, and finds it again when it was restarted. Main thread; the sound thread, which is its own, only
/// posts values. Nothing here waits.
class SoundServer {
public:
    struct Options {
        std::string address{}; ///< As in PULSE_SERVER; empty for the user's own server.
        std::string runtimeFolder{}; ///< XDG_RUNTIME_DIR, where the user's own server has its socket.
        std::string programName = "Quorvell";
    };

    class Listener {
    public:
        virtual ~Listener() = default;
        /// The server came, went or has other devices.
        virtual void soundServerChanged() = 0;
    };

    static constexpr std::chrono::milliseconds retryDelays[] = {std::chrono::milliseconds(50),
        std::chrono::milliseconds(200), std::chrono::milliseconds(750), std::chrono::milliseconds(2000)};

    /// The third failure in a row is told: before that, the server may just be restarting, or the user logging in.
    static constexpr std::size_t toldFailure = 3;

    /// Begins to connect. `scheduler` must outlive it; it must outlive its listeners.
    SoundServer(Options options, Scheduler& scheduler);
    ~SoundServer();
    SoundServer(const SoundServer&) = delete;
    SoundServer& operator=(const SoundServer&) = delete;

    void addListener(Listener& listener) { m_listeners.push_back(&listener); }
    void removeListener(Listener& listener);

    /// Connected, and the devices are known.
    bool isReady() const { return m_isReady; }
    /// Why not; none while that is still open.
    SoundProblem problem() const { return m_problem; }
    const SoundDevices& devices() const { return m_devices; }
    /// Tries at once where it was given up, as when the user asks for help again.
    void retry();

    // For the microphone and the loudspeaker
    pa_context* context() const { return m_context; }
    pa_threaded_mainloop* loop() const { return m_loop; }
    Scheduler& scheduler() const { return m_scheduler; }

private:
    struct Callbacks;
    struct Listing;

    void connect();
    void disconnect();
    void contextChanged(int state, int error);
    void connectionFailed(SoundProblem problem);
    void watchForServer();
    void listDevices();
    void devicesListed(SoundDevices devices);
    void notify();

    Scheduler& m_scheduler;
    Options m_options;
    pa_threaded_mainloop* m_loop;
    pa_context* m_context = nullptr;
    std::uint64_t m_serial = 0; ///< Of the connection; what an earlier one still reports is dropped.
    std::unique_ptr<Listing> m_listing; ///< The sound thread's.
    bool m_isListing = false;
    bool m_listAgain = false;
    bool m_isReady = false;
    SoundProblem m_problem = SoundProblem::none;
    SoundDevices m_devices;
    std::size_t m_failures = 0; ///< In a row.
    TimerHandle m_retry;
    std::unique_ptr<ServerWatch> m_watch;
    std::vector<Listener*> m_listeners;
    GuardedPost m_post;
};

} // namespace quorvell
