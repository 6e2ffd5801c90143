// SPDX-License-Identifier: MIT
// Earlier versions of notes: one JSON file for each note in the folder ".history" of the notebook.
#pragma once

#include "Quorvell/files/FileProblem.h"
#include "Quorvell/notebook/NoteVersion.h"

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// Lives on the file worker; blocks. Ids that could lead out of the folder have no history.
class NoteHistory {
public:
    static constexpr const char* folderName = ".history";
    static constexpr std::size_t maximumVersions = 20;

    enum class Keeping {
        ordinary, ///< At most one version a minute, unless the author changed.
        replacedOutside, ///< As ordinary; a sync program may replace a thousand notes at once, so it is not flushed.
        always, ///< Two people changed the note at once; nothing of either may be lost.
    };

    explicit NoteHistory(std::string notebookFolder);

    /// Keeps `version`, which is about to be replaced by a change of `author`.
    FileProblem keep(const std::string& id, const NoteVersion& version, NoteAuthor author, Keeping keeping);

    /// Newest first. Empty where there is none, or nothing readable.
    std::vector<NoteVersion> versions(const std::string& id) const;

    /// The file form: a JSON array, newest first. Reading passes over what is no version.
    static std::string text(const std::vector<NoteVersion>& versions);
    static std::vector<NoteVersion> parsed(std::string_view text);
    /// Both, each version once, newest first, cut to the maximum.
    static std::vector<NoteVersion> merged(std::vector<NoteVersion> some, const std::vector<NoteVersion>& others);

    /// True for ids that may be part of a file name: not empty, no "/", "\\", NUL or "..", and short enough.
    static bool allows(std::string_view id);

private:
    std::string path(const std::string& id) const;

    std::string m_folder;
    std::map<std::string, NoteAuthor> m_lastAuthors; ///< By id: who made the last change.
};

} // namespace quorvell
