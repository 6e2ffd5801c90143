// SPDX-License-Identifier: MIT
#include "Quorvell/tools/reminders/ReminderWriter.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace quorvell {

namespace {

constexpr const char* changedSince =
    "That was changed again in the meantime, so it was left as it is. Look at it with list, and change it by its id.";

/// Everything that a call of set_reminder can change.
void restore(Note& note, const Note& before)
{
    note.title = before.title;
    note.remindAt = before.remindAt;
    note.repeatRule = before.repeatRule;
    note.trigger = before.trigger;
    note.doneAt = before.doneAt;
    note.archived = before.archived;
    note.then = before.then;
}

/// Whether nobody else has touched that since. What merely fired is no other hand.
bool isAsLeft(const std::optional<Note>& now, const Note& after)
{
    if (!now || now->body != after.body)
        return false;
    Note restored = *now;
    restore(restored, after);
    return restored == *now;
}

std::string whatIsBack(const std::vector<Note>& back)
{
    std::string titles;
    for (const Note& note : back)
        titles += (titles.empty() ? "\"" : ", \"") + note.title + "\"";
    return titles + (back.size() == 1 ? " is as it was" : " are as they were");
}

} // namespace

struct ReminderWriter::Work {
    std::vector<Note> left; ///< The next one last.
    Change change;
    Answer toAnswer;
    ToolReply reply;
    std::vector<Step> steps{};
};

void ReminderWriter::add(Note note, ToolResult result, ToolReply reply) const
{
    const auto answer = std::make_shared<ToolReply>(std::move(reply));
    m_notebook.add(
        note, [writer = *this, answer, result = std::move(result), note](const NotebookVerdict& verdict) mutable {
            if (!verdict.isStored)
                return answer->fail(verdict.problem);
            writer.keepWayBack(result, {{std::nullopt, note}});
            answer->answer(result);
        });
}

void ReminderWriter::change(std::vector<Note> notes, Change change, Answer toAnswer, ToolReply reply) const
{
    std::ranges::reverse(notes);
    goOn(*this,
        std::make_shared<Work>(Work{std::move(notes), std::move(change), std::move(toAnswer), std::move(reply)}));
}

void ReminderWriter::goOn(const ReminderWriter& writer, const std::shared_ptr<Work>& work)
{
    if (work->left.empty()) {
        std::vector<Note> stored;
        for (const Step& step : work->steps)
            stored.push_back(step.after);
        ToolResult result = work->toAnswer(stored);
        writer.keepWayBack(result, std::move(work->steps));
        return work->reply.answer(result);
    }
    const Note before = work->left.back();
    work->left.pop_back();
    writer.m_notebook.update(before.id, work->change, [writer, work, before](const NotebookVerdict& verdict) {
        const auto after = writer.m_notebook.note(before.id);
        if (verdict.isStored && after) {
            work->steps.push_back({before, *after});
            return goOn(writer, work);
        }
        const std::string problem =
            verdict.isStored ? "The reminder is gone. Call set_reminder with list." : verdict.problem;
        if (work->steps.empty())
            return work->reply.fail(problem);
        work->left.clear(); // The others would fare alike; what was done is told, and can be taken back.
        goOn(writer, work);
    });
}

void ReminderWriter::keepWayBack(ToolResult& result, std::vector<Step> steps) const
{
    if (!m_undo || steps.empty())
        return;
    result.add("undo", m_undo->add([&notebook = m_notebook, steps = std::move(steps)](ToolReply reply) {
        takeBack(notebook, steps, std::move(reply));
    }));
}

void ReminderWriter::takeBack(FullNotebook& notebook, const std::vector<Step>& steps, ToolReply reply)
{
    for (const Step& step : steps)
        if (!isAsLeft(notebook.note(step.after.id), step.after))
            return reply.fail(changedSince);
    std::vector<Note> changed;
    for (const Step& step : steps)
        if (step.before)
            changed.push_back(*step.before);
    if (const Step& made = steps.front(); !made.before) { // Only one is made at a time.
        const auto answer = std::make_shared<ToolReply>(std::move(reply));
        notebook.delete_(made.after.id, [answer, title = made.after.title](const NotebookVerdict& verdict) {
            if (verdict.isStored)
                answer->answer(ToolResult(ToolStatus::undone).add("what", "\"" + title + "\" is not set any more"));
            else
                answer->fail(verdict.problem);
        });
        return;
    }
    const auto restored = [changed](Note& note) {
        const auto before = std::ranges::find(changed, note.id, &Note::id);
        if (before != changed.end())
            restore(note, *before);
    };
    ReminderWriter(notebook, nullptr)
        .change(
            changed, restored,
            [](const std::vector<Note>& back) { return ToolResult(ToolStatus::undone).add("what", whatIsBack(back)); },
            std::move(reply));
}

} // namespace quorvell
