// SPDX-License-Identifier: MIT
#include "LocalModel/ModelRun.h"

#include "QuorvellCore/live/tools/ToolResult.h"
#include "QuorvellCore/live/tools/ToolTraits.h"
#include "QuorvellCore/text/Characters.h"

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

bool mayChange(const ModelStream::Call& call)
{
    const ToolTraits* tool = ToolTraits::find(call.name);
    return !tool || tool->changes;
}

/// Whether a tool that may change something says that it did.
bool hasChanged(const std::string& text)
{
    const auto result = ToolResult::parse(text);
    const ToolStatus status = result ? result->status() : ToolStatus::failed;
    return status != ToolStatus::failed && status != ToolStatus::refused && status != ToolStatus::reminders
        && status != ToolStatus::known && status != ToolStatus::notRemembered && !asksBack(status);
}

std::string errorResult(const std::string& problem)
{
    return dumpJson(Json{{"error", problem}});
}

} // namespace

ModelRun::ModelRun(
    const ModelAccess& access, std::shared_ptr<const ModelTools> tools, ModelRequest request, std::string cannot)
    : m_title(withUpperCaseFirst(access.title()))
    , m_tools(std::move(tools))
    , m_request(std::move(request))
    , m_cannot(std::move(cannot))
{
}

ModelRun::Next ModelRun::begin(Time now)
{
    return ask(now);
}

ModelRun::Next ModelRun::ask(Time now)
{
    m_phase = Phase::asking;
    m_asked = now;
    m_hasClaimed = m_hasClaimed || m_sentences.hasClaimed();
    m_stream = {};
    m_sentences = {};
    Next next;
    next.ask = m_request.body(m_tools->declared());
    return next;
}

std::optional<ModelRun::Time> ModelRun::deadline() const
{
    if (m_phase != Phase::asking)
        return std::nullopt;
    const Time last = m_asked + (inAll - m_waited);
    return m_stream.state() == ModelStream::State::waiting ? std::min(last, m_asked + toBegin) : last;
}

void ModelRun::stopWaiting(Time now)
{
    m_waited += now - m_asked;
}

ModelRun::Next ModelRun::received(std::string_view bytes, Time now)
{
    if (m_phase != Phase::asking)
        return {};
    m_stream.add(bytes);
    Next next;
    next.sentences = m_sentences.add(m_stream.takeText());
    m_hasSaid = m_hasSaid || !next.sentences.empty();
    switch (m_stream.state()) {
    case ModelStream::State::waiting:
    case ModelStream::State::running:
        return next;
    case ModelStream::State::whole:
        break;
    case ModelStream::State::broken: {
        Next failure = fail("gave an answer that cannot be used");
        failure.sentences.insert(failure.sentences.begin(), next.sentences.begin(), next.sentences.end());
        return failure;
    }
    }
    stopWaiting(now);
    for (std::string& sentence : m_sentences.end())
        next.sentences.push_back(std::move(sentence));
    m_hasSaid = m_hasSaid || !next.sentences.empty();
    m_calls = m_stream.calls();
    m_call = 0;
    if (!m_calls.empty()) {
        ++m_rounds;
        m_request.addCalls(m_calls);
    }
    Next after = m_calls.empty() ? finish() : nextCall(now);
    after.sentences.insert(after.sentences.begin(), next.sentences.begin(), next.sentences.end());
    return after;
}

ModelRun::Next ModelRun::ended(ModelEnd end, Time now)
{
    if (m_phase != Phase::asking)
        return {};
    switch (end) {
    case ModelEnd::whole: {
        m_stream.end();
        return received({}, now);
    }
    case ModelEnd::refused:
        return fail("did not take the request");
    case ModelEnd::unreachable:
        return fail("cannot be reached");
    case ModelEnd::untrusted:
        return fail("could not prove who it is");
    case ModelEnd::brokenOff:
        return fail("broke off before it had answered");
    }
    return {};
}

/// The next call of this round that can be made; behind the last one the model is asked again.
ModelRun::Next ModelRun::nextCall(Time now)
{
    for (; m_call < m_calls.size(); ++m_call) {
        const ModelStream::Call& call = m_calls[m_call];
        const auto problem = m_tools->problem(call.name, call.arguments);
        if (!problem) {
            if (++m_made > mostCalls || m_rounds > mostRounds)
                return fail("did not come to an end");
            m_phase = Phase::calling;
            Next next;
            next.call = call;
            return next;
        }
        if (std::exchange(m_isRepaired, true))
            return fail("asked for something that cannot be done");
        m_request.addResult(m_call, errorResult(*problem));
    }
    return m_rounds > mostRounds || m_waited >= inAll ? fail("did not come to an end") : ask(now);
}

ModelRun::Next ModelRun::took(const std::string& result, const std::string& told, Time now)
{
    if (m_phase != Phase::calling)
        return {};
    const bool mayHave = mayChange(m_calls[m_call]);
    m_hasActed = m_hasActed || (mayHave && hasChanged(result));
    m_request.addResult(m_call++, result);
    Next next = nextCall(now);
    if (mayHave && !told.empty()) {
        next.sentences.insert(next.sentences.begin(), told);
        m_hasSaid = true;
    }
    return next;
}

ModelRun::Next ModelRun::tick(Time now)
{
    const auto last = deadline();
    if (!last || now < *last)
        return {};
    return fail("did not answer in time");
}

ModelRun::Next ModelRun::finish()
{
    Next next;
    next.isOver = true;
    m_phase = Phase::over;
    if ((m_hasClaimed || m_sentences.hasClaimed()) && !m_hasActed)
        next.sentences.push_back(m_title + " wrote that it did something, but nothing was changed.");
    else if (!m_hasSaid)
        next.sentences.push_back(m_title + " had no answer, so nothing was done.");
    return next;
}

ModelRun::Next ModelRun::fail(const std::string& what)
{
    Next next;
    next.isOver = true;
    m_phase = Phase::over;
    const bool wasAsked = m_hasActed || m_hasSaid || m_made > 0;
    next.sentences.push_back(
        m_title + " " + what + (m_hasActed ? ", so nothing more was done." : ", so nothing was done."));
    if (what == "cannot be reached" && !wasAsked)
        next.sentences = {m_title + " cannot be reached.", m_cannot};
    return next;
}

} // namespace quorvell
