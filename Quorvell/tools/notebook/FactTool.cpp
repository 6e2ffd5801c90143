// SPDX-License-Identifier: MIT
#include "Quorvell/tools/notebook/FactTool.h"

#include "Quorvell/tools/notebook/PrivateFacts.h"
#include "QuorvellCore/notebook/answers/AnswerSentences.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Json.h"
#include "QuorvellCore/text/OneLine.h"
#include "QuorvellCore/text/SecondPerson.h"
#include "QuorvellCore/text/TextMatch.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <memory>
#include <utility>

namespace quorvell {

namespace {

constexpr std::size_t mostListed = 5; ///< Facts to choose from.
constexpr std::size_t maximumFact = 300; ///< Characters; a fact is a sentence.

const Note* knownFact(const FullNotebook& notebook, const std::string& fact)
{
    const std::string wanted = TextMatch::normalized(fact);
    const auto& notes = notebook.notes();
    const auto found = std::find_if(notes.begin(), notes.end(), [&wanted](const Note& note) {
        return note.kind == NoteKind::aboutMe && note.isVisibleToQuorvell()
            && TextMatch::normalized(note.title) == wanted;
    });
    return found == notes.end() ? nullptr : &*found;
}

/// Those that the words speak of, or the one of that id.
std::vector<Note> factsAbout(const FullNotebook& notebook, const std::string& words)
{
    std::vector<Note> facts;
    for (const Note& note : notebook.notes()) {
        if (note.kind == NoteKind::aboutMe && note.isVisibleToQuorvell())
            facts.push_back(note);
    }
    const auto named = std::ranges::find(facts, words, &Note::id);
    if (named != facts.end())
        return {*named};
    std::vector<Note> meant;
    for (const AnswerSentence& sentence : AnswerSentences::find(QuestionWords::of(words), facts).sentences)
        meant.push_back(facts[sentence.note]);
    return meant;
}

ToolResult undoneResult(const std::string& what)
{
    return ToolResult(ToolStatus::undone).add("what", what);
}

/// Answers when the change is durable.
NotebookCallback told(ToolReply reply, const ToolResult& result)
{
    return [answer = std::make_shared<ToolReply>(std::move(reply)), result](const NotebookVerdict& verdict) {
        if (verdict.isStored)
            answer->answer(result);
        else
            answer->fail(verdict.problem);
    };
}

std::string questionAbout(const std::string& fact)
{
    return "Shall I remember this about you: " + trimmed(SecondPerson::of(fact).value_or(fact), ".!?") + "?";
}

} // namespace

FactTool::FactTool(FullNotebook& notebook, const NotebookToolContext& context)
    : m_notebook(notebook)
    , m_context(context)
{
}

void FactTool::call(const LiveFunctionCall& call, ToolReply reply)
{
    const std::string undone = call.string("undo").value_or("");
    if (!undone.empty() && m_context.undo)
        return m_context.undo->takeBack(undone, std::move(reply));
    if (!undone.empty())
        return reply.fail("Nothing can be taken back here.");
    if (const std::string words = onOneLine(repairUtf8(call.string("forget").value_or(""))); !words.empty())
        return forget(words, std::move(reply));
    const std::string fact = onOneLine(repairUtf8(call.string("fact").value_or("")));
    if (TextMatch::normalized(fact).empty())
        return reply.fail("Nothing was kept: fact is missing. Give one sentence in the third person.");
    if (characterCount(fact) > maximumFact)
        return reply.fail("Nothing was kept: the fact is too long. Give one short sentence.");
    if (PendingConsent::asksSomething(fact)) // Else a yes to it would be one to whatever it asks.
        return reply.fail("Nothing was kept: a fact is a statement and asks nothing.");
    if (const std::string problem = privateFactProblem(fact); !problem.empty())
        return reply.fail(problem);
    if (const Note* const known = knownFact(m_notebook, fact))
        return reply.answer(ToolResult(ToolStatus::known).add("id", known->id).add("fact", known->title));
    settle(fact, std::move(reply));
}

void FactTool::ask(const std::string& fact, PendingConsent::Answer answer, ToolReply reply)
{
    const bool isBorrowed = answer == PendingConsent::Answer::borrowed;
    ToolResult result(ToolStatus::needsConfirmation);
    result.add("fact", fact).ask(questionAbout(fact));
    result.advise(isBorrowed
            ? "Nothing is kept: they were asked something else, so their answer does not count. Say this question word "
              "for word and nothing besides it; when they have answered, call remember_about_them again with the same "
              "fact. If they have said no, leave it."
            : "Nothing is kept yet. Ask the question word for word, as the last thing that you say; when they have "
              "answered, call remember_about_them again with the same fact.");
    reply.answer(result);
}

/// By what the user has said since the question, and nothing that the model says of it.
void FactTool::settle(const std::string& fact, ToolReply reply)
{
    if (!m_context.consent)
        return ask(fact, PendingConsent::Answer::none, std::move(reply));
    const auto shared = std::make_shared<ToolReply>(std::move(reply));
    m_context.consent->settleWhenHeard(questionAbout(fact),
        [this, fact, shared](PendingConsent::Answer answer) { settled(fact, answer, std::move(*shared)); });
}

void FactTool::settled(const std::string& fact, PendingConsent::Answer answer, ToolReply reply)
{
    using Answer = PendingConsent::Answer;
    if (answer == Answer::yes)
        return keep(fact, std::move(reply));
    if (answer != Answer::no) {
        m_context.consent->ask(questionAbout(fact));
        return ask(fact, answer, std::move(reply));
    }
    reply.answer(
        ToolResult(ToolStatus::notRemembered)
            .add("fact", fact)
            .advise("They did not clearly say yes, so nothing was kept. Let it be unless they come back to it."));
}

void FactTool::keep(const std::string& fact, ToolReply reply)
{
    const std::string id = m_context.newID();
    const auto takeBack = [this, id, fact](ToolReply undone) {
        const auto note = m_notebook.note(id);
        if (!note || note->title != fact)
            return undone.fail("Nothing was taken back: that fact was changed or removed meanwhile.");
        m_notebook.delete_(id, told(std::move(undone), undoneResult("remembering: " + trimmed(fact, ".!"))));
    };
    const auto answer = std::make_shared<ToolReply>(std::move(reply));
    const auto done = [this, answer, id, fact, takeBack](const NotebookVerdict& verdict) {
        if (!verdict.isStored)
            return answer->fail(verdict.problem);
        answer->answer(undoable(ToolResult(ToolStatus::remembered).add("id", id).add("fact", fact), takeBack));
    };
    m_notebook.remember(fact, NoteAuthor::person, id, m_context.now(), done);
}

ToolResult FactTool::undoable(ToolResult result, UndoBook::TakeBack takeBack) const
{
    if (m_context.undo)
        result.add("undo", m_context.undo->add(std::move(takeBack)));
    return result;
}

void FactTool::forget(const std::string& words, ToolReply reply)
{
    const auto facts = factsAbout(m_notebook, words);
    if (facts.empty())
        return reply.fail("Nothing was forgotten: no fact like that is kept.");
    if (facts.size() == 1)
        return remove(facts.front(), std::move(reply));
    Json listed = Json::array();
    for (const Note& fact : facts) {
        if (listed.size() < mostListed)
            listed.push_back({{"id", fact.id}, {"fact", fact.title}});
    }
    ToolResult which(ToolStatus::whichFact);
    which.add("facts", std::move(listed)).ask("Which of these should I forget?");
    reply.answer(
        which.advise("Nothing is forgotten yet. Ask which one they mean, then call again with its id as forget."));
}

void FactTool::remove(const Note& fact, ToolReply reply)
{
    const auto takeBack = [this, fact](ToolReply undone) {
        if (m_notebook.note(fact.id))
            return undone.fail("Nothing was taken back: that fact is there.");
        m_notebook.add(fact, told(std::move(undone), undoneResult("forgetting: " + trimmed(fact.title, ".!"))));
    };
    const auto answer = std::make_shared<ToolReply>(std::move(reply));
    m_notebook.delete_(fact.id, [this, answer, fact, takeBack](const NotebookVerdict& verdict) {
        if (!verdict.isStored)
            return answer->fail(verdict.problem);
        answer->answer(
            undoable(ToolResult(ToolStatus::forgotten).add("id", fact.id).add("fact", fact.title), takeBack));
    });
}

} // namespace quorvell
