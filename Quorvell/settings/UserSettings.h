// SPDX-License-Identifier: MIT
// What the user has settled once and for all, in settings.json of the configuration folder.
#pragma once

#include "Quorvell/preferences/DeciderSettings.h"
#include "Quorvell/preferences/LiveBackend.h"
#include "Quorvell/preferences/LiveModelSettings.h"
#include "Quorvell/preferences/LiveTransport.h"
#include "Quorvell/preferences/WakingHours.h"
#include "QuorvellCore/live/prompt/HelpMode.h"

#include <chrono>
#include <iosfwd>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace quorvell {

struct ProgramEnvironment;

struct UserSettings {
    struct Reading;

    enum class Listening { openMicrophone, pushToTalk };
    struct Folder {
        std::string path; ///< Absolute.
        bool operator==(const Folder&) const = default;
    };

    static constexpr std::size_t longestFile = 64 * 1024; ///< Bytes.
    static constexpr std::size_t longestText = 200; ///< User-perceived characters of one value.

    std::string userName;
    std::string familyName; ///< The person the user trusts with computer matters.
    std::optional<std::string> liveHost;
    LiveModelSettings::Options modelOptions;
    std::map<std::string, std::string, std::less<>> modelNames; ///< By the settings that LiveBackendTraits names.
    LiveBackend backend = LiveBackend::automatic;
    LiveTransport transport = LiveTransport::automatic;
    HelpMode helpMode = HelpMode::guide;
    Listening listening = Listening::openMicrophone;
    bool sendsOnlySpeech = true;
    bool restsWhenQuiet = true;
    bool keepsTypedHistory = true; ///< What was typed, for the arrow keys.
    std::optional<std::chrono::minutes> dailyMinutes; ///< At most a day.
    std::optional<std::string> microphone; ///< A device name; absent: the sound server's choice.
    std::optional<std::string> loudspeaker;
    std::optional<Folder> notebookFolder;
    std::optional<Folder> calendarFolder;
    WakingHours wakingHours;
    DeciderSettings deciders;
    std::optional<std::string> localModelHost;
    std::optional<std::string> localModel;
    std::optional<std::string> speechRecogniserHost;
    std::optional<std::string> speechVoiceHost;

