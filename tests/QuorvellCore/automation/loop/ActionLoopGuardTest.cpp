// SPDX-License-Identifier: MIT
// Catches a model that is left to go round in circles, and one that is held up while it gets on.
#include "QuorvellCore/automation/loop/ActionLoopGuard.h"

#include "FixtureTable.h"
#include "QuorvellCore/automation/loop/ActionText.h"

#include <gtest/gtest.h>

#include <regex>
#include <sstream>

namespace quorvell {

namespace {

/// "3{a b}" stands for "a b a b a b".
std::string writtenOut(std::string script)
{
    const std::regex group("(\\d+)\\{([^{}]*)\\}");
    for (std::smatch found; std::regex_search(script, found, group);) {
        std::string rounds;
        for (int count = std::stoi(found[1]); count > 0; --count)
            rounds += found.str(2) + ' ';
        script = found.prefix().str() + rounds + found.suffix().str();
    }
    return script;
}

/// Plays words of a script up to a refusal, and tells how many actions were done before it and how it begins.
/// "click_A:1>2" is an action from one screen to another ("#" a number of its own), "!" behind it that it failed;
/// "heard", "progress" and "step" tell the guard so, "plan" that there is one now.
std::string play(const std::string& script)
{
    ActionLoopGuard guard;
    bool hasPlan = false;
    int done = 0;
    int step = 0;
    std::istringstream words(writtenOut(script));
    for (std::string word; words >> word;) {
        hasPlan = hasPlan || word == "plan";
        step += word == "step" ? 1 : 0;
        if (word == "heard")
            guard.heardThem();
        if (word == "progress" || word == "step")
            guard.progressed();
        static const std::regex form("(press_key|[a-z]+)_(.*):(.)>(.)(!?)");
        std::smatch parts;
        if (!std::regex_match(word, parts, form))
            continue;
        const std::string action = parts.str(1) + ' ' + (parts[2] == "#" ? std::to_string(done) : parts.str(2));
        const auto planStall = hasPlan ? std::optional(guard.planStall()) : std::nullopt;
        if (const auto refusal = guard.refusal(action, parts.str(3), planStall, step))
            return std::to_string(done) + ' ' + *refusal;
        const auto outcome = parts[5] == "!" ? ActionLoopGuard::Outcome::failed : ActionLoopGuard::Outcome::worked;
        guard.record(action, parts.str(3), parts.str(4), outcome, step);
        ++done;
    }
    return std::to_string(done);
}

} // namespace

TEST(ActionLoopGuard, refusesWhatLeadsNowhere)
{
    for (const test::FixtureRow& row : test::fixtureRows("automation/loops.txt", 2)) {
        const std::string told = play(row.lines[0]);
        const bool isRefusal = row.lines[1].find(' ') != std::string::npos;
        EXPECT_EQ(isRefusal ? told.substr(0, row.lines[1].size()) : told, row.lines[1]) << row.name << ": " << told;
    }
}

TEST(ActionLoopGuard, staysSmallAndShowsNoMoreThanALine)
{
    ActionLoopGuard guard;
    const std::string label = "click \u202E" + std::string(5'000'000, 'x') + "\n\x1B[2J";
    for (int count = 0; count < 3; ++count)
        guard.record(label, std::to_string(count), "later", ActionLoopGuard::Outcome::worked, 0);
    const std::string refusal = guard.refusal(label, "now", 0, 0).value_or("");
    EXPECT_TRUE(refusal.starts_with("You've already done “click xxx")) << refusal.substr(0, 100);
    EXPECT_LT(refusal.size(), 700u);
    EXPECT_EQ(guard.refusal(label + "y", "now", 0, 0), std::nullopt)
        << "another text, though it looks the same when cut";
}

TEST(ActionText, isTheSameForTheSameAction)
{
    const AutomationObservation screen{
        .candidates = {{.id = "7", .role = "AXButton", .label = "Open"},
            {.id = "8", .role = "AXButton", .label = "Open"}, {.id = "9", .role = "AXLink", .label = "Open"},
            {.id = "10", .role = "AXScrollArea"}}};
    using Tool = AutomationAction::Tool;
    const std::pair<AutomationAction, const char*> rows[] = {
        {{.tool = Tool::click, .target = "7"}, "click Open"},
        {{.tool = Tool::click, .target = "8"}, "click Open (2)"},
        {{.tool = Tool::click, .target = "gone"}, "click gone"},
        {{.tool = Tool::typeText, .target = "9", .text = "Hello"}, "type_text Open: Hello"},
        {{.tool = Tool::pressKey, .key = "Return"}, "press_key return"},
        {{.tool = Tool::scroll, .direction = "down"}, "scroll down"},
        {{.tool = Tool::scroll, .target = "10", .direction = "down"}, "scroll down in AXScrollArea"},
        {{.tool = Tool::chooseMenu, .path = std::vector<std::string>{"File", "Save"}}, "choose_menu File > Save"},
        {{.tool = Tool::openApp, .name = "Mail"}, "open_app Mail"},
        {{.tool = Tool::openWebsite, .address = "example.com"}, "open_website example.com"},
    };
    for (const auto& [action, text] : rows)
        EXPECT_EQ(actionText(action, screen), text);
}

} // namespace quorvell
