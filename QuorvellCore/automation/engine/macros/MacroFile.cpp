// SPDX-License-Identifier: MIT
#include "QuorvellCore/automation/engine/macros/MacroFile.h"

#include "QuorvellCore/automation/json/AutomationJson.h"

#include <nlohmann/json.hpp>

#include <utility>

namespace quorvell {

namespace {

constexpr std::size_t mostProblems = 20;
constexpr int indentation = 2;

Json stepJson(const MacroStep& step)
{
    Json object = {{"app", step.app}};
    if (!step.site.empty())
        object["site"] = step.site;
    if (!step.role.empty()) {
        object["role"] = step.role;
        object["label"] = step.label;
    }
    object["action"] = AutomationJson::encode(step.action);
    object["expected"] = AutomationJson::encode(step.expected);
    return object;
}

/// A text that may be left out, but is nothing else.
std::optional<std::string> textOrNone(const Json& object, std::string_view key)
{
    return memberOf(object, key) ? readString(object, key) : std::string();
}

std::optional<MacroStep> readStep(const Json& object)
{
    auto app = readString(object, "app");
    auto site = textOrNone(object, "site");
    auto role = textOrNone(object, "role");
    auto label = textOrNone(object, "label");
    const Json* actionMember = memberOf(object, "action");
    const Json* expectedMember = memberOf(object, "expected");
    auto action = actionMember ? AutomationJson::decode<AutomationAction>(*actionMember) : std::nullopt;
    auto expected = expectedMember ? AutomationJson::decode<Postcondition>(*expectedMember) : std::nullopt;
    if (!app || !site || !role || !label || !action || !expected)
        return std::nullopt;
    return MacroStep{std::move(*app), std::move(*site), std::move(*role), std::move(*label), std::move(*action),
        std::move(*expected)};
}

std::optional<std::vector<MacroStep>> readSteps(const Json& object)
{
    const Json* list = memberOf(object, "steps");
    if (!list || !list->is_array() || list->size() > VerifiedMacro::mostSteps)
        return std::nullopt;
    std::vector<MacroStep> steps;
    for (const Json& element : *list) {
        auto step = readStep(element);
        if (!step)
            return std::nullopt;
        steps.push_back(std::move(*step));
    }
    return steps;
}

std::optional<VerifiedMacro> readMacro(const Json& object)
{
    auto goal = readString(object, "goal");
    const auto verified = readInteger(object, "verified");
    const auto last = parseIsoText(readString(object, "last_verified").value_or(""));
    auto steps = readSteps(object);
    // Beyond what is counted, no run is believed.
    if (!goal || !verified || *verified < 1 || *verified > MacroBook::mostVerified || !last || !steps)
        return std::nullopt;
    return VerifiedMacro{std::move(*goal), std::move(*steps), static_cast<int>(*verified), *last};
}

void note(std::vector<std::string>& problems, std::string problem)
{
    if (problems.size() < mostProblems)
        problems.push_back(std::move(problem));
}

} // namespace

std::optional<MacroFile> MacroFile::read(std::string_view text)
{
    const auto json = parseJson(text, {.maximumBytes = longest, .maximumDepth = 16, .maximumMembers = 64});
    const Json* list = json && readInteger(*json, "version") == version ? memberOf(*json, "macros") : nullptr;
    if (!list || !list->is_array())
        return std::nullopt;
    MacroFile file;
    for (std::size_t index = 0; index < list->size(); ++index) {
        if (index == MacroBook::mostMacros) {
            note(file.problems, "Only the first " + std::to_string(index) + " macros were read.");
            break;
        }
        auto macro = readMacro((*list)[index]);
        if (!macro || !file.book.add(std::move(*macro)))
            note(file.problems, "Macro number " + std::to_string(index + 1) + " cannot be used and was left out.");
    }
    return file;
}

std::string MacroFile::write(const MacroBook& book)
{
    Json macros = Json::array();
    for (const VerifiedMacro& macro : book.entries()) {
        Json steps = Json::array();
        for (const MacroStep& step : macro.steps)
            steps.push_back(stepJson(step));
        macros.push_back({{"goal", macro.goal}, {"verified", macro.verified},
            {"last_verified", isoText(macro.lastVerified)}, {"steps", std::move(steps)}});
    }
    const Json file = {{"version", version}, {"macros", std::move(macros)}};
    return file.dump(indentation, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace quorvell
