// SPDX-License-Identifier: MIT
#include "Quorvell/desktop/NoticeNumbers.h"

#include "Quorvell/files/AtomicFile.h"
#include "Quorvell/files/Folder.h"

#include <filesystem>
#include <sstream>
#include <utility>
#include <vector>

namespace quorvell {

namespace {

constexpr std::size_t largestFile = 64 * 1024;
constexpr std::size_t mostNumbers = 100;

struct Line {
    std::int64_t seconds = 0; ///< Since 1970.
    NoticeNumbers::Number number;
    std::string key;
};

std::int64_t now()
{
    const auto elapsed = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::seconds>(elapsed).count();
}

bool isValid(const Line& line)
{
    const std::int64_t age = now() - line.seconds;
    return line.number.id > 0 && age >= 0 && age < std::chrono::seconds(NoticeNumbers::valid).count();
}

/// Those that are still valid, the oldest first; lines that nobody can read are passed over.
std::vector<Line> linesOf(const std::string& path)
{
    std::vector<Line> lines;
    std::istringstream text(readFile(path, largestFile).value_or(""));
    for (std::string written; std::getline(text, written) && lines.size() < mostNumbers;) {
        std::istringstream parts(written);
        Line line;
        if (parts >> line.seconds >> line.number.id >> line.number.server && parts.get() == ' '
            && std::getline(parts, line.key) && isValid(line))
            lines.push_back(std::move(line));
    }
    return lines;
}

} // namespace

NoticeNumbers::NoticeNumbers(std::string path)
    : m_path(std::move(path))
{
}

std::optional<NoticeNumbers::Number> NoticeNumbers::find(const std::string& key) const
{
    if (m_path.empty())
        return std::nullopt;
    std::optional<Number> found;
    for (const Line& line : linesOf(m_path))
        if (line.key == key)
            found = line.number;
    return found;
}

void NoticeNumbers::keep(const std::string& key, const Number& number) const
{
    if (m_path.empty() || key.find('\n') != std::string::npos || number.server.empty())
        return;
    std::vector<Line> lines = linesOf(m_path);
    std::erase_if(lines, [&key](const Line& line) { return line.key == key; });
    if (lines.size() >= mostNumbers)
        lines.erase(lines.begin());
    lines.push_back({now(), number, key});
    std::ostringstream text;
    for (const Line& line : lines)
        text << line.seconds << ' ' << line.number.id << ' ' << line.number.server << ' ' << line.key << '\n';
    const std::filesystem::path path(m_path);
    // Where it cannot be kept, a notice may show twice after a crash, and nothing else depends on it.
    static_cast<void>(
        writeFileDurably(path.parent_path().string(), path.filename().string(), text.str(), AtomicFile::Flushing::no));
}

} // namespace quorvell
