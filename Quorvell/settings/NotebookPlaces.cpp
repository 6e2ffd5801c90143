// SPDX-License-Identifier: MIT
#include "Quorvell/settings/NotebookPlaces.h"

#include <filesystem>
#include <system_error>

namespace quorvell {

std::string NotebookPlaces::localFolder(const std::string& dataFolder)
{
    return dataFolder + "/Quorvell/Notebook";
}

std::optional<std::string> NotebookPlaces::iCloudDrive(const std::string& homeFolder)
{
    // As the sync programs name their folders when nobody tells them otherwise.
    for (const char* name : {"Library/Mobile Documents/com~apple~CloudDocs", "Nextcloud", "ownCloud", "Seafile",
             "Dropbox", "OneDrive", "Sync"}) {
        const std::string folder = homeFolder + "/" + name;
        std::error_code failure;
        if (std::filesystem::is_directory(folder, failure))
            return folder + "/Quorvell Notebook";
    }
    return std::nullopt;
}

} // namespace quorvell
