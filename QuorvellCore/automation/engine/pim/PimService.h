// SPDX-License-Identifier: MIT
// One question to the service of the fast selector, and what comes back.
#pragma once

#include "QuorvellCore/automation/engine/http/DecisionHTTP.h"
#include "QuorvellCore/automation/engine/pim/SharedPimBreaker.h"
#include "QuorvellCore/text/Json.h"

#include <chrono>
#include <functional>
#include <memory>
#include <stop_token>
#include <string>
#include <string_view>

namespace quorvell {

/// A value; its parts are shared. Any thread.
struct PimService {
    static constexpr std::string_view path = "/v1/systemone";
    static constexpr std::string_view model = "pim-1.13.0";

    std::string host{}; ///< "https://selector.example", without the path.
    std::string apiKey{};
    std::shared_ptr<DecisionHTTP> http{};
    std::shared_ptr<SharedPimBreaker> breaker{}; ///< Null: always asked.

    /// Without a key, a host and a way to reach it nobody is asked.
    bool isSetUp() const;

    /// Asks unless the breaker is open, and tells it of the outcome: `isUsable` judges what came back. Nothing where
    /// nobody was asked, where no usable reply came, and once `stop` is asked for, of which the breaker is not told.
    std::optional<Json> ask(const Json& state, const Json& questions, std::chrono::milliseconds timeout,
        std::stop_token stop, const std::function<bool(const Json& reply)>& isUsable) const;
};

/// A question with options and what each of them means.
Json pimChoiceQuestion(std::string_view instructions, const Json& criteria);

} // namespace quorvell
