// SPDX-License-Identifier: MIT
#include "Quorvell/app/terminal/CommandHistoryFile.h"

#include "Quorvell/files/AtomicFile.h"
#include "Quorvell/settings/PrivateFile.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Json.h"

#include <nlohmann/json.hpp>

#include <sstream>
#include <utility>

namespace quorvell {

namespace {

std::string linesOf(const CommandHistory& history)
{
    std::string lines;
    for (const std::string& entry : history.entries())
        lines += dumpJson(entry) + "\n";
    return lines;
}

} // namespace

CommandHistoryFile::CommandHistoryFile(std::string folder, std::string name)
    : m_folder(std::move(folder))
    , m_name(std::move(name))
{
}

CommandHistory CommandHistoryFile::load() const
{
    CommandHistory history;
    std::istringstream lines(PrivateFile::readEnd(path(), mostRead));
    std::size_t count = 0;
    for (std::string line; std::getline(lines, line); ++count) {
        const auto json = parseJson(line, {2 * longestEntry, 1});
        if (const auto text = json ? readString(*json) : std::nullopt; text && text->size() <= longestEntry)
            history.add(*text);
    }
    if (count > 2 * history.limit())
        (void)writeFileDurably(m_folder, m_name, linesOf(history)); // Else it is tried again next time.
    return history;
}

void CommandHistoryFile::append(std::string_view text) const
{
    const std::string entry = trimmed(text);
    if (!entry.empty() && entry.size() <= longestEntry)
        PrivateFile::append(path(), dumpJson(entry) + "\n");
}

} // namespace quorvell
