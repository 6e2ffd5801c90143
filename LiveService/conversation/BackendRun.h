// SPDX-License-Identifier: MIT
// The delegated backend of one session: which messages wait, which response runs, which results are owed. Pure.
#pragma once

#include "LiveService/conversation/ClientText.h"
#include "LiveService/conversation/EngineEffect.h"
#include "LiveService/conversation/IdSource.h"
#include "LiveService/conversation/ModelTurn.h"
#include "Understanding/dialogue/RuleStep.h"

#include <chrono>
#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace quorvell {

/// A reply that a response came to.
struct BackendReply {
    std::string text;
    ClientText::Manner manner = ClientText::Manner::voiced;

    bool operator==(const BackendReply&) const = default;
};

/// What the backend wants done: news for the client, thinking, or a reply to be given.
using BackendOutput = std::variant<EngineEffect, BackendReply>;
using BackendOutputs = std::vector<BackendOutput>;

/// Runs one response at a time. A response answers first the results of tool calls and then the messages that wait, in
/// their order; it ends early where a tool is needed, whose result the client owes from then on.
/// Not thread safe; lives with the session.
class BackendRun {
public:
    static constexpr std::size_t mostWaiting = 64;
    static constexpr std::size_t mostWaitingBytes = 4 * 1024 * 1024; ///< Of all; the last one may go beyond.
    /// A result that took longer is given up, so that the user can go on.
    static constexpr std::chrono::milliseconds patience{120'000};

    enum class [[nodiscard]] CreateVerdict{started, inProgress, outputsOwed};

    /// `memory` is what an earlier session had in mind, when this one goes on from it. `ids` must outlive it.
    BackendRun(const IdSource& ids, const std::optional<std::string>& serviceTier, RequestMemory memory);

    /// What the rules do not understand goes to the user's own model from now on.
    void useModel(ModelTurn model) { m_model.emplace(std::move(model)); }

    /// Waits for the next response. False when too many wait already.
    bool addMessage(ClientText message);
    /// A turn that the voice hands over: it is answered as soon as the backend is free, without being asked.
    bool addSpoken(std::string words, HeardDoubts doubts, std::chrono::milliseconds now, BackendOutputs& outputs);
    /// False for a call that is not owed.
    bool addOutput(const std::string& callID, std::string result);
    CreateVerdict create(std::chrono::milliseconds now, BackendOutputs& outputs);
    /// The rules' step for what they were last asked to think about.
    void thought(RuleStep step, std::chrono::milliseconds now, BackendOutputs& outputs);

    /// What the model's server sent, and how that ended.
    void modelSent(std::string_view bytes, std::chrono::milliseconds now, BackendOutputs& outputs);
    void modelEnded(ModelEnd end, std::chrono::milliseconds now, BackendOutputs& outputs);
    /// The user wants something else: what the model has not said yet it need not say.
    void stopModel(BackendOutputs& outputs);
    /// To be called at nextTick.
    void tick(std::chrono::milliseconds now, BackendOutputs& outputs);
    std::optional<std::chrono::milliseconds> nextTick() const { return m_model ? m_model->deadline() : std::nullopt; }
    /// More of a reply may come at any time.
    bool isModelAsked() const { return m_model && m_model->isAsking(); }

    /// Nothing runs and no result is owed or waits.
    bool isIdle() const { return !m_running && m_owed.empty() && m_results.empty(); }
    const RequestMemory& memory() const { return m_memory; }
    /// Words read and written since this was made; the rules have no tokens.
    std::int64_t totalWords() const { return m_totalWords; }

private:
    struct Owed {
        ToolRequest call;
        ClientText::Manner manner;
        std::chrono::milliseconds since;
        std::string words;
        bool isOfModel;
    };
    struct Result {
        ToolRequest call;
        ClientText::Manner manner;
        std::string text;
        std::string words; ///< Of the user, for which the call was made.
        bool isOfModel;
    };
    enum class Caller { rules, model };

    void start(BackendOutputs& outputs);
    void goOn(std::chrono::milliseconds now, BackendOutputs& outputs);
    void callTool(const ToolRequest& request, Caller caller, std::chrono::milliseconds now, BackendOutputs& outputs);
    void followModel(ModelTurn::Step step, std::chrono::milliseconds now, BackendOutputs& outputs);
    void sayOfModel(const std::vector<std::string>& sentences, BackendOutputs& outputs);
    void finish(BackendOutputs& outputs);
    void giveTexts(BackendOutputs& outputs);
    void end(BackendOutputs& outputs);
    void forgetOverdue(std::chrono::milliseconds now);

    const IdSource& m_ids;
    std::string m_serviceTier;
    std::deque<ClientText> m_waiting;
    std::size_t m_waitingBytes = 0;
    std::deque<Result> m_results; ///< Received and not yet answered.
    std::map<std::string, Owed> m_owed;
    std::optional<std::string> m_running; ///< The response's id.
    std::optional<ModelTurn> m_model; ///< Where there is one.
    std::string m_words; ///< The user's, that the rules think about.
    std::optional<std::string> m_modelsResult; ///< The result that they think about, where the model made the call.
    std::string m_saidOfModel; ///< In this response.
    ClientText::Manner m_manner = ClientText::Manner::voiced; ///< Of what is being thought about.
    std::string m_texts; ///< What this response says, so far.
    ClientText::Manner m_textsManner = ClientText::Manner::shown;
    std::int64_t m_wordsRead = 0; ///< In this response.
    std::int64_t m_wordsWritten = 0;
    std::int64_t m_totalWords = 0;
    RequestMemory m_memory;
};

} // namespace quorvell
