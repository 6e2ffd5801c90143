// SPDX-License-Identifier: MIT
#include "Quorvell/notebook/NoteFolderReader.h"

#include "Quorvell/files/FileDescriptor.h"
#include "Quorvell/files/Folder.h"
#include "Quorvell/notebook/NoteFileRules.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <future>
#include <span>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace quorvell {

namespace {

std::optional<Note> decoded(const std::optional<StampedText>& file, Instant now)
{
    return file ? noteInFile(file->text, now) : std::nullopt;
}

} // namespace

NoteFolderReader::NoteFolderReader(std::string folder)
    : m_folder(std::move(folder))
{
}

std::optional<NoteFolderChanges> NoteFolderReader::read(Instant now)
{
    const FileDescriptor folder(::open(m_folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    auto names = fileNamesIn(m_folder);
    if (!names)
        return std::nullopt;
    std::vector<Fresh> fresh;
    Entries before = std::exchange(m_entries, {});
    if (before.empty())
        fresh.reserve(names->size());
    for (std::string& name : *names)
        if (isNoteFileName(name) && !carryOver(folder.number(), name, before))
            fresh.push_back({&*m_entries.emplace_hint(m_entries.end(), std::move(name), Entry{})});
    // What was not carried over is gone or was read again.
    if (fresh.empty() && before.empty())
        return NoteFolderChanges{};
    readAll(folder.number(), now, fresh);
    return compare(folder.number(), now, std::move(fresh), before);
}

void NoteFolderReader::wrote(const Note& note, const NoteFileRecord& file)
{
    m_entries.insert_or_assign(file.name,
        Entry{.stamp = file.stamp, .isSettled = false, .isTold = true, .id = note.id, .updated = note.updated});
}

void NoteFolderReader::removed(const std::string& fileName)
{
    m_entries.erase(fileName);
}

std::vector<std::string> NoteFolderReader::unreadable() const
{
    std::vector<std::string> names;
    for (const auto& [name, entry] : m_entries)
        if (!entry.id)
            names.push_back(name);
    return names;
}

std::vector<std::string> NoteFolderReader::ids() const
{
    std::vector<std::string> ids;
    for (const auto& [name, entry] : m_entries)
        if (entry.id)
            ids.push_back(*entry.id);
    return ids;
}

/// True for a file that is still as it was.
bool NoteFolderReader::carryOver(int folder, const std::string& name, Entries& before)
{
    const auto known = before.find(name);
    struct stat found { };
    if (known == before.end() || !known->second.isSettled || ::fstatat(folder, name.c_str(), &found, 0) != 0
        || !S_ISREG(found.st_mode) || FileStamp::of(found) != known->second.stamp)
        return false;
    m_entries.insert(m_entries.end(), before.extract(known));
    return true;
}

/// Where there are many, half of them on a second thread: what takes the time is the system's work on each file.
void NoteFolderReader::readAll(int folder, Instant now, std::vector<Fresh>& files)
{
    const auto readSome = [folder, now](std::span<Fresh> some) {
        for (Fresh& fresh : some)
            readEntry(folder, now, fresh);
    };
    constexpr std::size_t many = 200;
    if (files.size() < many)
        return readSome(files);
    const std::size_t half = files.size() / 2;
    const auto other = std::async([&] { readSome(std::span(files).first(half)); });
    readSome(std::span(files).subspan(half));
    other.wait();
}

/// Touches nothing but this file's entry and note.
void NoteFolderReader::readEntry(int folder, Instant now, Fresh& fresh)
{
    auto& [name, entry] = *fresh.entry;
    const auto file = readStampedFile(folder, name, maximumNoteBytes);
    if (file) {
        entry.stamp = file->stamp;
        entry.isSettled = file->stamp.isSettled();
    }
    fresh.note = decoded(file, now);
    if (!fresh.note)
        return;
    entry.id = fresh.note->id;
    entry.updated = fresh.note->updated;
}

/// Of the files with one id the one with the later `updated`, else the first.
void NoteFolderReader::chooseCounting()
{
    std::unordered_map<std::string_view, Entry*> counting;
    counting.reserve(m_entries.size());
    for (auto& [name, entry] : m_entries) {
        entry.counts = false;
        if (!entry.id)
            continue;
        Entry*& chosen = counting.try_emplace(*entry.id, &entry).first->second;
        if (entry.updated > chosen->updated)
            chosen = &entry;
    }
    for (const auto& [id, chosen] : counting)
        chosen->counts = true;
}

/// What is news among the files that count for their ids.
NoteFolderChanges NoteFolderReader::compare(int folder, Instant now, std::vector<Fresh> fresh, const Entries& before)
{
    chooseCounting();
    NoteFolderChanges changes;
    changes.changed.reserve(fresh.size());
    const auto tell = [&changes](Entries::value_type& entry, Note note) {
        entry.second.isTold = true;
        changes.changed.push_back({std::move(note), {entry.first, entry.second.stamp}});
    };
    for (Fresh& file : fresh)
        if (file.note && file.entry->second.counts)
            tell(*file.entry, std::move(*file.note));
    // A file that lost against another one may count now that the other is gone or older, and the other way round.
    for (auto& entry : m_entries) {
        if (entry.second.counts && !entry.second.isTold)
            if (auto note = decoded(readStampedFile(folder, entry.first, maximumNoteBytes), now))
                tell(entry, std::move(*note));
        entry.second.isTold = entry.second.counts;
    }
    changes.gone = idsGone(before);
    return changes;
}

/// Those that were told and that no file holds any more.
std::vector<std::string> NoteFolderReader::idsGone(const Entries& before) const
{
    std::unordered_set<std::string_view> told;
    for (const auto& [name, entry] : before)
        if (entry.isTold)
            told.insert(*entry.id);
    for (auto known = m_entries.begin(); known != m_entries.end() && !told.empty(); ++known)
        if (known->second.id)
            told.erase(*known->second.id);
    return {told.begin(), told.end()};
}

} // namespace quorvell
