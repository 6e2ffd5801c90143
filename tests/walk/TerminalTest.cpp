// SPDX-License-Identifier: MIT
// The program at a terminal, as a person uses it: keys in, what is shown out.
#include "ProgramRun.h"

#include <QDateTime>
#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>

using namespace quorvell;
using namespace quorvell::walk;

namespace {

/// A terminal with the program in it.
class Terminal {
public:
    Terminal(const ProgramHome& home, const std::vector<std::string>& arguments)
    {
        const winsize size{24, 100, 0, 0};
        m_process = forkpty(&m_terminal, nullptr, nullptr, &size);
        if (m_process == 0)
            home.become(arguments);
    }
    ~Terminal()
    {
        ::kill(m_process, SIGKILL);
        ::waitpid(m_process, nullptr, 0);
        ::close(m_terminal);
    }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    void type(const std::string& keys) const
    {
        ASSERT_EQ(::write(m_terminal, keys.data(), keys.size()), ssize_t(keys.size()));
    }

    /// Reads on until the text appears after what was found before.
    bool shows(const std::string& text, std::chrono::seconds limit = std::chrono::seconds(20))
    {
        const auto end = std::chrono::steady_clock::now() + limit;
        do {
            if (const auto found = m_output.find(text, m_seen); found != std::string::npos) {
                m_seen = found + text.size();
                return true;
            }
            pollfd readable{m_terminal, POLLIN, 0};
            char bytes[4096];
            if (::poll(&readable, 1, 50) <= 0)
                continue;
            const auto count = ::read(m_terminal, bytes, sizeof bytes);
            if (count <= 0)
                return false;
            m_output.append(bytes, static_cast<std::size_t>(count));
        } while (std::chrono::steady_clock::now() < end);
        return false;
    }
    const std::string& output() const { return m_output; }

    void resize(unsigned short columns) const
    {
        const winsize size{24, columns, 0, 0};
        ASSERT_EQ(::ioctl(m_terminal, TIOCSWINSZ, &size), 0);
    }

