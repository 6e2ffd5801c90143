// SPDX-License-Identifier: MIT
// What is true of a live service by whose it is: a new one is an enumerator of LiveBackend and a row here.
#pragma once

#include "Quorvell/preferences/LiveBackend.h"
#include "Quorvell/preferences/LiveProtocol.h"
#include "Quorvell/preferences/LiveTransport.h"

#include <map>
#include <span>
#include <string>
#include <string_view>

namespace quorvell {

struct LiveBackendTraits {
    /// A name that the service knows, and the setting by which the user chooses another one.
    struct Choice {
        std::string_view setting;
        std::string_view usual;
    };

    LiveBackend backend = LiveBackend::automatic;
    std::string_view name; ///< As the settings and the command line spell it.
    std::string_view keyVariable = {}; ///< Of the environment, with its key; empty where none is asked for.
    std::string_view host = {}; ///< Of a hosted one, where the user names no other.
    LiveProtocol spoken = LiveProtocol::openAI;
    LiveProtocol typed = LiveProtocol::openAI; ///< For a conversation without any sound.
    LiveTransport transport = LiveTransport::webSocket; ///< What `automatic` means; WebRTC falls back to the WebSocket.
    Choice voiceModel = {}; ///< Listens and talks; the only model of a service that has one.
    Choice voice = {};
    Choice backendModel = {}; ///< Uses the tools; also the one model of typed conversations.

    bool isHosted() const { return !keyVariable.empty(); }

    /// The hosted ones are in the order in which their keys decide.
    static std::span<const LiveBackendTraits> all();
    static const LiveBackendTraits& of(LiveBackend backend);
    static const std::map<std::string, LiveBackend>& byName();
    /// "auto, openai, ... or on_device"
    static std::string names();
};

} // namespace quorvell
