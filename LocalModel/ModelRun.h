// SPDX-License-Identifier: MIT
// One request of the user's in the hands of a model, as a state machine: what came and times go in, what to ask, to say
// and to carry out comes out. Pure.
#pragma once

#include "LocalModel/ModelAccess.h"
#include "LocalModel/ModelEnd.h"
#include "LocalModel/ModelRequest.h"
#include "LocalModel/ModelSentences.h"
#include "LocalModel/ModelStream.h"
#include "LocalModel/ModelTools.h"

#include <chrono>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// Each function returns what is to be done now. Once it is over nothing more is. Whatever the model does, the user is
/// told the truth: that it failed and what was not done, never that something was done.
class ModelRun {
public:
    using Time = std::chrono::milliseconds;

    static constexpr int mostRounds = 5; ///< Of tools; then it has to come to an end.
    static constexpr std::size_t mostCalls = 12; ///< In all.
    static constexpr Time toBegin{8'000}; ///< From a request until the model gives anything.
    static constexpr Time inAll{60'000}; ///< That the model is waited for, all rounds together.

    struct Next {
        std::vector<std::string> sentences{}; ///< To be said, first.
        std::optional<std::string> ask{}; ///< The body of a request to the model.
        std::optional<ModelStream::Call> call{}; ///< A tool that is offered, with arguments that fit it.
        bool isOver = false; ///< Whatever is still being asked is no longer wanted.

        bool operator==(const Next&) const = default;
    };

    /// `cannot` is what the rules would say: the answer where the model cannot be reached.
    ModelRun(
        const ModelAccess& access, std::shared_ptr<const ModelTools> tools, ModelRequest request, std::string cannot);

    Next begin(Time now);
    Next received(std::string_view bytes, Time now);
    Next ended(ModelEnd end, Time now);
    /// What the tool of the last call answered. `told` are the rules' words about it, which are said where it changed
    /// something.
    Next took(const std::string& result, const std::string& told, Time now);
    /// Once deadline() is past.
    Next tick(Time now);

    bool isAsking() const { return m_phase == Phase::asking; }
    /// When the model is no longer waited for; nothing while it is not.
    std::optional<Time> deadline() const;

private:
    enum class Phase { idle, asking, calling, over };

    Next ask(Time now);
    Next nextCall(Time now);
    Next finish();
    Next fail(const std::string& what);
    void stopWaiting(Time now);

    std::string m_title;
    std::shared_ptr<const ModelTools> m_tools;
    ModelRequest m_request;
    std::string m_cannot;
    Phase m_phase = Phase::idle;
    ModelStream m_stream;
    ModelSentences m_sentences;
    std::vector<ModelStream::Call> m_calls; ///< Of this round.
    std::size_t m_call = 0; ///< The one that is under way, or next.
    std::size_t m_made = 0; ///< Calls in all.
    int m_rounds = 0;
    bool m_isRepaired = false; ///< It was told once what is wrong with a call.
    bool m_hasSaid = false;
    bool m_hasActed = false; ///< Something was changed.
    bool m_hasClaimed = false; ///< Something was said to be, in an earlier round.
    Time m_asked{}; ///< When the request under way began.
    Time m_waited{}; ///< Of the requests before it.
};

} // namespace quorvell
