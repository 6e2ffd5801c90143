// SPDX-License-Identifier: MIT
// What a note costs: as text and back, kept durably, and 10,000 of them read at a start, beside merely reading their
// files, read again after one change, and searched. "--write-notes FOLDER" only writes the notes, for others to read.
#include "Quorvell/files/Folder.h"
#include "Quorvell/notebook/NoteFileRules.h"
#include "Quorvell/notebook/NoteFolder.h"
#include "Quorvell/notebook/NoteFolderReader.h"
#include "Quorvell/notebook/NoteIndex.h"
#include "Quorvell/notebook/NoteList.h"
#include "Quorvell/notebook/NotebookStore.h"
#include "QuorvellCore/notebook/NoteFile.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <future>
#include <thread>

namespace {

using namespace quorvell;

constexpr int manyNotes = 10'000;

Note noteOf(int number)
{
    constexpr std::chrono::sys_days day = std::chrono::year(2026) / 11 / 16;
    Note note{.id = std::to_string(100'000'000'000 + number),
        .title = "Note " + std::to_string(number) + " about the garden",
        .created = day + std::chrono::seconds(number),
        .author = NoteAuthor::quorvell,
        .origin = NoteOrigin::conversation};
    note.updated = note.created;
    for (int line = 0; line < 12; ++line)
        note.body += "Water the tomatoes in the evening, not at noon (line " + std::to_string(line) + ").\n";
    if (number % 3 == 0)
        note.remindAt = note.created + std::chrono::hours(24);
    if (number % 5 == 0)
        note.source = NoteSource{.app = "Firefox", .site = "www.example.org", .title = "Tomatoes"};
    return note;
}

/// Has no event loop: what is posted runs where it is posted, and no timer ever fires.
class NoLoop final : public Scheduler {
public:
    SessionTime now() const override { return {}; }
    Instant wallClock() const override
    {
        return std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
    }
    TimerHandle after(std::chrono::milliseconds, std::function<void()>) override { return {}; }
    TimerHandle every(std::chrono::milliseconds, std::function<void()>) override { return {}; }
    void post(std::function<void()> action) override { action(); }
};

void writeManyNotes(const std::string& folder)
{
    for (int number = 0; number < manyNotes; ++number)
        std::ofstream(folder + "/" + NoteFile::longFileName(noteOf(number))) << NoteFile::encode(noteOf(number));
}

/// A folder of `manyNotes` notes that lives as long as the program.
class ManyNotes {
public:
    ManyNotes()
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "quorvell-bench-XXXXXX").string();
        m_path = ::mkdtemp(pattern.data());
        writeManyNotes(m_path);
    }
    ~ManyNotes() { std::filesystem::remove_all(m_path); }

    const std::string& path() const { return m_path; }

private:
    std::string m_path;
};

const std::string& manyNotesFolder()
{
    static const ManyNotes notes;
    return notes.path();
}

void encodeNote(benchmark::State& state)
{
    const Note note = noteOf(15);
    for (auto _ : state)
        benchmark::DoNotOptimize(NoteFile::encode(note));
}

void decodeNote(benchmark::State& state)
{
    const std::string text = NoteFile::encode(noteOf(15));
    for (auto _ : state)
        benchmark::DoNotOptimize(NoteFile::decode(text, Instant{}));
}

/// From the request to the answer that says the note is on the disk.
void keepNoteDurably(benchmark::State& state)
{
    const std::string folder = manyNotesFolder() + "/kept";
    FileWorker worker([](const std::function<void()>& action) { action(); });
    NoLoop scheduler;
    const auto opened = NotebookStore::open(folder, worker, scheduler);
    int number = 0;
    for (auto _ : state) {
        std::promise<bool> isStored;
        opened.store->add(
            noteOf(++number), [&isStored](const NotebookVerdict& verdict) { isStored.set_value(verdict.isStored); });
        if (!isStored.get_future().get())
            state.SkipWithError("not stored");
    }
    std::filesystem::remove_all(folder);
}

void merelyReadManyFiles(benchmark::State& state)
{
    const std::string& folder = manyNotesFolder();
    for (auto _ : state)
        for (const std::string& name : fileNamesIn(folder).value_or(std::vector<std::string>{}))
            benchmark::DoNotOptimize(readFile(folder + "/" + name, maximumNoteBytes));
}

