// SPDX-License-Identifier: MIT
// Spoken conversations with the real service on this computer, over each transport: from the first loud sample to the
// wire, from the end of speech to the answer, from speaking over it to silence, and what a session costs meanwhile.
// Arguments: the program, a recorded request, a recorded interruption; if wanted how often the transports take turns,
// with three requests each, and which ones do. Prints one JSON object a transport.
#include "Media/audio/SampleBytes.h"
#include "Media/audio/WavFile.h"
#include "Quorvell/connections/access/HostedAccess.h"
#include "Quorvell/connections/access/LiveEndpointSettings.h"
#include "Quorvell/connections/choice/LiveConnectionChoice.h"
#include "Quorvell/desktop/QtScheduler.h"
#include "Quorvell/session/SessionController.h"
#include "Quorvell/session/reports/SessionObserver.h"
#include "QuorvellCore/live/gate/PCM.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTemporaryFile>
#include <nlohmann/json.hpp>
#include <sys/resource.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using namespace quorvell;
using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr const char* key = "a-key-for-benchmarks";
constexpr std::size_t chunkSamples = MicrophoneStream::chunkBytes / 2;
constexpr float loud = 0.06F; ///< The level at which the gate takes sound for speech.
constexpr int quietestSound = 33; ///< Of 32768; below is what Opus makes of silence.
constexpr int rounds = 3;

double processorSeconds()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

double residentMegabytes()
{
    std::ifstream status("/proc/self/statm");
    double pages = 0;
    status >> pages >> pages;
    return pages * 4096 / 1e6;
}

