// SPDX-License-Identifier: MIT
#include "Quorvell/actions/tools/ActionArguments.h"

#include "QuorvellCore/text/Characters.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <utility>

namespace quorvell {

namespace {

using Tool = AutomationAction::Tool;
using Read = std::variant<std::vector<AskedStep>, std::string>;
using screen_action::BrowserControl;
using screen_action::QuickAction;

constexpr double farthest = 1'000; ///< Of a coordinate.

std::string argumentMissing(const char* argument)
{
    return std::string(argument) + " is missing.";
}

Read one(ScreenAction action)
{
    return std::vector{AskedStep{.action = std::move(action)}};
}

/// An action that takes texts only: which argument goes where.
struct TextField {
    const char* argument;
    std::optional<std::string> AutomationAction::*field;
    enum class Need { required, optional } need = Need::required;
};

Read readTexts(Tool tool, const Json& arguments, std::initializer_list<TextField> fields)
{
    AutomationAction action{.tool = tool};
    for (const TextField& field : fields) {
        action.*field.field = readString(arguments, field.argument);
        if (!(action.*field.field) && field.need == TextField::Need::required)
            return argumentMissing(field.argument);
    }
    return one(std::move(action));
}

Read readClick(const Json& arguments)
{
    return readTexts(Tool::click, arguments, {{"element_id", &AutomationAction::target}});
}

Read readTypeText(const Json& arguments)
{
    auto target = readString(arguments, "element_id");
    auto text = readString(arguments, "text");
    if (!target || !text)
        return argumentMissing(target ? "text" : "element_id");
    if (readBool(arguments, "replace").value_or(false))
        return one(screen_action::ReplaceText{std::move(*target), std::move(*text)});
    return one(AutomationAction{.tool = Tool::typeText, .target = std::move(target), .text = std::move(text)});
}

Read readPressKey(const Json& arguments)
{
    return readTexts(Tool::pressKey, arguments, {{"key", &AutomationAction::key}});
}

Read readScroll(const Json& arguments)
{
    return readTexts(Tool::scroll, arguments,
        {{"direction", &AutomationAction::direction},
            {"element_id", &AutomationAction::target, TextField::Need::optional}});
}

Read readChooseMenu(const Json& arguments)
{
    auto path = readStrings(arguments, "path");
    if (!path)
        return argumentMissing("path");
    return one(AutomationAction{.tool = Tool::chooseMenu, .path = std::move(path)});
}

Read readChooseOption(const Json& arguments)
{
    auto target = readString(arguments, "element_id");
    auto option = readString(arguments, "option");
    if (!target || !option)
        return argumentMissing(target ? "option" : "element_id");
    return one(screen_action::ChooseOption{std::move(*target), std::move(*option)});
}

Read readOpenApp(const Json& arguments)
{
    return readTexts(Tool::openApp, arguments, {{"name", &AutomationAction::name}});
}

Read readOpenWebsite(const Json& arguments)
{
    return readTexts(Tool::openWebsite, arguments, {{"address", &AutomationAction::address}});
}

std::optional<double> coordinate(const Json& arguments, const char* name)
{
    const auto value = readNumber(arguments, name);
    return value && *value >= 0 && *value <= farthest ? value : std::nullopt;
}

Read readClickAtSpot(const Json& arguments)
{
    const auto x = coordinate(arguments, "x");
    const auto y = coordinate(arguments, "y");
    if (!x || !y)
        return std::string("x and y are required, 0 to 1000.");
    return one(screen_action::ClickSpot{*x, *y});
}

Read readDrag(const Json& arguments)
{
    const auto x = coordinate(arguments, "x");
    const auto y = coordinate(arguments, "y");
    const auto toX = coordinate(arguments, "to_x");
    const auto toY = coordinate(arguments, "to_y");
    if (!x || !y)
        return std::string("x and y are required, 0 to 1000.");
    if (!toX || !toY)
        return std::string("to_x and to_y are required, 0 to 1000.");
    return one(screen_action::Drag{*x, *y, *toX, *toY});
}

Read readFillForm(const Json& arguments)
{
    const Json* const fields = memberOf(arguments, "fields");
    if (!fields || !fields->is_array() || fields->empty())
        return argumentMissing("fields");
    if (fields->size() > ActionArguments::mostFields)
        return "Nothing was filled in: at most " + std::to_string(ActionArguments::mostFields) + " fields at once.";
    std::vector<AskedStep> steps;
    for (const Json& field : *fields) {
        auto target = readString(field, "element_id");
        auto text = readString(field, "text");
        if (!target || !text)
            return std::string("Nothing was filled in: each field needs an element_id and a text.");
        steps.push_back(
            {.tool = "type_text", .action = screen_action::ReplaceText{std::move(*target), std::move(*text)}});
    }
    return steps;
}

template <typename Kind> struct Named {
    std::string_view name;
    Kind kind;
};

template <typename Kind, std::size_t count>
std::optional<Kind> kindNamed(const std::array<Named<Kind>, count>& table, const std::optional<std::string>& name)
{
    const auto* const row = std::ranges::find(table, name.value_or(""), &Named<Kind>::name);
    return row == table.end() ? std::nullopt : std::optional(row->kind);
}

Read readBrowserControl(const Json& arguments)
{
    using Kind = BrowserControl::Kind;
    static constexpr auto kinds =
        std::to_array<Named<Kind>>({{"back", Kind::back}, {"forward", Kind::forward}, {"reload", Kind::reload},
            {"new_tab", Kind::newTab}, {"close_tab", Kind::closeTab}, {"switch_tab", Kind::switchTab}});
    const auto kind = kindNamed(kinds, readString(arguments, "action"));
    std::string tab = readString(arguments, "tab").value_or("");
    if (!kind)
        return std::string("action is one of back, forward, reload, new_tab, close_tab and switch_tab.");
    if (*kind == Kind::switchTab && trimmed(tab).empty())
        return argumentMissing("tab");
    return one(BrowserControl{*kind, std::move(tab)});
}

bool isLevel(const std::string& value)
{
    const bool isNumber =
        !value.empty() && value.size() <= 3 && value.find_first_not_of("0123456789") == std::string::npos;
    return value == "up" || value == "down" || (isNumber && std::stoi(value) <= 100);
}

Read readQuickAction(const Json& arguments)
{
    using Kind = QuickAction::Kind;
    static constexpr auto kinds =
        std::to_array<Named<Kind>>({{"volume", Kind::volume}, {"mute", Kind::mute}, {"unmute", Kind::unmute},
            {"brightness", Kind::brightness}, {"play_pause", Kind::playPause}, {"next_track", Kind::nextTrack},
            {"previous_track", Kind::previousTrack}, {"do_not_disturb", Kind::doNotDisturb},
            {"lock_screen", Kind::lockScreen}, {"screenshot", Kind::screenshot}, {"show_desktop", Kind::showDesktop}});
    const auto kind = kindNamed(kinds, readString(arguments, "name"));
    if (!kind)
        return std::string("There is no quick action of that name.");
    std::string value = readString(arguments, "value").value_or("");
    const bool hasLevel = *kind == Kind::volume || *kind == Kind::brightness;
    if (hasLevel && !isLevel(value))
        return std::string("value is \"0\" to \"100\", \"up\" or \"down\".");
    if (*kind == Kind::doNotDisturb && value != "on" && value != "off")
        return std::string("value is \"on\" or \"off\".");
    return one(QuickAction{*kind, hasLevel || *kind == Kind::doNotDisturb ? std::move(value) : std::string()});
}

Read readSteps(const Json& arguments);

struct Row {
    std::string_view tool;
    Read (*read)(const Json& arguments);
};
constexpr auto rows = std::to_array<Row>({
    {"click", readClick},
    {"type_text", readTypeText},
    {"press_key", readPressKey},
    {"scroll", readScroll},
    {"choose_menu", readChooseMenu},
    {"choose_option", readChooseOption},
    {"open_app", readOpenApp},
    {"open_website", readOpenWebsite},
    {"click_at_spot", readClickAtSpot},
    {"drag", readDrag},
    {"fill_form", readFillForm},
    {"browser_control", readBrowserControl},
    {"do_steps", readSteps},
    {"quick_action", readQuickAction},
});

/// What the model says that the screen will show once a step is done.
std::optional<Postcondition> expectedIn(const Json& arguments)
{
    const auto words = readString(arguments, "expect");
    if (!words || words->size() > Postcondition::longestValue)
        return std::nullopt;
    return Postcondition{Postcondition::Kind::labelAppeared, *words};
}

Read readSteps(const Json& arguments)
{
    const Json* const list = memberOf(arguments, "steps");
    if (!list || !list->is_array() || list->empty())
        return argumentMissing("steps");
    if (list->size() > ActionArguments::mostSteps)
        return "Nothing was done: at most " + std::to_string(ActionArguments::mostSteps) + " steps at once.";
    std::vector<AskedStep> steps;
    for (const Json& item : *list) {
        const std::string tool = readString(item, "tool").value_or("");
        const Json* const its = memberOf(item, "arguments");
        const bool isComposite = tool == "do_steps" || tool == "fill_form";
        if (isComposite || !its || !its->is_object())
            return "Nothing was done: step " + std::to_string(steps.size() + 1)
                + " needs the name of a tool that acts, and its arguments. do_steps and fill_form are no steps.";
        auto read = ActionArguments::read(tool, *its);
        if (const auto* problem = std::get_if<std::string>(&read))
            return "Nothing was done: step " + std::to_string(steps.size() + 1) + ": " + *problem;
        steps.push_back(std::move(std::get<std::vector<AskedStep>>(read).front()));
    }
    return steps;
}

} // namespace

Read ActionArguments::read(std::string_view tool, const Json& arguments)
{
    const auto* const row = std::ranges::find(rows, tool, &Row::tool);
    if (row == rows.end())
        return std::string("There is no tool of that name that acts.");
    Read steps = row->read(arguments);
    if (auto* const read = std::get_if<std::vector<AskedStep>>(&steps); read && row->read != readSteps)
        for (AskedStep& step : *read) {
            step.tool = step.tool.empty() ? std::string(tool) : step.tool;
            step.expected = expectedIn(arguments);
        }
    return steps;
}

std::vector<std::string_view> ActionArguments::tools()
{
    std::vector<std::string_view> names;
    names.reserve(std::size(rows));
    for (const Row& row : rows)
        names.push_back(row.tool);
    return names;
}

} // namespace quorvell
