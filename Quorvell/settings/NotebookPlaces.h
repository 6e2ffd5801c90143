// SPDX-License-Identifier: MIT
// Where a notebook may lie without the user having to name a folder.
#pragma once

#include <optional>
#include <string>

namespace quorvell {

struct NotebookPlaces {
    /// Below the folder for the user's data.
    static std::string localFolder(const std::string& dataFolder);

    /// In the first folder of the home that a sync program keeps, so that other computers have the notes too. Nothing
    /// where there is none.
    static std::optional<std::string> iCloudDrive(const std::string& homeFolder);
};

} // namespace quorvell
