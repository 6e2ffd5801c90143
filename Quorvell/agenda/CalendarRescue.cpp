// SPDX-License-Identifier: MIT
#include "Quorvell/agenda/CalendarRescue.h"

#include "Quorvell/files/AtomicFile.h"
#include "Quorvell/files/FileStamp.h"
#include "Quorvell/files/Folder.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <system_error>
#include <utility>
#include <vector>

namespace quorvell {

namespace {

bool wasLeft(const FileStamp& stamp)
{
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return now - std::chrono::nanoseconds(stamp.writtenNanoseconds) > CalendarRescue::age;
}

void removeOldest(const std::string& folder)
{
    std::vector<std::pair<std::int64_t, std::string>> kept;
    for (const std::string& name : fileNamesIn(folder).value_or(std::vector<std::string>{}))
        if (const auto stamp = FileStamp::ofFile(folder + "/" + name); stamp && name.ends_with(".ics"))
            kept.emplace_back(stamp->writtenNanoseconds, name);
    std::sort(kept.rbegin(), kept.rend());
    for (std::size_t index = CalendarRescue::mostKept; index < kept.size(); ++index)
        static_cast<void>(removeFileDurably(folder, kept[index].second)); // What stays is tried again the next time.
}

} // namespace

void CalendarRescue::keepWhatWasLeft(const std::string& folder)
{
    const std::string history = folder + "/" + folderName;
    bool hasKept = false;
    for (const std::string& name : temporaryFilesIn(folder)) {
        const auto stamp = FileStamp::ofFile(folder + "/" + name);
        if (!stamp || !wasLeft(*stamp) || makeFolderInside(history) != FileProblem::none)
            continue;
        std::error_code failure; // Left where it is.
        std::filesystem::rename(folder + "/" + name, history + "/" + name.substr(1) + ".ics", failure);
        hasKept = true;
    }
    if (hasKept)
        removeOldest(history);
}

} // namespace quorvell