void loadManyNotes(benchmark::State& state)
{
    const std::string& folder = manyNotesFolder();
    for (auto _ : state) {
        const auto content = readNoteFolder(folder, Instant{});
        if (!content || content->notes.size() != manyNotes)
            state.SkipWithError("notes are missing");
    }
}

/// On the file worker; what reaches the main thread is the one note.
void reloadAfterOneChange(benchmark::State& state)
{
    const std::string& folder = manyNotesFolder();
    NoteFolderReader reader(folder);
    // Files written within the last two seconds are read again in any case; they shall not count here.
    std::this_thread::sleep_for(std::chrono::seconds(3));
    static_cast<void>(reader.read(Instant{}));
    Note note = noteOf(77);
    for (auto _ : state) {
        note.body += "!";
        std::ofstream(folder + "/" + NoteFile::longFileName(note)) << NoteFile::encode(note);
        const auto changes = reader.read(Instant{});
        if (!changes || changes->changed.size() != 1)
            state.SkipWithError("not one change");
    }
}

NoteIndex& manyNotesIndex()
{
    static NoteIndex index = [] {
        NoteIndex made;
        for (int number = 0; number < manyNotes; ++number)
            made.put(noteOf(number));
        return made;
    }();
    return index;
}

void indexOneNote(benchmark::State& state)
{
    NoteIndex& index = manyNotesIndex();
    int number = 0;
    for (auto _ : state)
        index.put(noteOf(number = (number + 7) % manyNotes));
}

void searchRareWord(benchmark::State& state)
{
    const NoteIndex& index = manyNotesIndex();
    for (auto _ : state)
        if (index.find({.words = "note 4711"}).count != 1)
            state.SkipWithError("not found");
}

void searchWordOfEveryNote(benchmark::State& state)
{
    const NoteIndex& index = manyNotesIndex();
    for (auto _ : state)
        if (index.find({.words = "tomato"}).count != manyNotes)
            state.SkipWithError("not found");
}

NoteList manyNotesList()
{
    std::vector<StoredNote> notes;
    for (int number = 0; number < manyNotes; ++number)
        notes.push_back({noteOf(number), {}});
    return NoteList(std::move(notes));
}

/// What the main thread does for a new note among ten thousand; the rest is the workers'.
void listOneNewNote(benchmark::State& state)
{
    NoteList list = manyNotesList();
    const Note note = noteOf(manyNotes);
    for (auto _ : state) {
        list.put(note);
        state.PauseTiming();
        list.remove(note.id);
        state.ResumeTiming();
    }
}

/// The same for a thousand that a sync program changed at once.
void listThousandChangedNotes(benchmark::State& state)
{
    NoteList list = manyNotesList();
    std::vector<Note> changed;
    for (int number = 0; number < 1000; ++number)
        changed.push_back(noteOf(number));
    for (auto _ : state) {
        state.PauseTiming();
        std::vector<Note> copy = changed;
        state.ResumeTiming();
        list.apply(std::move(copy), {"100000000999"});
        state.PauseTiming();
        list.put(noteOf(999));
        state.ResumeTiming();
    }
}

BENCHMARK(listOneNewNote)->Unit(benchmark::kMillisecond);
BENCHMARK(listThousandChangedNotes)->Unit(benchmark::kMillisecond);
BENCHMARK(encodeNote)->Unit(benchmark::kMicrosecond);
BENCHMARK(decodeNote)->Unit(benchmark::kMicrosecond);
BENCHMARK(keepNoteDurably)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(merelyReadManyFiles)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();
BENCHMARK(loadManyNotes)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();
BENCHMARK(reloadAfterOneChange)->Unit(benchmark::kMillisecond);
BENCHMARK(indexOneNote)->Unit(benchmark::kMicrosecond);
BENCHMARK(searchRareWord)->Unit(benchmark::kMillisecond);
BENCHMARK(searchWordOfEveryNote)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argumentCount, char** arguments)
{
    if (argumentCount == 3 && std::string(arguments[1]) == "--write-notes") {
        std::filesystem::create_directories(arguments[2]);
        writeManyNotes(arguments[2]);
        return 0;
    }
    benchmark::Initialize(&argumentCount, arguments);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
