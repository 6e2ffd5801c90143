// SPDX-License-Identifier: MIT
#include "QuorvellCore/automation/provenance/ProvenanceRisk.h"

#include "QuorvellCore/automation/provenance/FencedText.h"
#include "QuorvellCore/safety/SpokenLabel.h"

#include <array>
#include <optional>
#include <utility>

namespace quorvell {

namespace {

struct Argument {
    std::string_view name;
    std::string_view asked; ///< In front of the words.
    std::string_view what; ///< Behind them, as the beginning of a sentence about where they came from.
    bool isAskedOfModel; ///< Also where nobody gave the words, once the conversation is tainted.
};

/// What could do most comes first.
constexpr auto arguments = std::to_array<Argument>({
    {"recipient", "Shall I address it to ", "That name or address comes", true},
    {"address", "Shall I open ", "That address comes", false},
    {"address_data", "Shall I open ", "What that address carries along comes", true},
    {"text", "Shall I type ", "Those words come", false},
});

std::string_view wordsOf(const ScreenAction& action)
{
    if (const auto* typing = std::get_if<screen_action::ReplaceText>(&action))
        return typing->text;
    const auto* step = std::get_if<AutomationAction>(&action);
    if (!step)
        return {};
    if (step->text)
        return *step->text;
    return step->address ? std::string_view(*step->address) : std::string_view();
}

/// Of the first argument whose words nobody but others vouches for.
std::optional<std::pair<Argument, WordOrigin>> doubtIn(const ProposedAction& proposed, bool isTainted)
{
    for (const Argument& argument : arguments) {
        const auto origin = proposed.origins.find(argument.name);
        if (origin == proposed.origins.end())
            continue;
        const bool isInvented = origin->second == WordOrigin::model && isTainted && argument.isAskedOfModel;
        if (isOutside(origin->second) || isInvented)
            return std::pair(argument, origin->second);
    }
    return std::nullopt;
}

std::string sourceSentence(const Argument& argument, WordOrigin origin)
{
    const std::string source(origin == WordOrigin::model ? "from me" : spokenOrigin(origin));
    return std::string(argument.what) + (origin == WordOrigin::model ? " " : " from ") + source + ", not from you.";
}

} // namespace

ActionRisk provenanceRisk(const ProposedAction& proposed, bool isTainted)
{
    const auto doubt = doubtIn(proposed, isTainted);
    if (!doubt)
        return ActionRisk::safe();
    const auto& [argument, origin] = *doubt;
    return ActionRisk::askFirst(std::string(argument.asked) + SpokenLabel::quoted(wordsOf(proposed.action)) + "? "
        + sourceSentence(argument, origin));
}

ActionVerdict ActionVerdict::of(const ActionRisk& guard, const ProposedAction& proposed, bool isTainted,
    const ProvenanceGrants& grants, std::string_view app)
{
    const ActionRisk added = provenanceRisk(proposed, isTainted);
    if (!guard.isSafe()) {
        const auto doubt = doubtIn(proposed, isTainted);
        const std::string question =
            doubt ? guard.text + ' ' + sourceSentence(doubt->first, doubt->second) : guard.text;
        return {guard.withQuestion(question), Reason::guard};
    }
    if (added.isSafe() || grants.covers(proposed.tool, app))
        return {};
    return {added, Reason::provenance};
}

} // namespace quorvell
