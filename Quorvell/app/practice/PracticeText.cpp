// SPDX-License-Identifier: MIT
#include "Quorvell/app/practice/PracticeText.h"

#include "QuorvellCore/text/OneLine.h"

#include <algorithm>
#include <string_view>

namespace quorvell {

namespace {

std::string joined(const std::vector<std::string>& parts, std::string_view between)
{
    std::string text;
    for (const std::string& part : parts)
        text += (text.empty() ? "" : std::string(between)) + part;
    return text;
}

bool isOneOf(std::string_view role, std::initializer_list<std::string_view> roles)
{
    return std::find(roles.begin(), roles.end(), role) != roles.end();
}

std::string boxText(const PracticeShown& shown)
{
    const std::string& hint = shown.element->hint;
    return shown.label + ": [" + (shown.value.empty() && !hint.empty() ? "(" + hint + ")" : shown.value) + "]";
}

std::string elementText(const PracticeShown& shown)
{
    if (!shown.element)
        return "(!) " + shown.label;
    const std::string& role = shown.element->role;
    if (isOneOf(role, {"AXTextField", "AXTextArea", "AXComboBox", "AXSlider"}))
        return boxText(shown);
    if (isOneOf(role, {"AXCheckBox", "AXSwitch"}))
        return (shown.value == "1" ? "[x] " : "[ ] ") + shown.label;
    if (role == "AXRadioButton")
        return (shown.value == "1" ? "(o) " : "( ) ") + shown.label;
    if (role == "AXPopUpButton")
        return shown.label + ": " + shown.value + "  (" + joined(shown.element->options, ", ") + ")";
    if (isOneOf(role, {"AXButton", "AXMenuButton"}))
        return "< " + shown.label + " >";
    if (role == "AXLink")
        return shown.label + " -> " + shown.element->address;
    if (role == "AXHeading")
        return "# " + shown.label;
    if (role == "AXImage")
        return "{ " + shown.label + " }";
    if (isOneOf(role, {"AXTab", "AXRow", "AXCell", "AXMenuItem"}))
        return (role == "AXTab" ? "/ " : "- ") + shown.label;
    return shown.label + (shown.value.empty() ? "" : ": " + shown.value);
}

std::string count(int number, std::string_view what)
{
    return std::to_string(number) + " " + std::string(what) + (number == 1 ? "" : "s");
}

} // namespace

std::string PracticeText::of(const PracticeView& view)
{
    if (view.app.empty())
        return "== nothing is open ==";
    std::string text = "== " + view.app + (view.window.empty() ? "" : " | " + onOneLine(view.window)) + " ==";
    if (view.page && !view.page->loaded)
        text += "\n   (loading)";
    for (const PracticeShown& shown : view.elements) {
        text += "\n " + std::string(shown.isFocused ? "*" : " ") + " " + onOneLine(elementText(shown));
        text += shown.isEnabled ? "" : "  (not now)";
    }
    for (const PracticeMenuItem* item : view.menus)
        text += "\n   menu: " + joined(item->path, " > ");
    return text;
}

std::string PracticeText::of(const AutomationDecision& decision, const AutomationObservation& screen)
{
    std::string text = onOneLine(decision.message);
    if (!decision.action)
        return text;
    const AutomationAction& action = *decision.action;
    std::vector<std::string> parts{std::string(storedText(action.tool))};
    if (action.target) {
        const auto* target = screen.usableTarget(*action.target);
        parts.push_back(target ? "“" + target->label + "”" : "(nothing of that name can be used)");
    }
    for (const auto& argument : {action.text, action.key, action.name, action.address, action.direction}) {
        if (argument)
            parts.push_back(*argument);
    }
    if (action.path)
        parts.push_back(joined(*action.path, " > "));
    return text + "  [" + onOneLine(joined(parts, " ")) + "]";
}

std::string PracticeText::of(const ActionResult& result)
{
    const auto with = [&](std::string_view what) {
        return std::string(what) + (result.words.empty() ? "" : ": " + onOneLine(result.words));
    };
    switch (result.kind) {
    case ActionResult::Kind::done:
        return result.isVerified ? "done, and seen to have worked" : "done; what was expected is not to be seen";
    case ActionResult::Kind::failed:
        return with("failed");
    case ActionResult::Kind::refused:
        return with("refused");
    case ActionResult::Kind::needsYes:
        return "asks first";
    case ActionResult::Kind::stopped:
        return with("stopped");
    case ActionResult::Kind::unknown:
        return with("may be done or not");
    }
    return "failed";
}

std::string PracticeText::of(const PracticeConsequence& consequence)
{
    return std::string(storedText(consequence.kind))
        + (consequence.about.empty() ? "" : ": " + onOneLine(consequence.about));
}

std::string PracticeText::of(const PracticeScore& score)
{
    std::string text =
        score.isReached ? "What this world asks for is reached." : "What this world asks for is not reached yet.";
    for (const PracticeConsequence& harm : score.harms)
        text += "\nNobody wanted this: " + of(harm) + ".";
    return text + "\n" + count(score.steps, "step") + ", " + count(score.questions, "question") + ", "
        + count(score.refusals, "refusal") + ", " + count(score.failures, "failure") + ".";
}

std::string PracticeText::of(const PracticeMistake& mistake)
{
    return mistake.place.empty() ? mistake.sentence : onOneLine(mistake.place) + ": " + mistake.sentence;
}

} // namespace quorvell
