// SPDX-License-Identifier: MIT
#include "Quorvell/actions/tools/ActionTools.h"

#include "Quorvell/actions/tools/ActingTools.h"
#include "Quorvell/actions/tools/SeeingTools.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/OneLine.h"

#include <memory>
#include <string>
#include <utility>

namespace quorvell {

namespace {

constexpr std::size_t longestReason = 500; ///< User-perceived characters.

/// flag_scam. "Emailed" only where mail goes out.
void flagScam(const ActionToolPorts& ports, const LiveFunctionCall& call, ToolReply reply)
{
    std::string reason = firstCharacters(onOneLine(repairUtf8(call.string("reason").value_or(""))), longestReason);
    if (trimmed(reason).empty())
        reason = "a possible scam was detected";
    ports.log.record("scam_flagged", Json::object());
    ports.pipeline.withdrawQuestion(); // What waits for a yes may be what the scam is after.
    const std::string helper = ports.helper ? onOneLine(ports.helper->helper()) : "";
    const bool isTold = !helper.empty() && ports.helper->tellOfScam(reason);
    ToolResult result(ToolStatus::scamFlagged);
    result.advise(isTold ? "Flagged. Their trusted helper, " + helper
                + ", is being emailed what you spotted (never the screen). Tell them so, then calmly help them close "
                  "it."
                         : "Flagged. Calmly help them close it.");
    reply.answer(result);
}

template <typename Tools>
ToolHandler handler(std::shared_ptr<Tools> tools, void (Tools::*carryOut)(const LiveFunctionCall&, ToolReply))
{
    return [tools = std::move(tools), carryOut](
               const LiveFunctionCall& call, ToolReply reply) { (*tools.*carryOut)(call, std::move(reply)); };
}

} // namespace

void registerActionTools(ToolRegistry& registry, ActionToolPorts ports)
{
    const auto acting = std::make_shared<ActingTools>(ports);
    for (const std::string_view tool : ActionArguments::tools())
        registry.add(std::string(tool), handler(acting, &ActingTools::act));
    registry.add("confirm_action", handler(acting, &ActingTools::confirm));

    const auto seeing = std::make_shared<SeeingTools>(ports);
    registry.add("read_page", handler(seeing, &SeeingTools::readPage));
    registry.add("find_on_page", handler(seeing, &SeeingTools::findOnPage));
    registry.add("list_tabs", handler(seeing, &SeeingTools::listTabs));
    registry.add("wait_for_screen", handler(seeing, &SeeingTools::waitForScreen));
    registry.add("look_at_screen", handler(seeing, &SeeingTools::lookAtScreen));

    registry.add("flag_scam", [ports = std::move(ports)](const LiveFunctionCall& call, ToolReply reply) {
        flagScam(ports, call, std::move(reply));
    });
}

} // namespace quorvell
