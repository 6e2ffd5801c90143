// SPDX-License-Identifier: MIT
// Prints one table of transports and faults: what the user would have met. With --long the program's own limits and
// recorded speech, else shortened ones and typing; --brief leaves faults out that differ little; --repeats N sets how
// often one fault is repeated for the memory.
#include "FaultRun.h"
#include "Media/audio/WavFile.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTemporaryDir>
#include <malloc.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <map>
#include <string>
#include <thread>

using namespace quorvell;
using namespace quorvell::walk;
using namespace std::chrono_literals;

namespace {

const std::vector<Carrier> everywhere{Carrier::webSocket, Carrier::webRTC, Carrier::gemini, Carrier::responses};
const std::vector<Carrier> spoken{Carrier::webSocket, Carrier::webRTC, Carrier::gemini};
const std::vector<Carrier> openAILive{Carrier::webSocket, Carrier::webRTC};

const std::vector<FaultRow> faultRows{
    {Brief::yes, "none", {}, everywhere},
    {Brief::no, "slow by half a second", {"slow=500ms"}, everywhere},
    {Brief::no, "refused, 400, a setting", {"refuse=400:service_tier@1"}, everywhere},
    {Brief::yes, "refused, 401", {"refuse=401"}, everywhere},
    {Brief::no, "refused, 403", {"refuse=403"}, everywhere},
    {Brief::no, "refused, 429, once", {"refuse=429@1"}, everywhere},
    {Brief::no, "refused, 500, once", {"refuse=500@1"}, everywhere},
    {Brief::yes, "refused, 503, once", {"refuse=503@1"}, everywhere},
    {Brief::no, "refused, 503, for good", {"refuse=503"}, everywhere},
    {Brief::no, "cut at once", {"drop=2@1"}, everywhere},
    {Brief::yes, "cut in an answer", {"drop=6@1"}, everywhere},
    {Brief::no, "cut again and again", {"drop=8@1", "drop=8@2", "drop=8@3"}, everywhere},
    {Brief::yes, "silent, half open", {"half-open=6@1"}, everywhere},
    {Brief::yes, "silent, nothing said", {"stuck=6@1"}, everywhere},
    {Brief::yes, "computer sleeps", {"asleep=1200ms@1"}, everywhere, false, 1200ms},
    {Brief::no, "pongs late", {"late-pong=30s@1"}, {Carrier::webSocket, Carrier::gemini}},
    {Brief::no, "closed, 1001", {"close=1001:6@1"}, spoken},
    {Brief::no, "closed, 1006", {"close=1006:6@1"}, spoken},
    {Brief::no, "closed, 1007", {"close=1007:6@1"}, spoken},
    {Brief::no, "closed, 1008", {"close=1008:6@1"}, spoken},
    {Brief::yes, "closed, 1011", {"close=1011:6@1"}, spoken},
    {Brief::no, "end announced", {"go-away=1s:2s@1"}, {Carrier::gemini}},
    {Brief::yes, "end announced, handle refused", {"go-away=1s:2s@1", "reject-handle"}, {Carrier::gemini}},
    {Brief::no, "a text that is no JSON", {"malformed=5@1"}, everywhere},
    {Brief::yes, "a text of 17 MiB", {"oversized=5@1"}, everywhere},
    {Brief::yes, "every message twice", {"duplicate"}, everywhere},
    {Brief::yes, "messages out of order", {"reorder"}, spoken},
    {Brief::yes, "closed while a tool runs", {"close-in-tool@1"}, everywhere},
    {Brief::yes, "a request to answer refused", {"reject-create=1@1"}, openAILive},
    {Brief::yes, "media do not get through", {"udp-blocked"}, {Carrier::webRTC}},
    {Brief::yes, "session ends of age", {"age=2s@1"}, spoken},
    {Brief::no, "context nearly full", {"context=90@1"}, spoken},
    {Brief::yes, "certificate of another name", {}, everywhere, true},
};

struct Options {
    bool isLong = false;
    bool isBrief = false; ///< Only what differs in kind.
    std::string only; ///< Part of a fault's name; empty for all.
    int repeats = 50;
};

FaultPatience patienceFor(const Options& options)
{
    FaultPatience patience;
    if (options.isLong)
        return patience;
    patience.connection = {.toOpen = 3s,
        .toConnectMedia = 2s,
        .toStart = 3s,
        .toClose = 500ms,
        .betweenPings = 400ms,
        .silence = 1200ms,
        .disconnection = 500ms,
        .quietTurn = 3s,
        .owedWord = 1s,
        .toSayItIsThere = 1s,
        .streamSilence = 2s};
    patience.session.reconnectShortest = 100ms;
    patience.session.reconnectLongest = 1s;
    patience.session.followThrough = 3s;
    patience.answer = 12s;
    patience.request = 20s;
    return patience;
}

/// What is said, in a voice of the speech package; empty where the package is missing.
Recordings speech()
{
    Recordings recordings;
    const QTemporaryDir folder;
    for (std::size_t index = 0; index < recordings.size(); ++index) {
        const QString path = folder.filePath(QStringLiteral("request.wav"));
        QProcess::execute(QStringLiteral("flite"),
            {QStringLiteral("-voice"), QStringLiteral("slt"), QStringLiteral("-t"),
                QString::fromUtf8(FaultRun::requests[index].words), QStringLiteral("-o"), path});
        recordings[index] = WavFile::read(path.toStdString(), MicrophoneStream::sampleRateHz)
                                .samples.value_or(std::vector<std::int16_t>{});
    }
    return recordings;
}

/// A certificate for a name that no test asks for, with its key in the same file.
std::string makeCertificate(const QTemporaryDir& folder)
{
    const QString path = folder.filePath(QStringLiteral("service.pem"));
    const QString script =
        QStringLiteral("openssl req -x509 -newkey rsa:2048 -nodes -days 2 -subj /CN=elsewhere.example "
                       "-keyout %1.key -out %1.crt 2>/dev/null && cat %1.crt %1.key > %1")
            .arg(path);
    return QProcess::execute(QStringLiteral("sh"), {QStringLiteral("-c"), script}) == 0 ? path.toStdString() : "";
}

/// Kilobytes of this process that are in memory.
long residentKilobytes()
{
    malloc_trim(0);
    std::ifstream status("/proc/self/smaps_rollup");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("Private_Dirty:"))
            return std::atol(line.c_str() + std::strlen("Private_Dirty:"));
    return 0;
}

