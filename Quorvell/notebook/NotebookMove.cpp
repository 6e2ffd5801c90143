// SPDX-License-Identifier: MIT
#include "Quorvell/notebook/NotebookMove.h"

#include "Quorvell/files/AtomicFile.h"
#include "Quorvell/files/Folder.h"
#include "Quorvell/notebook/NoteHistory.h"
#include "Quorvell/notebook/NotePicture.h"

#include <sys/stat.h>

#include <filesystem>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

namespace quorvell {

namespace {

constexpr std::size_t maximumBytes = 256 * 1024 * 1024; ///< Of one file; a notebook holds texts and pictures.

/// The parts of a notebook, relative to its folder.
std::vector<std::string> partsOf(const std::string& folder)
{
    std::vector<std::string> parts{""};
    for (const char* part : {picturesFolderName, NoteHistory::folderName})
        if (fileNamesIn(folder + "/" + part))
            parts.push_back(std::string("/") + part);
    return parts;
}

/// Lock and temporary files are hidden and no part of the notebook.
bool isMoved(const std::string& part, const std::string& name)
{
    return !name.starts_with('.') || part == std::string("/") + NoteHistory::folderName;
}

bool isFolder(const std::string& path)
{
    std::error_code failure; // a link that leads to itself is none
    return std::filesystem::is_directory(path, failure);
}

/// "a.md" becomes "a-2.md".
std::string numbered(const std::string& name, int number)
{
    const std::filesystem::path path(name);
    return path.stem().string() + "-" + std::to_string(number) + path.extension().string();
}

class Copying {
public:
    Copying(const std::string& from, const std::string& to)
        : m_from(from)
        , m_to(to)
    {
    }

    std::string run()
    {
        for (const std::string& part : partsOf(m_from))
            if (const std::string problem = copyPart(part); !problem.empty()) {
                undo();
                return problem;
            }
        return "";
    }

private:
    std::string copyPart(const std::string& part)
    {
        if (const FileProblem problem = makeFolder(m_to + part); problem != FileProblem::none)
            return problemSentence(problem, m_to + part);
        const auto names = fileNamesIn(m_from + part);
        if (!names)
            return problemSentence(FileProblem::noPermission, m_from + part);
        for (const std::string& name : *names) {
            const std::string path = m_from + part + "/" + name;
            if (!isMoved(part, name) || isFolder(path))
                continue;
            const auto text = readFile(path, maximumBytes);
            if (!text)
                return "Nothing was moved or copied, because " + path
                    + " cannot be read. See that it can, or move it away, and try again.";
            if (const FileProblem problem = copyFile(part, name, *text); problem != FileProblem::none)
                return "Nothing was moved or copied. " + problemSentence(problem, m_to + part);
        }
        return "";
    }

    FileProblem copyFile(const std::string& part, const std::string& name, const std::string& text)
    {
        const std::string folder = m_to + part;
        std::string wanted = name;
        constexpr int maximumAttempts = 1000;
        for (int number = 2; number < maximumAttempts; ++number) {
            const auto there = readFile(folder + "/" + wanted, maximumBytes);
            if (there == text)
                return FileProblem::none;
            if (there && part == std::string("/") + NoteHistory::folderName)
                return mergeHistories(folder, name, *there, text);
            AtomicFile file(folder);
            FileProblem problem = file.write(text);
            if (problem == FileProblem::none)
                problem = file.commit(wanted, AtomicFile::Existing::keep);
            if (problem == FileProblem::none)
                m_made.emplace_back(folder, wanted);
            if (problem != FileProblem::nameTaken)
                return problem;
            wanted = numbered(name, number);
        }
        return FileProblem::nameTaken;
    }

    FileProblem mergeHistories(
        const std::string& folder, const std::string& name, const std::string& there, const std::string& text)
    {
        const auto both = NoteHistory::merged(NoteHistory::parsed(there), NoteHistory::parsed(text));
        m_replaced.push_back({folder, name, there});
        return writeFileDurably(folder, name, NoteHistory::text(both));
    }

    /// As far as it can be done; what is told is the problem that led here.
    void undo() const
    {
        for (const auto& [folder, name] : m_made)
            static_cast<void>(removeFileDurably(folder, name));
        for (const Replaced& replaced : m_replaced)
            static_cast<void>(writeFileDurably(replaced.folder, replaced.name, replaced.text));
    }

    struct Replaced {
        std::string folder;
        std::string name;
        std::string text;
    };

    std::string m_from;
    std::string m_to;
    std::vector<std::pair<std::string, std::string>> m_made; ///< Folder and name.
    std::vector<Replaced> m_replaced;
};

/// A copy may stand under a name with a number; a history may have grown together with another.
bool hasCopy(const std::string& folder, const std::string& name, const std::string& text, bool isHistory)
{
    std::string candidate = name;
    for (int number = 2;; ++number) {
        const auto there = readFile(folder + "/" + candidate, maximumBytes);
        if (!there)
            return false;
        if (*there == text || isHistory)
            return true;
        candidate = numbered(name, number);
    }
}

} // namespace

std::string copyNotebook(const std::string& from, const std::string& to)
{
    std::error_code failure;
    const auto source = std::filesystem::weakly_canonical(from, failure);
    const auto target = to.empty() ? std::filesystem::path() : std::filesystem::weakly_canonical(to, failure);
    if (source.empty() || target.empty())
        return "Nothing was moved or copied: no folder is named there, or its name leads nowhere. Give another one.";
    const auto [end, rest] = std::mismatch(source.begin(), source.end(), target.begin(), target.end());
    if (end == source.end() || rest == target.end())
        return "Nothing was moved or copied: one of the two folders lies inside the other, or they are the same. "
               "Choose another folder.";
    return Copying(from, to).run();
}

bool removeCopied(const std::string& from, const std::string& to)
{
    bool isEmpty = true;
    for (const std::string& part : partsOf(from)) {
        const bool isHistory = part == std::string("/") + NoteHistory::folderName;
        for (const std::string& name : fileNamesIn(from + part).value_or(std::vector<std::string>{})) {
            if (!isMoved(part, name) || isFolder(from + part + "/" + name))
                continue;
            const auto text = readFile(from + part + "/" + name, maximumBytes);
            const bool isCopied = text && hasCopy(to + part, name, *text, isHistory);
            isEmpty = isCopied && removeFileDurably(from + part, name) == FileProblem::none && isEmpty;
        }
    }
    return isEmpty;
}

} // namespace quorvell
