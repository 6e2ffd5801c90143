#pragma once

#include "Quorvell/connections/LiveModelSettings.h"
#include "QuorvellCore/live/prompt/HelpMode.h"

#include <chrono>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace quorvell {

struct ProgramEnvironment;

/// What the user has settled once and for all, in settings.json of the configuration folder.
struct UserSettings {
    struct Reading;

    enum class Backend { automatic, openAI, gemini, onDevice };
    enum class Transport { automatic, webRTC, webSocket };
    enum class Listening { openMicrophone, pushToTalk };

    static constexpr std::size_t longestFile = 64 * 1024; ///< Bytes.
    static constexpr std::size_t longestText = 200; ///< User-perceived characters of one value.

    std::string userName;
    std::string familyName; ///< The person the user trusts with computer matters.
    std::optional<std::string> liveHost;
    LiveModelSettings models;
    Backend backend = Backend::automatic;
    Transport transport = Transport::automatic;
    HelpMode helpMode = HelpMode::guide;
    Listening listening = Listening::openMicrophone;
    bool sendsOnlySpeech = true;
    bool restsWhenQuiet = true;
    bool keepsTypedHistory = true; ///< What was typed, for the arrow keys.
    std::optional<std::chrono::minutes> dailyMinutes; ///< At most a day.
    std::optional<std::string> microphone; ///< A device name; absent: the sound server's choice.
    std::optional<std::string> loudspeaker;
    std::optional<std::string> notebookFolder; ///< Absolute.

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
