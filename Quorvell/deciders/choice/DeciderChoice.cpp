// SPDX-License-Identifier: MIT
#include "Quorvell/deciders/choice/DeciderChoice.h"

#include "Quorvell/deciders/http/CurlAddress.h"
#include "Quorvell/preferences/PlannerTraits.h"
#include "QuorvellCore/text/Characters.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace quorvell {

namespace {

/// "https://host:port/beginning" of "host:port/beginning/" and its like.
std::optional<std::string> baseUrl(std::string_view host)
{
    std::string url = trimmed(host);
    if (url.find("://") == std::string::npos)
        url.insert(0, "https://");
    while (url.ends_with('/'))
        url.pop_back();
    if (url.find_first_of("?#") != std::string::npos || !CurlAddress::parse(url))
        return std::nullopt;
    return url;
}

std::string addressProblem(std::string_view host, std::string_view setting)
{
    return "\"" + std::string(host) + "\" is not an address of a service. Give \"" + std::string(setting)
        + "\" in the settings a host such as decider.example.org, or an address that begins with https://; without "
          "encryption (http://) only this computer, as in http://127.0.0.1:8080.";
}

/// What may stand in a header: anything else could begin another one.
bool isKey(const std::string& key)
{
    return !key.empty()
        && std::all_of(key.begin(), key.end(), [](char letter) { return letter > ' ' && letter <= '~'; });
}

std::string keyProblem(std::string_view variable)
{
    return "The key in " + std::string(variable)
        + " holds characters that no key has, such as a line break. Set it again.";
}

void chooseSelector(const DeciderSettings& settings, const DeciderKeys& keys, DeciderChoice& choice)
{
    const PimMode wanted = settings.pimMode.value_or(keys.selector ? PimMode::active : PimMode::off);
    const std::string mode = "\"pim_mode\" in the settings is \"" + std::string(storedText(wanted)) + "\", and ";
    const std::string key = trimmed(keys.selector.value_or(""));
    const auto url = settings.selectorHost ? baseUrl(*settings.selectorHost) : std::nullopt;
    if (wanted == PimMode::off)
        return;
    if (!keys.selector)
        choice.selectorProblem = mode + "there is no key for it. Set " + DeciderKeys::selectorVariable + ".";
    else if (!isKey(key))
        choice.selectorProblem = keyProblem(DeciderKeys::selectorVariable);
    else if (!settings.selectorHost)
        choice.selectorProblem = std::string(DeciderKeys::selectorVariable)
            + " is set, and the settings do not say where its service is. Set \"selector_host\", or \"pim_mode\" to "
              "\"off\".";
    else if (!url)
        choice.selectorProblem = addressProblem(*settings.selectorHost, "selector_host");
    else {
        choice.selector = SelectorAccess{*url, key};
        choice.mode = wanted;
    }
}

const PlannerTraits& plannerOf(PlannerService wanted, const DeciderKeys& keys)
{
    if (wanted != PlannerService::automatic)
        return PlannerTraits::of(wanted);
    const auto all = PlannerTraits::all();
    const auto first =
        std::ranges::find_if(all, [&](const PlannerTraits& row) { return keys.planners.contains(row.service); });
    return first != all.end() ? *first : PlannerTraits::of(PlannerService::off);
}

void choosePlanner(const DeciderSettings& settings, const DeciderKeys& keys, DeciderChoice& choice)
{
    const PlannerTraits& wanted = plannerOf(settings.planner, keys);
    if (settings.planner == PlannerService::automatic && (settings.plannerHost || settings.plannerModel)) {
        choice.plannerProblem =
            "The settings have a \"planner_host\" or a \"planner_model\", and do not say whose. Set "
            "\"planner\" to the one that it belongs to.";
        return;
    }
    if (!wanted.isModel())
        return;
    const auto given = keys.planners.find(wanted.service);
    const std::string keyName(wanted.keyVariable);
    const std::string key = given != keys.planners.end() ? trimmed(given->second) : "";
    const std::string host = settings.plannerHost.value_or(std::string(wanted.host));
    const auto url = baseUrl(host);
    if (given == keys.planners.end())
        choice.plannerProblem = "The settings ask for " + std::string(wanted.title)
            + " to plan steps on the screen, and there is no key for it. Set " + keyName + ".";
    else if (!isKey(key))
        choice.plannerProblem = keyProblem(keyName);
    else if (!url)
        choice.plannerProblem = addressProblem(host, "planner_host");
    else
        choice.planner = PlannerAccess{wanted.style, std::string(wanted.title), *url,
            settings.plannerModel.value_or(std::string(wanted.model)), key, keyName};
}

} // namespace

DeciderChoice DeciderChoice::of(const DeciderSettings& settings, const DeciderKeys& keys)
{
    DeciderChoice choice;
    chooseSelector(settings, keys, choice);
    choosePlanner(settings, keys, choice);
    return choice;
}

} // namespace quorvell
