#include "Quorvell/notebook/NoteFolder.h"

#include "Quorvell/files/Folder.h"
#include "QuorvellCore/notebook/NoteFile.h"
#include "QuorvellCore/text/Characters.h"

#include <algorithm>
#include <numeric>
#include <unordered_map>
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

std::optional<Note> readNote(const std::string& path, Instant now)
{
    const auto text = readFile(path, maximumNoteBytes);
    return text && isUtf8(*text) ? NoteFile::decode(*text, now) : std::nullopt;
}

/// Collects notes and lets the later one of two with the same id win.
class Collection {
public:
    explicit Collection(std::size_t maximumCount) { m_content.notes.reserve(maximumCount); }

    void put(Note note, const std::string& fileName)
    {
        const auto [known, isNew] = m_positions.try_emplace(note.id, m_content.notes.size());
        if (isNew) {
            m_content.fileNames.emplace(note.id, fileName);
            m_content.notes.push_back(std::move(note));
        } else if (note.updated > m_content.notes[known->second].updated) {
            m_content.fileNames[note.id] = fileName;
            m_content.notes[known->second] = std::move(note);
        }
    }

    /// Positions are sorted rather than notes, which are large: each is moved once.
    NoteFolderContent taken()
    {
        std::vector<std::size_t> order(m_content.notes.size());
        std::iota(order.begin(), order.end(), std::size_t(0));
        std::stable_sort(order.begin(), order.end(), [this](std::size_t left, std::size_t right) {
            return m_content.notes[left].created > m_content.notes[right].created;
        });
        std::vector<Note> sorted;
        sorted.reserve(order.size());
        for (const std::size_t position : order)
            sorted.push_back(std::move(m_content.notes[position]));
        m_content.notes = std::move(sorted);
        return std::move(m_content);
    }

private:
    NoteFolderContent m_content;
    std::unordered_map<std::string, std::size_t> m_positions; ///< By id.
};

} // namespace

bool isNoteFileName(std::string_view name)
{
    constexpr std::string_view ending = ".md";
    return name.size() > ending.size() && name.ends_with(ending) && !name.starts_with('.') && !name.starts_with('#')
        && !name.starts_with('~');
}

std::optional<NoteFolderContent> readNoteFolder(const std::string& folder, Instant now)
{
    const auto names = fileNamesIn(folder);
    if (!names)
        return std::nullopt;
    Collection collection(names->size());
    for (const std::string& name : *names) {
        if (!isNoteFileName(name))
            continue;
        if (auto note = readNote(folder + "/" + name, now))
            collection.put(std::move(*note), name);
    }
    return collection.taken();
}

} // namespace quorvell
