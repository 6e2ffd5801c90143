// SPDX-License-Identifier: MIT
#include "QuorvellCore/automation/screen/Postcondition.h"

#include "QuorvellCore/text/TextMatch.h"
#include "QuorvellCore/text/web/SiteMatch.h"

#include <algorithm>
#include <tuple>
#include <vector>

namespace quorvell {

namespace {

bool isShowing(std::string_view address, const std::optional<std::string>& page)
{
    if (!page || !SiteMatch::sameSite(address, *page))
        return false;
    const std::string path = SiteMatch::path(address);
    return path.empty() || path == SiteMatch::path(*page);
}

bool hasLabel(const AutomationObservation& observation, std::string_view normalized)
{
    return std::any_of(observation.candidates.begin(), observation.candidates.end(),
        [&](const AutomationCandidate& candidate) { return TextMatch::normalized(candidate.label) == normalized; });
}

/// What an element shows; its id says nothing across two scans.
using Shown = std::tuple<std::string_view, std::string_view, std::string_view>;

Shown shownBy(const AutomationCandidate& candidate)
{
    return {candidate.role, candidate.label, candidate.value};
}

/// Searched in order: a page may hold thousands of elements that all contain the text.
bool holdsAnew(const AutomationObservation& after, std::string_view normalized, const AutomationObservation& before)
{
    std::vector<Shown> known;
    for (const AutomationCandidate& candidate : before.candidates)
        known.push_back(shownBy(candidate));
    std::sort(known.begin(), known.end());
    return std::any_of(after.candidates.begin(), after.candidates.end(), [&](const AutomationCandidate& candidate) {
        return TextMatch::normalized(candidate.value).find(normalized) != std::string::npos
            && !std::binary_search(known.begin(), known.end(), shownBy(candidate));
    });
}

} // namespace

bool Postcondition::verified(const AutomationObservation& before, const AutomationObservation& after) const
{
    switch (kind) {
    case Kind::app:
    case Kind::site:
    case Kind::focused:
        return satisfied(after);
    case Kind::labelAppeared: {
        const std::string expected = TextMatch::normalized(value);
        return !expected.empty() && hasLabel(after, expected) && !hasLabel(before, expected);
    }
    case Kind::valueContains: {
        const std::string expected = TextMatch::normalized(value);
        return !expected.empty() && holdsAnew(after, expected, before);
    }
    case Kind::changed:
        return before.stateKey() != after.stateKey();
    case Kind::userCheck:
        return false;
    }
    return false;
}

bool Postcondition::satisfied(const AutomationObservation& after) const
{
    if (kind == Kind::site)
        return isShowing(value, after.page);
    const std::string expected = TextMatch::normalized(value);
    if (expected.empty())
        return false;
    if (kind == Kind::app)
        return TextMatch::normalized(after.app) == expected;
    return kind == Kind::focused
        && std::any_of(after.candidates.begin(), after.candidates.end(), [&](const AutomationCandidate& candidate) {
               return candidate.focused && TextMatch::normalized(candidate.label) == expected;
           });
}

std::string_view storedText(Postcondition::Kind kind)
{
    switch (kind) {
    case Postcondition::Kind::app:
        return "app";
    case Postcondition::Kind::site:
        return "site";
    case Postcondition::Kind::labelAppeared:
        return "labelAppeared";
    case Postcondition::Kind::valueContains:
        return "valueContains";
    case Postcondition::Kind::focused:
        return "focused";
    case Postcondition::Kind::changed:
        return "changed";
    case Postcondition::Kind::userCheck:
        return "userCheck";
    }
    return "userCheck";
}

std::optional<Postcondition::Kind> postconditionKind(std::string_view stored)
{
    for (const Postcondition::Kind kind : allPostconditionKinds) {
        if (storedText(kind) == stored)
            return kind;
    }
    return std::nullopt;
}

} // namespace quorvell
