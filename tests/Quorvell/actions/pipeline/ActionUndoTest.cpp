// SPDX-License-Identifier: MIT
// Finds ways back that lead elsewhere, and answers that claim one.
#include "ActionBench.h"
#include "Quorvell/actions/pipeline/ScreenActionText.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace quorvell {

namespace {

using Tool = AutomationAction::Tool;
using screen_action::BrowserControl;
using screen_action::ChooseOption;
using screen_action::ClickSpot;
using screen_action::Drag;
using screen_action::QuickAction;
using screen_action::ReplaceText;

/// A field "Subject" that holds "Hi", a secret one, a check box "Dark" that is off, a menu "Country".
ScreenLook screenOf(const std::string& subject, const std::string& dark, const std::string& country)
{
    ScreenLook look;
    look.observation.app = "Mail";
    look.observation.candidates = {{"1", "AXTextField", "Subject", subject, true},
        {"2", "AXTextField", "Card number", "4111 1111 1111 1111", true}, {"3", "AXCheckBox", "Dark", dark, true},
        {"4", "AXPopUpButton", "Country", country, true}, {"5", "AXButton", "Send", "", true}};
    look.elements.resize(look.observation.candidates.size());
    look.page = PageLocation{.site = "example.com", .address = "https://example.com", .title = "Example"};
    return look;
}

ScreenLook renumbered(ScreenLook look)
{
    for (AutomationCandidate& candidate : look.observation.candidates)
        candidate.id += "0";
    ++look.observation.revision;
    return look;
}

} // namespace

TEST(ActionUndo, isOnlyWhatIsSureToLeadBack)
{
    const ScreenLook before = screenOf("Hi", "0", "France");
    ScreenLook otherApp = renumbered(before);
    otherApp.observation.app = "Files";
    ScreenLook gone = renumbered(before);
    gone.observation.candidates[0].label = "Topic";
    struct Row {
        const char* name;
        ScreenAction action;
        ScreenLook after;
        const char* undo; ///< As screenActionText; "-" and the beginning of why there is none.
    };
    const std::vector<Row> rows = {
        {"added text", AutomationAction{.tool = Tool::typeText, .target = "1", .text = " you"},
            renumbered(screenOf("Hi you", "0", "France")), "type_text Subject: Hi"},
        {"text in place of another", ReplaceText{"1", "Hello"}, renumbered(screenOf("Hello", "0", "France")),
            "type_text Subject: Hi"},
        {"text that is not there any more: it was sent", ReplaceText{"1", "Hello\n"},
            renumbered(screenOf("", "0", "France")), "-The field does not hold"},
        {"the field is gone", ReplaceText{"1", "Hello"}, gone, "-The field is not found"},
        {"a field with a secret", ReplaceText{"2", "4111 1111 1111 1111"}, renumbered(before),
            "-What the field held before is not kept."},
        {"a switch", AutomationAction{.tool = Tool::click, .target = "3"}, renumbered(screenOf("Hi", "1", "France")),
            "click Dark"},
        {"a switch that did not move", AutomationAction{.tool = Tool::click, .target = "3"}, renumbered(before),
            "-What a press set off"},
        {"a button", AutomationAction{.tool = Tool::click, .target = "5"}, renumbered(before), "-What a press set off"},
        {"an option", ChooseOption{"4", "Spain"}, renumbered(screenOf("Hi", "0", "Spain")),
            "choose_option Country: France"},
        {"an option of nothing known", ChooseOption{"4", "Spain"}, renumbered(before), "-What was chosen before"},
        {"a scroll", AutomationAction{.tool = Tool::scroll, .direction = "down"}, before, "scroll up"},
        {"a key that moves", AutomationAction{.tool = Tool::pressKey, .key = "Page Down"}, before, "press_key page up"},
        {"a key that may do anything", AutomationAction{.tool = Tool::pressKey, .key = "return"}, before,
            "-What a key did"},
        {"a program", AutomationAction{.tool = Tool::openApp, .name = "Files"}, otherApp, "open_app Mail"},
        {"a program that was in front", AutomationAction{.tool = Tool::openApp, .name = "Mail"}, before,
            "-It was in front before"},
        {"a page from another program", AutomationAction{.tool = Tool::openWebsite, .address = "a.example"}, otherApp,
            "open_app Mail"},
        {"a page", AutomationAction{.tool = Tool::openWebsite, .address = "a.example"}, before, "browser_control back"},
        {"a command", AutomationAction{.tool = Tool::chooseMenu, .path = {{"Edit", "Cut"}}}, before, "-What a command"},
        {"a place", ClickSpot{1, 1}, before, "-What a press"},
        {"a drag", Drag{1, 1, 2, 2}, before, "-What was moved"},
        {"back", BrowserControl{BrowserControl::Kind::back}, before, "browser_control forward"},
        {"a new tab", BrowserControl{BrowserControl::Kind::newTab}, before, "browser_control close_tab"},
        {"another tab", BrowserControl{BrowserControl::Kind::switchTab, "News"}, before,
            "browser_control switch_tab Example"},
        {"a closed tab", BrowserControl{BrowserControl::Kind::closeTab}, before, "-The tab is closed."},
        {"louder", QuickAction{QuickAction::Kind::volume, "up"}, before, "quick_action volume down"},
        {"so loud", QuickAction{QuickAction::Kind::volume, "30"}, before, "-How it was set"},
        {"mute", QuickAction{QuickAction::Kind::mute}, before, "quick_action unmute"},
        {"lock", QuickAction{QuickAction::Kind::lockScreen}, before, "-It has no way back."},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const auto undo = undoOf(row.action, before, row.after);
        const auto* way = std::get_if<ActionUndo>(&undo);
        const std::string told =
            way ? screenActionText(way->action, row.after.observation) : "-" + std::get<std::string>(undo);
        EXPECT_TRUE(way ? told == row.undo : told.starts_with(row.undo)) << told;
    }
}

