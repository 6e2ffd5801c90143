// SPDX-License-Identifier: MIT
// Catches pointing at what is not there, a wait that does not notice the user, and one that takes our own doing for
// theirs.
#include "Quorvell/actions/tasks/GuidePointer.h"

#include "TaskParts.h"

#include <gtest/gtest.h>

namespace quorvell {

using namespace std::chrono_literals;
using test::lookWith;

namespace {

class ShownScreen : public Screen {
public:
    explicit ShownScreen(Scheduler& scheduler)
        : m_scheduler(scheduler)
    {
    }

    void look(const LookWish&, Answer<ScreenLook> answer) override
    {
        ++looks;
        m_scheduler.post([answer = std::move(answer), seen = now] { answer(seen); });
    }
    void point(const std::string& target, std::function<void(ScreenOutcome)> answer) override
    {
        pointed = target;
        m_scheduler.post([answer = std::move(answer)] { answer({}); });
    }
    void pointAtSpot(double x, double, std::function<void(ScreenOutcome)> answer) override
    {
        point(std::to_string(static_cast<int>(x)), std::move(answer));
    }
    void clearPointer() override { pointed.clear(); }
    void act(const ScreenAction&, std::int64_t, std::shared_ptr<const ActionCancellation>,
        std::function<void(ScreenOutcome)>) override
    {
        ADD_FAILURE() << "pointing never acts";
    }
    void read(std::size_t, Answer<ScreenText>) override { }
    void find(const std::string&, Answer<std::vector<std::string>>) override { }
    void listTabs(Answer<std::vector<ScreenTab>>) override { }

    ScreenLook now = lookWith({"Orders", "Search"});
    std::string pointed;
    int looks = 0;

private:
    Scheduler& m_scheduler;
};

class GuidePointerTest : public testing::Test, public test::TaskParts {
protected:
    void point(const Json& args)
    {
        answers.all.clear();
        events.clear();
        pointer.pointAt({"c1", "point_at", args}, answers.reply());
        scheduler.advance(500ms);
    }
    void pointAtOrders(const char* expect)
    {
        screen.now = *latest;
        point({{"element_id", "e1"}, {"instruction", "Click on Orders"}, {"expect", expect}});
    }

    ShownScreen screen{scheduler};
    std::optional<ScreenLook> latest = lookWith({"Orders", "Search"});
    bool hasPicture = false;
    bool isActing = false;
    std::string target;
    GuidePointer pointer{{scheduler, log, screen, [this] { return latest ? &*latest : nullptr; },
        [this] { return hasPicture; }, [this] { return isActing; }, tell,
        [this](const std::string& name, const std::function<bool()>& isThere) { target = isThere() ? name : "gone"; },
        [this] { target.clear(); }}};
};

} // namespace

TEST_F(GuidePointerTest, pointsOnlyAtWhatWasSeen)
{
    pointAtOrders("");
    EXPECT_EQ(answers.last("status"), "highlighted");
    EXPECT_EQ(answers.last("message"), "Highlighted it. Say your one instruction now, then wait for the app event.");
    EXPECT_EQ(screen.pointed + target, "e1Orders");
    pointer.clearPointer(answers.reply());
    EXPECT_EQ(answers.last("status"), "cleared");
    EXPECT_EQ(screen.pointed + target, "");

    point({{"element_id", "e1"}});
    EXPECT_NE(answers.last("error").find("instruction is missing"), std::string::npos);
    point({{"element_id", "e7"}, {"instruction", "Click"}});
    EXPECT_EQ(answers.last("error"), "No element with that id. Call look_at_screen again, then use a new id.");
    screen.now = lookWith({"Back", "Search", "Orders"});
    point({{"element_id", "e2"}, {"instruction", "Click"}});
    EXPECT_EQ(screen.pointed, "e2");
    point({{"element_id", "e1"}, {"instruction", "Click"}});
    EXPECT_EQ(screen.pointed, "e3"); // By what it is, not by its number.
    screen.now = lookWith({"Back"});
    point({{"element_id", "e1"}, {"instruction", "Click"}});
    EXPECT_EQ(answers.last("error"), "No element with that id any more. Call look_at_screen again, then use a new id.");
    EXPECT_FALSE(pointer.isShowing());
    screen.now = *latest;

    const auto spot = [this](const Json& args) {
        pointer.pointAtSpot({"c1", "point_at_spot", args}, answers.reply());
        scheduler.settle();
        return answers.last("error");
    };
    EXPECT_EQ(spot({{"x", 3}, {"instruction", "Click"}}), "x and y are required, 0 to 1000.");
    EXPECT_EQ(spot({{"x", 3}, {"y", 1'001}, {"instruction", "Click"}}), "x and y are required, 0 to 1000.");
    EXPECT_EQ(spot({{"x", 3}, {"y", 4}, {"instruction", "Click"}}),
        "Request look_at_screen with include_image true before using coordinates.");
    hasPicture = true;
    EXPECT_EQ(spot({{"x", 3}, {"y", 4}, {"instruction", "Click"}}), "");
    EXPECT_EQ(screen.pointed, "3");
}

TEST_F(GuidePointerTest, noticesWhatTheUserDoes)
{
    struct Row {
        const char* name;
        const char* expect;
        ScreenLook then;
        const char* event; ///< Empty: none.
        bool isStillShown;
    };
    const Row rows[] = {
        {"nothing", "Your orders", lookWith({"Orders", "Search"}), "", true},
        {"what was expected", "Your orders", lookWith({"Back", "Your orders"}), "They have done it", false},
        {"something else", "A receipt", lookWith({"Back", "Results"}), "isn't there", true},
        {"anything, where nothing was expected", "", lookWith({"Back"}), "The screen changed after", false},
        {"what was there all along tells nothing", "Search", lookWith({"Search"}), "The screen changed after", false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        pointAtOrders(row.expect);
        scheduler.advance(3s);
        EXPECT_TRUE(events.empty());
        screen.now = row.then;
        scheduler.advance(60s);
        ASSERT_EQ(events.size(), *row.event ? 1U : 0U);
        EXPECT_TRUE(events.empty() || events[0].find(row.event) != std::string::npos) << events[0];
        EXPECT_EQ(pointer.isShowing(), row.isStillShown);
        EXPECT_EQ(target.empty(), !row.isStillShown);
    }
}

TEST_F(GuidePointerTest, neitherHurriesNorTakesOurDoingForTheirs)
{
    pointAtOrders("");
    screen.looks = 0;
    scheduler.advance(10s);
    EXPECT_LE(screen.looks, 10);
    isActing = true;
    screen.now = lookWith({"Back"});
    scheduler.advance(10s);
    isActing = false;
    pointer.actionEnded({}, {.kind = ActionResult::Kind::refused});
    EXPECT_TRUE(pointer.isShowing());
    pointer.actionEnded({}, {});
    scheduler.advance(10s);
    EXPECT_TRUE(events.empty());
    EXPECT_FALSE(pointer.isShowing());

    // Taken away while it is still being pointed at.
    pointer.pointAt({"c1", "point_at", {{"element_id", "e1"}, {"instruction", "Click"}}}, answers.reply());
    pointer.takeAway();
    scheduler.advance(10s);
    EXPECT_FALSE(pointer.isShowing());
    EXPECT_FALSE(answers.last("error").empty());
}

} // namespace quorvell
