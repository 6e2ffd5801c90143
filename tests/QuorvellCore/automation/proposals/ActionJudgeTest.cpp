// SPDX-License-Identifier: MIT
// Catches actions on a screen that run though something that they touch forbids or asks, and questions for nothing. The
// rows stand in tests/fixtures/automation/judged.txt.
#include "QuorvellCore/automation/proposals/ActionJudge.h"

#include "FixtureTable.h"
#include "QuorvellCore/automation/screen/ObservationBounds.h"
#include "QuorvellCore/text/Json.h"

#include <nlohmann/json.hpp>

#include <map>

namespace quorvell {

namespace {

using namespace screen_action;

std::string textIn(const Json& json, const char* key)
{
    const auto found = json.find(key);
    return found == json.end() ? "" : readString(*found).value_or("");
}

bool isIn(const Json& json, const char* key)
{
    return json.contains(key);
}

/// A screen that is written line by line, and what is said of actions on it.
class Judged {
public:
    std::vector<std::string> play(const std::string& line)
    {
        const auto [verb, rest] = test::verbAndRest(line);
        if (verb == "front") {
            front(parseJson(rest).value_or(Json::object()));
            return {};
        }
        if (verb == "+") {
            add(parseJson(rest).value_or(Json::array()));
            return {};
        }
        const auto action = actionOf(verb, rest);
        EXPECT_TRUE(action) << line;
        return {verdict({.action = action.value_or(ScreenAction()), .revision = 1})};
    }

private:
    void front(const Json& json)
    {
        m_look.observation.revision = 1;
        m_look.observation.app = textIn(json, "app");
        m_look.observation.window = textIn(json, "window");
        m_look.appIdentifier = textIn(json, "id");
        if (isIn(json, "page"))
            m_look.observation.page = textIn(json, "page");
        if (isIn(json, "image"))
            m_look.image = Bytes();
    }

    /// ["role", "label", {everything else}]
    void add(const Json& json)
    {
        const Json more = json.size() > 2 ? json[2] : Json::object();
        AutomationCandidate candidate{.role = readString(json[0]).value_or(""),
            .label = readString(json[1]).value_or(""),
            .value = textIn(more, "value"),
            .enabled = !isIn(more, "off")};
        candidate.id = isIn(more, "id") ? textIn(more, "id") : candidate.label;
        candidate.focused = isIn(more, "focused");
        candidate.secure = isIn(more, "secure");
        ScreenElement element{.subrole = textIn(more, "subrole"),
            .hint = textIn(more, "hint"),
            .description = textIn(more, "description"),
            .address = textIn(more, "address"),
            .isDefault = isIn(more, "default"),
            .isContent = isIn(more, "content")};
        if (isIn(more, "options"))
            for (const Json& option : more["options"])
                element.options.push_back(readString(option).value_or(""));
        if (isIn(more, "at")) // left, top, width, height
            element.area = ScreenArea{more["at"][0].get<double>(), more["at"][1].get<double>(),
                more["at"][0].get<double>() + more["at"][2].get<double>(),
                more["at"][1].get<double>() + more["at"][3].get<double>()};
        m_look.observation.candidates.push_back(std::move(candidate));
        m_look.elements.push_back(std::move(element));
    }

    std::optional<ScreenAction> actionOf(const std::string& verb, const std::string& rest) const
    {
        using Tool = AutomationAction::Tool;
        const Json list = parseJson(rest).value_or(Json::array());
        const auto text = [&](std::size_t index) {
            return index < list.size() ? readString(list[index]).value_or("") : std::string();
        };
        const auto number = [&](std::size_t index) { return list[index].get<double>(); };
        if (verb == "click")
            return AutomationAction{.tool = Tool::click, .target = rest};
        if (verb == "type")
            return AutomationAction{.tool = Tool::typeText, .target = text(0), .text = text(1)};
        if (verb == "replace")
            return ReplaceText{text(0), text(1)};
        if (verb == "key")
            return AutomationAction{.tool = Tool::pressKey, .key = rest};
        if (verb == "scroll")
            return AutomationAction{.tool = Tool::scroll, .direction = rest};
        if (verb == "menu") {
            std::vector<std::string> path;
            for (std::size_t index = 0; index < list.size(); ++index)
                path.push_back(text(index));
            return AutomationAction{.tool = Tool::chooseMenu, .path = path};
        }
        if (verb == "app")
            return AutomationAction{.tool = Tool::openApp, .name = rest};
        if (verb == "site")
            return AutomationAction{.tool = Tool::openWebsite, .address = rest};
        if (verb == "option")
            return ChooseOption{text(0), text(1)};
        if (verb == "spot")
            return ClickSpot{number(0), number(1)};
        if (verb == "drag")
            return Drag{number(0), number(1), number(2), number(3)};
        if (verb == "closeTab")
            return BrowserControl{BrowserControl::Kind::closeTab};
        if (verb == "back")
            return BrowserControl{BrowserControl::Kind::back};
        if (verb == "lock")
            return QuickAction{QuickAction::Kind::lockScreen};
        if (verb == "volume")
            return QuickAction{QuickAction::Kind::volume, rest};
        return std::nullopt;
    }

