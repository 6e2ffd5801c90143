// SPDX-License-Identifier: MIT
#include "Quorvell/files/FileTarget.h"

#include <filesystem>
#include <system_error>
#include <utility>

namespace quorvell {

namespace {

namespace fs = std::filesystem;

FileTarget refused(std::string problem)
{
    return {.folder = "", .name = "", .problem = std::move(problem)};
}

} // namespace

FileTarget FileTarget::of(const std::string& path)
{
    std::error_code failure;
    fs::path target = fs::absolute(path, failure);
    if (path.empty() || failure)
        return refused("No file is named there. Give the name of one.");
    if (fs::is_symlink(fs::symlink_status(target, failure))) {
        target = fs::canonical(target, failure);
        if (failure)
            return refused(path + " is a link that leads to no file. Give another name.");
    }
    const std::string name = target.filename().string();
    const fs::file_type type = fs::status(target, failure).type();
    if (type == fs::file_type::directory || name.empty() || name == "." || name == "..")
        return refused(path + " is a folder. Give the name of a file in it.");
    if (type != fs::file_type::regular && type != fs::file_type::not_found && type != fs::file_type::none)
        return refused(path + " is a device or a pipe, and only ordinary files are replaced. Give another name.");
    return {.folder = target.parent_path().string(), .name = name};
}

} // namespace quorvell
