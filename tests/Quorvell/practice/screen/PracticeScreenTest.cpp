// SPDX-License-Identifier: MIT
// A screen that lets an action through to an element that has become another, answers twice or never, or goes on when
// it is told to stop.
#include "Quorvell/practice/screen/PracticeScreen.h"

#include "Quorvell/practice/file/PracticeFile.h"
#include "VirtualScheduler.h"

#include <gtest/gtest.h>

namespace quorvell::test {

namespace {

using Tool = AutomationAction::Tool;

PracticeDescription shop()
{
    auto read = PracticeFile::parse(R"({"title": "T", "goal": "G", "front": "Web", "facts": {"said": "", "name": "A"},
  "apps": [{"name": "Web", "browser": true, "start": "https://a.example.com", "pages": [
    {"address": "https://a.example.com", "title": "A", "text": "One lamp. Two LAMPS.", "elements": [
      {"name": "buy", "role": "AXButton", "label": "Choose {name}", "press": [{"set": "said", "to": "{said}!"}]},
      {"name": "rename", "role": "AXButton", "label": "Rename", "press": [{"set": "name", "to": "B"}]},
      {"name": "go", "role": "AXButton", "label": "Go", "press": [{"page": "https://b.example.com"}]},
      {"name": "slow", "role": "AXButton", "label": "Slow", "answers_after_ms": 5000},
      {"name": "line", "role": "AXTextField", "label": "Line", "submit": [{"set": "said", "to": "{said}{line};"}, {"set": "line", "to": ""}]}]},
    {"address": "https://b.example.com", "title": "B", "loads_after_ms": 900, "elements": [
      {"role": "AXStaticText", "label": "Here"}]}]}],
  "done_when": [{"fact": "said", "is": "!"}]})");
    return std::get<PracticeDescription>(std::move(read));
}

class PracticeScreenTest : public testing::Test {
protected:
    ScreenLook look(LookWish::Wait wait = LookWish::Wait::none)
    {
        LookWish wish;
        wish.wait = wait;
        std::vector<ScreenLook> looks;
        screen.look(wish, [&](auto seen) { looks.push_back(std::get<ScreenLook>(seen)); });
        EXPECT_TRUE(looks.empty());
        scheduler.advance(std::chrono::seconds(3));
        EXPECT_EQ(looks.size(), 1u);
        return looks.front();
    }
    static std::string idOf(const ScreenLook& look, const std::string& label)
    {
        for (const AutomationCandidate& candidate : look.observation.candidates) {
            if (candidate.label == label)
                return candidate.id;
        }
        return {};
    }
    ScreenOutcome act(const ScreenLook& look, const std::string& label, const std::string& text = "")
    {
        AutomationAction action{.tool = text.empty() ? Tool::click : Tool::typeText, .target = idOf(look, label)};
        if (!text.empty())
            action.text = text;
        std::vector<ScreenOutcome> outcomes;
        screen.act(action, look.observation.revision, cancellation, [&](auto outcome) { outcomes.push_back(outcome); });
        EXPECT_TRUE(outcomes.empty());
        scheduler.advance(std::chrono::seconds(10));
        EXPECT_EQ(outcomes.size(), 1u);
        return outcomes.front();
    }

    VirtualScheduler scheduler;
    PracticeWorld world{shop()};
    PracticeScreen screen{world, scheduler};
    std::shared_ptr<ActionCancellation> cancellation = std::make_shared<ActionCancellation>();
};

} // namespace

TEST_F(PracticeScreenTest, actsOnlyOnWhatWasSeen)
{
    const ScreenLook first = look();
    const ScreenLook second = look();
    EXPECT_EQ(first.observation.stateKey(), second.observation.stateKey());
    EXPECT_NE(idOf(first, "Rename"), idOf(second, "Rename"));
    EXPECT_EQ(first.element(idOf(first, "Choose A"))->isContent, true);

    EXPECT_EQ(act(first, "Choose A").kind, ScreenOutcome::Kind::done);
    EXPECT_EQ(world.fact("said"), "!");
    EXPECT_EQ(act(second, "Rename").kind, ScreenOutcome::Kind::done);
    EXPECT_EQ(act(second, "Choose A").kind, ScreenOutcome::Kind::failed); // It is called otherwise now.
    EXPECT_EQ(world.fact("said"), "!");
    for (std::size_t count = 0; count < PracticeScreen::knownLooks; ++count)
        (void)look();
    EXPECT_EQ(act(second, "Go").kind, ScreenOutcome::Kind::failed); // Seen too long ago.
}

TEST_F(PracticeScreenTest, stopsBetweenTheLinesThatAreTyped)
{
    const ScreenLook seen = look();
    std::vector<ScreenOutcome> outcomes;
    AutomationAction action{.tool = Tool::typeText, .target = idOf(seen, "Line"), .text = "one\ntwo\nthree"};
    screen.act(action, seen.observation.revision, cancellation, [&](auto outcome) { outcomes.push_back(outcome); });
    scheduler.advance(PracticeScreen::actTime * 2); // A line and Return.
    cancellation->cancel();
    scheduler.advance(std::chrono::seconds(1));
    ASSERT_EQ(outcomes.size(), 1u);
    EXPECT_EQ(outcomes.front().kind, ScreenOutcome::Kind::stopped);
    EXPECT_EQ(world.fact("said"), "one;");
}

TEST_F(PracticeScreenTest, waitsForWhatComesToRest)
{
    EXPECT_EQ(act(look(), "Slow").kind, ScreenOutcome::Kind::done);
    const ScreenLook before = look();
    screen.act(AutomationAction{.tool = Tool::click, .target = idOf(before, "Go")}, before.observation.revision,
        cancellation, [](auto) {});
    scheduler.advance(PracticeScreen::actTime);
    const ScreenLook after = look(LookWish::Wait::settled);
    EXPECT_TRUE(after.page->loaded);
    EXPECT_FALSE(idOf(after, "Here").empty());
}

TEST_F(PracticeScreenTest, readsAndFinds)
{
    std::vector<std::string> found;
    screen.find("lamp", [&](auto places) { found = std::get<std::vector<std::string>>(places); });
    ScreenText text;
    screen.read(4, [&](auto read) { text = std::get<ScreenText>(read); });
    scheduler.advance(std::chrono::seconds(1));
    EXPECT_EQ(found.size(), 2u);
    EXPECT_EQ(text.text, "lamp. Two LAMPS.");
    EXPECT_FALSE(text.next);
}

} // namespace quorvell::test
