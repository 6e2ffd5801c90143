// SPDX-License-Identifier: MIT
#include "QuorvellCore/safety/SavedFileCheck.h"

#include "QuorvellCore/text/LowerCase.h"

#include <algorithm>
#include <array>

namespace quorvell {

namespace {

constexpr auto unfinishedEndings =
    std::to_array<std::string_view>({".download", ".crdownload", ".part", ".partial", ".opdownload"});

/// "report.pdf" while "report.pdf.part" or "report.Xy12.pdf.part" grows.
bool isPlaceholder(std::string_view name, std::span<const std::string> files)
{
    const std::string stem = std::string(name.substr(0, name.find('.'))) + '.';
    return std::any_of(files.begin(), files.end(),
        [&](const std::string& file) { return SavedFileCheck::isUnfinished(file) && file.starts_with(stem); });
}

} // namespace

bool SavedFileCheck::isUnfinished(std::string_view name)
{
    const std::string lower = asciiLowerCased(name);
    return std::any_of(unfinishedEndings.begin(), unfinishedEndings.end(),
        [&](std::string_view ending) { return lower.ends_with(ending); });
}

std::optional<std::string> SavedFileCheck::newFile(
    std::span<const std::string> before, std::span<const std::string> after)
{
    std::optional<std::string> found;
    for (const std::string& name : after) {
        const bool isNew = std::find(before.begin(), before.end(), name) == before.end();
        if (!isNew || isUnfinished(name) || isPlaceholder(name, after))
            continue;
        if (found)
            return std::nullopt;
        found = name;
    }
    return found;
}

} // namespace quorvell
