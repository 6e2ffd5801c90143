// SPDX-License-Identifier: MIT
// Writes what set_reminder makes of notes, answers once that is durable, and keeps the way back.
#pragma once

#include "Quorvell/notebook/FullNotebook.h"
#include "Quorvell/session/tools/ToolReply.h"
#include "Quorvell/tools/UndoBook.h"
#include "QuorvellCore/live/tools/ToolResult.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quorvell {

/// A value; what it borrows must outlive the answers. Main thread.
class ReminderWriter {
public:
    using Change = std::function<void(Note&)>;
    /// What is answered, seen from the notes as they are stored.
    using Answer = std::function<ToolResult(const std::vector<Note>&)>;

    ReminderWriter(FullNotebook& notebook, UndoBook* undo)
        : m_notebook(notebook)
        , m_undo(undo)
    {
    }

    void add(Note note, ToolResult result, ToolReply reply) const;
    /// All of them, one after the other. What cannot be stored ends it: the answer tells then what was.
    void change(std::vector<Note> notes, Change change, Answer toAnswer, ToolReply reply) const;

private:
    /// What one note was, and what it became.
    struct Step {
        std::optional<Note> before; ///< Nothing of one that was made.
        Note after;
    };
    struct Work;

    static void goOn(const ReminderWriter& writer, const std::shared_ptr<Work>& work);
    static void takeBack(FullNotebook& notebook, const std::vector<Step>& steps, ToolReply reply);
    void keepWayBack(ToolResult& result, std::vector<Step> steps) const;

    FullNotebook& m_notebook;
    UndoBook* m_undo;
};

} // namespace quorvell
