// SPDX-License-Identifier: MIT
#include "Quorvell/notebook/NoteHistory.h"

#include "Quorvell/files/AtomicFile.h"
#include "Quorvell/files/Folder.h"
#include "QuorvellCore/text/Json.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <chrono>
#include <utility>

namespace quorvell {

namespace {

/// Of a history. Twenty versions of the largest note would be more; then fewer of them are kept.
constexpr std::size_t maximumBytes = 64 * 1024 * 1024;

std::optional<NoteVersion> readVersion(const Json& json)
{
    const auto date = parseIsoText(readString(json, "date").value_or(""));
    if (!date)
        return std::nullopt;
    return NoteVersion{.date = *date,
        .title = readString(json, "title").value_or(""),
        .body = readString(json, "body").value_or(""),
        .steps = readStrings(json, "steps").value_or(std::vector<std::string>{})};
}

} // namespace

NoteHistory::NoteHistory(std::string notebookFolder)
    : m_folder(std::move(notebookFolder) + "/" + folderName)
{
}

FileProblem NoteHistory::keep(const std::string& id, const NoteVersion& version, NoteAuthor author, Keeping keeping)
{
    if (!allows(id))
        return FileProblem::none;
    const auto [last, isFirst] = m_lastAuthors.try_emplace(id, author);
    const bool isOtherAuthor = isFirst || std::exchange(last->second, author) != author;
    std::vector<NoteVersion> kept = versions(id);
    constexpr std::chrono::minutes pause(1);
    const bool isTooSoon = !kept.empty() && version.date - kept.front().date < pause;
    if ((keeping != Keeping::always && isTooSoon && !isOtherAuthor) || (!kept.empty() && kept.front() == version))
        return FileProblem::none;
    kept.insert(kept.begin(), version);
    if (kept.size() > maximumVersions)
        kept.resize(maximumVersions);
    if (const FileProblem problem = makeFolderInside(m_folder); problem != FileProblem::none)
        return problem;
    const auto flushing = keeping == Keeping::replacedOutside ? AtomicFile::Flushing::no : AtomicFile::Flushing::yes;
    std::string history = text(kept);
    for (; history.size() > maximumBytes && kept.size() > 1; history = text(kept))
        kept.resize((kept.size() + 1) / 2);
    return writeFileDurably(m_folder, id + ".json", history, flushing);
}

std::vector<NoteVersion> NoteHistory::versions(const std::string& id) const
{
    const auto text = allows(id) ? readFile(path(id), maximumBytes) : std::nullopt;
    return text ? parsed(*text) : std::vector<NoteVersion>{};
}

std::string NoteHistory::text(const std::vector<NoteVersion>& versions)
{
    Json list = Json::array();
    for (const NoteVersion& version : versions)
        list.push_back({{"date", isoText(version.date)}, {"title", version.title}, {"body", version.body},
            {"steps", version.steps}});
    return dumpJson(list) + "\n";
}

std::vector<NoteVersion> NoteHistory::parsed(std::string_view text)
{
    const auto list = parseJson(text, {.maximumBytes = maximumBytes});
    std::vector<NoteVersion> versions;
    if (!list || !list->is_array())
        return versions;
    for (const Json& json : *list)
        if (auto version = readVersion(json))
            versions.push_back(std::move(*version));
    std::stable_sort(versions.begin(), versions.end(),
        [](const NoteVersion& left, const NoteVersion& right) { return left.date > right.date; });
    return versions;
}

std::vector<NoteVersion> NoteHistory::merged(std::vector<NoteVersion> some, const std::vector<NoteVersion>& others)
{
    for (const NoteVersion& other : others)
        if (std::find(some.begin(), some.end(), other) == some.end())
            some.push_back(other);
    std::stable_sort(some.begin(), some.end(),
        [](const NoteVersion& left, const NoteVersion& right) { return left.date > right.date; });
    some.resize(std::min(some.size(), maximumVersions));
    return some;
}

bool NoteHistory::allows(std::string_view id)
{
    constexpr std::size_t longest = 200; // bytes; a file name may have 255
    constexpr std::string_view forbidden{"/\\\0", 3};
    return !id.empty() && id.size() <= longest && id.find_first_of(forbidden) == std::string_view::npos
        && id.find("..") == std::string_view::npos;
}

std::string NoteHistory::path(const std::string& id) const
{
    return m_folder + "/" + id + ".json";
}

} // namespace quorvell
