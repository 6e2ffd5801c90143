#include "Quorvell/app/ConversationOptions.h"

#include "Quorvell/app/UserSettings.h"
#include "Quorvell/connections/LiveEndpointSettings.h"

#include <CLI/CLI.hpp>

namespace quorvell {

std::shared_ptr<ConversationOptions> ConversationOptions::declare(CLI::App& command)
{
    auto options = std::make_shared<ConversationOptions>();
    command.add_flag("--json", options->asJson, "Print one JSON object per event");
    command
        .add_option("--host", options->host,
            "The live service: HOST, HOST:PORT or wss://HOST (default: QUORVELL_LIVE_HOST, the settings, "
            "or the service on this device where there is no key)")
        ->check([](const std::string& host) { return LiveEndpointSettings::hostProblem(host).value_or(""); });
    command.add_option("--backend", options->backend, "Whose live model: auto, openai, gemini or on_device")
        ->transform(CLI::CheckedTransformer(UserSettings::backends()).description(""));
    command
        .add_option(
            "--transport", options->transport, "How sound travels to an OpenAI model: auto, webrtc or websocket")
        ->transform(CLI::CheckedTransformer(UserSettings::transports()).description(""));
    return options;
}

} // namespace quorvell
