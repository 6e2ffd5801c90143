// SPDX-License-Identifier: MIT
#include "Quorvell/app/practice/GivenWorld.h"

#include "Quorvell/app/practice/PracticeText.h"
#include "Quorvell/app/program/GivenFile.h"
#include "Quorvell/practice/file/PracticeFile.h"

#include <ostream>
#include <utility>
#include <variant>
#include <vector>

namespace quorvell {

std::optional<PracticeDescription> givenWorld(const std::string& file, std::ostream& problems)
{
    // One byte more than may be: a file that is too long is told so.
    const auto text = GivenFile::read(file, PracticeFile::mostBytes + 1);
    if (!text) {
        problems << file << " cannot be read." << std::endl;
        return std::nullopt;
    }
    auto read = PracticeFile::parse(*text);
    if (auto* description = std::get_if<PracticeDescription>(&read))
        return std::move(*description);
    for (const PracticeMistake& mistake : std::get<std::vector<PracticeMistake>>(read))
        problems << PracticeText::of(mistake) << std::endl;
    return std::nullopt;
}

} // namespace quorvell
