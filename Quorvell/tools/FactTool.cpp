// SPDX-License-Identifier: MIT
#include "Quorvell/tools/FactTool.h"

#include "Quorvell/tools/PrivateFacts.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Json.h"
#include "QuorvellCore/text/OneLine.h"
#include "QuorvellCore/text/TextMatch.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <memory>
#include <utility>

namespace quorvell {

namespace {

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

std::string questionAbout(const std::string& fact)
{
    return "Shall I remember this about you: " + trimmed(fact, ".!?") + "?";
}

} // namespace

FactTool::FactTool(FullNotebook& notebook, const NotebookToolContext& context)
    : m_notebook(notebook)
    , m_context(context)
{
}

void FactTool::call(const LiveFunctionCall& call, ToolReply reply)
{
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
    const ToolResult remembered = ToolResult(ToolStatus::remembered).add("id", id).add("fact", fact);
    const auto answer = std::make_shared<ToolReply>(std::move(reply));
    const auto done = [answer, remembered](const NotebookVerdict& verdict) {
        if (verdict.isStored)
            answer->answer(remembered);
        else
            answer->fail(verdict.problem);
    };
    m_notebook.remember(fact, NoteAuthor::person, id, m_context.now(), done);
}

} // namespace quorvell
