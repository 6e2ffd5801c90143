// SPDX-License-Identifier: MIT
// The notebook as tools and programs see it, whether this program owns the folder or another one does.
#pragma once

#include "Quorvell/notebook/NotebookObservation.h"
#include "QuorvellCore/notebook/Note.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quorvell {

/// What became of one change.
struct [[nodiscard]] NotebookVerdict {
    bool isStored = false; ///< On disk and flushed.
    std::string problem; ///< When not: a sentence for the user that says what to do next.
    std::string remark{}; ///< When it is: what the user should know besides; most often nothing.
};

using NotebookCallback = std::function<void(const NotebookVerdict&)>;

/// Ids of the notes that are not as they were, for whatever reason.
struct NotebookChanges {
    std::vector<std::string> changed; ///< New ones too.
    std::vector<std::string> gone;
};

/// Main thread; callbacks run there too, after the change is durable.
class Notebook {
public:
    using Observer = std::function<void(const NotebookChanges&)>;

    virtual ~Notebook() = default;

    /// Newest `created` first. Valid until the next change.
    virtual const std::vector<Note>& notes() const = 0;
    /// What the model may read of them.
    std::vector<Note> visibleToQuorvell() const;
    virtual std::optional<Note> note(const std::string& id) const = 0;
    /// False while another program owns the folder. Only the owner fires reminders.
    virtual bool isOwner() const { return true; }
    virtual void add(Note note, NotebookCallback done) = 0;
    /// Applies `change` to the note with this id, moves `updated` forward and writes it.
    virtual void update(const std::string& id, std::function<void(Note&)> change, NotebookCallback done) = 0;

    /// `changed` runs after the list changed, by this program or from outside. Either of the two may end first.
    [[nodiscard]] NotebookObservation observe(Observer changed);

protected:
    std::vector<Note> selected(const std::function<bool(const Note&)>& isWanted) const;
    void announce(const NotebookChanges& changes) const;

private:
    using Observers = std::map<int, Observer>;

    std::shared_ptr<Observers> m_observers = std::make_shared<Observers>();
    int m_lastObserver = 0;
};

} // namespace quorvell
