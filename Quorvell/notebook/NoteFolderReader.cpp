#include "Quorvell/notebook/NoteFolderReader.h"

#include "Quorvell/files/FileDescriptor.h"
#include "Quorvell/files/Folder.h"
#include "Quorvell/notebook/NoteFolder.h"
#include "QuorvellCore/notebook/NoteFile.h"
#include "QuorvellCore/text/Characters.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace quorvell {

namespace {

/// Eight bytes at a time, because nearly every note is nothing else and all of them are looked at.
bool isAscii(std::string_view text)
{
    constexpr std::uint64_t highBits = 0x8080808080808080U;
    std::size_t position = 0;
    for (; position + sizeof(std::uint64_t) <= text.size(); position += sizeof(std::uint64_t)) {
        std::uint64_t bytes = 0;
        std::memcpy(&bytes, text.data() + position, sizeof(bytes));
        if ((bytes & highBits) != 0)
            return false;
    }
    return std::all_of(text.begin() + static_cast<std::ptrdiff_t>(position), text.end(),
        [](char letter) { return static_cast<unsigned char>(letter) < 0x80; });
}

/// Repairing what is not UTF-8 and writing it back would destroy a file in another encoding, so it is no note.
bool isUtf8(std::string_view text)
{
    return isAscii(text) || repairUtf8(text) == text;
}

std::optional<Note> decoded(const std::optional<StampedText>& file, Instant now)
{
    return file && isUtf8(file->text) ? NoteFile::decode(file->text, now) : std::nullopt;
}

} // namespace

NoteFolderReader::NoteFolderReader(std::string folder)
    : m_folder(std::move(folder))
{
}

std::optional<NoteFolderChanges> NoteFolderReader::read(Instant now)
{
    const FileDescriptor folder(::open(m_folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    const auto names = fileNamesIn(m_folder);
    if (!names)
        return std::nullopt;
    Fresh fresh;
    Entries before = std::exchange(m_entries, {});
    if (before.empty())
        fresh.notes.reserve(names->size());
    for (const std::string& name : *names)
        if (isNoteFileName(name) && !carryOver(folder.number(), name, before))
            readEntry(name, now, fresh);
    // What was not carried over is gone or was read again.
    return fresh.notes.empty() && before.empty() ? NoteFolderChanges{} : compare(now, std::move(fresh), before);
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

void NoteFolderReader::readEntry(const std::string& name, Instant now, Fresh& fresh)
{
    const auto file = readStampedFile(m_folder + "/" + name, maximumNoteBytes);
    const auto entry = m_entries.emplace_hint(m_entries.end(), name, Entry{});
    if (file)
        entry->second = {.stamp = file->stamp, .isSettled = file->stamp.isSettled()};
    auto note = decoded(file, now);
    if (!note)
        return;
    entry->second.id = note->id;
    entry->second.updated = note->updated;
    fresh.notes.push_back({std::move(*note), {name, file->stamp}});
    fresh.entries.push_back(&*entry);
}

/// What is news among the files that count for their ids.
NoteFolderChanges NoteFolderReader::compare(Instant now, Fresh fresh, const Entries& before)
{
    std::unordered_map<std::string_view, Entries::value_type*> counting;
    counting.reserve(m_entries.size());
    for (auto& entry : m_entries) {
        if (!entry.second.id)
            continue;
        const auto [known, isFirst] = counting.try_emplace(*entry.second.id, &entry);
        if (!isFirst && entry.second.updated > known->second->second.updated)
            known->second = &entry;
    }
    NoteFolderChanges changes{std::move(fresh.notes), {}};
    const auto counts = [&counting](const Entries::value_type& entry) {
        return entry.second.id && counting.at(*entry.second.id) == &entry;
    };
    for (std::size_t position = fresh.entries.size(); position-- > 0;) {
        auto& entry = *fresh.entries[position];
        entry.second.isTold = counts(entry);
        if (!entry.second.isTold)
            changes.changed.erase(changes.changed.begin() + static_cast<std::ptrdiff_t>(position));
    }
    // A file that lost against another one may count now that the other is gone or older, and the other way round.
    for (auto& entry : m_entries) {
        const bool isCounting = counts(entry);
        if (isCounting && !entry.second.isTold) {
            const auto file = readStampedFile(m_folder + "/" + entry.first, maximumNoteBytes);
            if (auto note = decoded(file, now))
                changes.changed.push_back({std::move(*note), {entry.first, file->stamp}});
        }
        entry.second.isTold = isCounting;
    }
    for (const auto& [name, entry] : before)
        if (entry.isTold && !counting.contains(*entry.id))
            changes.gone.push_back(*entry.id);
    return changes;
}

} // namespace quorvell
