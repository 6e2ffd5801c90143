// SPDX-License-Identifier: MIT
// A notebook without a disk: changes are stored at once, or refused when the test says so.
#pragma once

#include "Quorvell/notebook/Notebook.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace quorvell {

class MemoryNotebook : public Notebook {
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
        done({refusal.empty(), refusal});
    }
    void update(const std::string& id, std::function<void(Note&)> change, NotebookCallback done) override
    {
        for (Note& note : list)
            if (note.id == id && refusal.empty())
                change(note);
        done({refusal.empty(), refusal});
    }

    std::vector<Note> list;
    std::string refusal;
    bool owner = true;
};

} // namespace quorvell