/// Carries out many runs, a few at a time.
class FaultTable {
public:
    struct Cell {
        const FaultRow* row;
        Carrier carrier;
        FaultOutcome outcome{};
    };

    FaultTable(QtScheduler& scheduler, Options options)
        : m_scheduler(scheduler)
        , m_options(std::move(options))
        , m_certificate(makeCertificate(m_folder))
    {
        if (m_options.isLong)
            m_speech = speech();
    }

    bool canSpeak() const { return !m_options.isLong || !m_speech.front().empty(); }

    std::vector<Cell> cells() const
    {
        std::vector<Cell> cells;
        for (const FaultRow& row : faultRows)
            for (const Carrier carrier : row.carriers)
                if (&row == faultRows.data() // What the others are measured beside.
                    || (std::string(row.name).find(m_options.only) != std::string::npos
                        && (row.brief == Brief::yes || !m_options.isBrief)))
                    cells.push_back({&row, carrier});
        return cells;
    }

    void run(std::vector<Cell>& cells)
    {
        // Each spoken run recognises speech at the pace of the clock; a computer that falls behind cuts words short.
        const std::size_t atOnce = m_options.isLong ? 2 * std::max(1U, std::thread::hardware_concurrency()) : 8;
        m_runs.resize(cells.size());
        std::size_t next = 0;
        std::size_t finished = 0;
        std::function<void()> startNext = [&] {
            if (next == cells.size())
                return;
            const std::size_t index = next++;
            Cell& cell = cells[index];
            const Recordings& words = cell.carrier == Carrier::responses ? m_typing : m_speech;
            m_runs[index] = std::make_unique<FaultRun>(m_scheduler, cell.carrier, *cell.row, words,
                patienceFor(m_options), m_certificate, [&, index](const FaultOutcome& outcome) {
                    cells[index].outcome = outcome;
                    m_runs[index].reset();
                    if (++finished == cells.size())
                        QCoreApplication::exit();
                    else
                        startNext();
                });
        };
        m_scheduler.post([&] {
            for (std::size_t count = 0; count < atOnce; ++count)
                startNext();
        });
        if (!cells.empty())
            QCoreApplication::exec();
        m_runs.clear();
    }

private:
    QtScheduler& m_scheduler;
    Options m_options;
    QTemporaryDir m_folder;
    std::string m_certificate;
    Recordings m_typing;
    Recordings m_speech;
    std::vector<std::unique_ptr<FaultRun>> m_runs;
};

