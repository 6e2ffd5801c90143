// SPDX-License-Identifier: MIT
#include "Quorvell/notebook/NoteRescue.h"

#include "Quorvell/files/AtomicFile.h"
#include "Quorvell/files/Folder.h"
#include "Quorvell/notebook/NoteFileRules.h"
#include "Quorvell/notebook/NoteHistory.h"

#include <fcntl.h>

#include <algorithm>
#include <chrono>
#include <optional>
#include <unordered_map>

namespace quorvell {

namespace {

std::optional<StoredNote> noteIn(const std::string& folder, const std::string& name, Instant now)
{
    const auto file = readStampedFile(AT_FDCWD, folder + "/" + name, maximumNoteBytes);
    auto note = file ? noteInFile(file->text, now) : std::nullopt;
    return note ? std::optional(StoredNote{*std::move(note), {name, file->stamp}}) : std::nullopt;
}

/// An editor leaves `updated` as it was, so the time of writing tells better when the version is from.
NoteVersion versionOf(const StoredNote& left)
{
    const std::chrono::nanoseconds written(left.file.stamp.writtenNanoseconds);
    NoteVersion version = NoteVersion::of(left.note);
    version.date = std::max(version.date, Instant(std::chrono::floor<Instant::duration>(written)));
    return version;
}

bool isKept(const NoteHistory& history, const Note& note)
{
    const auto versions = history.versions(note.id);
    return std::any_of(
        versions.begin(), versions.end(), [&](const NoteVersion& known) { return known.hasTextOf(note); });
}

} // namespace

std::set<std::string> rescueLeftVersions(const std::string& folder, const std::vector<StoredNote>& notes, Instant now)
{
    std::set<std::string> unkept;
    const std::vector<std::string> names = temporaryFilesIn(folder);
    if (names.empty())
        return unkept;
    std::unordered_map<std::string_view, const Note*> present;
    for (const StoredNote& stored : notes)
        present[stored.note.id] = &stored.note;
    NoteHistory history(folder);
    for (const std::string& name : names) {
        const auto left = noteIn(folder, name, now);
        const auto note = left ? present.find(left->note.id) : present.end();
        if (note == present.end() || NoteVersion::of(left->note).hasTextOf(*note->second)
            || isKept(history, left->note))
            continue;
        if (history.keep(left->note.id, versionOf(*left), NoteAuthor::person, NoteHistory::Keeping::always)
            != FileProblem::none)
            unkept.insert(name);
    }
    return unkept;
}

void eraseLeftVersions(const std::string& folder, const std::set<std::string>& ids, Instant now)
{
    for (const std::string& name : temporaryFilesIn(folder))
        if (const auto left = noteIn(folder, name, now); left && ids.contains(left->note.id))
            static_cast<void>(removeFileDurably(folder, name)); // What stays goes with the other temporary files.
}

} // namespace quorvell
