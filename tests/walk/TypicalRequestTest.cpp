// SPDX-License-Identifier: MIT
// The typical request through the real program: what a newcomer without an account, a bus, a display or a sound server
// sees when typing it.
#include "FixtureTable.h"
#include "PrivateBus.h"
#include "ProgramRun.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QTimeZone>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <functional>

using namespace quorvell;
using namespace quorvell::walk;

namespace {

/// "tomorrow 17:00" in a zone as the stored form of a note.
std::string storedInstant(const char* zone, int days, int hour, int minute)
{
    const QTimeZone timeZone{QByteArray(zone)};
    const QDate day = QDateTime::currentDateTimeUtc().toTimeZone(timeZone).date().addDays(days);
    return QDateTime(day, QTime(hour, minute), timeZone)
        .toUTC()
        .toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss.zzzZ"))
        .toStdString();
}

std::size_t indexOf(const std::vector<Json>& events, const std::function<bool(const Json&)>& fits)
{
    return static_cast<std::size_t>(std::find_if(events.begin(), events.end(), fits) - events.begin());
}

auto named(const char* name)
{
    return [name](const Json& event) { return readString(event, "event") == name; };
}

} // namespace

TEST(TypicalRequest, typedLinesBecomeRemindersAndNotes)
{
    const struct Row {
        const char* name;
        const char* typed;
        const char* title; ///< Of the one note; empty when nothing may be stored.
        int days, hour, minute; ///< Of the reminder; no reminder when days is negative.
        const char* replyHolds;
    } rows[] = {
        {"the typical request", "remind me tomorrow at 5pm to call the dentist\n", "Call the dentist", 1, 17, 0,
            "dentist"},
        {"an ambiguous hour is asked about", "remind me tomorrow at 5 to call the dentist\n", "", -1, 0, 0, "5"},
        {"and settled by the next words", "remind me tomorrow at 5 to call the dentist\nthe afternoon\n",
            "Call the dentist", 1, 17, 0, "dentist"},
        {"no line end at the end of input", "remind me tomorrow at 5pm to call mum", "Call mum", 1, 17, 0, "mum"},
        {"nothing typed", "\n  \n", "", -1, 0, 0, ""},
        {"beyond the device", "book me a flight to Lisbon\n", "", -1, 0, 0, "can't buy or book tickets"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const ProgramHome home;
        const Outcome outcome = home.run("chat", row.typed);
        SCOPED_TRACE(outcome.output + outcome.errors);
        EXPECT_TRUE(outcome.ended);
        EXPECT_EQ(outcome.exitCode, 0);
        EXPECT_NE(outcome.output.find(row.replyHolds), std::string::npos);
        const auto notes = home.noteFiles();
        ASSERT_EQ(notes.size(), *row.title ? 1u : 0u);
        if (notes.empty())
            continue;
        EXPECT_EQ(headerValue(notes[0], "title"), row.title);
        EXPECT_EQ(headerValue(notes[0], "remind_at"), storedInstant("Europe/Berlin", row.days, row.hour, row.minute));
    }
}

TEST(TypicalRequest, theJsonFormShowsTheWholePathInOrder)
{
    const ProgramHome home(QStringLiteral("America/New_York"));
    const Outcome outcome = home.run("chat --json", "remind me tomorrow at 5 pm to call the dentist\n");
    SCOPED_TRACE(outcome.output + outcome.errors);
    ASSERT_EQ(outcome.exitCode, 0);
    const auto events = outcome.events();
    const std::size_t steps[] = {
        indexOf(events, [](const Json& event) { return readString(event, "phase") == "connecting"; }),
        indexOf(events, [](const Json& event) { return readString(event, "phase") == "active"; }),
        indexOf(events, named("tool_call")),
        indexOf(events, named("tool_result")),
        indexOf(events, [](const Json& event) { return readString(event, "speaker") == "assistant"; }),
        indexOf(events, named("reply")),
        indexOf(events, named("closed")),
    };
    EXPECT_TRUE(std::is_sorted(std::begin(steps), std::end(steps)));
    ASSERT_LT(*std::rbegin(steps), events.size()) << "a step is missing";
    std::int64_t last = 0;
    for (const Json& event : events) {
        EXPECT_TRUE(readString(event, "at"));
        EXPECT_GE(readInteger(event, "ms").value_or(-1), last);
        last = readInteger(event, "ms").value_or(last);
    }
    const Json& call = events[steps[2]];
    EXPECT_EQ(readString(call, "name"), "set_reminder");
    const Json* result = memberOf(events[steps[3]], "result");
    ASSERT_TRUE(result);
    EXPECT_EQ(readString(*result, "status"), "set");
    ASSERT_EQ(home.noteFiles().size(), 1u);
    EXPECT_EQ(headerValue(home.noteFiles()[0], "remind_at"), storedInstant("America/New_York", 1, 17, 0));
}

TEST(TypicalRequest, notesAreKeptFoundAndReadInOneConversation)
{
    const ProgramHome home;
    const Outcome outcome = home.run(
        "chat", "make a note that the spare key is under the blue pot\nfind my note about the spare key\nread it\n");
    SCOPED_TRACE(outcome.output + outcome.errors);
    EXPECT_EQ(outcome.exitCode, 0);
    ASSERT_EQ(home.noteFiles().size(), 1u);
    EXPECT_NE(outcome.output.find("blue pot"), std::string::npos);

    const Outcome listed = home.run("notes --json");
    EXPECT_EQ(listed.exitCode, 0);
    EXPECT_NE(listed.output.find("Spare key"), std::string::npos);
    const Outcome found = home.run("notes find spare");
    EXPECT_NE(found.output.find("key"), std::string::npos);
}

TEST(TypicalRequest, whatIsKeptIsTheUsersAlone)
{
    const ProgramHome home;
    ASSERT_EQ(home.run("remind \"tomorrow at 5 pm call mum\"").exitCode, 0);
    struct stat folder { };
    ASSERT_EQ(::stat(home.notebookFolder().c_str(), &folder), 0);
    EXPECT_EQ(folder.st_mode & 0777, 0700u);
    for (const auto& entry : std::filesystem::directory_iterator(home.notebookFolder())) {
        struct stat file { };
        ASSERT_EQ(::stat(entry.path().c_str(), &file), 0);
        EXPECT_EQ(file.st_mode & 0777, 0600u) << entry.path();
    }
}

TEST(TypicalRequest, theServicesKeyStandsInNoListOfProcesses)
{
    const ProgramHome home;
    RunningProgram chat(home, "chat --json");
    chat.process().write("hello\n");
    ASSERT_TRUE(chat.shows("\"active\"")) << chat.output();
    int children = 0;
    for (const auto& process : QDir(QStringLiteral("/proc")).entryList({QStringLiteral("[0-9]*")}, QDir::Dirs)) {
        QFile status(QStringLiteral("/proc/%1/stat").arg(process));
        if (!status.open(QIODevice::ReadOnly))
            continue;
        const auto fields = status.readAll();
        if (fields.mid(fields.lastIndexOf(')') + 2).split(' ').value(1)
            != QByteArray::number(chat.process().processId()))
            continue;
        ++children;
        for (const char* part : {"cmdline", "environ"}) {
            QFile file(QStringLiteral("/proc/%1/%2").arg(process, QString::fromUtf8(part)));
            ASSERT_TRUE(file.open(QIODevice::ReadOnly));
            for (const QByteArray& word : file.readAll().split('\0'))
                EXPECT_FALSE(word.contains("oken") && word.size() > 20) << word.toStdString();
        }
    }
    EXPECT_EQ(children, 1);
    chat.process().closeWriteChannel();
    EXPECT_EQ(chat.exitCode(), 0);
}

TEST(TypicalRequest, wrongUseIsTold)
{
    for (const auto& [name, lines] : test::fixtureRows("walk/wrongUse.txt", 3)) { // Command, exit code, what is told.
        SCOPED_TRACE(lines[0]);
        const ProgramHome home;
        const Outcome outcome = home.run(lines[0], "hello\n");
        SCOPED_TRACE(outcome.output + outcome.errors);
        EXPECT_TRUE(outcome.ended);
        EXPECT_EQ(std::to_string(outcome.exitCode), lines[1]);
        EXPECT_NE(outcome.errors.find(lines[2]), std::string::npos);
        EXPECT_TRUE(home.noteFiles().empty());
    }
}

TEST(TypicalRequest, whatScriptsRelyOn)
{
    const ProgramHome home;
    EXPECT_TRUE(home.run("--version").output.starts_with("quorvell "));
    const Outcome set = home.run("remind --json -", "friday at 10:30 send the report\nat 5 call mum\n");
    SCOPED_TRACE(set.output + set.errors);
    EXPECT_EQ(set.exitCode, 1) << "one of the two can mean two times";
    const auto events = set.events();
    ASSERT_EQ(events.size(), 2u);
    ASSERT_EQ(home.noteFiles().size(), 1u);
    EXPECT_EQ(readString(events[0], "status"), "set");
    EXPECT_EQ(readString(events[0], "id"), headerValue(home.noteFiles()[0], "id"));
    EXPECT_EQ(readString(events[1], "status"), "not_set");
    const Outcome finished = home.run(("reminders done " + readString(events[0], "id").value_or("")).c_str());
    EXPECT_EQ(finished.exitCode, 0) << finished.errors;

    QProcess agent;
    home.start(agent, "agent");
    agent.setReadChannel(QProcess::StandardError);
    EXPECT_TRUE(agent.waitForReadyRead(10000)) << "nothing was said of the missing bus";
    EXPECT_NE(agent.readAllStandardError().toStdString().find("systemctl --user start"), std::string::npos);
    agent.kill();
    agent.waitForFinished();
}

TEST(TypicalRequest, aSecondProgramHandsOverOrSaysWhyNot)
{
    for (const bool hasBus : {true, false}) {
        SCOPED_TRACE(hasBus);
        ProgramHome home;
        const test::PrivateBus bus;
        if (hasBus)
            home.set("DBUS_SESSION_BUS_ADDRESS", bus.address());
        RunningProgram chat(home, "chat --json");
        chat.process().write("hello\n");
        ASSERT_TRUE(chat.shows("\"active\"")) << chat.output();
        const Outcome second = home.run("remind \"tomorrow at 5 pm call mum\"");
        EXPECT_EQ(second.exitCode, hasBus ? 0 : 1) << second.output << second.errors;
        chat.process().write("remind me tomorrow at 6 pm to feed the cat\n");
        chat.process().closeWriteChannel();
        EXPECT_EQ(chat.exitCode(), 0);
        EXPECT_EQ(home.noteFiles().size(), hasBus ? 2u : 1u);
    }
}
