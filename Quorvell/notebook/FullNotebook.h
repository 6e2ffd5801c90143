// SPDX-License-Identifier: MIT
// Everything that can be done with a notebook.
#pragma once

#include "Quorvell/notebook/NoteVersion.h"
#include "Quorvell/notebook/Notebook.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quorvell {

/// Main thread; callbacks run there, later.
class FullNotebook : public Notebook {
public:
    using Change = std::function<void(Note&)>;
    /// Enters the new folder where programs look it up. A text that it returns says why that could not be done.
    using Entering = std::function<std::string()>;
    using HistoryCallback = std::function<void(std::vector<NoteVersion>)>;

    /// As update, for what the person changed by hand.
    virtual void edit(const std::string& id, Change change, NotebookCallback done) = 0;
    /// Puts the note's file into the waste basket, or removes it where there is none. Picture and history stay until
    /// the notebook is tidied. Who shows something of the note, a reminder that fired above all, hears of it through
    /// `observe` and withdraws it.
    virtual void delete_(const std::string& id, NotebookCallback done) = 0;
    /// Removes every fact about the person with all its versions, for good.
    virtual void forgetAll(NotebookCallback done) = 0;
    /// Keeps a picture in any common format as the note's.
    virtual void savePicture(const std::string& id, std::string picture, NotebookCallback done) = 0;
    /// Earlier versions, newest first.
    virtual void history(const std::string& id, HistoryCallback done) = 0;

    /// Moves every file to another folder, which it makes, and keeps the notebook there from then on. When anything
    /// fails the notebook stays whole where it is. `enter` runs when every file is there and none is removed here yet,
    /// so that whenever the program stops, the next one finds a whole notebook.
    virtual void moveNotebook(const std::string& folder, Entering enter, NotebookCallback done) = 0;

    virtual const std::string& folder() const = 0;
    /// Absolute path of the note's file. Nothing before a new note is stored.
    virtual std::optional<std::string> fileURL(const std::string& id) const = 0;
    /// Absolute path of the note's picture. Nothing when it has none or the file is not there.
    std::optional<std::string> pictureURL(const Note& note) const;

    /// Keeps a fact about the person. Their own word is confirmed; what the assistant says of them is a suggestion.
    void remember(const std::string& fact, NoteAuthor by, std::string id, Instant now, NotebookCallback done);
    /// Ticks one step of a how-to, or takes the tick off.
    void setChecked(const std::string& id, std::int64_t step, bool isChecked, NotebookCallback done);
    /// Turns the task of this number, counted from 0, among the lines "- [ ] ..." of the body over.
    void toggleTask(const std::string& id, std::size_t task, NotebookCallback done);
    /// Brings the text of an earlier version back; the present one goes into the history.
    void restoreVersion(const std::string& id, const NoteVersion& version, NotebookCallback done);

    std::vector<Note> keptFacts() const; ///< Confirmed ones.
    std::vector<Note> suggestions() const; ///< Facts that the person has not confirmed yet.

    /// The note that views should draw attention to, until another one is named.
    void flash(const std::string& id);
    const std::optional<std::string>& flashed() const { return m_flashed; }

private:
    std::optional<std::string> m_flashed; ///< An id.
};

/// The body with one of its tasks, lines such as "- [ ] Milk" or "* [x] Eggs", turned over. Nothing when it has no such
/// task.
std::optional<std::string> withToggledTask(const std::string& body, std::size_t task);

} // namespace quorvell
