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

    static constexpr std::size_t longestFile = 64 * 1024; ///< Bytes.
    static constexpr std::size_t longestText = 200; ///< User-perceived characters of one value.

    std::string userName;
    std::string familyName; ///< The person the user trusts with computer matters.
    std::optional<std::string> liveHost;
    LiveModelSettings models;
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
    std::optional<std::string> notebookFolder; ///< Absolute.
    std::optional<std::string> calendarFolder; ///< Absolute.
    WakingHours wakingHours;

    /// By the names that the settings and the command line know.
    static const std::map<std::string, LiveBackend>& backends();
    static const std::map<std::string, LiveTransport>& transports();

    /// Whatever is wrong with the file, there are settings: those that could be read, and the defaults.
    static Reading read(const std::string& path);
    /// The settings of this program's user; what is wrong with them is told, a line each.
    static UserSettings readTelling(const ProgramEnvironment& environment, std::ostream& complaints);

    bool operator==(const UserSettings&) const = default;
};

struct UserSettings::Reading {
    UserSettings settings;
    std::vector<std::string> problems; ///< Sentences for the user.
};

} // namespace quorvell
