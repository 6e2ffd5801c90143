// SPDX-License-Identifier: MIT
// Catches changes lost between programs that share a notebook, two owners, and owners that hang or lie.
#include "Quorvell/handover/NotebookAccess.h"

#include "FileSizeLimit.h"
#include "PrivateBus.h"
#include "QtApplication.h"
#include "Quorvell/desktop/QtScheduler.h"
#include "Quorvell/notebook/NoteFileRules.h"
#include "Quorvell/notebook/NoteFolder.h"
#include "QuorvellCore/notebook/NoteFile.h"
#include "TemporaryFolder.h"

#include <QCoreApplication>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QElapsedTimer>
#include <gtest/gtest.h>
#include <spawn.h>

#include <thread>

namespace quorvell {
namespace {

using namespace std::chrono_literals;

constexpr Instant monday = std::chrono::sys_days(std::chrono::year(2026) / 11 / 16) + 17h;
constexpr const char* folderVariable = "QUORVELL_TEST_NOTEBOOK";

Note noteOf(const std::string& id, const std::string& title)
{
    return {.id = id, .title = title, .created = monday};
}

/// One bus for all tests of this program, because the bus library reads its address only once.
test::PrivateBus& privateBus()
{
    static test::PrivateBus bus;
    return bus;
}

/// The event loop of one test, with or without a bus.
class Desk {
public:
    enum class Bus { none, own };

    explicit Desk(Bus bus)
    {
        needQtApplication();
        EXPECT_TRUE(bus == Bus::none || privateBus().isRunning()) << "dbus-daemon is needed for this test";
        environment.notebookFolder = folder / "Data/Notebook";
        environment.hasSessionBus = bus == Bus::own;
    }

    std::unique_ptr<NotebookAccess> open()
    {
        OpenedNotebook opened = openNotebook(environment, scheduler());
        EXPECT_EQ(opened.problem, "");
        return std::unique_ptr<NotebookAccess>(static_cast<NotebookAccess*>(opened.notebook.release()));
    }

