// SPDX-License-Identifier: MIT
// A service of decisions that answers what a test tells it to, and remembers what it was asked.
#pragma once

#include "QuorvellCore/automation/engine/http/DecisionHTTP.h"

#include <deque>
#include <functional>
#include <mutex>

namespace quorvell::test {

class ScriptedDecisionHTTP : public DecisionHTTP {
public:
    struct Asked {
        std::string url;
        std::vector<std::pair<std::string, std::string>> headers;
        Json body;
        std::chrono::milliseconds timeout;
    };
    using Answer = std::variant<Json, DecisionError>;

    /// Answers in this order, and an error once there is none left.
    explicit ScriptedDecisionHTTP(std::deque<Answer> answers = {})
        : m_answers(std::move(answers))
    {
    }

    Answer post(const std::string& url, const std::vector<std::pair<std::string, std::string>>& headers,
        const Json& body, std::chrono::milliseconds timeout, std::stop_token) override
    {
        const std::lock_guard guard(m_lock);
        asked.push_back({url, headers, body, timeout});
        if (whileAsked)
            whileAsked();
        if (m_answers.empty())
            return DecisionError{DecisionError::Kind::serverFault, 500, "nothing left to answer"};
        Answer answer = std::move(m_answers.front());
        m_answers.pop_front();
        return answer;
    }

    void answerNext(Answer answer) { m_answers.push_back(std::move(answer)); }

    std::vector<Asked> asked;
    std::function<void()> whileAsked;

private:
    std::mutex m_lock;
    std::deque<Answer> m_answers;
};

} // namespace quorvell::test