    /// Every setting but the names of models: its key in the file and its place, whose type says what it may be. Above
    /// it stands what users read of it: type, meaning and what holds without it (scripts/check-settings).
    template <typename Take> void each(Take&& take)
    {
        // text | how the assistant addresses the user | no name
        take("user_name", userName);
        // text | the person whom the user trusts with computer matters | nobody
        take("family_name", familyName);
        // text | the hosted live service: `host`, `host:port`, an address with `wss` or `https`; with `ws` or `http`
        // only this computer | the provider's own host where there is a key, else the service on this device
        take("live_host", liveHost);
        // `auto`, `openai`, `gemini` or `on_device` | whose live model; `auto`: by the keys that are set, and without
        // one the service on this computer | `auto`
        take("backend", backend);
        // `auto`, `webrtc` or `websocket` | how sound travels to an OpenAI model; `auto`: WebRTC to a hosted one, and
        // the WebSocket where that does not get through | `auto`
        take("transport", transport);
        // `guide`, `auto` or `do` | how much the assistant does by itself: shows, does harmless steps, does whole tasks
        // | `guide`
        take("help_mode", helpMode);
        // `open` or `push_to_talk` | whether `quorvell talk` always listens, or between two presses of Space | `open`
        take("listening", listening);
        // true or false | hold back silence of the microphone | true
        take("only_send_speech", sendsOnlySpeech);
        // true or false | after 15 quiet seconds hang up, listen on this computer, and connect again when you talk |
        // true
        take("rest_when_quiet", restsWhenQuiet);
        // true or false | keep the last 100 typed lines for the arrow keys, in `typed.jsonl` below | true
        take("keep_typed_history", keepsTypedHistory);
        // whole number, 1 to 1440 | of spoken conversation with a hosted model in one day | no limit
        take("daily_minutes", dailyMinutes);
        // text | the device to listen with, as `quorvell talk --list-devices` names it | what the desktop uses
        take("microphone", microphone);
        // text | the device to talk through, likewise | what the desktop uses
        take("loudspeaker", loudspeaker);
        // text | where the notebook is, a full path | `$XDG_DATA_HOME/Quorvell/Notebook`
        take("notebook_folder", notebookFolder);
        // text beginning with `/` | where [calendar files](calendar-folders.md) lie | `Quorvell/Calendar` in the data
        // folder
        take("calendar_folder", calendarFolder);
        // text such as `7:30-23` or `10:00-02:00` | the part of every day in which free time is looked for |
        // `8:00-22:00`
        take("waking_hours", wakingHours);
        // text | how much the backend thinks; `none` turns it off | left to the service
        take("reasoning_effort", modelOptions.reasoningEffort);
        // text | whether its thoughts are summed up | left to the service
        take("reasoning_summary", modelOptions.reasoningSummary);
        // text | the service's class of speed and price | left to the service
        take("service_tier", modelOptions.serviceTier);
        // text | how long the backend's texts are | left to the service
        take("verbosity", modelOptions.verbosity);
        // whole number above 0 | the most that the backend writes in one answer | left to the service
        take("max_output_tokens", modelOptions.maxOutputTokens);
        // `automatic`, `openai`, `anthropic`, `openrouter` or `off` | whose model [plans](planner.md) steps on the
        // screen; `automatic`: the first of these that has a key | `automatic`
        take("planner", deciders.planner);
        // text | its model; counts only with a `planner` that is named | `gpt-5`, `claude-sonnet-4-5`, `openai/gpt-5`
        take("planner_model", deciders.plannerModel);
        // text | where it is: `host`, `host:port`, an address with `https`; with `http` only this computer; it may go
        // on with `/` and the beginning of a path. Counts only with a `planner` that is named | `api.openai.com`,
        // `api.anthropic.com`, `openrouter.ai/api`
        take("planner_host", deciders.plannerHost);
        // `off`, `shadow` or `active` | the fast [selector](selector.md) of plain steps: not asked, asked beside the
        // planner to compare them, or acted on | `active` with its key, else `off`
        take("pim_mode", deciders.pimMode);
        // text | where the selector is, as `planner_host` | nowhere: it is not asked
        take("selector_host", deciders.selectorHost);
        // text | a [model server](../local-model.md) of the user's own, which takes what the service on this computer
        // does not understand: `host:port` on this computer, any other host as an address with `https` | none is asked
        take("local_model_host", localModelHost);
        // text | its model, by the name that the server knows | none is asked
        take("local_model", localModel);
        // text | a [Wyoming](wyoming.md) service that writes down what is said: `host:port` on this computer, any other
        // host as `unencrypted://host:port` | the recogniser of this computer
        take("speech_recogniser_host", speechRecogniserHost);
        // text | a Wyoming service that speaks, likewise | the voice of this computer
        take("speech_voice_host", speechVoiceHost);
    }

    /// What a backend is asked for: what the user named, and its usual names.
    LiveModelSettings modelsFor(LiveBackend wanted) const;

    /// By the names that the settings and the command line know.
    static const std::map<std::string, LiveTransport>& transports();

    /// Whatever is wrong with the file, there are settings: those that could be read, and the defaults.
    static Reading read(const std::string& path);
    /// What a file of that content says; `path` is named in what is wrong with it.
    static Reading parsed(const std::string& content, const std::string& path);
    /// The settings of this program's user; what is wrong with them is told, a line each.
    static UserSettings readTelling(const ProgramEnvironment& environment, std::ostream& complaints);

    bool operator==(const UserSettings&) const = default;
};

struct UserSettings::Reading {
    UserSettings settings;
    std::vector<std::string> problems; ///< Sentences for the user.
};

} // namespace quorvell
