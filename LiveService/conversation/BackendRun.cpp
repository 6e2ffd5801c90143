// SPDX-License-Identifier: MIT
#include "LiveService/conversation/BackendRun.h"

#include "Understanding/dialogue/PlainReplies.h"

#include <utility>

namespace quorvell {

namespace {

/// The rules have no tokens; words are what they read and write.
std::int64_t wordsIn(std::string_view text)
{
    std::int64_t words = 0;
    bool inWord = false;
    for (const char letter : text) {
        const bool isSpace = letter == ' ' || letter == '\n' || letter == '\t';
        words += !isSpace && !inWord ? 1 : 0;
        inWord = !isSpace;
    }
    return words;
}

void tell(SessionNews news, BackendOutputs& outputs)
{
    outputs.emplace_back(effect::Tell{std::move(news)});
}

} // namespace

BackendRun::BackendRun(const IdSource& ids, const std::optional<std::string>& serviceTier, RequestMemory memory)
    : m_ids(ids)
    , m_serviceTier(serviceTier.value_or("default"))
    , m_memory(std::move(memory))
{
}

bool BackendRun::addMessage(ClientText message)
{
    if (m_waiting.size() >= mostWaiting || m_waitingBytes >= mostWaitingBytes)
        return false;
    m_waitingBytes += message.text.size();
    m_waiting.push_back(std::move(message));
    return true;
}

bool BackendRun::addSpoken(
    std::string words, HeardDoubts doubts, std::chrono::milliseconds now, BackendOutputs& outputs)
{
    stopModel(outputs);
    if (!addMessage({.text = std::move(words), .doubts = std::move(doubts)}))
        return false;
    forgetOverdue(now);
    // Otherwise the response that runs, or the one that will answer the results owed, comes to it.
    if (!m_running && m_owed.empty() && m_results.empty()) {
        start(outputs);
        goOn(now, outputs);
    }
    return true;
}

bool BackendRun::addOutput(const std::string& callID, std::string result)
{
    auto owed = m_owed.extract(callID);
    if (owed.empty())
        return false;
    Owed& kept = owed.mapped();
    m_results.push_back({std::move(kept.call), kept.manner, std::move(result), std::move(kept.words), kept.isOfModel});
    return true;
}

BackendRun::CreateVerdict BackendRun::create(std::chrono::milliseconds now, BackendOutputs& outputs)
{
    if (m_running)
        return CreateVerdict::inProgress;
    forgetOverdue(now);
    if (!m_owed.empty())
        return CreateVerdict::outputsOwed;
    start(outputs);
    goOn(now, outputs);
    return CreateVerdict::started;
}

void BackendRun::thought(RuleStep step, std::chrono::milliseconds now, BackendOutputs& outputs)
{
    if (!m_running)
        return;
    if (const auto result = std::exchange(m_modelsResult, std::nullopt)) {
        if (!m_waiting.empty())
            m_model->stop(); // They go on to something else.
        return followModel(m_model->took(*result, std::move(step), m_memory, now), now, outputs);
    }
    m_memory = std::move(step.memory);
    if (step.isNotUnderstood && m_model) {
        const RuleStep notUnderstood{std::move(step.answer), m_memory, true};
        return followModel(m_model->begin(m_words, notUnderstood, now), now, outputs);
    }
    if (const auto* request = std::get_if<ToolRequest>(&step.answer)) {
        callTool(*request, Caller::rules, now, outputs);
        return;
    }
    m_texts += (m_texts.empty() ? "" : " ") + std::get<std::string>(step.answer);
    if (m_manner == ClientText::Manner::voiced)
        m_textsManner = ClientText::Manner::voiced;
    goOn(now, outputs);
}

void BackendRun::start(BackendOutputs& outputs)
{
    m_running = m_ids("resp_");
    m_wordsRead = m_wordsWritten = 0;
    tell(news::ResponseBegan{*m_running}, outputs);
}

/// Thinks about the next thing that waits, or ends the response.
void BackendRun::goOn(std::chrono::milliseconds now, BackendOutputs& outputs)
{
    m_saidOfModel.clear();
    if (!m_results.empty()) {
        Result result = std::move(m_results.front());
        m_results.pop_front();
        m_manner = result.manner;
        m_wordsRead += wordsIn(result.text);
        m_words = std::move(result.words);
        if (result.isOfModel)
            m_modelsResult = result.text;
        outputs.emplace_back(effect::ThinkAboutResult{std::move(result.call), std::move(result.text), m_memory});
        return;
    }
    if (m_waiting.empty()) {
        finish(outputs);
        return;
    }
    ClientText message = std::move(m_waiting.front());
    m_waiting.pop_front();
    m_waitingBytes -= message.text.size();
    m_manner = message.manner;
    m_wordsRead += wordsIn(message.text);
    switch (message.kind) {
    case ClientText::Kind::request:
        m_words = message.text;
        outputs.emplace_back(effect::ThinkAboutWords{std::move(message.text), std::move(message.doubts), m_memory});
        return;
    case ClientText::Kind::greeting:
        thought({PlainReplies::greeting(message.text), m_memory}, now, outputs);
        return;
    case ClientText::Kind::words:
        thought({std::move(message.text), m_memory}, now, outputs);
        return;
    case ClientText::Kind::nothing:
        goOn(now, outputs);
        return;
    }
}

void BackendRun::modelSent(std::string_view bytes, std::chrono::milliseconds now, BackendOutputs& outputs)
{
    if (isModelAsked())
        followModel(m_model->received(bytes, m_memory, now), now, outputs);
}

void BackendRun::modelEnded(ModelEnd end, std::chrono::milliseconds now, BackendOutputs& outputs)
{
    if (isModelAsked())
        followModel(m_model->ended(end, m_memory, now), now, outputs);
}

void BackendRun::tick(std::chrono::milliseconds now, BackendOutputs& outputs)
{
    if (isModelAsked())
        followModel(m_model->tick(m_memory, now), now, outputs);
}

void BackendRun::stopModel(BackendOutputs& outputs)
{
    if (!isModelAsked())
        return;
    m_model->stop();
    outputs.emplace_back(effect::StopModel{});
    finish(outputs);
}

void BackendRun::followModel(ModelTurn::Step step, std::chrono::milliseconds now, BackendOutputs& outputs)
{
    if (step.memory)
        m_memory = *std::move(step.memory);
    sayOfModel(step.sentences, outputs);
    if (step.ask)
        outputs.emplace_back(effect::AskModel{*std::move(step.ask)});
    else if (!isModelAsked())
        outputs.emplace_back(effect::StopModel{}); // It may be sending still, though its answer is known.
    if (step.call)
        callTool(*step.call, Caller::model, now, outputs);
    else if (step.isOver)
        goOn(now, outputs);
}

/// Each as it comes: a listener need not wait for the rest.
void BackendRun::sayOfModel(const std::vector<std::string>& sentences, BackendOutputs& outputs)
{
    for (const std::string& sentence : sentences) {
        giveTexts(outputs);
        const std::string space = m_saidOfModel.empty() ? "" : " ";
        m_saidOfModel += space + sentence;
        m_wordsWritten += wordsIn(sentence);
        tell(news::TextReady{sentence}, outputs);
        // What is shown goes on behind what was; the voice makes its own pauses.
        const bool isShown = m_manner == ClientText::Manner::shown;
        outputs.emplace_back(BackendReply{(isShown ? space : "") + sentence, m_manner});
    }
    if (!sentences.empty())
        m_memory.lastReply = m_saidOfModel;
}

void BackendRun::callTool(
    const ToolRequest& request, Caller caller, std::chrono::milliseconds now, BackendOutputs& outputs)
{
    giveTexts(outputs);
    openai_event::FunctionCall call{m_ids("call_"), request.name, request.arguments, false};
    tell(news::ToolCalled{call}, outputs);
    m_wordsWritten += wordsIn(request.arguments);
    m_owed.emplace(std::move(call.callID), Owed{request, m_manner, now, m_words, caller == Caller::model});
    end(outputs);
}

void BackendRun::finish(BackendOutputs& outputs)
{
    giveTexts(outputs);
    end(outputs);
}

void BackendRun::giveTexts(BackendOutputs& outputs)
{
    if (m_texts.empty())
        return;
    m_wordsWritten += wordsIn(m_texts);
    tell(news::TextReady{m_texts}, outputs);
    outputs.emplace_back(BackendReply{std::exchange(m_texts, {}), m_textsManner});
    m_textsManner = ClientText::Manner::shown;
}

void BackendRun::end(BackendOutputs& outputs)
{
    m_totalWords += m_wordsRead + m_wordsWritten;
    OpenAIResponseEnd end{*std::exchange(m_running, std::nullopt), OpenAIResponseEnd::Status::completed,
        openai_event::BackendUsage{m_wordsRead, 0, m_wordsWritten}, m_serviceTier};
    tell(news::ResponseEnded{std::move(end)}, outputs);
}

void BackendRun::forgetOverdue(std::chrono::milliseconds now)
{
    std::erase_if(m_owed, [now](const auto& owed) { return now - owed.second.since >= patience; });
}

} // namespace quorvell
