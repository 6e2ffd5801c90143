// SPDX-License-Identifier: MIT
#include "Quorvell/app/notes/NoteEditor.h"

#include "Quorvell/files/AtomicFile.h"
#include "Quorvell/files/Folder.h"
#include "Quorvell/notebook/NoteFileRules.h"
#include "QuorvellCore/notebook/NoteFile.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <filesystem>

namespace quorvell {

namespace {

/// While it lives, Ctrl+C and Ctrl+\ typed in the terminal are the editor's alone.
class InterruptsLeftToTheEditor {
public:
    InterruptsLeftToTheEditor()
        : m_interrupt(std::signal(SIGINT, SIG_IGN))
        , m_quit(std::signal(SIGQUIT, SIG_IGN))
    {
    }
    ~InterruptsLeftToTheEditor()
    {
        std::signal(SIGINT, m_interrupt);
        std::signal(SIGQUIT, m_quit);
    }
    InterruptsLeftToTheEditor(const InterruptsLeftToTheEditor&) = delete;
    InterruptsLeftToTheEditor& operator=(const InterruptsLeftToTheEditor&) = delete;

    /// Starts the program with both signals as they usually are. False when it cannot be started.
    static bool start(pid_t& process, char* const* arguments)
    {
        sigset_t usual;
        ::sigemptyset(&usual);
        ::sigaddset(&usual, SIGINT);
        ::sigaddset(&usual, SIGQUIT);
        ::sigaddset(&usual, SIGXFSZ); // Which this program has no use for.
        posix_spawnattr_t attributes;
        ::posix_spawnattr_init(&attributes);
        ::posix_spawnattr_setsigdefault(&attributes, &usual);
        ::posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);
        const int failure = ::posix_spawn(&process, "/bin/sh", nullptr, &attributes, arguments, environ);
        ::posix_spawnattr_destroy(&attributes);
        return failure == 0;
    }

private:
    void (*m_interrupt)(int);
    void (*m_quit)(int);
};

/// True when the editor came back without an error.
bool runEditor(const std::string& command, std::string path)
{
    std::string words[] = {"sh", "-c", command + " \"$1\"", "sh", std::move(path)};
    char* arguments[] = {words[0].data(), words[1].data(), words[2].data(), words[3].data(), words[4].data(), nullptr};
    const InterruptsLeftToTheEditor interrupts;
    pid_t process = 0;
    if (!InterruptsLeftToTheEditor::start(process, arguments))
        return false;
    int status = 0;
    while (::waitpid(process, &status, 0) < 0 && errno == EINTR) { }
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

EditedNote failed(std::string problem)
{
    return {std::nullopt, std::move(problem)};
}

/// What stands in the file after the editor has ended.
EditedNote readBack(const Note& note, const std::string& before, const std::string& path)
{
    const std::string kept = " What you typed is in " + path + ".";
    const auto text = readFile(path, maximumNoteBytes);
    if (!text)
        return failed("The file cannot be read any more, or it is larger than a note may be." + kept);
    if (*text == before)
        return {};
    auto edited = NoteFile::decode(*text, note.created);
    if (!edited || edited->id != note.id)
        return failed(
            "Nothing was changed: between the two lines \"---\" the file must keep its id and a kind." + kept);
    return {std::move(edited), ""};
}

} // namespace

EditedNote editNote(const Note& note, const std::string& command, const std::string& temporaryFolder)
{
    std::string folder = temporaryFolder + "/quorvell-note-XXXXXX";
    if (!::mkdtemp(folder.data()))
        return failed(problemSentence(fileProblem(errno), temporaryFolder));
    const std::string before = NoteFile::encode(note);
    const std::string name = NoteFile::fileName(note);
    if (const FileProblem problem = writeFileDurably(folder, name, before); problem != FileProblem::none)
        return failed(problemSentence(problem, folder));
    const bool isDone = runEditor(command, folder + "/" + name);
    EditedNote result = isDone
        ? readBack(note, before, folder + "/" + name)
        : failed("The editor \"" + command + "\" ended with an error, so nothing was changed. What you typed is in "
            + folder + ". Set EDITOR to another one if it does not work.");
    std::error_code ignored;
    if (result.problem.empty())
        std::filesystem::remove_all(folder, ignored);
    return result;
}

} // namespace quorvell
