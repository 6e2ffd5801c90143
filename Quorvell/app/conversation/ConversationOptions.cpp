// SPDX-License-Identifier: MIT
#include "Quorvell/app/conversation/ConversationOptions.h"

#include "Quorvell/app/terminal/TerminalColumns.h"
#include "Quorvell/connections/LiveEndpointSettings.h"
#include "Quorvell/settings/ProgramEnvironment.h"
#include "Quorvell/settings/UserSettings.h"

#include <CLI/CLI.hpp>

namespace quorvell {

std::shared_ptr<ConversationOptions> ConversationOptions::declare(CLI::App& command)
{
    auto options = std::make_shared<ConversationOptions>();
    auto* json = command.add_flag("--json", options->asJson, "Print one JSON object per event");
    command.add_flag("--verbose", options->isVerbose, "Show what tools are asked and answer, word for word")
        ->excludes(json);
    command
        .add_option("--host", options->host,
            "The live service: HOST, HOST:PORT or wss://HOST (default: QUORVELL_LIVE_HOST, the settings, "
            "or the service on this device where there is no key)")
        ->check([](const std::string& host) { return LiveEndpointSettings::hostProblem(host).value_or(""); });
    command.add_option("--backend", options->backend, "Whose live model: auto, openai, gemini or on_device")
        ->type_name("NAME")
        ->transform(CLI::CheckedTransformer(UserSettings::backends()).description(""));
    command
        .add_option(
            "--transport", options->transport, "How sound travels to an OpenAI model: auto, webrtc or websocket")
        ->type_name("NAME")
        ->transform(CLI::CheckedTransformer(UserSettings::transports()).description(""));
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