    /// The exit code; -1 when it does not end.
    int exitCode()
    {
        for (int attempt = 0; attempt < 200; ++attempt) {
            int status = 0;
            if (::waitpid(m_process, &status, WNOHANG) == m_process)
                return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
            shows("\x01never", std::chrono::seconds(0));
            ::usleep(50'000);
        }
        return -1;
    }

private:
    int m_terminal = -1;
    pid_t m_process = -1;
    std::string m_output;
    std::size_t m_seen = 0;
};

constexpr const char* prompt = "> ";
constexpr const char* controlC = "\x03";

} // namespace

TEST(Terminal, aPersonTypesWithHistoryPastesAndInterrupts)
{
    ProgramHome home;
    home.set("TERM", "xterm");
    {
        Terminal chat(home, {"chat"});
        ASSERT_TRUE(chat.shows("nothing you say leaves it"));
        ASSERT_TRUE(chat.shows(prompt)) << chat.output();
        chat.type("/mode do\r");
        EXPECT_TRUE(chat.shows("mode: do")) << chat.output();
        ASSERT_TRUE(chat.shows(prompt));
        chat.type("make a note that the \x1b[200~spare key\r/quit\x1b[201~ is here\r"); // A paste commands nothing.
        EXPECT_TRUE(chat.shows("Note kept")) << chat.output();
        ASSERT_TRUE(chat.shows("\x1b[?2004h")) << chat.output();
        chat.type("half a line");
        ASSERT_TRUE(chat.shows("half a line")); // An interrupt would take what was not read yet.
        chat.type(controlC);
        ASSERT_TRUE(chat.shows("\x1b[?2004h")) << chat.output();
        chat.type("\x1b[A\x1b[A\x1b[B\x1b[A\r"); // Two back, one on, one back: the mode again.
        EXPECT_TRUE(chat.shows("do already")) << chat.output();
        ASSERT_TRUE(chat.shows("\x1b[?2004h"));
        chat.type(controlC);
        EXPECT_TRUE(chat.shows("once more leaves")) << chat.output();
        chat.type(controlC);
        EXPECT_EQ(chat.exitCode(), 0) << chat.output();
    }
    ASSERT_EQ(home.noteFiles().size(), 1u);
    Terminal next(home, {"chat"});
    ASSERT_TRUE(next.shows("\x1b[?2004h"));
    next.type("\x1b[A");
    EXPECT_TRUE(next.shows("/mode do")) << next.output(); // The history outlives the program.
    EXPECT_EQ(next.output().find("> > "), std::string::npos) << "drawn over, not behind: " << next.output();
    next.type("\x15\x04");
    EXPECT_EQ(next.exitCode(), 0) << next.output();
}

TEST(Terminal, looksAsItAllows)
{
    struct Row {
        const char* terminal;
        const char* noColour;
        bool hasLooks, movesCursor;
    };
    for (const Row& row :
        {Row{"xterm", "", true, true}, Row{"xterm", "1", false, true}, Row{"dumb", "", false, false}}) {
        SCOPED_TRACE(std::string(row.terminal) + row.noColour);
        ProgramHome home;
        home.set("TERM", row.terminal);
        home.set("NO_COLOR", row.noColour);
        Terminal chat(home, {"chat"});
        ASSERT_TRUE(chat.shows(prompt)) << chat.output();
        chat.type("remind me tomorrow at 5 pm to call the dentist\r");
        EXPECT_TRUE(chat.shows("Reminder set: Call the dentist")) << chat.output();
        EXPECT_TRUE(chat.shows(prompt)) << chat.output();
        chat.type("\x04");
        EXPECT_EQ(chat.exitCode(), 0);
        // What tools did is faint, and the user's own lines stand out from the answers.
        for (const char* look : {"\x1b[2m", "\x1b[1m> ", "dentist\r\n\x1b[?2004l\x1b[0m"})
            EXPECT_EQ(chat.output().find(look) != std::string::npos, row.hasLooks) << chat.output();
        EXPECT_EQ(chat.output().find('\x1b') != std::string::npos, row.movesCursor) << chat.output();
    }
}

TEST(Terminal, whatComesLateLeavesTheTypedLineWhole)
{
    ProgramHome home;
    home.set("TERM", "xterm");
    Terminal chat(home, {"chat"});
    ASSERT_TRUE(chat.shows("\x1b[?2004h")) << chat.output();
    chat.type("half a line\x1b[D\x1b[D");
    ASSERT_TRUE(chat.shows("half a line"));
    const auto soon = QDateTime::currentDateTimeUtc().addSecs(2).toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss.000Z"));
    home.write("data/Quorvell/Notebook/Water the plants.md",
        "---\nid: \"aaaaaaaaaaaa\"\nkind: \"note\"\ntitle: \"Water the plants\"\nremind_at: \"" + soon.toStdString()
            + "\"\n---\n");
    EXPECT_TRUE(chat.shows("ater the plants")) << chat.output();
    EXPECT_TRUE(chat.shows("half a line")) << "drawn again: " << chat.output();
    chat.type("X");
    EXPECT_TRUE(chat.shows("X"));
    chat.resize(40);
    EXPECT_TRUE(chat.shows("half a liXne")) << "the cursor stayed where it was: " << chat.output();
    chat.type("\x15/help\r");
    EXPECT_TRUE(chat.shows("\r\n  A line that begins with a space is\r\n  always")) << chat.output();
}

TEST(Terminal, everyTransportCarriesTheSameConversation)
{
    ProgramHome home;
    RunningProgram service(home, "live-service --token-file " + home.write("key", "a-key-for-tests\n"));
    ASSERT_TRUE(service.shows("\nClients")) << service.output();
    const auto start = service.output().find("ws://");
    const std::string address = service.output().substr(start, service.output().find('/', start + 5) - start);
    home.set("OPENAI_API_KEY", "a-key-for-tests");
    home.set("GEMINI_API_KEY", "a-key-for-tests");
    const std::string request = "remind me tomorrow at 5 pm to call the dentist";
    const std::string talk = "talk " + home.path("request.wav");
    QProcess::execute(QStringLiteral("flite"),
        {QStringLiteral("-voice"), QStringLiteral("slt"), QStringLiteral("-t"),
            QStringLiteral("Remind me tomorrow at five p m to call the dentist."), QStringLiteral("-o"),
            QString::fromStdString(home.path("request.wav"))});
    const std::string ways[] = {
        talk + " --transport webrtc", talk + " --backend gemini", "chat", "chat --backend gemini"};
    std::size_t notes = 0;
    for (const std::string& way : ways) {
        const Outcome outcome = home.run(way + " --json --host " + address, request + "\n");
        SCOPED_TRACE(way + outcome.output + outcome.errors);
        EXPECT_EQ(outcome.exitCode, 0);
        EXPECT_EQ(home.noteFiles().size(), ++notes);
    }
    for (const std::string& note : home.noteFiles())
        EXPECT_EQ(headerValue(note, "title"), "Call the dentist");

    // What happened can be looked at afterwards.
    const Outcome listed = home.run("log --list --json");
    EXPECT_EQ(listed.events().size(), std::size(ways)) << listed.output;
    const Outcome last = home.run("log");
    EXPECT_NE(last.output.find("tool called"), std::string::npos) << last.output;
    EXPECT_EQ(last.output.find("dentist"), std::string::npos) << last.output;
    const Outcome usage = home.run("usage --json");
    const std::vector<Json> sums = usage.events();
    ASSERT_EQ(sums.size(), 1u);
    const Json* hosted = memberOf(sums[0], "hosted");
    const Json* today = hosted ? memberOf(*hosted, "today") : nullptr;
    ASSERT_TRUE(today);
    EXPECT_GT(readNumber(*today, "microphone_seconds").value_or(0), 1);
}

TEST(Terminal, theDoctorTellsWhatIsBroken)
{
    ProgramHome home;
    home.set("PULSE_SERVER", "unix:/nonexistent");
    const auto verdict = [](const Outcome& outcome, const char* subject) -> std::string {
        for (const Json& finding : outcome.events())
            if (readString(finding, "subject") == subject)
                return readString(finding, "verdict").value_or("");
        return "missing";
    };
    Outcome outcome = home.run("doctor --json");
    SCOPED_TRACE(outcome.output + outcome.errors);
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(verdict(outcome, "live service"), "ok");
    EXPECT_EQ(verdict(outcome, "calendar"), "ok");
    EXPECT_EQ(verdict(outcome, "sound"), "limited");
    EXPECT_EQ(verdict(outcome, "session bus"), "limited");

    home.write(
        "config/Quorvell/settings.json", R"({"notebook_folder": "/proc/nowhere", "live_host": "ws://127.0.0.1:9"})");
    outcome = home.run("doctor --json");
    SCOPED_TRACE(outcome.output + outcome.errors);
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(verdict(outcome, "live service"), "broken");
    EXPECT_EQ(verdict(outcome, "notebook"), "broken");
}
