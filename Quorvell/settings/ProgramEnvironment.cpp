// SPDX-License-Identifier: MIT
#include "Quorvell/settings/ProgramEnvironment.h"

#include "Quorvell/preferences/LiveBackendTraits.h"
#include "Quorvell/preferences/PlannerTraits.h"
#include "Quorvell/settings/NotebookPlaces.h"

#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <initializer_list>
#include <string_view>
#include <system_error>

namespace quorvell {

namespace {

namespace fs = std::filesystem;

/// Absent and empty are the same: an empty variable switches nothing on.
std::optional<std::string> variable(const char* name)
{
    const char* value = std::getenv(name);
    if (value == nullptr || *value == '\0')
        return std::nullopt;
    return std::string(value);
}

/// A relative one would put a home into whatever folder the program was started from.
std::string homeFolder()
{
    if (auto home = variable("HOME"); home && home->front() == '/')
        return *home;
    const passwd* user = getpwuid(getuid());
    return user != nullptr && user->pw_dir != nullptr ? user->pw_dir : "/";
}

/// The base folder rules of freedesktop.org: a relative path counts as absent.
std::string baseFolder(const char* name, const char* below)
{
    if (auto folder = variable(name); folder && folder->front() == '/')
        return *folder;
    return homeFolder() + "/" + below;
}

std::string absoluteProgramPath(const char* programName)
{
    std::error_code failure;
    const fs::path link = fs::read_symlink("/proc/self/exe", failure);
    return failure ? fs::absolute(programName, failure).string() : link.string();
}

/// "Europe/Berlin" out of "/usr/share/zoneinfo/Europe/Berlin", also below "posix/" and "right/".
std::optional<std::string> zoneOfPath(std::string_view path)
{
    constexpr std::string_view folder = "zoneinfo/";
    const auto position = path.find(folder);
    if (position == std::string_view::npos)
        return std::nullopt;
    path.remove_prefix(position + folder.size());
    for (const std::string_view variant : {std::string_view("posix/"), std::string_view("right/")})
        if (path.starts_with(variant))
            path.remove_prefix(variant.size());
    return path.empty() ? std::nullopt : std::optional(std::string(path));
}

/// A name such as "Europe/Berlin" or "UTC", as opposed to a rule such as "CET-1CEST,M3.5.0,M10.5.0/3".
bool looksLikeZoneName(std::string_view text)
{
    const bool isPlain = std::all_of(text.begin(), text.end(),
        [](unsigned char c) { return std::isalnum(c) != 0 || c == '/' || c == '_' || c == '-' || c == '+'; });
    const bool hasDigit = std::any_of(text.begin(), text.end(), [](unsigned char c) { return std::isdigit(c) != 0; });
    return !text.empty() && isPlain && (!hasDigit || text.find('/') != std::string_view::npos);
}

std::optional<std::string> zoneOfVariable()
{
    auto value = variable("TZ");
    if (!value)
        return std::nullopt;
    const std::string_view text = value->front() == ':' ? std::string_view(*value).substr(1) : *value;
    if (text.starts_with('/'))
        return zoneOfPath(text);
    if (looksLikeZoneName(text))
        return std::string(text);
    return std::nullopt;
}

std::optional<std::string> zoneOfSystem()
{
    std::error_code failure;
    const fs::path link = fs::canonical("/etc/localtime", failure);
    if (failure)
        return std::nullopt;
    return zoneOfPath(link.string());
}

/// Where no name is to be had: the offset of this moment, without daylight saving.
std::string zoneOfOffset()
{
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    if (local.tm_gmtoff == 0)
        return "UTC";
    const long minutes = std::labs(local.tm_gmtoff) / 60;
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "GMT%c%02ld:%02ld", local.tm_gmtoff < 0 ? '-' : '+', (minutes / 60) % 100,
        minutes % 60);
    return text.data();
}

std::string timeZoneName()
{
    // A rule in TZ wins over the system's name even though only its offset can be kept.
    if (variable("TZ"))
        return zoneOfVariable().value_or(zoneOfOffset());
    return zoneOfSystem().value_or(zoneOfOffset());
}

/// "en_GB" out of "en_GB.UTF-8@euro".
std::string localeName()
{
    for (const char* name : {"LC_ALL", "LC_TIME", "LANG"}) {
        auto value = variable(name);
        if (!value)
            continue;
        const std::string plain = value->substr(0, value->find_first_of(".@"));
        return plain.empty() || plain == "C" || plain == "POSIX" ? "en_US" : plain;
    }
    return "en_US";
}

LiveKeys liveKeys()
{
    LiveKeys keys;
    for (const LiveBackendTraits& backend : LiveBackendTraits::all())
        if (auto key = backend.isHosted() ? variable(std::string(backend.keyVariable).c_str()) : std::nullopt)
            keys.emplace(backend.backend, *std::move(key));
    return keys;
}

DeciderKeys keysOfDeciders()
{
    DeciderKeys keys;
    keys.selector = variable(DeciderKeys::selectorVariable);
    for (const PlannerTraits& planner : PlannerTraits::all())
        if (auto key = planner.isModel() ? variable(std::string(planner.keyVariable).c_str()) : std::nullopt)
            keys.planners.emplace(planner.service, *std::move(key));
    return keys;
}

/// The first that is set.
std::string firstOf(std::initializer_list<const char*> names)
{
    for (const char* name : names)
        if (auto value = variable(name))
            return *std::move(value);
    return {};
}

bool knowsSessionBus(const std::string& runtimeFolder)
{
    std::error_code failure;
    return variable("DBUS_SESSION_BUS_ADDRESS").has_value()
        || (!runtimeFolder.empty() && fs::exists(runtimeFolder + "/bus", failure));
}

} // namespace

