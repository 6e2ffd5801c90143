// SPDX-License-Identifier: MIT
// The way to a made-up screen, with a model that calls tools.
#pragma once

#include "ActionBench.h"
#include "Quorvell/actions/tools/ActionTools.h"

#include <nlohmann/json.hpp>

namespace quorvell {

struct ActionToolBench : ActionBench {
    ActionToolBench()
    {
        registerActionTools(registry,
            {.pipeline = pipeline,
                .screen = screen,
                .scheduler = scheduler,
                .log = log,
                .teller = teller,
                .show = [this](const Bytes&) { ++pictures; },
                .carryOn = nullptr,
                .follow = nullptr,
                .helper = nullptr});
    }

    /// What the tool answers, once everything has come to rest; null while it has not.
    Json call(const std::string& name, const Json& arguments = Json::object())
    {
        begin(name, arguments);
        scheduler.advance(100ms);
        return answer;
    }
    /// As the session does it: those that act run with a ticket of their own.
    void begin(const std::string& name, const Json& arguments = Json::object())
    {
        const LiveFunctionCall made{"call_" + std::to_string(++calls), name, arguments};
        const bool acts = name != "confirm_action" && name != "look_at_screen" && name != "flag_scam";
        const auto ticket = acts ? gate.begin(made.id) : std::nullopt;
        answer = nullptr;
        (*registry.owner(name))(made, ToolReply([this, ticket](const Json& result) {
            if (ticket)
                gate.finish(*ticket);
            answer = result;
        }));
    }
    /// The id that the model was told of the element; of no element where there is none.
    std::string id(const std::string& label) { return teller.shown() ? idOn(*teller.shown(), label) : "none"; }
    Json click(const std::string& label) { return call("click", {{"element_id", id(label)}}); }

    int calls = 0;
    LookTeller teller{
        {.fence = [](std::string text, WordOrigin) { return "<<" + std::move(text) + ">>"; }, .seen = nullptr}};
    ToolRegistry registry;
    int pictures = 0; ///< That the model was shown.
    Json answer;
};

} // namespace quorvell
