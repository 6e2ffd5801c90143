// SPDX-License-Identifier: MIT
// Calls over WebRTC on loopback, both ends in this process: how long a call takes to come about, beside one of the bare
// library, what it holds, how long a text and a sound are under way, what it costs the processor. "--brief" only sees
// that it still measures.
#include "BareCall.h"
#include "Media/audio/SampleBytes.h"
#include "Media/webrtc/WebRTCPeer.h"

#include <sys/resource.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <deque>
#include <fstream>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

namespace {

using namespace quorvell;
using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr int audible = 1000; ///< Of 32768; the sound that is sent has 8000.

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

/// As low as a voice, 125 Hz: a jitter buffer that catches up leaves out whole periods.
std::vector<std::uint8_t> sound(std::chrono::milliseconds length, std::int16_t level)
{
    std::vector<std::int16_t> samples;
    for (int index = 0; index < length.count() * 24; ++index)
        samples.push_back(static_cast<std::int16_t>(index / 96 % 2 == 0 ? level : -level));
    const auto pcm = bytesOfSamples(samples);
    return {pcm.begin(), pcm.end()};
}

std::vector<std::uint8_t> loud(std::chrono::milliseconds length)
{
    return sound(length, 8000);
}

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
        reports.soundReceived = [this](const std::vector<std::uint8_t>& pcm) {
            ++sounds;
            if (std::ranges::any_of(samplesOfBytes(pcm), [](std::int16_t sample) { return sample > audible; }))
                lastHeard = Clock::now();
            if (firstHeard == Clock::time_point{})
                firstHeard = lastHeard;
        };
        WebRTCPeerOptions options;
        options.role = role;
        if (role == WebRTCPeerOptions::Role::offers)
            options.backlog = WebRTCPeerOptions::Backlog::caughtUp;
        options.reach = WebRTCPeerOptions::Reach::thisComputer;
        peer = std::make_unique<WebRTCPeer>(
            options, std::move(reports), [](std::function<void()> action) { queue.post(std::move(action)); });
    }

    std::string description;
    bool isOpen = false;
    bool echoes = false;
    int texts = 0;
    int sounds = 0;
    Clock::time_point firstHeard{};
    Clock::time_point lastHeard{};
    std::unique_ptr<WebRTCPeer> peer;
};

struct Call {
    End caller{WebRTCPeerOptions::Role::offers};
    End answerer{WebRTCPeerOptions::Role::answers};
    bool isUp = connect();

    bool connect()
    {
        caller.peer->sendSound(loud(500ms)); // Goes out as soon as it can.
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

/// A microphone behind its gate: what came before two loud chunks in one go, then a chunk at a time. How long the last
/// loud one takes to be heard at the other end.
double speechEndUnderWay(Call& call)
{
    constexpr auto chunk = 40ms;
    constexpr int loudChunks = 30;
    call.caller.peer->sendSound(sound(8 * chunk, 0));
    call.caller.peer->sendSound(loud(2 * chunk));
    auto next = Clock::now();
    Clock::time_point lastGiven;
    for (int index = 0; index < 2 * loudChunks; ++index) {
        next += chunk;
        queue.runUntil([] { return false; }, next - Clock::now());
        if (index < loudChunks)
            lastGiven = Clock::now();
        call.caller.peer->sendSound(index < loudChunks ? loud(chunk) : sound(chunk, 0));
    }
    return milliseconds(call.answerer.lastHeard - lastGiven);
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

/// Milliseconds from the making of the peers on.
struct Connections {
    std::vector<double> open, sound, bareOpen, bareSound;
};

/// Ours and the bare library's take turns, so that both meet the same load. What the library keeps ready since the
/// first call serves both.
std::optional<Connections> compareConnections(int pairs)
{
    Connections times;
    for (int pair = 0; pair < pairs; ++pair) {
        const auto start = Clock::now();
        Call call;
        times.open.push_back(milliseconds(Clock::now() - start));
        if (!call.isUp || !queue.runUntil([&] { return call.answerer.firstHeard != Clock::time_point{}; }))
            return std::nullopt;
        times.sound.push_back(milliseconds(call.answerer.firstHeard - start));
        BareCall bare;
        const auto reached = bare.connect();
        if (!reached)
            return std::nullopt;
        times.bareOpen.push_back(milliseconds(reached->toOpen));
        times.bareSound.push_back(milliseconds(reached->toSound));
    }
    return times;
}

} // namespace

int main(int argumentCount, char** arguments)
{
    const bool isBrief = argumentCount == 2 && std::string_view(arguments[1]) == "--brief";
    const int mostCalls = isBrief ? 10 : 40;
    const int textRounds = isBrief ? 10 : 1000;
    const int soundRounds = isBrief ? 1 : 20;
    std::vector<double> making, ending;
    const double bare = residentMegabytes();
    double afterTen = 0;
    for (int calls = 1; calls <= mostCalls; ++calls) {
        auto call = std::make_unique<Call>();
        if (!call->isUp)
            return std::fprintf(stderr, "A call did not come about.\n"), 1;
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
    const auto connections = compareConnections(isBrief ? 2 : 25);
    if (!connections)
        return std::fprintf(stderr, "A call did not come about.\n"), 1;

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
    std::vector<double> speechEnds;
    for (int round = 0; round < (isBrief ? 1 : 12); ++round)
        speechEnds.push_back(speechEndUnderWay(call));
    const double quiet = percentOfCore(call, false);
    const double talking = percentOfCore(call, true);
    const auto row = [](const char* name, double value, const char* after = ", ") {
        std::printf("\"%s\": %.2f%s", name, value, after);
    };
    const auto compared = [&](const std::string& name, const std::vector<double>& ours,
                              const std::vector<double>& bareOnes) {
        row((name + "_ms_p50").c_str(), part(ours, 0.5));
        row((name + "_ms_worst").c_str(), part(ours, 1));
        row(("bare_" + name + "_ms_p50").c_str(), part(bareOnes, 0.5));
        row((name + "_ratio_to_bare").c_str(), part(ours, 0.5) / part(bareOnes, 0.5));
    };
    std::printf("{");
    compared("connect", connections->open, connections->bareOpen);
    compared("connect_to_sound", connections->sound, connections->bareSound);
    row("make_peer_ms_p50", part(making, 0.5));
    row("end_peer_ms_p50", part(ending, 0.5));
    row("first_call_mb", held - bare);
    row("growth_10_to_40_calls_mb", afterForty - afterTen);
    row("text_round_trip_ms_p50", part(texts, 0.5));
    row("text_round_trip_ms_p95", part(texts, 0.95));
    row("sound_under_way_ms_p50", part(sounds, 0.5));
    row("sound_under_way_ms_worst", part(sounds, 1));
    row("speech_end_under_way_ms_p50", part(speechEnds, 0.5));
    row("speech_end_under_way_ms_worst", part(speechEnds, 1));
    row("quiet_percent_of_core", quiet);
    row("talking_percent_of_core", talking, "}\n");
}