ProgramEnvironment ProgramEnvironment::read(const char* programName)
{
    ProgramEnvironment environment;
    environment.programPath = absoluteProgramPath(programName);
    environment.programFolder = fs::path(environment.programPath).parent_path().string();
    environment.notebookFolder = NotebookPlaces::localFolder(baseFolder("XDG_DATA_HOME", ".local/share"));
    environment.localNotebookFolder = environment.notebookFolder;
    environment.syncedNotebookFolder = NotebookPlaces::iCloudDrive(homeFolder());
    environment.calendarFolder = baseFolder("XDG_DATA_HOME", ".local/share") + "/Quorvell/Calendar";
    environment.configFolder = baseFolder("XDG_CONFIG_HOME", ".config") + "/Quorvell";
    environment.stateFolder = baseFolder("XDG_STATE_HOME", ".local/state") + "/Quorvell";
    environment.runtimeFolder = variable("XDG_RUNTIME_DIR").value_or("");
    environment.timeZone = timeZoneName();
    environment.locale = localeName();
    environment.keys = liveKeys();
    environment.deciderKeys = keysOfDeciders();
    environment.webProxy = {
        firstOf({"https_proxy", "HTTPS_PROXY", "all_proxy", "ALL_PROXY"}), firstOf({"no_proxy", "NO_PROXY"})};
    environment.liveHost = variable("QUORVELL_LIVE_HOST");
    environment.liveToken = variable("QUORVELL_LIVE_TOKEN");
    environment.editor = variable("VISUAL") ? variable("VISUAL") : variable("EDITOR");
    environment.hasSessionBus = knowsSessionBus(environment.runtimeFolder);
    environment.isInputTerminal = isatty(STDIN_FILENO) == 1;
    environment.isOutputTerminal = isatty(STDOUT_FILENO) == 1;
    environment.movesCursor = environment.isOutputTerminal && variable("TERM").value_or("dumb") != "dumb";
    environment.allowsColour = environment.movesCursor && !variable("NO_COLOR");
    return environment;
}

std::string ProgramEnvironment::unknownTimeZone() const
{
    return "The time zone \"" + timeZone + "\" is not known. Set TZ to a name such as Europe/Berlin.";
}

} // namespace quorvell