double median(std::vector<double> values)
{
    if (values.empty())
        return -1;
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

double millisecondsSince(Clock::time_point start)
{
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

double worst(const std::vector<double>& values)
{
    return values.empty() ? -1 : *std::ranges::max_element(values);
}

/// Of all sessions over one transport.
struct Figures {
    std::vector<double> connects;
    std::vector<double> onsets; ///< From the first loud sample to the wire.
    std::vector<double> transcripts; ///< From the end of speech until its words are told.
    std::vector<double> answers; ///< From the end of speech until the answer begins.
    std::vector<double> stops; ///< From the first loud sample of an interruption until the player is silenced.
    std::vector<double> talkingLoads; ///< Percent of a core.
    std::vector<double> quietLoads;

    Json json() const
    {
        return {{"replies", answers.size()}, {"connect_ms", median(connects)}, {"onset_to_wire_ms", median(onsets)},
            {"end_of_speech_to_words_ms", median(transcripts)}, {"end_of_speech_to_words_worst_ms", worst(transcripts)},
            {"end_of_speech_to_reply_ms", median(answers)}, {"end_of_speech_to_reply_worst_ms", worst(answers)},
            {"barge_in_to_stop_ms", median(stops)}, {"barge_in_to_stop_worst_ms", worst(stops)},
            {"talking_cpu_percent", median(talkingLoads)}, {"quiet_cpu_percent", median(quietLoads)},
            {"memory_mb", residentMegabytes()}};
    }
};

/// A loudspeaker that plays in step with the clock and tells when it began and was silenced.
class TimedPlayer : public AudioPlayer {
public:
    void play(std::span<const std::uint8_t> pcm) override
    {
        if (!isPlaying())
            m_end = Clock::now();
        const auto samples = samplesOfBytes(pcm);
        const auto isAudible = [](std::int16_t sample) { return std::abs(sample) >= quietestSound; };
        const auto first = std::find_if(samples.begin(), samples.end(), isAudible);
        if (began == Clock::time_point{} && first != samples.end())
            began = m_end + lengthOf(static_cast<std::size_t>(first - samples.begin()));
        m_end += lengthOf(samples.size());
        m_given += pcm.size() / 2;
    }
    void stop() override
    {
        stopped = Clock::now();
        m_forgotten += static_cast<std::size_t>(unplayed().count()) * MicrophoneStream::sampleRateHz / 1000;
        m_end = stopped;
    }
    std::chrono::milliseconds unplayed() const override
    {
        return std::max(0ms, std::chrono::ceil<std::chrono::milliseconds>(m_end - Clock::now()));
    }
    std::chrono::milliseconds played() const override
    {
        return std::chrono::milliseconds((m_given - m_forgotten) * 1000 / MicrophoneStream::sampleRateHz) - unplayed();
    }
    bool isPlaying() const { return m_end > Clock::now(); }

    /// What can be heard: over WebRTC the silence that a voice begins with is not played.
    Clock::time_point began{};
    Clock::time_point stopped{};

private:
    static std::chrono::microseconds lengthOf(std::size_t samples)
    {
        return std::chrono::microseconds(samples * 1'000'000 / MicrophoneStream::sampleRateHz);
    }

    Clock::time_point m_end{};
    std::size_t m_given = 0;
    std::size_t m_forgotten = 0;
};

/// Passes everything on and notes when sound is handed over.
class TimedConnection : public LiveConnection {
public:
    TimedConnection(std::unique_ptr<LiveConnection> real, Clock::time_point& sent)
        : m_real(std::move(real))
        , m_sent(sent)
    {
    }
    void open(const LiveSetup& setup) override { m_real->open(setup); }
    void sendAudio(std::span<const std::uint8_t> pcm) override
    {
        m_real->sendAudio(pcm);
        if (m_sent == Clock::time_point{})
            m_sent = Clock::now();
    }
    void sendAudioPause() override { m_real->sendAudioPause(); }
    void sendMessage(const LiveMessageText& message) override { m_real->sendMessage(message); }
    void requestAnswer() override { m_real->requestAnswer(); }
    void sendVoiceInstructions(const std::string& text) override { m_real->sendVoiceInstructions(text); }
    void sendToolResponse(const LiveFunctionResponse& response, LiveResponseScheduling scheduling) override
    {
        m_real->sendToolResponse(response, scheduling);
    }
    void dropStale() override { m_real->dropStale(); }
    void close() override { m_real->close(); }

private:
    std::unique_ptr<LiveConnection> m_real;
    Clock::time_point& m_sent;
};

class NoLog : public EventLog {
public:
    void record(std::string_view, const Json&) override { }
};

/// One session over one transport, with a room in which a request is made and then spoken over its answer.
class Walk : public SessionObserver {
public:
    Walk(QtScheduler& scheduler, const std::string& address, LiveBackend backend, LiveTransport transport,
        const std::vector<std::int16_t>& request, const std::vector<std::int16_t>& interruption, Figures& figures)
        : m_scheduler(scheduler)
        , m_request(request)
        , m_interruption(interruption)
        , m_figures(figures)
    {
        LiveEndpointSettings endpoint;
        endpoint.host = address;
        endpoint.backend = backend;
        endpoint.keys = {{backend, key}};
        m_access = std::make_unique<HostedAccess>(endpoint.choose().hosted.value_or(LiveAccess{}));
        LiveConnectionChoice::Settings choice;
        choice.backend = backend;
        choice.models = LiveModelSettings::usual(backend);
        choice.transport = transport;
        LiveConnectionChoice::Networks networks;
        networks.current = [] { return std::string(); };
        networks.now = [this] { return m_scheduler.wallClock(); };
        networks.changed = [](const BlockedNetworks&) {};
        m_choice = std::make_unique<LiveConnectionChoice>(*m_access, choice, networks);
        m_registry.add("set_reminder", [](const LiveFunctionCall&, ToolReply reply) {
            reply.answer({{"status", "set"}, {"id", "0a1b2c3d4e5f"}, {"task", "Call the dentist"},
                {"date", "2026-11-22 17:00"}, {"when", "Sunday 22 November at 5 PM"}, {"has_time", true}});
        });
        m_tools = std::make_unique<ToolDispatcher>(m_registry);
        SessionController::Ports ports{m_scheduler,
            [this](LiveConnectionObserver& observer, LiveMedium medium) {
                return std::make_unique<TimedConnection>(m_choice->make(observer, medium), m_sent);
            },
            m_player, m_log, *this, *m_tools, [] { return std::string("It is now."); }};
        SessionSettings settings;
        settings.restsWhenQuiet = false;
        m_session = std::make_unique<SessionController>(ports, settings);
    }

    void run()
    {
        m_start = Clock::now();
        m_ticks = m_scheduler.every(MicrophoneStream::chunkLength, [this] { feed(); });
        m_session->begin();
        wait(20s, [this] { return m_session->phase() == SessionPhase::active; });
        m_figures.connects.push_back(millisecondsSince(m_start));
        wait(1500ms);
        for (int round = 0; round < rounds; ++round)
            converse();
        const double before = processorSeconds();
        const auto quietSince = Clock::now();
        wait(5s);
        m_figures.quietLoads.push_back((processorSeconds() - before) / (millisecondsSince(quietSince) / 1000) * 100);
        m_session->stop("measured");
        wait(3s, [this] { return m_hasEnded; });
    }

    void userSaid(const std::string&, Words) override
    {
        if (m_transcribed == Clock::time_point{})
            m_transcribed = Clock::now();
    }
    void conversationEnded(const SessionEnd&) override { m_hasEnded = true; }

private:
    void converse()
    {
        const double before = processorSeconds();
        const auto since = Clock::now();
        say(m_request);
        wait(10s, [this] { return m_position == m_saying->size(); });
        m_figures.onsets.push_back(std::chrono::duration<double, std::milli>(m_sent - m_firstLoud).count());
        const auto end = Clock::now();
        m_player.began = {};
        m_transcribed = {};
        if (!wait(10s, [this] { return m_player.began != Clock::time_point{}; }))
            return;
        m_figures.answers.push_back(std::chrono::duration<double, std::milli>(m_player.began - end).count());
        if (m_transcribed != Clock::time_point{})
            m_figures.transcripts.push_back(std::chrono::duration<double, std::milli>(m_transcribed - end).count());
        m_figures.talkingLoads.push_back((processorSeconds() - before) / (millisecondsSince(since) / 1000) * 100);
        wait(800ms);
        m_player.stopped = {};
        say(m_interruption);
        if (wait(4s, [this] { return m_player.stopped != Clock::time_point{}; }))
            m_figures.stops.push_back(
                std::chrono::duration<double, std::milli>(m_player.stopped - m_firstLoud).count());
        wait(5s, [this] { return m_position == m_saying->size(); });
        wait(1500ms); // Until the answer to it begins.
        wait(15s, [this] { return !m_session->isTurnOpen() && !m_player.isPlaying(); });
        wait(500ms);
    }

    void say(const std::vector<std::int16_t>& words)
    {
        m_saying = &words;
        m_position = 0;
        m_firstLoud = {};
        m_sent = {};
    }

    void feed()
    {
        for (; m_chunks * MicrophoneStream::chunkLength <= Clock::now() - m_start; ++m_chunks) {
            Bytes chunk(MicrophoneStream::chunkBytes);
            const auto left =
                m_saying == nullptr ? std::span<const std::int16_t>() : std::span(*m_saying).subspan(m_position);
            const auto piece = left.first(std::min(left.size(), chunkSamples));
            std::ranges::copy(bytesOfSamples(piece), chunk.begin());
            m_position += piece.size();
            // A chunk is handed over at its end; its first sample sounded a chunk earlier.
            if (!piece.empty() && m_firstLoud == Clock::time_point{} && PCM::levelOfInt16LE(chunk) > loud)
                m_firstLoud = Clock::now() - MicrophoneStream::chunkLength;
            m_session->microphoneCaptured(chunk);
        }
    }

    template <typename Test> bool wait(std::chrono::milliseconds limit, const Test& isDone)
    {
        const auto end = Clock::now() + limit;
        while (!isDone() && Clock::now() < end)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents); // The room's ticks wake it.
        return isDone();
    }
    void wait(std::chrono::milliseconds time)
    {
        wait(time, [] { return false; });
    }

    QtScheduler& m_scheduler;
    const std::vector<std::int16_t>& m_request;
    const std::vector<std::int16_t>& m_interruption;
    Figures& m_figures;
    TimedPlayer m_player;
    NoLog m_log;
    ToolRegistry m_registry;
    std::unique_ptr<ToolDispatcher> m_tools;
    std::unique_ptr<LiveAccessSource> m_access;
    std::unique_ptr<LiveConnectionChoice> m_choice;
    Clock::time_point m_start{};
    Clock::time_point m_firstLoud{};
    Clock::time_point m_sent{};
    Clock::time_point m_transcribed{};
    const std::vector<std::int16_t>* m_saying = nullptr;
    std::size_t m_position = 0;
    std::int64_t m_chunks = 0;
    bool m_hasEnded = false;
    TimerHandle m_ticks;
    std::unique_ptr<SessionController> m_session;
};

std::vector<std::int16_t> recording(const char* path)
{
    return WavFile::read(path, MicrophoneStream::sampleRateHz).samples.value_or(std::vector<std::int16_t>{});
}

/// "ws://127.0.0.1:1234", from what the service prints.
std::string addressOf(QProcess& service)
{
    QByteArray output;
    for (int attempt = 0; attempt < 100 && !output.contains("Clients"); ++attempt) {
        service.waitForReadyRead(100);
        output += service.readAllStandardOutput();
    }
    const auto start = output.indexOf("ws://");
    return start < 0 ? std::string() : output.mid(start, output.indexOf('/', start + 5) - start).toStdString();
}

} // namespace

