// SPDX-License-Identifier: MIT
#include "Quorvell/settings/KeyVariables.h"

#include "Quorvell/preferences/LiveBackendTraits.h"
#include "Quorvell/preferences/PlannerTraits.h"
#include "Quorvell/settings/ProgramEnvironment.h"

#include <string.h> // NOLINT(modernize-deprecated-headers): explicit_bzero has no other one.
#include <sys/prctl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define QUORVELL_LOOKED_INTO // The search for leaks looks into the process from outside.
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define QUORVELL_LOOKED_INTO
#endif
#endif

namespace quorvell {

namespace {

bool isKeyVariable(std::string_view name)
{
    const auto isItsOwn = [name](const auto& row) { return row.keyVariable == name; };
    return name == "QUORVELL_LIVE_TOKEN" || name == DeciderKeys::selectorVariable
        || std::ranges::any_of(LiveBackendTraits::all(), isItsOwn)
        || std::ranges::any_of(PlannerTraits::all(), isItsOwn);
}

/// One of the variables that keys are read from, or a copy of one under another name.
bool holdsKey(std::string_view name, std::string_view value, const ProgramEnvironment& environment)
{
    const std::vector<std::string> secrets = secretsOf(environment).words;
    const bool isCopy =
        value.size() >= Secrets::shortest && std::find(secrets.begin(), secrets.end(), value) != secrets.end();
    return isKeyVariable(name) || isCopy;
}

} // namespace

Secrets secretsOf(const ProgramEnvironment& environment)
{
    Secrets secrets;
    for (const auto& [backend, key] : environment.keys)
        secrets.words.push_back(key);
    for (const auto& [planner, key] : environment.deciderKeys.planners)
        if (std::ranges::find(secrets.words, key) == secrets.words.end())
            secrets.words.push_back(key);
    if (environment.deciderKeys.selector)
        secrets.words.push_back(*environment.deciderKeys.selector);
    if (environment.liveToken)
        secrets.words.push_back(*environment.liveToken);
    return secrets;
}

void clearKeyVariables(const ProgramEnvironment& environment)
{
    std::vector<std::string> names;
    for (char** variable = environ; variable != nullptr && *variable != nullptr; ++variable) {
        const std::string_view text = *variable;
        const std::size_t equals = text.find('=');
        if (equals == std::string_view::npos || !holdsKey(text.substr(0, equals), text.substr(equals + 1), environment))
            continue;
        names.emplace_back(text.substr(0, equals));
        explicit_bzero(*variable + equals + 1, text.size() - equals - 1);
    }
    for (const std::string& name : names)
        unsetenv(name.c_str());
}

void forbidLookingIn()
{
#ifndef QUORVELL_LOOKED_INTO
    prctl(PR_SET_DUMPABLE, 0, 0, 0, 0);
#endif
}

} // namespace quorvell
