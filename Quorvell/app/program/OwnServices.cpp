// SPDX-License-Identifier: MIT
#include "Quorvell/app/program/OwnServices.h"

#include "Quorvell/settings/UserSettings.h"

namespace quorvell {

namespace {

void chooseModel(const UserSettings& settings, OwnServices& services)
{
    if (!settings.localModelHost) {
        if (settings.localModel)
            services.modelProblem = "\"local_model\" is set, and the settings do not say where it is. Set "
                                    "\"local_model_host\", such as \"127.0.0.1:8080\".";
        return;
    }
    const auto address = ModelAccess::addressOf(*settings.localModelHost);
    if (!address)
        services.modelProblem = "\"" + *settings.localModelHost
            + "\" is no address of a model. Give \"local_model_host\" a host and port of this computer, such as "
              "\"127.0.0.1:8080\"; any other host must be reached by https.";
    else if (!settings.localModel)
        services.modelProblem =
            "\"local_model_host\" is set, and the settings do not say which of its models. Set \"local_model\".";
    else
        services.model = ModelAccess{*address, *settings.localModel};
}

std::optional<WyomingAddress> chooseSpeech(
    const std::optional<std::string>& host, const std::string& setting, std::string& problem)
{
    const auto address = host ? WyomingAddress::parse(*host) : std::nullopt;
    if (host && !address)
        problem = "\"" + *host + "\" is no address for \"" + setting
            + "\". Give a host and port of this computer, such as \"127.0.0.1:10300\"; for any other host, to which "
              "all "
              "sound goes in the clear, \"unencrypted://host:port\".";
    return address;
}

} // namespace

std::string OwnServices::whereWordsGo() const
{
    std::string leaves;
    const auto add = [&leaves](const std::string& what) { leaves += (leaves.empty() ? "" : "; ") + what; };
    if (recogniser && !recogniser->isThisComputer())
        add("your voice goes to " + recogniser->text() + ", unencrypted");
    if (voice && !voice->isThisComputer())
        add("its answers go to " + voice->text() + ", unencrypted");
    if (model && !model->address.isThisComputer())
        add("what it does not understand goes to the model at " + model->address.host);
    return leaves.empty() ? "nothing you say leaves it." : leaves + ". Nothing else leaves it.";
}

OwnServices OwnServices::of(const UserSettings& settings)
{
    OwnServices services;
    chooseModel(settings, services);
    services.recogniser =
        chooseSpeech(settings.speechRecogniserHost, "speech_recogniser_host", services.recogniserProblem);
    services.voice = chooseSpeech(settings.speechVoiceHost, "speech_voice_host", services.voiceProblem);
    return services;
}

} // namespace quorvell