int main(int argumentCount, char** arguments)
{
    QCoreApplication application(argumentCount, arguments);
    if (argumentCount < 4)
        return std::fprintf(stderr, "liveWalk_bench PROGRAM REQUEST.wav INTERRUPTION.wav [TURNS [TRANSPORT...]]\n"), 2;
    const int turns = argumentCount > 4 ? std::atoi(arguments[4]) : 1;
    const std::vector<std::string_view> wanted(arguments + std::min(argumentCount, 5), arguments + argumentCount);
    QTemporaryFile token;
    if (!token.open() || token.write(key) < 0 || !token.flush())
        return 1;
    QProcess service;
    service.start(QString::fromUtf8(arguments[1]),
        {QStringLiteral("live-service"), QStringLiteral("--expect-speech"), QStringLiteral("--token-file"),
            token.fileName()});
    const std::string address = addressOf(service);
    const auto request = recording(arguments[2]);
    const auto interruption = recording(arguments[3]);
    QtScheduler scheduler;
    struct Row {
        const char* name;
        LiveBackend backend;
        LiveTransport transport;
        Figures figures;
    } rows[] = {{"websocket", LiveBackend::openAI, LiveTransport::webSocket, {}},
        {"webrtc", LiveBackend::openAI, LiveTransport::webRTC, {}},
        {"gemini", LiveBackend::gemini, LiveTransport::automatic, {}}};
    const auto isWanted = [&](const Row& row) {
        return wanted.empty() || std::find(wanted.begin(), wanted.end(), row.name) != wanted.end();
    };
    for (int turn = 0; turn < turns; ++turn) {
        for (Row& row : rows) {
            if (isWanted(row))
                Walk(scheduler, address, row.backend, row.transport, request, interruption, row.figures).run();
        }
    }
    for (const Row& row : rows) {
        if (!isWanted(row))
            continue;
        Json result = row.figures.json();
        result["transport"] = row.name;
        std::puts(dumpJson(result).c_str());
    }
    service.kill();
    service.waitForFinished();
    return 0;
}
