// SPDX-License-Identifier: MIT
// Catches a question of a tool that nobody puts, that is put twice, or that is put where a yes would not be to it.
#include "Quorvell/session/consent/HeardWords.h"
#include "Quorvell/session/reports/ObserverGroup.h"
#include "SessionBench.h"

#include <algorithm>

namespace quorvell {
namespace {

const std::string question = "Shall I remember that?";

struct ConsentTest : SessionBench {
    /// Typed; the model calls a tool, which has to ask, and says this.
    void requestAnsweredWith(const std::string& words)
    {
        type("I like tea");
        callTool("call_" + std::to_string(++calls), "keep_note");
        if (!words.empty())
            wire->reportText(words);
        wire->report(live_event::BackendIdle{});
    }
    long timesPut() const { return std::count(observer.lines.begin(), observer.lines.end(), "said: " + question); }

    int calls = 0;
    HeardWords heard{{scheduler, [this](const std::string& text, std::function<bool()> isStillOpen) {
                          scheduler.post([this, text, isStillOpen = std::move(isStillOpen)] {
                              if (isStillOpen())
                                  controller->putQuestion(text);
                          });
                      }}};
    ObserverGroup both{{&heard, &observer}};
};

TEST_F(ConsentTest, aQuestionOfAToolIsPutOnceAndAYesIsToItAlone)
{
    using Answer = PendingConsent::Answer;
    audience = &both;
    watch = &heard;
    registry.add("keep_note", [this](const LiveFunctionCall&, ToolReply reply) {
        heard.ask(question);
        reply.answer(Json{{"status", "needs_confirmation"}});
    });
    struct Row {
        const char* name;
        std::string answer; ///< Of the model, where it was to ask.
        Steps then;
        long put;
        Answer yes;
    };
    const Row rows[] = {
        {"the model asks", question, {pass(60s)}, 1, Answer::yes},
        {"it says something", "I will see to it.", {pass(60s)}, 1, Answer::yes},
        {"it says nothing", "", {pass(60s)}, 1, Answer::yes},
        {"it asks something else", "Would you like the weather?", {pass(60s)}, 0, Answer::borrowed},
        {"it is told something else before it is asked", "I will see to it.",
            {pass(60s), [this] { requestAnsweredWith("Would you like the weather?"); }, pass(60s)}, 1,
            Answer::borrowed},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        makeActive();
        requestAnsweredWith(row.answer);
        carryOut(row.then);
        EXPECT_EQ(timesPut(), row.put);
        // Where the program puts it, then behind the turn.
        const auto turnOver = std::find_if(observer.lines.begin(), observer.lines.end(),
            [](const std::string& line) { return line.starts_with("turn "); });
        EXPECT_EQ(
            std::count(turnOver, observer.lines.end(), "said: " + question), row.answer == question ? 0 : row.put);
        type("yes");
        EXPECT_EQ(heard.settle(question), row.yes);
        controller->stop("test");
        scheduler.advance(5s);
    }
}

} // namespace
} // namespace quorvell
