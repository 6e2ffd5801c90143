// SPDX-License-Identifier: MIT
// Words that the rules did not understand, handed to the user's own model, with the rules watching over what it does.
#pragma once

#include "LiveService/conversation/ConversationHistory.h"
#include "LocalModel/ModelRun.h"
#include "Understanding/dialogue/RuleStep.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quorvell {

struct ModelSurroundings {
    ModelAccess access{};
    std::function<std::string()> today{}; ///< The moment in words, in the user's calendar.
};

/// Lives with the session, as one of its parts; one request at a time.
class ModelTurn {
public:
    using Time = ModelRun::Time;

    /// What is to be done: sentences to say first, then at most one of the others.
    struct Step {
        std::vector<std::string> sentences{};
        std::optional<std::string> ask{}; ///< A body for the model's server.
        std::optional<ToolRequest> call{};
        std::optional<RequestMemory> memory{}; ///< Kept from now on.
        bool isOver = false;
    };

    /// `declarations` are the tools that the session offered. `history` must outlive it.
    ModelTurn(ModelSurroundings surroundings, const Json& declarations, const ConversationHistory& history);

    Step begin(const std::string& words, const RuleStep& notUnderstood, Time now);
    Step received(std::string_view bytes, const RequestMemory& memory, Time now);
    Step ended(ModelEnd end, const RequestMemory& memory, Time now);
    Step tick(const RequestMemory& memory, Time now);
    /// `step` is what the rules made of the result of the last call.
    Step took(const std::string& result, RuleStep step, const RequestMemory& memory, Time now);

    bool isAsking() const { return m_run && m_run->isAsking(); }
    std::optional<Time> deadline() const { return m_run ? m_run->deadline() : std::nullopt; }
    /// Something else is wanted by now.
    void stop() { m_run.reset(); }

private:
    Step after(ModelRun::Next next, const RequestMemory& memory);

    ModelSurroundings m_surroundings;
    std::shared_ptr<const ModelTools> m_tools;
    const ConversationHistory& m_history;
    std::optional<ModelRun> m_run;
    std::string m_words; ///< That the model answers.
};

} // namespace quorvell
