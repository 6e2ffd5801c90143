#pragma once

#include "Quorvell/connections/LiveModelSettings.h"

#include <optional>
#include <string>
#include <vector>

namespace quorvell {

/// What the user has settled once and for all, in settings.json of the configuration folder.
struct UserSettings {
    struct Reading;

    static constexpr std::size_t longestFile = 64 * 1024; ///< Bytes.
    static constexpr std::size_t longestText = 200; ///< User-perceived characters of one value.

    std::string userName;
    std::string familyName; ///< The person the user trusts with computer matters.
    std::optional<std::string> liveHost;
    LiveModelSettings models;
    bool sendsOnlySpeech = true;

    /// Whatever is wrong with the file, there are settings: those that could be read, and the defaults.
    static Reading read(const std::string& path);

    bool operator==(const UserSettings&) const = default;
};

struct UserSettings::Reading {
    UserSettings settings;
    std::vector<std::string> problems; ///< Sentences for the user.
};

} // namespace quorvell
