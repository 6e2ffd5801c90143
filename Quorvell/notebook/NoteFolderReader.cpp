#include "Quorvell/notebook/NoteFolderReader.h"

#include "Quorvell/files/Folder.h"
#include "Quorvell/notebook/NoteFolder.h"
#include "QuorvellCore/notebook/NoteFile.h"
#include "QuorvellCore/text/Characters.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace quorvell {

namespace {

/// Repairing what is not UTF-8 and writing it back would destroy a file in another encoding, so it is no note.
bool isUtf8(std::string_view text)
{
    const bool isAscii =
        std::none_of(text.begin(), text.end(), [](char letter) { return static_cast<unsigned char>(letter) >= 0x80; });
    return isAscii || repairUtf8(text) == text;
}

} // namespace

NoteFolderReader::NoteFolderReader(std::string folder)
    : m_folder(std::move(folder))
{
}

std::optional<NoteFolderChanges> NoteFolderReader::read(Instant now)
{
    const auto names = fileNamesIn(m_folder);
    if (!names)
        return std::nullopt;
    FreshNotes fresh;
    Entries before = std::exchange(m_entries, {});
    for (const std::string& name : *names)
        if (isNoteFileName(name) && !carryOver(name, before))
            readEntry(name, now, fresh);
    NoteFolderChanges changes;
    // What was not carried over is gone or was read again.
    if (!fresh.empty() || !before.empty())
        collectChanged(now, fresh, changes);
    return changes;
}

void NoteFolderReader::wrote(const Note& note, const NoteFileRecord& file)
{
    m_entries.insert_or_assign(
        file.name, Entry{.stamp = file.stamp, .isSettled = false, .id = note.id, .updated = note.updated});
    m_told[note.id] = file;
}

void NoteFolderReader::removed(const std::string& id)
{
    const auto told = m_told.find(id);
    if (told == m_told.end())
        return;
    m_entries.erase(told->second.name);
    m_told.erase(told);
}

std::size_t NoteFolderReader::unreadable() const
{
    return static_cast<std::size_t>(
        std::count_if(m_entries.begin(), m_entries.end(), [](const auto& entry) { return !entry.second.id; }));
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
bool NoteFolderReader::carryOver(const std::string& name, Entries& before)
{
    const auto known = before.find(name);
    if (known == before.end() || !known->second.isSettled
        || FileStamp::ofFile(m_folder + "/" + name) != known->second.stamp)
        return false;
    m_entries.insert(m_entries.end(), before.extract(known));
    return true;
}

void NoteFolderReader::readEntry(const std::string& name, Instant now, FreshNotes& fresh)
{
    Entry entry;
    if (const auto file = readStampedFile(m_folder + "/" + name, maximumNoteBytes)) {
        entry.stamp = file->stamp;
        entry.isSettled = file->stamp.isSettled();
        if (auto note = isUtf8(file->text) ? NoteFile::decode(file->text, now) : std::nullopt) {
            entry.id = note->id;
            entry.updated = note->updated;
            fresh.emplace_hint(fresh.end(), name, std::move(*note));
        }
    }
    m_entries.emplace_hint(m_entries.end(), name, std::move(entry));
}

void NoteFolderReader::collectChanged(Instant now, FreshNotes& fresh, NoteFolderChanges& changes)
{
    const Candidates counting = winners();
    for (const auto& [name, entry] : m_entries) {
        if (!entry.id || counting.at(*entry.id) != name)
            continue;
        NoteFileRecord record{name, entry.stamp};
        NoteFileRecord& told = m_told[*entry.id];
        if (told == record && !fresh.contains(name))
            continue;
        if (auto note = taken(name, now, fresh)) {
            told = record;
            changes.changed.push_back({std::move(*note), std::move(record)});
        }
    }
    for (auto told = m_told.begin(); told != m_told.end();) {
        const bool isThere = counting.contains(told->first);
        if (!isThere)
            changes.gone.push_back(told->first);
        told = isThere ? std::next(told) : m_told.erase(told);
    }
}

NoteFolderReader::Candidates NoteFolderReader::winners() const
{
    Candidates counting;
    counting.reserve(m_entries.size());
    for (const auto& [name, entry] : m_entries) {
        if (!entry.id)
            continue;
        const auto [known, isFirst] = counting.try_emplace(*entry.id, name);
        if (!isFirst && entry.updated > m_entries.at(known->second).updated)
            known->second = name;
    }
    return counting;
}

/// The note of a file; one that was read before, and counts only now, is read again.
std::optional<Note> NoteFolderReader::taken(const std::string& name, Instant now, FreshNotes& fresh)
{
    const auto found = fresh.find(name);
    if (found != fresh.end())
        return std::move(found->second);
    const auto text = readFile(m_folder + "/" + name, maximumNoteBytes);
    return text ? NoteFile::decode(*text, now) : std::nullopt;
}

} // namespace quorvell
