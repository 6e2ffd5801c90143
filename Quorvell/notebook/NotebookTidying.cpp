// SPDX-License-Identifier: MIT
#include "Quorvell/notebook/NotebookTidying.h"

#include "Quorvell/files/AtomicFile.h"
#include "Quorvell/files/Folder.h"
#include "Quorvell/notebook/NoteFolderReader.h"
#include "Quorvell/notebook/NoteHistory.h"
#include "Quorvell/notebook/NotePicture.h"
#include "Quorvell/notebook/NoteRescue.h"

#include <chrono>
#include <set>
#include <string_view>

namespace quorvell {

namespace {

constexpr std::chrono::seconds age(86'400);

bool isOld(const std::string& path, Instant now)
{
    const auto stamp = FileStamp::ofFile(path);
    const auto written = std::chrono::nanoseconds(stamp ? stamp->writtenNanoseconds : 0);
    return stamp && now.time_since_epoch() - written > age;
}

bool isOurId(std::string_view id)
{
    constexpr std::size_t length = 12;
    return id.size() == length && id.find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

/// The name without `ending`, or nothing when it ends otherwise.
std::optional<std::string> stem(const std::string& name, std::string_view ending)
{
    return name.ends_with(ending) ? std::optional(name.substr(0, name.size() - ending.size())) : std::nullopt;
}

void removeOrphans(const std::string& folder, std::string_view ending, const std::set<std::string>& kept, Instant now)
{
    for (const std::string& name : fileNamesIn(folder).value_or(std::vector<std::string>{})) {
        const auto id = stem(name, ending);
        if (id && isOurId(*id) && !kept.contains(*id) && isOld(folder + "/" + name, now))
            static_cast<void>(removeFileDurably(folder, name)); // What stays is tried again a day later.
    }
    removeStaleTemporaryFiles(folder, age);
}

} // namespace

void tidyNotebook(const std::string& folder, Instant now)
{
    NoteFolderReader reader(folder);
    const auto content = reader.read(now);
    if (!content)
        return;
    const std::set<std::string> unkept = rescueLeftVersions(folder, content->changed, now);
    if (!reader.unreadable().empty())
        return;
    std::set<std::string> kept;
    for (std::string& id : reader.ids())
        kept.insert(std::move(id));
    removeOrphans(folder + "/" + NoteHistory::folderName, ".json", kept, now);
    // A note may refer to the picture of another one that is gone.
    const std::string start = std::string(picturesFolderName) + "/";
    for (const StoredNote& stored : content->changed)
        if (stored.note.image && stored.note.image->starts_with(start))
            if (auto id = stem(stored.note.image->substr(start.size()), ".png"))
                kept.insert(std::move(*id));
    removeOrphans(folder + "/" + picturesFolderName, ".png", kept, now);
    removeStaleTemporaryFiles(folder, age, unkept);
}

} // namespace quorvell