int printTable(const std::vector<FaultTable::Cell>& cells)
{
    std::map<Carrier, std::chrono::milliseconds> usual;
    for (const FaultTable::Cell& cell : cells)
        if (cell.row == faultRows.data())
            usual[cell.carrier] = cell.outcome.longestWait;
    std::printf(
        "%-10s %-30s %-10s %7s %5s %6s  %s\n", "transport", "fault", "outcome", "gap ms", "lost", "twice", "told");
    int failures = 0;
    for (const FaultTable::Cell& cell : cells) {
        const FaultOutcome& outcome = cell.outcome;
        const bool isFine =
            outcome.lost == 0 && outcome.twice == 0 && (outcome.isRecovered() || !outcome.sentence.empty());
        failures += isFine ? 0 : 1;
        const auto gap = std::max(outcome.longestMending, outcome.longestWait - usual[cell.carrier]);
        std::printf("%-10s %-30s %-10s %7lld %5d %6d  %s\n", nameOf(cell.carrier), cell.row->name,
            outcome.isRecovered()  ? "recovered"
                : !isFine          ? "FAILED"
                : outcome.run == 0 ? "told"
                                   : "partly",
            static_cast<long long>(std::max(0ms, gap).count()), outcome.lost, outcome.twice, outcome.sentence.c_str());
    }
    return failures;
}

/// One fault on every transport, again and again in one process: what grows with each is a leak.
int printMemory(FaultTable& table, int repeats)
{
    constexpr long most = 1024;
    const int settled = std::max(2, repeats / 5);
    const FaultRow& row = *std::find_if(faultRows.begin(), faultRows.end(),
        [](const FaultRow& one) { return std::string(one.name) == "cut in an answer"; });
    long before = 0;
    for (int round = 1; round <= repeats; ++round) {
        std::vector<FaultTable::Cell> cells;
        for (const Carrier carrier : everywhere)
            cells.push_back({&row, carrier});
        table.run(cells);
        if (round == settled)
            before = residentKilobytes();
    }
    const long growth = residentKilobytes() - before;
    std::printf("memory after %d repeats beside %d: %+ld kB (at most %ld)\n", repeats, settled, growth, most);
    return growth <= most ? 0 : 1;
}

} // namespace

int main(int argumentCount, char** arguments)
{
    QCoreApplication application(argumentCount, arguments);
    Options options;
    for (int index = 1; index < argumentCount; ++index) {
        if (std::strcmp(arguments[index], "--long") == 0)
            options.isLong = true;
        else if (std::strcmp(arguments[index], "--brief") == 0)
            options.isBrief = true;
        else if (std::strcmp(arguments[index], "--repeats") == 0 && index + 1 < argumentCount)
            options.repeats = std::atoi(arguments[++index]);
        else if (std::strcmp(arguments[index], "--only") == 0 && index + 1 < argumentCount)
            options.only = arguments[++index];
        else
            return std::fprintf(stderr, "faults [--long|--brief] [--repeats N] [--only PART OF A FAULT'S NAME]\n"), 2;
    }
    QtScheduler scheduler;
    FaultTable table(scheduler, options);
    if (!table.canSpeak())
        return std::fprintf(stderr, "flite is missing, so nothing can be said; scripts/test installs it.\n"), 1;
    std::vector<FaultTable::Cell> cells = table.cells();
    table.run(cells);
    int failures = printTable(cells);
    if (options.repeats > 0)
        failures += printMemory(table, options.repeats);
    return failures == 0 ? 0 : 1;
}
