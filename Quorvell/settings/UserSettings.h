// SPDX-License-Identifier: MIT
// What the user has settled once and for all, in settings.json of the configuration folder.
#pragma once

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

    /// Every setting but the names of models: its key in the file and its place, whose type says what it may be.
    template <typename Take> void each(Take&& take)
    {
        take("user_name", userName);
        take("family_name", familyName);
        take("live_host", liveHost);
        take("backend", backend);
        take("transport", transport);
        take("help_mode", helpMode);
        take("listening", listening);
        take("only_send_speech", sendsOnlySpeech);
        take("rest_when_quiet", restsWhenQuiet);
        take("keep_typed_history", keepsTypedHistory);
        take("daily_minutes", dailyMinutes);
        take("microphone", microphone);
        take("loudspeaker", loudspeaker);
        take("notebook_folder", notebookFolder);
        take("calendar_folder", calendarFolder);
        take("waking_hours", wakingHours);
        take("reasoning_effort", modelOptions.reasoningEffort);
        take("reasoning_summary", modelOptions.reasoningSummary);
        take("service_tier", modelOptions.serviceTier);
        take("verbosity", modelOptions.verbosity);
        take("max_output_tokens", modelOptions.maxOutputTokens);
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