TEST(ActionLedger, takesBackWhatWasDoneLastThroughTheSameWay)
{
    ActionBench bench;
    bench.screen.add("AXTextField", "Subject", "Hi");
    bench.screen.add("AXButton", "Open");
    bench.screen.effect = [&](const ScreenAction& action) {
        if (const auto* text = std::get_if<ReplaceText>(&action))
            bench.screen.withID(text->target)->value = text->text;
        return ScreenOutcome{};
    };
    std::optional<ActionResult> undone;
    const auto undo = [&] {
        bench.pipeline.undoLast("undo", [&](const ActionResult& result) { undone = result; });
        bench.scheduler.advance(100ms);
        return undone->words;
    };
    EXPECT_TRUE(undo().starts_with("Nothing was done"));
    bench.look();
    const auto replace = [&](const std::string& text) {
        ProposedAction action{.callID = "type", .tool = "type_text"};
        action.action = ReplaceText{ActionBench::idOn(*bench.pipeline.latestLook(), "Subject"), text};
        action.revision = bench.pipeline.latestLook()->observation.revision;
        bench.run(action);
        bench.scheduler.advance(100ms);
    };
    replace("Hello");
    replace("Good day");
    EXPECT_EQ(undo(), "The field holds what it held before.");
    EXPECT_EQ(bench.screen.labelled("Subject")->value, "Hello");
    undo();
    EXPECT_EQ(bench.screen.labelled("Subject")->value, "Hi");
    EXPECT_TRUE(undo().starts_with("Nothing was done"));

    bench.press("Open");
    bench.scheduler.advance(100ms);
    EXPECT_TRUE(undo().starts_with("The last thing that was done, “click Open”, cannot be undone. What a press"))
        << undo();

    replace("Bye");
    bench.screen.labelled("Subject")->label = "Topic";
    EXPECT_TRUE(undo().starts_with("No element with that id any more.")) << undone->words;
    bench.screen.labelled("Topic")->label = "Subject";
    bench.screen.effect = [](const ScreenAction&) { return ScreenOutcome{}; };
    EXPECT_TRUE(undo().starts_with("It was done, but what was expected of it does not show.")) << undone->words;
    EXPECT_FALSE(bench.pipeline.ledger().last()->isUndone);
}

} // namespace quorvell
