// SPDX-License-Identifier: MIT
#include "Quorvell/connections/responses/ResponsesTextConnection.h"

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

using Kind = ConnectionFailure::Kind;
namespace item = openai_item;

constexpr std::size_t longestUnfinished = 1024 * 1024;

/// A question that waits longer for a busy service is better asked again by the user.
constexpr std::chrono::milliseconds longestPause{15'000};

/// Trying again may help: the service is busy or the line was bad.
bool isPassing(const ConnectionFailure& failure)
{
    constexpr int tookTooLong = 408;
    switch (failure.kind) {
    case Kind::refusedRequest:
        return failure.code == tookTooLong || failure.isBusy();
    case Kind::nobodyAnswers:
    case Kind::openedTooSlowly:
    case Kind::wentSilent:
    case Kind::closed:
        return true;
    default:
        return false;
    }
}

} // namespace

ResponsesTextConnection::ResponsesTextConnection(LiveAccessSource& accessSource, LiveModelSettings models,
    LiveConnectionObserver& observer, ServiceExperience& experience, LiveTimeLimits limits)
    : m_experience(experience)
    , m_limits(limits)
    , m_client(m_web, limits)
    , m_life(accessSource, observer, [this] { m_client.cancel(); })
{
    m_request.model = std::move(models.backendModel);
    m_request.reasoningEffort = std::move(models.options.reasoningEffort);
    m_request.reasoningSummary = std::move(models.options.reasoningSummary);
    m_request.serviceTier = std::move(models.options.serviceTier);
    m_request.verbosity = std::move(models.options.verbosity);
    m_request.maxOutputTokens = models.options.maxOutputTokens;
}

void ResponsesTextConnection::open(const LiveSetup& setup)
{
    m_request.instructions = setup.toolInstructions.empty() ? setup.voiceInstructions : setup.toolInstructions;
    m_request.tools = setup.tools;
    m_items.seed(setup.history);
    // Nothing is opened ahead of the first question.
    m_life.locate([this] {
        m_life.enter(Stage::started);
        m_life.report(live_event::SetupComplete{});
    });
}

// ---- What the session wants

void ResponsesTextConnection::sendMessage(const LiveMessageText& message)
{
    if (!m_life.is(Stage::started))
        return;
    m_waiting.push_back(message);
    if (m_waiting.size() > mostWaiting)
        m_waiting.pop_front();
    proceed();
}

void ResponsesTextConnection::requestAnswer()
{
    m_isAnswerWanted = true;
    proceed();
}

void ResponsesTextConnection::sendVoiceInstructions(const std::string& text)
{
    sendMessage({.text = text});
}

void ResponsesTextConnection::sendToolResponse(const LiveFunctionResponse& response, LiveResponseScheduling)
{
    if (m_owed.erase(response.id) == 0)
        return;
    m_items.add(item::FunctionOutput{response.id, dumpJson(response.response)});
    m_isAnswerWanted = true;
    proceed();
}

void ResponsesTextConnection::dropStale()
{
    std::erase_if(m_waiting,
        [](const LiveMessageText& message) { return message.lateness == LiveMessageText::Lateness::worthless; });
    m_life.later([this] { settle(); });
}

void ResponsesTextConnection::close()
{
    m_client.cancel();
    m_life.finish({});
}

// ---- One question at a time

/// Nothing goes out while an answer runs or a tool's result is owed.
void ResponsesTextConnection::proceed()
{
    if (m_isAsking || !m_owed.empty() || !m_life.is(Stage::started))
        return;
    for (LiveMessageText& message : std::exchange(m_waiting, {})) {
        m_isAnswerWanted = m_isAnswerWanted || message.answer == LiveMessageText::Answer::wanted;
        item::Message said{"user", std::move(message.text)};
        if (message.jpeg)
            said.images.push_back({std::move(*message.jpeg)});
        m_items.add(std::move(said));
    }
    if (!std::exchange(m_isAnswerWanted, false))
        return;
    m_retries = 0;
    m_isAsking = m_isBusy = true;
    ask();
}

void ResponsesTextConnection::ask()
{
    m_hasAnswerBegun = m_hasCalled = false;
    m_unfinished.clear();
    m_experience.dropRefused(m_request);
    ResponsesRequest question = m_request;
    question.input = m_items.all();
    ResponsesClient::Reports reports;
    reports.streamed = [this](ResponsesStreamEvent event) { streamed(std::move(event)); };
    reports.failed = [this](const ConnectionFailure& failure) { failed(failure); };
    m_client.ask(m_life.access(), question, std::move(reports));
}

// ---- What the service answers

