// SPDX-License-Identifier: MIT
// A notebook in a temporary folder, whose main thread is the test.
#pragma once

#include "PostQueue.h"
#include "Quorvell/notebook/NoteFolder.h"
#include "Quorvell/notebook/NotebookStore.h"
#include "QuorvellCore/notebook/NoteFile.h"
#include "TemporaryFolder.h"
#include "VirtualScheduler.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

namespace quorvell {

using namespace std::chrono_literals;
inline constexpr Instant monday = std::chrono::sys_days(std::chrono::year(2026) / 11 / 16) + 17h;

inline Note noteOf(const std::string& id, const std::string& title, const std::string& body = "")
{
    return {.id = id, .title = title, .body = body, .created = monday};
}

struct Desk {
    test::TemporaryFolder folder{test::memoryDisk()};
    test::PostQueue posts;
    VirtualScheduler clock;
    NotebookPorts ports;
    std::unique_ptr<FileWorker> worker = std::make_unique<FileWorker>(posts.poster());
    std::unique_ptr<NotebookStore> store;

    Desk() { setClock(monday + 24h); }

    void setClock(Instant now) { clock.wallClockAtStart = now - clock.now(); }
    NotebookStore& open()
    {
        auto opened = NotebookStore::open(folder.path(), *worker, clock, ports);
        EXPECT_EQ(opened.problem, "");
        store = std::move(opened.store);
        return *store;
    }

    /// Begins a change, a member function of the store, and waits for its verdict.
    template <typename Member, typename... Arguments> NotebookVerdict ask(Member change, const Arguments&... arguments)
    {
        std::optional<NotebookVerdict> verdict;
        std::invoke(change, *store, arguments..., [&verdict](const NotebookVerdict& found) { verdict = found; });
        EXPECT_TRUE(posts.runUntil([&verdict] { return verdict.has_value(); }));
        return verdict.value_or(NotebookVerdict{});
    }
    NotebookVerdict add(const Note& note) { return ask(&NotebookStore::add, note); }
    NotebookVerdict update(const std::string& id, const FullNotebook::Change& change)
    {
        return ask(&NotebookStore::update, id, change);
    }
    NotebookVerdict edit(const std::string& id, const FullNotebook::Change& change)
    {
        return ask(&NotebookStore::edit, id, change);
    }
    void reload()
    {
        bool isDone = false;
        store->reload([&isDone] { isDone = true; });
        EXPECT_TRUE(posts.runUntil([&isDone] { return isDone; }));
    }
    std::vector<NoteVersion> history(const std::string& id)
    {
        std::optional<std::vector<NoteVersion>> versions;
        store->history(id, [&versions](std::vector<NoteVersion> found) { versions = std::move(found); });
        EXPECT_TRUE(posts.runUntil([&versions] { return versions.has_value(); }));
        return versions.value_or(std::vector<NoteVersion>{});
    }
    /// What a program that starts now would see.
    std::vector<Note> stored() const
    {
        auto content = readNoteFolder(folder.path(), monday);
        return content ? content->notes : std::vector<Note>{};
    }
    std::vector<std::string> files() const
    {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder.path()))
            if (entry.path().filename() != NoteHistory::folderName)
                names.push_back(entry.path().filename());
        std::sort(names.begin(), names.end());
        return names;
    }
};

inline FullNotebook::Change titled(const std::string& title)
{
    return [title](Note& note) { note.title = title; };
}

inline FullNotebook::Change appended(const std::string& text)
{
    return [text](Note& note) { note.body += text; };
}

} // namespace quorvell
