// SPDX-License-Identifier: MIT
// Catches a question of the program that is not put, put where nobody gets it, or put into a turn.
#include "SessionBench.h"

namespace quorvell {
namespace {

using Replies = SessionSettings::Replies;

struct OwnWordsTest : SessionBench { };

TEST_F(OwnWordsTest, aQuestionIsPutWordForWordAtAMomentForIt)
{
    struct Row {
        const char* name;
        Steps before;
        Lines shown;
        Replies replies = Replies::spoken;
        std::string said{};
    };
    const Step connected = [this] { becomeReady(); };
    const Lines put{"said: Shall I?"};
    const Row rows[] = {
        {"it is quiet", {connected}, put, Replies::spoken, "Shall I?"},
        {"answers are shown", {connected}, put, Replies::shown},
        {"a turn is open", {connected, [this] { type("hello"); }}, {}},
        {"the turn is over", {connected, [this] { type("hello"); }, pass(60s)}, put, Replies::spoken, "Shall I?"},
        {"nobody is connected yet", {}, {}},
        {"it is over", {connected, [this] { controller->stop("test"); }}, {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        SessionSettings settings;
        settings.replies = row.replies;
        make(settings).begin();
        carryOut(row.before);
        synthesiser.said.clear();
        saidSince();
        controller->putQuestion("Shall I?");
        EXPECT_EQ(saidSince(), row.shown);
        EXPECT_EQ(synthesiser.said, row.said);
    }
}

} // namespace
} // namespace quorvell