void ResponsesTextConnection::streamed(ResponsesStreamEvent event)
{
    if (auto* fact = std::get_if<LiveServerEvent>(&event)) {
        reported(std::move(*fact));
    } else if (const auto* delta = std::get_if<responses_event::TextDelta>(&event)) {
        m_hasAnswerBegun = true;
        m_unfinished += m_unfinished.size() < longestUnfinished ? delta->delta : "";
        m_life.reportWriting(delta->delta);
    } else if (const auto* text = std::get_if<responses_event::Text>(&event)) {
        written(text->text);
    } else if (const auto* end = std::get_if<responses_event::Ended>(&event)) {
        ended(*end);
    }
}

void ResponsesTextConnection::reported(LiveServerEvent event)
{
    // The end says it as well, and may be worth another try first.
    if (std::holds_alternative<live_event::ServerError>(event))
        return;
    if (auto* tool = std::get_if<live_event::ToolCall>(&event)) {
        std::erase_if(tool->calls, [this](const LiveFunctionCall& call) { return !m_calls.isNew(call.id); });
        if (tool->calls.empty())
            return;
        for (LiveFunctionCall& call : tool->calls)
            called(call);
    }
    m_life.report(event);
}

void ResponsesTextConnection::called(LiveFunctionCall& call)
{
    m_hasAnswerBegun = m_hasCalled = true;
    m_owed.insert(call.id);
    m_items.add(item::FunctionCall{call.id, call.name, call.wasCutOff() ? "{}" : dumpJson(call.args)});
}

void ResponsesTextConnection::written(const std::string& text)
{
    m_hasAnswerBegun = true;
    m_unfinished.clear();
    m_items.add(item::Message{"assistant", text});
    m_life.reportWritten(text);
}

void ResponsesTextConnection::ended(const responses_event::Ended& end)
{
    const bool hasFailed = end.status == "failed" || end.status == "cancelled";
    if (hasFailed && retry({Kind::closed, LiveClosure::abnormal, end.detail}))
        return;
    // An answer that was cut short is shown as far as it came.
    if (!m_unfinished.empty())
        written(std::exchange(m_unfinished, {}));
    if (hasFailed)
        return giveUpAnswer("backend_failed", "The model could not finish its answer. Ask again.");
    if (end.status == "incomplete" && !m_hasAnswerBegun)
        return giveUpAnswer("answer_empty", "The model stopped before it answered. Ask again, or ask for less.");
    m_isAsking = false;
    proceed();
    settle();
}

void ResponsesTextConnection::failed(const ConnectionFailure& failure)
{
    if (retryWithoutSetting(failure) || retry(failure))
        return;
    if (!isPassing(failure))
        return m_life.fail(failure);
    if (!m_unfinished.empty())
        written(std::exchange(m_unfinished, {}));
    giveUpAnswer("answer_lost", failure.closure(m_life.access()).sentence);
}

bool ResponsesTextConnection::retryWithoutSetting(const ConnectionFailure& failure)
{
    if (failure.kind != Kind::refusedRequest)
        return false;
    const RefusedSetting setting = OpenAILiveEndpoint::refusedSetting(failure.code, failure.detail);
    if (!m_experience.drop(m_request, setting))
        return false;
    m_life.report(live_event::Diagnostic{"responses_setting_dropped", std::string(nameOf(setting))});
    m_life.report(live_event::Diagnostic{"session_request_retried", {}});
    m_life.later([this] { ask(); });
    return true;
}

/// Only while nothing was shown and no tool was called: nothing is shown or done twice.
bool ResponsesTextConnection::retry(const ConnectionFailure& failure)
{
    const auto asked = failure.retryAfter.value_or(std::chrono::milliseconds::zero());
    if (m_hasAnswerBegun || !isPassing(failure) || m_retries == mostRetries || asked > longestPause)
        return false;
    const auto pause = std::max(asked, m_limits.firstCreatePause * (1 << (2 * m_retries)));
    ++m_retries;
    m_life.report(live_event::Diagnostic{"answer_retried", std::to_string(failure.code)});
    m_life.later([this] { ask(); }, pause);
    return true;
}

/// The conversation goes on: what was said so far is still there. An answer that had called tools needs no second
/// asking, for their results ask for the rest.
void ResponsesTextConnection::giveUpAnswer(const std::string& code, const std::string& sentence)
{
    m_isAsking = false;
    if (m_hasCalled)
        m_life.report(live_event::Diagnostic{code, "after a tool call"});
    else
        m_life.report(live_event::ServerError{code, sentence});
    proceed();
    settle();
}

void ResponsesTextConnection::settle()
{
    if (m_isAsking || !m_owed.empty() || !m_waiting.empty() || !std::exchange(m_isBusy, false))
        return;
    m_life.report(live_event::BackendIdle{});
    m_life.report(live_event::TurnComplete{});
}

} // namespace quorvell
