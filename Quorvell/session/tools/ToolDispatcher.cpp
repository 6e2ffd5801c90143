// SPDX-License-Identifier: MIT
#include "Quorvell/session/tools/ToolDispatcher.h"

#include "QuorvellCore/live/tools/ToolCatalogue.h"
#include "QuorvellCore/live/tools/ToolTraits.h"

#include <utility>

namespace quorvell {

ToolDispatcher::ToolDispatcher(const ToolRegistry& registry)
    : m_registry(registry)
    , m_catalogue(
          ToolCatalogue::responsesTools({.tiered = true, .webLookup = true, .connectedApps = true, .nextStep = true}))
{
}

std::optional<std::string> ToolDispatcher::startUpProblem(const ToolRegistry& registry)
{
    std::string names;
    for (const std::string& name : registry.clashes())
        names += (names.empty() ? "" : ", ") + name;
    if (names.empty())
        return std::nullopt;
    return "Cannot start: more than one part of the program wants to carry out " + names
        + ". This is a fault of the program; please report it.";
}

Json ToolDispatcher::offeredTools() const
{
    Json offered = Json::array();
    for (const Json& declaration : m_catalogue) {
        const std::string name = readString(declaration, "name").value_or("");
        const ToolTraits* tool = ToolTraits::find(name);
        if ((tool && tool->isOfSession) || m_registry.has(name))
            offered.push_back(declaration);
    }
    return offered;
}

void ToolDispatcher::run(const LiveFunctionCall& call, ToolReply reply) const
{
    if (call.wasCutOff())
        return reply.fail(cutOffText(call.name));
    if (const ToolHandler* owner = m_registry.owner(call.name))
        return (*owner)(call, std::move(reply));
    if (ToolTraits::find(call.name))
        return reply.fail(call.name
            + " is not available in this version of Quorvell, so nothing was done. Say so plainly, and offer what the "
              "other tools can do or how they can do it themselves.");
    reply.fail("There is no tool called " + call.name + ".");
}

std::string ToolDispatcher::cutOffText(std::string_view toolName)
{
    return "Your " + std::string(toolName)
        + " call was cut off before it finished, so nothing was done. It was probably too long for one reply. Do it "
          "again in smaller parts: for writing, a few paragraphs per type_text call, one after another, adding to "
          "what's there. Don't tell them it's done until every part is typed.";
}

} // namespace quorvell
