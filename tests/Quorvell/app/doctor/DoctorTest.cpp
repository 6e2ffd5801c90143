// SPDX-License-Identifier: MIT
// Catches keys that the doctor misses, and advice that names the wrong one.
#include "Quorvell/app/doctor/Doctor.h"

#include <gtest/gtest.h>

namespace quorvell {
namespace {

TEST(Doctor, tellsWhichKeysThereAreAndWhichIsMissing)
{
    using B = LiveBackend;
    using Verdict = DoctorFinding::Verdict;
    const std::string good = "12345678";
    struct Row {
        LiveKeys keys;
        LiveBackend wanted;
        Verdict verdict;
        const char* said;
    };
    const Row rows[] = {
        {{}, B::automatic, Verdict::works, "none; the assistant works on this computer alone"},
        {{}, B::onDevice, Verdict::works, "none; the assistant works on this computer alone"},
        {{{B::openAI, good}, {B::gemini, good}}, B::automatic, Verdict::works, "OPENAI_API_KEY and GEMINI_API_KEY set"},
        {{{B::openAI, good}, {B::gemini, "short"}}, B::automatic, Verdict::limited,
            "GEMINI_API_KEY is set, and does not look like a key"},
        {{{B::openAI, good + "\n"}}, B::automatic, Verdict::limited,
            "OPENAI_API_KEY is set, and does not look like a key"},
        {{}, B::openAI, Verdict::limited, "Set OPENAI_API_KEY,"},
        {{}, B::gemini, Verdict::limited, "Set GEMINI_API_KEY,"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.said);
        const DoctorFinding finding = Doctor::keys(row.keys, row.wanted);
        EXPECT_EQ(finding.verdict, row.verdict);
        EXPECT_NE((finding.finding + " " + finding.advice).find(row.said), std::string::npos) << finding.finding;
    }
}

TEST(Doctor, tellsWhoDecidesStepsOnTheScreenAndNoKey)
{
    using P = PlannerService;
    const DeciderKeys keys{"secret-1", {{P::openAI, "secret-2"}}};
    struct Row {
        DeciderSettings settings;
        DeciderKeys keys;
        std::string selector;
        std::string planner;
    };
    const Row rows[] = {
        {{}, {}, "ok none; every step", "ok none; only plain steps"},
        {{.selectorHost = "s.example"}, keys, "ok active, at https://s.example",
            "ok OpenAI with gpt-5, at https://api.openai.com"},
        {{.planner = P::anthropic}, keys, "limited MARLUNE_API_KEY is set, and the settings do not say where",
            "limited The settings ask for Anthropic to plan steps on the screen, and there is no key"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.planner);
        const auto findings = Doctor::deciders(row.settings, row.keys);
        ASSERT_EQ(findings.size(), 2U);
        for (const auto& [finding, wanted] :
            {std::pair(findings[0], row.selector), std::pair(findings[1], row.planner)}) {
            const std::string verdict = finding.verdict == DoctorFinding::Verdict::works ? "ok " : "limited ";
            EXPECT_EQ((verdict + finding.finding).find(wanted), 0U) << finding.finding;
            EXPECT_EQ(finding.text(80).find("secret"), std::string::npos);
        }
    }
}

} // namespace
} // namespace quorvell
