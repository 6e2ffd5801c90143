// SPDX-License-Identifier: MIT
#include "QuorvellCore/live/wire/openai/OpenAILiveEndpoint.h"

#include "QuorvellCore/live/wire/openai/OpenAILiveMessage.h"
#include "QuorvellCore/live/wire/transport/SessionDescriptionBounds.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Json.h"
#include "QuorvellCore/text/LowerCase.h"

#include <utility>

namespace quorvell {

namespace {

std::pair<std::string, std::string> authorization(std::string_view apiKey)
{
    return {"Authorization", "Bearer " + std::string(apiKey)};
}

} // namespace

std::optional<OpenAILiveEndpoint> OpenAILiveEndpoint::create(std::string_view address)
{
    auto found = ServiceAddress::create(address);
    return found ? std::optional(OpenAILiveEndpoint{std::move(found->host), found->security}) : std::nullopt;
}

WebRequest OpenAILiveEndpoint::request(std::string_view apiKey) const
{
    return {WebRequest::Method::get, ServiceAddress{host, security}.socketUrl(path), {authorization(apiKey)}, {},
        std::chrono::seconds(60)};
}

WebRequest OpenAILiveEndpoint::webRTCRequest(
    std::string_view apiKey, const OpenAILiveSetupOptions& options, std::string_view offerSDP) const
{
    const Json body{{"session", OpenAILiveMessage::session(options, OpenAILiveMessage::AudioFormat::undeclared)},
        {"transport", {{"type", "webrtc"}, {"sdp", offerSDP}}}};
    return {WebRequest::Method::post, ServiceAddress{host, security}.webUrl(path),
        {authorization(apiKey), {"Content-Type", "application/json"}}, dumpJson(body), std::chrono::seconds(20)};
}

std::optional<OpenAILiveEndpoint::WebRTCAnswer> OpenAILiveEndpoint::webRTCAnswer(std::string_view body)
{
    const auto json = parseJson(body);
    const Json* transport = json ? memberOf(*json, "transport") : nullptr;
    const Json* session = json ? memberOf(*json, "session") : nullptr;
    auto sdp = transport ? readString(*transport, "sdp") : std::nullopt;
    if (!sdp || !SessionDescriptionBounds::hold(*sdp) || !session || !session->is_object())
        return std::nullopt;
    return WebRTCAnswer{std::move(*sdp), readString(*session, "id").value_or("")};
}

RefusedSetting OpenAILiveEndpoint::refusedSetting(int status, std::string_view body)
{
    if (status != 400 && status != 403)
        return RefusedSetting::none;
    const std::string text = lowerCased(repairUtf8(body));
    if (text.find("service_tier") != std::string::npos)
        return RefusedSetting::serviceTier;
    if (text.find("summary") != std::string::npos || text.find("verif") != std::string::npos)
        return RefusedSetting::summary;
    return RefusedSetting::none;
}

} // namespace quorvell