    template <typename Test> bool spinUntil(const Test& isDone)
    {
        QElapsedTimer waited;
        waited.start();
        while (!isDone()) {
            if (waited.hasExpired(10'000))
                return false;
            QElapsedTimer turn;
            turn.start();
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
            longestTurn = std::max(longestTurn, turn.elapsed());
            std::this_thread::sleep_for(1ms);
        }
        return true;
    }
    /// Of a change, a member function of the notebook.
    template <typename Kind, typename Member, typename... Arguments>
    NotebookVerdict verdictOn(Kind& notebook, Member change, const Arguments&... arguments)
    {
        std::optional<NotebookVerdict> verdict;
        std::invoke(change, notebook, arguments..., [&verdict](const NotebookVerdict& found) { verdict = found; });
        EXPECT_FALSE(verdict) << "answered within the call";
        EXPECT_TRUE(spinUntil([&verdict] { return verdict.has_value(); }));
        EXPECT_TRUE(!verdict || verdict->isStored == verdict->problem.empty());
        return verdict.value_or(NotebookVerdict{.problem = "no verdict"});
    }
    template <typename Kind, typename... Change> std::string problemOf(Kind& notebook, const Change&... change)
    {
        return verdictOn(notebook, change...).problem;
    }
    std::string add(Notebook& notebook, const Note& note) { return problemOf(notebook, &Notebook::add, note); }
    std::string append(Notebook& notebook, const std::string& id, const std::string& text)
    {
        return problemOf(notebook, &Notebook::update, id, [text](Note& note) { note.body += text; });
    }

    QtScheduler& scheduler() { return m_scheduler; }

    test::TemporaryFolder folder;
    ProgramEnvironment environment;
    qint64 longestTurn = 0; ///< Milliseconds for which the event loop was not free.

private:
    QtScheduler m_scheduler;
};

/// Another program that owns the notebook: this one, running the test below.
class OtherProgram {
public:
    explicit OtherProgram(Desk& desk)
    {
        ::setenv(folderVariable, desk.environment.notebookFolder.c_str(), 1);
        std::string words[] = {"app_test", "--gtest_brief=1", "--gtest_filter=NotebookAccessOwner.owns"};
        char* arguments[] = {words[0].data(), words[1].data(), words[2].data(), nullptr};
        EXPECT_EQ(::posix_spawn(&m_process, "/proc/self/exe", nullptr, nullptr, arguments, environ), 0);
        ::unsetenv(folderVariable);
        const auto bus = NotebookBus::connect(desk.environment.notebookFolder);
        EXPECT_TRUE(desk.spinUntil([&bus] { return bus && bus->hasOwner(); }));
    }
    ~OtherProgram() { kill(); }
    OtherProgram(const OtherProgram&) = delete;
    OtherProgram& operator=(const OtherProgram&) = delete;

    void stop() const { ::kill(m_process, SIGSTOP); }
    void kill()
    {
        if (m_process <= 0)
            return;
        ::kill(m_process, SIGKILL);
        ::waitpid(std::exchange(m_process, -1), nullptr, 0);
    }

private:
    pid_t m_process = -1;
};

/// By itself a moment's check; as another test's other program it owns that test's folder until it is killed.
TEST(NotebookAccessOwner, owns)
{
    const char* const given = std::getenv(folderVariable);
    needQtApplication();
    const test::TemporaryFolder own;
    QtScheduler scheduler;
    ProgramEnvironment environment;
    environment.notebookFolder = given ? given : own.path() + "/Notebook";
    environment.hasSessionBus = given != nullptr;
    const OpenedNotebook opened = openNotebook(environment, scheduler);
    ASSERT_EQ(opened.problem, "");
    const TimerHandle end = scheduler.after(given ? 60s : 0s, [] { QCoreApplication::quit(); });
    QCoreApplication::exec();
}

TEST(NotebookAccess, isOneProgramsWithoutABus)
{
    Desk desk(Desk::Bus::none);
    auto first = desk.open();
    EXPECT_TRUE(first->isOwner());
    EXPECT_EQ(desk.add(*first, noteOf("aaaa", "a")), "");
    const OpenedNotebook second = openNotebook(desk.environment, desk.scheduler());
    EXPECT_EQ(second.notebook, nullptr);
    for (const std::string& part :
        {desk.environment.notebookFolder, "process " + std::to_string(::getpid()), std::string("Close")})
        EXPECT_NE(second.problem.find(part), std::string::npos) << second.problem;
    first = nullptr;
    first = desk.open();
    EXPECT_TRUE(first->isOwner());
    EXPECT_EQ(first->notes().size(), 1u);
}

[[noreturn]] void openWithABusThatIsGone()
{
    ::setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere/bus", 1);
    Desk desk(Desk::Bus::none);
    desk.environment.hasSessionBus = true;
    const auto notebook = desk.open();
    const bool isOwner = notebook->isOwner();
    const bool isStored = desk.add(*notebook, noteOf("aaaa", "a")).empty();
    const bool isAlone = openNotebook(desk.environment, desk.scheduler()).notebook == nullptr;
    std::exit(isOwner && isStored && isAlone ? 0 : 1);
}

TEST(NotebookAccess, worksWithABusThatIsGone)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe"); // a program of its own
    EXPECT_EXIT(openWithABusThatIsGone(), testing::ExitedWithCode(0), "");
}

[[noreturn]] void loseTheBusAndThenTheOwner()
{
    auto bus = std::make_unique<test::PrivateBus>();
    Desk desk(Desk::Bus::none);
    desk.environment.hasSessionBus = true;
    OtherProgram owner(desk);
    const auto notebook = desk.open();
    const bool wasOwner = notebook->isOwner();
    bus = nullptr;
    owner.kill();
    const bool isOwner = desk.spinUntil([&] { return notebook->isOwner(); });
    const bool isStored = desk.add(*notebook, noteOf("aaaa", "a")).empty();
    std::exit(!wasOwner && isOwner && isStored ? 0 : 1);
}

TEST(NotebookAccess, takesOverAlsoWithoutTheBus)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe"); // a program of its own
    EXPECT_EXIT(loseTheBusAndThenTheOwner(), testing::ExitedWithCode(0), "");
}

[[noreturn]] void moveWhileTheBusGoes()
{
    auto bus = std::make_unique<test::PrivateBus>();
    Desk desk(Desk::Bus::none);
    desk.environment.hasSessionBus = true;
    const auto access = desk.open();
    const auto remarkOfMove = [&](const std::string& target) {
        const NotebookVerdict verdict = desk.verdictOn(*access, &FullNotebook::moveNotebook, target, nullptr);
        return verdict.isStored ? verdict.remark : "not moved";
    };
    const bool isQuiet = remarkOfMove(desk.folder / "first").empty();
    bus = nullptr;
    const bool isTold = remarkOfMove(desk.folder / "second").find("no longer answers") != std::string::npos;
    std::exit(isQuiet && isTold ? 0 : 1);
}

TEST(NotebookAccess, tellsWhenTheBusIsLostInAMove)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe"); // a program of its own
    EXPECT_EXIT(moveWhileTheBusGoes(), testing::ExitedWithCode(0), "");
}

TEST(NotebookAccess, handsChangesToTheOwner)
{
    Desk desk(Desk::Bus::own);
    const auto owner = desk.open();
    const auto other = desk.open();
    EXPECT_TRUE(owner->isOwner() && !other->isOwner());
    EXPECT_EQ(desk.add(*other, noteOf("aaaa", "a")), "");
    EXPECT_EQ(desk.append(*other, "aaaa", "one "), "");
    EXPECT_EQ(owner->note("aaaa")->body, "one ");
    EXPECT_EQ(other->notes(), owner->notes());
    EXPECT_EQ(readNoteFolder(desk.environment.notebookFolder, monday)->notes, owner->notes());

    // Based on a version that is no longer the current one: made again on top of it.
    EXPECT_EQ(desk.append(*owner, "aaaa", "two "), "");
    EXPECT_EQ(desk.append(*other, "aaaa", "three "), "");
    int answers = 0;
    for (int index = 0; index < 6; ++index)
        (index % 2 == 0 ? owner : other)
            ->update(
                "aaaa", [](Note& note) { note.body += "x"; },
                [&answers](const NotebookVerdict& verdict) { answers += verdict.isStored; });
    EXPECT_TRUE(desk.spinUntil([&answers] { return answers == 6; }));
    EXPECT_EQ(owner->note("aaaa")->body, "one two three xxxxxx");
    EXPECT_EQ(other->note("aaaa"), owner->note("aaaa"));

    EXPECT_NE(desk.append(*other, "none", "x"), "");
    EXPECT_NE(desk.add(*other, noteOf("aaaa", "again")).find("already"), std::string::npos);
    const test::FileSizeLimit limit(1000);
    EXPECT_NE(
        desk.append(*other, "aaaa", std::string(5000, 'x')).find(desk.environment.notebookFolder), std::string::npos);
    EXPECT_EQ(owner->note("aaaa")->body, "one two three xxxxxx");
}

TEST(NotebookAccess, seesWhatOthersStore)
{
    Desk desk(Desk::Bus::own);
    const auto owner = desk.open();
    const auto other = desk.open();
    EXPECT_EQ(desk.add(*owner, noteOf("aaaa", "a")), "");
    EXPECT_TRUE(desk.spinUntil([&other] { return other->notes().size() == 1; }));
    EXPECT_EQ(desk.append(*owner, "aaaa", "x"), "");
    EXPECT_TRUE(desk.spinUntil([&other] { return other->note("aaaa")->body == "x"; }));

    // Another folder is another notebook, on the same bus too.
    desk.environment.notebookFolder = desk.folder / "elsewhere";
    const auto elsewhere = desk.open();
    EXPECT_TRUE(elsewhere->isOwner() && elsewhere->notes().empty());
}

TEST(NotebookAccess, doesEverythingThroughTheOwner)
{
    Desk desk(Desk::Bus::own);
    const auto owner = desk.open();
    const auto other = desk.open();
    std::string heard;
    const NotebookObservation observation = other->observe([&heard](const NotebookChanges& changes) {
        for (const std::string& id : changes.gone)
            heard += id;
    });
    ASSERT_EQ(desk.add(*other, noteOf("aaaa", "a")), "");
    ASSERT_EQ(desk.append(*other, "aaaa", "one"), "");
    EXPECT_EQ(desk.problemOf(*other, &FullNotebook::edit, "aaaa", [](Note& note) { note.body = "two"; }), "");
    EXPECT_TRUE(owner->note("aaaa")->personEdited);
    std::optional<std::vector<NoteVersion>> versions;
    other->history("aaaa", [&versions](std::vector<NoteVersion> found) { versions = std::move(found); });
    EXPECT_TRUE(desk.spinUntil([&versions] { return versions.has_value(); }));
    EXPECT_EQ(versions->at(0).body, "one");
    EXPECT_TRUE(desk.spinUntil([&other] { return other->fileURL("aaaa").has_value(); }));

    // One red pixel.
    const QByteArray gif = QByteArray::fromBase64("R0lGODlhAQABAPAAAP8AAAAAACH5BAAAAAAALAAAAAABAAEAAAICRAEAOw==");
    EXPECT_EQ(desk.problemOf(*other, &FullNotebook::savePicture, "aaaa", gif.toStdString()), "");
    EXPECT_NE(desk.problemOf(*other, &FullNotebook::savePicture, "aaaa", "no picture"), "");
    EXPECT_TRUE(other->pictureURL(*owner->note("aaaa")));
    for (const auto& [id, by] : {std::pair("bbbb", NoteAuthor::person), {"cccc", NoteAuthor::quorvell}})
        ASSERT_EQ(desk.problemOf(*other, &FullNotebook::remember, "a fact", by, id, monday), "");
    EXPECT_EQ(desk.problemOf(*other, &FullNotebook::forgetAll), "");
    EXPECT_EQ(owner->notes().size(), 1u);
    EXPECT_TRUE(desk.spinUntil([&heard] { return heard.size() == 8; })) << heard;

    const std::string target = desk.folder / "moved";
    EXPECT_NE(desk.problemOf(*other, &FullNotebook::moveNotebook, target, nullptr), "");
    EXPECT_EQ(desk.problemOf(*owner, &FullNotebook::moveNotebook, target, nullptr), "");
    desk.environment.notebookFolder = target;
    const auto guest = desk.open();
    EXPECT_FALSE(guest->isOwner());
    EXPECT_EQ(desk.append(*guest, "aaaa", "!"), "");
    EXPECT_EQ(readNoteFolder(target, monday)->notes, owner->notes());
}

TEST(NotebookAccess, takesOverFromAnOwnerThatIsKilledOrEnds)
{
    Desk desk(Desk::Bus::own);
    OtherProgram other(desk);
    auto notebook = desk.open();
    EXPECT_FALSE(notebook->isOwner());
    const auto third = desk.open();
    EXPECT_EQ(desk.add(*notebook, noteOf("aaaa", "a")), "");
    std::optional<NotebookVerdict> verdict;
    notebook->update(
        "aaaa", [](Note& note) { note.body += "x"; }, [&verdict](const NotebookVerdict& found) { verdict = found; });
    other.kill();
    EXPECT_TRUE(desk.spinUntil([&verdict] { return verdict.has_value(); }));
    EXPECT_TRUE(verdict->isStored) << verdict->problem;
    EXPECT_TRUE(notebook->isOwner());
    EXPECT_EQ(notebook->note("aaaa")->body, "x");
    // The third program finds the new owner, and takes over in its turn when that one ends properly.
    EXPECT_EQ(desk.append(*third, "aaaa", "y"), "");
    EXPECT_EQ(notebook->note("aaaa")->body, "xy");
    EXPECT_EQ(readNoteFolder(desk.environment.notebookFolder, monday)->notes, notebook->notes());
    int announced = 0;
    const auto observation = third->observe([&announced](const NotebookChanges&) { ++announced; });
    notebook = nullptr; // Without anything to be changed, too.
    EXPECT_TRUE(desk.spinUntil([&] { return third->isOwner(); }));
    EXPECT_EQ(announced, 1);
    EXPECT_EQ(desk.append(*third, "aaaa", "z"), "");
    EXPECT_EQ(third->note("aaaa")->body, "xyz");
}

TEST(NotebookAccess, saysWhenTheOwnerHangs)
{
    Desk desk(Desk::Bus::own);
    const OtherProgram other(desk);
    const auto notebook = desk.open();
    EXPECT_FALSE(notebook->isOwner());
    other.stop();
    desk.longestTurn = 0;
    QElapsedTimer waited;
    waited.start();
    EXPECT_NE(desk.add(*notebook, noteOf("aaaa", "a")).find("did not answer in time"), std::string::npos);
    EXPECT_LT(waited.elapsed(), 4000);
    EXPECT_LT(desk.longestTurn, 500) << "the event loop was held up";
}

TEST(NotebookAccess, distrustsTheBus)
{
    Desk desk(Desk::Bus::own);
    const auto owner = desk.open();
    ASSERT_EQ(desk.add(*owner, noteOf("aaaa", "a")), "");
    const auto bus = NotebookBus::connect(desk.environment.notebookFolder);
    ASSERT_TRUE(bus);
    const auto answerTo = [&](const char* member, const QVariantList& arguments) {
        QDBusMessage call = QDBusMessage::createMethodCall(bus->name(), QString::fromLatin1(NotebookWire::path),
            QString::fromLatin1(NotebookWire::interface), QString::fromLatin1(member));
        call.setArguments(arguments);
        const QDBusPendingCall pending = bus->connection().asyncCall(call, 5000);
        EXPECT_TRUE(desk.spinUntil([&pending] { return pending.isFinished(); }));
        return pending.isError() ? "error" : pending.reply().arguments().value(0).toString().toStdString();
    };
    const auto text = [](const Note& note) { return QByteArray::fromStdString(NoteFile::encode(note)); };
    const QString base = QString::fromStdString(isoText(owner->note("aaaa")->updated));
    const QByteArray large = text(noteOf("bbbb", "b")) + QByteArray(static_cast<int>(maximumNoteBytes), 'x');
    struct Row {
        const char* name;
        const char* member;
        QVariantList arguments;
        const char* outcome;
    };
    const Row rows[] = {
        {"no arguments", "Add", {}, "error"},
        {"a text for bytes", "Add", {QStringLiteral("---")}, "error"},
        {"no such method", "Remove", {text(noteOf("aaaa", "a"))}, "error"},
        {"no note", "Add", {QByteArray("\xFF\x00---", 5)}, "refused"},
        {"a note too large", "Add", {large}, "refused"},
        {"a note that is there", "Add", {text(noteOf("aaaa", "other"))}, "refused"},
        {"a note that is not there", "Update", {text(noteOf("bbbb", "b")), base}, "refused"},
        {"no version", "Update", {text(noteOf("aaaa", "b")), QStringLiteral("now")}, "refused"},
        {"another version", "Update", {text(noteOf("aaaa", "b")), QStringLiteral("2026-01-01T00:00:00.000Z")},
            "changed"},
        {"an id that climbs", "Add", {text(noteOf("../../../climbed", "../../climbed"))}, "stored"},
        {"the right version", "Update", {text(noteOf("aaaa", "new")), base}, "stored"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(answerTo(row.member, row.arguments), row.outcome) << row.name;
    EXPECT_EQ(owner->notes().size(), 2u);
    EXPECT_EQ(owner->note("aaaa")->title, "new");
    for (const auto& entry : std::filesystem::recursive_directory_iterator(desk.folder.path()))
        EXPECT_TRUE(entry.is_directory() || entry.path().parent_path() == desk.environment.notebookFolder
            || entry.path() == desk.environment.notebookFolder + "/.history/aaaa.json")
            << entry;
}

} // namespace
} // namespace quorvell
