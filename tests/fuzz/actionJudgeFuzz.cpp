// SPDX-License-Identifier: MIT
// Any words on a screen and in an action: a verdict comes, with a sentence where it is not safe, never milder than the
// guard's own on the same words; what can be opened is a web address; a fence holds; words that the user said are
// theirs.
#include "QuorvellCore/automation/proposals/ActionJudge.h"
#include "QuorvellCore/automation/provenance/FencedText.h"
#include "QuorvellCore/automation/provenance/ProvenanceRisk.h"
#include "QuorvellCore/automation/provenance/WordLedger.h"
#include "QuorvellCore/safety/RecordedKey.h"
#include "QuorvellCore/safety/SafetyGuard.h"
#include "QuorvellCore/safety/places/JudgedAddress.h"
#include "QuorvellCore/text/TextMatch.h"
#include "fuzzing.h"

#include <vector>

namespace quorvell {

namespace {

using Tool = AutomationAction::Tool;

/// The text's lines, in turn, wherever a screen and an action have words.
class Lines {
public:
    explicit Lines(std::string_view text)
    {
        for (std::size_t start = 0; start <= text.size();) {
            const std::size_t end = std::min(text.find('\n', start), text.size());
            m_lines.emplace_back(text.substr(start, end - start));
            start = end + 1;
        }
    }
    std::string next() { return m_lines[m_next++ % m_lines.size()]; }

private:
    std::vector<std::string> m_lines;
    std::size_t m_next = 0;
};

ScreenLook lookOf(Lines& lines)
{
    ScreenLook look;
    look.observation.app = lines.next();
    look.observation.window = lines.next();
    look.appIdentifier = lines.next();
    look.observation.page = lines.next();
    look.image = Bytes();
    int number = 0;
    for (const char* role : {"AXButton", "AXTextField", "AXLink", "AXTextArea", "AXStaticText"}) {
        const double left = 200.0 * number;
        look.observation.candidates.push_back({.id = std::to_string(number++),
            .role = role,
            .label = lines.next(),
            .value = lines.next(),
            .enabled = true,
            .focused = number == 2});
        look.elements.push_back({.hint = lines.next(),
            .description = lines.next(),
            .address = lines.next(),
            .options = {lines.next(), lines.next()},
            .area = ScreenArea{left, 0, left + 250, 900},
            .isDefault = number == 1,
            .isContent = number == 4});
    }
    return look;
}

std::vector<ScreenAction> actionsOf(Lines& lines)
{
    const std::string words = lines.next();
    return {AutomationAction{.target = "0"}, AutomationAction{.target = "2"},
        AutomationAction{.tool = Tool::typeText, .target = "1", .text = words},
        AutomationAction{.tool = Tool::typeText, .target = "3", .text = words + "\n" + lines.next()},
        AutomationAction{.tool = Tool::pressKey, .key = words},
        AutomationAction{.tool = Tool::pressKey, .key = "return"},
        AutomationAction{.tool = Tool::chooseMenu, .path = std::vector{words, lines.next()}},
        AutomationAction{.tool = Tool::openApp, .name = words},
        AutomationAction{.tool = Tool::openWebsite, .address = words}, screen_action::ReplaceText{"1", words},
        screen_action::ChooseOption{"0", words}, screen_action::ClickSpot{10, 10}, screen_action::ClickSpot{999, 999},
        screen_action::Drag{10, 10, 450, 10}};
}

void judgeAll(const ScreenLook& look, const ScreenAction& action, const WordLedger& ledger)
{
    const ProposedAction proposed{.action = action, .origins = ledger.originsOf(action, look)};
    const ActionRisk risk = ActionJudge::judge(proposed, look);
    require(risk.isSafe() == risk.text.empty() && risk.text.size() < 60000);
    const auto problem = ActionJudge::problem(proposed, look);
    require(!problem || risk == ActionRisk::never(*problem));
    const ActionVerdict verdict = ActionVerdict::of(risk, proposed, true, {}, look.observation.app);
    require(verdict.risk.kind >= risk.kind && verdict.risk.isSafe() == verdict.risk.text.empty());
    const ScreenAction form = ActionJudge::judgedAction(action, look);
    require(ActionJudge::judgedAction(form, look) == form);
    const auto* step = std::get_if<AutomationAction>(&form);
    if (step && step->tool == Tool::openWebsite && !problem && risk.kind != ActionRisk::Case::never)
        require(JudgedAddress::read(step->address.value_or(""))->text == step->address);
    if (step && step->tool == Tool::click && !problem && step->target == "0") {
        const std::string& label = look.observation.candidates[0].label;
        require(risk.kind >= SafetyGuard::risk(label, "AXButton").kind);
    }
}

} // namespace

void search(std::string_view text)
{
    Lines lines(text);
    const ScreenLook look = lookOf(lines);
    WordLedger ledger;
    ledger.told(WordOrigin::account, lines.next());
    ledger.seen(look);
    for (const ScreenAction& action : actionsOf(lines))
        judgeAll(look, action, ledger);
    if (const auto key = recordedKey(text))
        require(recordedKey(*key) == key);
    const std::string held = fenced(text, WordOrigin::web, "0123456789abcdef");
    require(held.find("0123456789abcdef", 2) == held.size() - 22);

    if (TextMatch::normalized(text).empty())
        return;
    WordLedger trusting;
    trusting.told(WordOrigin::user, text);
    trusting.told(WordOrigin::web, text);
    if (text.size() < WordLedger::longestText)
        require(trusting.originOf(text, WordUse::recipient) == WordOrigin::user);
}

} // namespace quorvell