    std::string verdict(const ProposedAction& proposed) const
    {
        const ActionRisk risk = ActionJudge::judge(proposed, m_look);
        if (const auto problem = ActionJudge::problem(proposed, m_look)) {
            EXPECT_EQ(risk, ActionRisk::never(*problem));
            return "problem: " + *problem;
        }
        constexpr std::array<const char*, 3> names{"safe", "ask: ", "never: "};
        return names[static_cast<std::size_t>(risk.kind)] + risk.text;
    }

    ScreenLook m_look;
};

ScreenLook lookOf(AutomationCandidate candidate, ScreenElement element = {})
{
    ScreenLook look;
    look.observation.candidates.push_back(std::move(candidate));
    look.elements.push_back(std::move(element));
    return look;
}

} // namespace

TEST(ActionJudge, judgesAllThatAnActionTouches)
{
    test::playFixture("automation/judged.txt",
        [] { return [judged = std::make_shared<Judged>()](const std::string& line) { return judged->play(line); }; });
}

TEST(ActionJudge, givesTheFormThatItJudged)
{
    const ScreenLook look = lookOf({.id = "list", .role = "AXPopUpButton", .label = "Paper", .enabled = true},
        {.options = {"A4", "A4 rotated", "US Letter"}});
    const auto form = [&](const ScreenAction& action) { return ActionJudge::judgedAction(action, look); };
    using Tool = AutomationAction::Tool;
    EXPECT_EQ(form(AutomationAction{.tool = Tool::openWebsite, .address = " example.com/a "}),
        ScreenAction(AutomationAction{.tool = Tool::openWebsite, .address = "https://example.com/a"}));
    EXPECT_EQ(form(AutomationAction{.tool = Tool::pressKey, .key = "Ctrl+L"}),
        ScreenAction(AutomationAction{.tool = Tool::pressKey, .key = "command+l"}));
    EXPECT_EQ(form(ChooseOption{"list", "letter"}), ScreenAction(ChooseOption{"list", "US Letter"}));
    EXPECT_EQ(form(ChooseOption{"list", "A4"}), ScreenAction(ChooseOption{"list", "A4"}));
}

TEST(ActionJudge, tellsAnIdThatIsGoneFromOneThatNeverWas)
{
    const ScreenLook look = lookOf({});
    ProposedAction gone{.action = AutomationAction{.target = "7"}, .revision = 3};
    EXPECT_NE(ActionJudge::problem(gone, look).value_or("").find("any more"), std::string::npos);
    gone.revision = look.observation.revision;
    EXPECT_EQ(ActionJudge::problem(gone, look).value_or("").find("any more"), std::string::npos);
}

/// What a look may not hold is asked about, where a part of it could be judged safe.
TEST(ActionJudge, asksAboutTextsThatAreTooLongToBeJudged)
{
    const std::string tooLong(ObservationBounds::longestName + 1, 'x');
    const ProposedAction press{.action = AutomationAction{.target = "e"}};
    const ProposedAction typing{.action = ReplaceText{"e", "text"}};
    for (const std::string& label : {std::string("Next"), tooLong}) {
        SCOPED_TRACE(label.size());
        const ScreenElement element{.hint = tooLong, .description = tooLong};
        const ScreenLook button = lookOf({.id = "e", .role = "AXButton", .label = label, .enabled = true}, element);
        EXPECT_EQ(ActionJudge::judge(press, button).kind, ActionRisk::Case::askFirst);
        const ScreenLook box = lookOf({.id = "e", .role = "AXTextField", .label = label, .enabled = true}, element);
        EXPECT_EQ(ActionJudge::judge(typing, box).kind, ActionRisk::Case::askFirst);
    }
}

} // namespace quorvell
