// SPDX-License-Identifier: MIT
#include "Quorvell/notebook/FullNotebook.h"

#include <sys/stat.h>

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

/// Where on this line the letter between the brackets of a task stands.
std::optional<std::size_t> taskMark(std::string_view line)
{
    const std::size_t bullet = line.find_first_not_of(" \t");
    if (bullet == std::string_view::npos || std::string_view("-*+").find(line[bullet]) == std::string_view::npos)
        return std::nullopt;
    const std::string_view box = line.substr(bullet + 1, 4);
    const bool isBox = box.size() == 4 && box.starts_with(" [") && box[3] == ']'
        && std::string_view(" xX").find(box[2]) != std::string_view::npos;
    return isBox ? std::optional(bullet + 3) : std::nullopt;
}

} // namespace

std::optional<std::string> withToggledTask(const std::string& body, std::size_t task)
{
    for (std::size_t start = 0; start < body.size();) {
        const std::size_t end = std::min(body.find('\n', start), body.size());
        const auto mark = taskMark(std::string_view(body).substr(start, end - start));
        if (mark && task-- == 0) {
            std::string turned = body;
            char& letter = turned[start + *mark];
            letter = letter == ' ' ? 'x' : ' ';
            return turned;
        }
        start = end + 1;
    }
    return std::nullopt;
}

std::optional<std::string> FullNotebook::pictureURL(const Note& note) const
{
    if (!note.image)
        return std::nullopt;
    const std::string path = folder() + "/" + *note.image;
    struct stat found { };
    return ::stat(path.c_str(), &found) == 0 && S_ISREG(found.st_mode) ? std::optional(path) : std::nullopt;
}

void FullNotebook::remember(const std::string& fact, NoteAuthor by, std::string id, Instant now, NotebookCallback done)
{
    const bool isTheirs = by == NoteAuthor::person;
    add({.id = std::move(id),
            .kind = NoteKind::aboutMe,
            .title = fact,
            .created = now,
            .author = by,
            .origin = isTheirs ? NoteOrigin::person : NoteOrigin::conversation,
            .confirmed = isTheirs},
        std::move(done));
}

void FullNotebook::setChecked(const std::string& id, std::int64_t step, bool isChecked, NotebookCallback done)
{
    const auto change = [step, isChecked](Note& note) {
        std::erase(note.checked, step);
        if (isChecked && step >= 0 && step < static_cast<std::int64_t>(note.steps.size()))
            note.checked.insert(std::lower_bound(note.checked.begin(), note.checked.end(), step), step);
    };
    edit(id, change, std::move(done));
}

void FullNotebook::toggleTask(const std::string& id, std::size_t task, NotebookCallback done)
{
    edit(
        id, [task](Note& note) { note.body = withToggledTask(note.body, task).value_or(note.body); }, std::move(done));
}

void FullNotebook::restoreVersion(const std::string& id, const NoteVersion& version, NotebookCallback done)
{
    const auto change = [version](Note& note) {
        note.title = version.title;
        note.body = version.body;
        note.steps = version.steps;
    };
    edit(id, change, std::move(done));
}

std::vector<Note> FullNotebook::keptFacts() const
{
    return selected(
        [](const Note& note) { return note.kind == NoteKind::aboutMe && note.confirmed && !note.archived; });
}

std::vector<Note> FullNotebook::suggestions() const
{
    return selected(
        [](const Note& note) { return note.kind == NoteKind::aboutMe && !note.confirmed && !note.archived; });
}

void FullNotebook::flash(const std::string& id)
{
    m_flashed = id;
    announce({{id}, {}});
}

} // namespace quorvell
