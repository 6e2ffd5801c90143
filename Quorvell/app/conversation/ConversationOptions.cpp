// SPDX-License-Identifier: MIT
#include "Quorvell/app/conversation/ConversationOptions.h"

#include "Quorvell/app/program/Command.h"
#include "Quorvell/app/terminal/TerminalColumns.h"
#include "Quorvell/connections/access/LiveEndpointSettings.h"
#include "Quorvell/preferences/LiveBackendTraits.h"
#include "Quorvell/settings/ProgramEnvironment.h"
#include "Quorvell/settings/UserSettings.h"

namespace quorvell {

std::shared_ptr<ConversationOptions> ConversationOptions::declare(Command& command)
{
    auto options = std::make_shared<ConversationOptions>();
    command.flag("--json", options->asJson, "Print one JSON object per event");
    command.flag("--verbose", options->isVerbose, "Show what tools are asked and answer, word for word")
        .excludes("--json");
    command
        .text("--host", options->host,
            "The live service: HOST, HOST:PORT or wss://HOST (default: QUORVELL_LIVE_HOST, the settings, "
            "or the service on this device where there is no key)")
        .checkedBy([](const std::string& host) { return LiveEndpointSettings::hostProblem(host).value_or(""); });
    command.choice(
        "--backend", options->backend, LiveBackendTraits::byName(), "Whose live model: " + LiveBackendTraits::names());
    command.choice("--transport", options->transport, UserSettings::transports(),
        "How sound travels to an OpenAI model: auto, webrtc or websocket");
    return options;
}

ConversationText::Style ConversationOptions::textStyle(const ProgramEnvironment& environment) const
{
    ConversationText::Style style;
    style.tools = isVerbose ? ConversationText::Tools::whole : ConversationText::Tools::told;
    style.colour = environment.colour();
    if (environment.isOutputTerminal)
        style.columns = &terminalColumns;
    return style;
}

} // namespace quorvell
