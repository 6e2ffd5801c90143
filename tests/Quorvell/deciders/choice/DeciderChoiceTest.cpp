// SPDX-License-Identifier: MIT
// Catches a key that is sent to somebody it was not given for, and deciders that are asked unasked.
#include "Quorvell/deciders/choice/DeciderChoice.h"

#include "Quorvell/preferences/PlannerTraits.h"

#include <gtest/gtest.h>

namespace quorvell {
namespace {

using P = PlannerService;

TEST(DeciderChoice, goesByKeysAndSettings)
{
    const DeciderKeys both{"m", {{P::anthropic, "a"}, {P::openRouter, "r"}}};
    struct Row {
        const char* name;
        DeciderSettings settings;
        DeciderKeys keys;
        std::string selector; ///< Its mode and address, or what is wrong.
        std::string planner; ///< Its address, model and key, or what is wrong.
    };
    const Row rows[] = {
        {"nothing", {}, {}, "off", ""},
        {"the first key decides", {}, both, "MARLUNE_API_KEY is set, and the settings do not say where",
            "https://api.anthropic.com claude-sonnet-4-5 a"},
        {"one that is named", {.pimMode = PimMode::off, .planner = P::openRouter}, both, "off",
            "https://openrouter.ai/api openai/gpt-5 r"},
        {"none", {.selectorHost = "s.example:8443/", .planner = P::off}, both, "active https://s.example:8443", ""},
        {"compared only", {.pimMode = PimMode::shadow, .selectorHost = " https://s.example/way/ "}, {" m\n", {}},
            "shadow https://s.example/way", ""},
        {"this computer", {.selectorHost = "http://127.0.0.1:8080"}, {"m", {}}, "active http://127.0.0.1:8080", ""},
        {"without a key", {.pimMode = PimMode::active, .selectorHost = "s.example", .planner = P::openAI}, {},
            "\"pim_mode\" in the settings is \"active\", and there is no key for it. Set MARLUNE_API_KEY.",
            "there is no key for it. Set OPENAI_API_KEY."},
        {"a host without a key", {.selectorHost = "s.example"}, {}, "off", ""},
        {"a host and a model of one's own", {.planner = P::openAI, .plannerModel = "m", .plannerHost = "p.example"},
            {{}, {{P::openAI, "o"}}}, "off", "https://p.example m o"},
        {"a host of nobody's", {.plannerHost = "p.example"}, both, "", "do not say whose"},
        {"a model of nobody's", {.plannerModel = "m"}, both, "", "do not say whose"},
        {"unencrypted",
            {.selectorHost = "http://s.example", .planner = P::openRouter, .plannerHost = "ftp://p.example"}, both,
            "\"http://s.example\" is not an address", "\"ftp://p.example\" is not an address"},
        {"more than a host",
            {.selectorHost = "s.example/?a=", .planner = P::openRouter, .plannerHost = "u:p@p.example"}, both,
            "is not an address", "is not an address"},
        {"broken keys", {.selectorHost = "s.example"}, {"m\nm", {{P::openAI, " "}}}, "The key in MARLUNE_API_KEY holds",
            "The key in OPENAI_API_KEY holds"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const DeciderChoice choice = DeciderChoice::of(row.settings, row.keys);
        const std::string selector = std::string(storedText(choice.mode))
            + (choice.selector ? " " + choice.selector->url : choice.selectorProblem);
        const auto& planner = choice.planner;
        EXPECT_NE(selector.find(row.selector), std::string::npos) << selector;
        EXPECT_TRUE(!choice.selector || choice.selector->key == "m");
        EXPECT_EQ(choice.mode == PimMode::off, !choice.selector);
        if (planner)
            EXPECT_EQ(planner->url + " " + planner->model + " " + planner->key, row.planner);
        else
            EXPECT_TRUE(row.planner.empty() ? choice.plannerProblem.empty()
                                            : choice.plannerProblem.find(row.planner) != std::string::npos)
                << choice.plannerProblem;
    }
}

} // namespace
} // namespace quorvell
