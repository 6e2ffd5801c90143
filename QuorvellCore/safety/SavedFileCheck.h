// SPDX-License-Identifier: MIT
// Which file a download or a saving has left in a folder.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace quorvell {

struct SavedFileCheck {
    /// Its name is one that browsers give a file while they are still writing it.
    static bool isUnfinished(std::string_view name);

    /// The one finished file that is in the folder now and was not before. Nothing where there are several, for nobody
    /// could say which one was meant, nor where it still is being written beside its own name.
    static std::optional<std::string> newFile(std::span<const std::string> before, std::span<const std::string> after);
};

} // namespace quorvell
