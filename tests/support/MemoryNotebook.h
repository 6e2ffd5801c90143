// SPDX-License-Identifier: MIT
// A notebook without a disk: changes are stored at once, or later, or refused when the test says so.
#pragma once

#include "Quorvell/notebook/FullNotebook.h"

#include <algorithm>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace quorvell {

class MemoryNotebook : public FullNotebook {
public:
    const std::vector<Note>& notes() const override { return list; }
    std::optional<Note> note(const std::string& id) const override
    {
        const auto found = std::find_if(list.begin(), list.end(), [&](const Note& note) { return note.id == id; });
        return found == list.end() ? std::nullopt : std::optional(*found);
    }
    bool isOwner() const override { return owner; }
    void add(Note note, NotebookCallback done) override
    {
        if (refusal.empty())
            list.insert(list.begin(), std::move(note));
        finish(std::move(done));
    }
    void update(const std::string& id, std::function<void(Note&)> change, NotebookCallback done) override
    {
        for (Note& note : list)
            if (note.id == id && refusal.empty()) {
                if (otherHand)
                    std::exchange(otherHand, nullptr)(note);
                change(note);
            }
        finish(std::move(done));
    }
    void edit(const std::string&, Change, NotebookCallback) override { }
    void delete_(const std::string& id, NotebookCallback done) override
    {
        if (refusal.empty())
            std::erase_if(list, [&](const Note& note) { return note.id == id; });
        finish(std::move(done));
    }
    void forgetAll(NotebookCallback) override { }
    void savePicture(const std::string&, std::string, NotebookCallback) override { }
    void history(const std::string&, HistoryCallback) override { }
    void moveNotebook(const std::string&, Entering, NotebookCallback) override { }
    const std::string& folder() const override { return path; }
    std::optional<std::string> fileURL(const std::string& id) const override
    {
        return note(id) ? std::optional(path + "/" + id + ".md") : std::nullopt;
    }

    enum class Durability { atOnce, later };
    /// All that was written so far becomes durable.
    void settle()
    {
        for (const auto& finished : std::exchange(waiting, {}))
            finished();
    }

    std::vector<Note> list;
    std::string path = "/notes";
    std::string refusal;
    bool owner = true;
    std::function<void(Note&)> otherHand; ///< Changes a note in the instant before the next change of ours is made.
    Durability durability = Durability::atOnce;
    std::vector<std::function<void()>> waiting; ///< Answers to writes that are not durable yet.

private:
    void finish(NotebookCallback done)
    {
        waiting.push_back([this, done = std::move(done)] { done({refusal.empty(), refusal}); });
        if (durability == Durability::atOnce)
            settle();
    }
};

} // namespace quorvell
