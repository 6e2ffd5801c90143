// SPDX-License-Identifier: MIT
#include "Quorvell/actions/work/ConversationWords.h"

#include "QuorvellCore/automation/provenance/FencedText.h"
#include "QuorvellCore/live/tools/ToolTraits.h"
#include "QuorvellCore/text/Json.h"

#include <nlohmann/json.hpp>

#include <utility>

namespace quorvell {

namespace {

/// A calendar holds what others invited to. Only what the user keeps is theirs.
WordOrigin originOfTool(const ToolTraits& tool)
{
    if (tool.group == ToolGroup::lookUp)
        return WordOrigin::web;
    const bool isKept = tool.group == ToolGroup::notebook && tool.name != "whats_on" && tool.name != "find_free_time"
        && tool.name != "add_event" && tool.name != "change_event";
    return isKept ? WordOrigin::notebook : WordOrigin::account;
}

} // namespace

ConversationWords::ConversationWords(Ports ports)
    : m_ports(std::move(ports))
{
}

void ConversationWords::begin()
{
    m_ledger = {};
    m_taint = {};
    m_grants = {};
    m_seen = -1;
}

void ConversationWords::userSaid(const HeardUtterance& heard)
{
    const bool isAllTheirs = heard.how != HeardUtterance::How::typed;
    const std::string& own = isAllTheirs ? heard.text : heard.ownWords;
    m_ledger.told(WordOrigin::user, own);
    if (own != heard.text)
        tell(heard.text, WordOrigin::web);
}

void ConversationWords::toolAnswered(const LiveFunctionResponse& response)
{
    const ToolTraits* tool = ToolTraits::find(response.name);
    if (tool && tool->group != ToolGroup::screen)
        tell(response.response, originOfTool(*tool));
}

/// What says of itself that it came from elsewhere is not the user's, wherever it is kept.
void ConversationWords::tell(const Json& value, WordOrigin origin)
{
    const Json* untrusted = value.is_object() ? memberOf(value, "untrusted") : nullptr;
    const bool isOfOthers = untrusted && untrusted->is_boolean() && untrusted->get<bool>();
    const WordOrigin here = isOfOthers ? WordOrigin::web : origin;
    if (value.is_string())
        return tell(value.get_ref<const std::string&>(), here);
    if (value.is_structured())
        for (const Json& part : value)
            tell(part, here);
}

void ConversationWords::tell(const std::string& text, WordOrigin origin)
{
    m_ledger.told(origin, text);
    m_taint.told(origin, m_ports.now());
}

std::string ConversationWords::fence(const std::string& text, WordOrigin origin)
{
    tell(text, origin);
    return fenced(text, origin, m_ports.freshMark());
}

void ConversationWords::seen(const ScreenLook& look)
{
    if (std::exchange(m_seen, look.observation.revision) != look.observation.revision)
        m_ledger.seen(look);
}

/// Whoever decides here has read the screen itself, beyond what the model was told of it.
WordOrigins ConversationWords::originsOf(const ScreenAction& action, const ScreenLook& look)
{
    seen(look);
    return m_ledger.originsOf(action, look);
}

ActionVerdict ConversationWords::verdict(
    const ActionRisk& guard, const ProposedAction& proposed, const ScreenLook& look) const
{
    const bool isTainted = proposed.source == ProposedAction::Source::engine || m_taint.isTainted(m_ports.now());
    return ActionVerdict::of(guard, proposed, isTainted, m_grants, look.observation.app);
}

} // namespace quorvell
