// SPDX-License-Identifier: MIT
// Calls over WebRTC on loopback, both ends in this process: how long a call takes to come about, what it holds, how
// long a text and a sound are under way, what it costs the processor. "--brief" only sees that it still measures.
#include "Media/audio/SampleBytes.h"
#include "Media/webrtc/WebRTCPeer.h"

#include <sys/resource.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <deque>
#include <fstream>
#include <mutex>
#include <thread>

namespace {

using namespace quorvell;
using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

double milliseconds(Clock::duration time)
{
    return std::chrono::duration<double, std::milli>(time).count();
}

/// The main thread's queue.
class Queue {
public:
    void post(std::function<void()> action)
    {
        const std::lock_guard lock(m_mutex);
        m_actions.push_back(std::move(action));
        m_wake.notify_one();
    }
    template <typename Done> bool runUntil(const Done& done, Clock::duration limit = 10s)
    {
        const auto end = Clock::now() + limit;
        while (!done()) {
            std::unique_lock lock(m_mutex);
            if (!m_wake.wait_until(lock, end, [this] { return !m_actions.empty(); }))
                return false;
            const auto action = std::move(m_actions.front());
            m_actions.pop_front();
            lock.unlock();
            action();
        }
        return true;
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_wake;
    std::deque<std::function<void()>> m_actions;
};

Queue queue;

struct End {
    explicit End(WebRTCPeerOptions::Role role)
    {
        WebRTCPeer::Reports reports;
        reports.descriptionReady = [this](const std::string& sdp) { description = sdp; };
        reports.channelOpened = [this] { isOpen = true; };
        reports.textReceived = [this](const std::string& text) {
            ++texts;
            if (echoes)
                static_cast<void>(peer->sendText(text));
        };
        reports.soundReceived = [this](const auto&) { ++sounds; };
        WebRTCPeerOptions options;
        options.role = role;
        options.reach = WebRTCPeerOptions::Reach::thisComputer;
        peer = std::make_unique<WebRTCPeer>(
            options, std::move(reports), [](std::function<void()> action) { queue.post(std::move(action)); });
    }

    std::string description;
    bool isOpen = false;
    bool echoes = false;
    int texts = 0;
    int sounds = 0;
    std::unique_ptr<WebRTCPeer> peer;
};

struct Call {
    End caller{WebRTCPeerOptions::Role::offers};
    End answerer{WebRTCPeerOptions::Role::answers};
    bool isUp = connect();

    bool connect()
    {
        if (!queue.runUntil([&] { return !caller.description.empty(); }))
            return false;
        answerer.peer->takeDescription(caller.description);
        if (!queue.runUntil([&] { return !answerer.description.empty(); }))
            return false;
        caller.peer->takeDescription(answerer.description);
        return queue.runUntil([&] { return caller.isOpen && answerer.isOpen; });
    }
};

double processorMilliseconds()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto of = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) * 1000 + static_cast<double>(time.tv_usec) / 1000;
    };
    return of(usage.ru_utime) + of(usage.ru_stime);
}

double residentMegabytes()
{
    std::ifstream status("/proc/self/statm");
    long total = 0, resident = 0;
    status >> total >> resident;
    return static_cast<double>(resident) * 4096 / 1e6;
}

double part(std::vector<double> values, double share)
{
    std::sort(values.begin(), values.end());
    return values.empty() ? 0 : values[static_cast<std::size_t>(share * static_cast<double>(values.size() - 1))];
}

std::vector<std::uint8_t> loud(std::chrono::milliseconds length)
{
    std::vector<std::int16_t> samples;
    for (int index = 0; index < length.count() * 24; ++index)
        samples.push_back(static_cast<std::int16_t>(index / 24 % 2 == 0 ? 8000 : -8000));
    const auto pcm = bytesOfSamples(samples);
    return {pcm.begin(), pcm.end()};
}

/// Share of one core that one of the two ends takes.
double percentOfCore(Call& call, bool talks)
{
    const auto sound = loud(2000ms);
    if (talks)
        call.caller.peer->sendSound(sound);
    const double before = processorMilliseconds();
    queue.runUntil([] { return false; }, 2000ms);
    return (processorMilliseconds() - before) / 2000 * 100 / 2;
}

} // namespace

int main(int argumentCount, char** arguments)
{
    const bool isBrief = argumentCount == 2 && std::string_view(arguments[1]) == "--brief";
    const int mostCalls = isBrief ? 10 : 40;
    const int textRounds = isBrief ? 10 : 1000;
    const int soundRounds = isBrief ? 1 : 20;
    std::vector<double> connecting, making, ending;
    const double bare = residentMegabytes();
    double afterTen = 0;
    for (int calls = 1; calls <= mostCalls; ++calls) {
        const auto start = Clock::now();
        auto call = std::make_unique<Call>();
        if (!call->isUp)
            return std::fprintf(stderr, "A call did not come about.\n"), 1;
        connecting.push_back(milliseconds(Clock::now() - start));
        const auto made = Clock::now();
        End third(WebRTCPeerOptions::Role::answers);
        making.push_back(milliseconds(Clock::now() - made));
        const auto end = Clock::now();
        call->caller.peer.reset();
        ending.push_back(milliseconds(Clock::now() - end));
        if (calls == 10)
            afterTen = residentMegabytes();
    }
    const double afterForty = residentMegabytes();

    Call call;
    if (!call.isUp)
        return std::fprintf(stderr, "A call did not come about.\n"), 1;
    const double held = residentMegabytes();
    std::vector<double> texts, sounds;
    call.answerer.echoes = true;
    for (int round = 1; round <= textRounds; ++round) {
        const auto start = Clock::now();
        if (!call.caller.peer->sendText(R"({"type":"response.create"})"))
            return std::fprintf(stderr, "A text could not be sent.\n"), 1;
        queue.runUntil([&] { return call.caller.texts == round; });
        texts.push_back(milliseconds(Clock::now() - start));
    }
    for (int round = 0; round < soundRounds; ++round) {
        queue.runUntil([] { return false; }, std::chrono::milliseconds(500 + 7 * round));
        const int before = call.answerer.sounds;
        const auto start = Clock::now();
        call.caller.peer->sendSound(loud(20ms));
        queue.runUntil([&] { return call.answerer.sounds > before; });
        sounds.push_back(milliseconds(Clock::now() - start));
    }
    const double quiet = percentOfCore(call, false);
    const double talking = percentOfCore(call, true);
    std::printf(
        "{\"connect_ms_p50\": %.1f, \"connect_ms_worst\": %.1f, \"make_peer_ms_p50\": %.2f, "
        "\"end_peer_ms_p50\": %.2f, \"first_call_mb\": %.1f, \"growth_10_to_40_calls_mb\": %.2f, "
        "\"text_round_trip_ms_p50\": %.2f, \"text_round_trip_ms_p95\": %.2f, \"sound_under_way_ms_p50\": %.1f, "
        "\"sound_under_way_ms_worst\": %.1f, \"quiet_percent_of_core\": %.2f, \"talking_percent_of_core\": %.2f}\n",
        part(connecting, 0.5), part(connecting, 1), part(making, 0.5), part(ending, 0.5), held - bare,
        afterForty - afterTen, part(texts, 0.5), part(texts, 0.95), part(sounds, 0.5), part(sounds, 1), quiet, talking);
}
