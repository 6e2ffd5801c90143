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

} // namespace
} // namespace quorvell
