// SPDX-License-Identifier: MIT
#include "Quorvell/settings/UserSettings.h"

#include "Quorvell/files/Folder.h"
#include "Quorvell/preferences/LiveBackendTraits.h"
#include "Quorvell/preferences/PlannerTraits.h"
#include "Quorvell/settings/ProgramEnvironment.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Json.h"

#include <nlohmann/json.hpp>
#include <sys/stat.h>

#include <cerrno>
#include <cstring>
#include <functional>
#include <map>
#include <set>
#include <utility>

namespace quorvell {

namespace {

/// Takes values out of the settings object, each as the type of its place asks for it, and remembers what it could not
/// take.
class Taker {
public:
    Taker(const Json& object, const std::string& path, std::vector<std::string>& problems)
        : m_object(object)
        , m_path(path)
        , m_problems(problems)
    {
    }

    void operator()(std::string_view key, std::string& into)
    {
        if (auto text = textOf(key))
            into = *std::move(text);
    }
    void operator()(std::string_view key, std::optional<std::string>& into)
    {
        if (auto text = textOf(key); text && !text->empty())
            into = *std::move(text);
    }
    void operator()(std::string_view key, bool& into) { take(key, readBool(m_object, key), into, "true or false"); }
    void operator()(std::string_view key, std::optional<std::int64_t>& into)
    {
        take(key, countOf(key), into, "a whole number above 0");
    }
    void operator()(std::string_view key, std::optional<std::chrono::minutes>& into)
    {
        constexpr std::int64_t minutesOfADay = 24 * 60;
        const auto count = countOf(key);
        take(key, count && *count <= minutesOfADay ? std::optional(std::chrono::minutes(*count)) : std::nullopt, into,
            "a whole number of minutes from 1 to 1440");
    }
    void operator()(std::string_view key, std::optional<UserSettings::Folder>& into)
    {
        if (auto text = textOf(key))
            take(key, text->starts_with('/') ? std::optional(UserSettings::Folder{*text}) : std::nullopt, into,
                "the full path of a folder, beginning with /");
    }
    void operator()(std::string_view key, WakingHours& into)
    {
        if (const auto text = textOf(key))
            take(key, WakingHours::parse(*text), into, "two times of day, as \"8:00-22:00\"");
    }
    void operator()(std::string_view key, LiveBackend& into) { choose(key, into, LiveBackendTraits::byName()); }
    void operator()(std::string_view key, LiveTransport& into) { choose(key, into, UserSettings::transports()); }
    void operator()(std::string_view key, HelpMode& into)
    {
        choose<HelpMode>(key, into, {{"guide", HelpMode::guide}, {"auto", HelpMode::auto_}, {"do", HelpMode::do_}});
    }
    void operator()(std::string_view key, UserSettings::Listening& into)
    {
        using Listening = UserSettings::Listening;
        choose<Listening>(key, into, {{"open", Listening::openMicrophone}, {"push_to_talk", Listening::pushToTalk}});
    }
    void operator()(std::string_view key, std::optional<PimMode>& into)
    {
        choose(key, into, DeciderSettings::pimModes());
    }
    void operator()(std::string_view key, PlannerService& into) { choose(key, into, PlannerTraits::byName()); }

    /// What is in the file and means nothing: most often a slip of the pen.
    void complainOfUnknown()
    {
        constexpr std::size_t mostNamed = 5;
        std::size_t named = 0;
        for (const auto& [key, value] : m_object.items())
            if (!m_known.contains(key) && ++named <= mostNamed)
                m_problems.push_back("There is no setting \"" + firstCharacters(key, 60) + "\" (in " + m_path
                    + "). It is passed over; the settings that there are stand in docs/formats/settings.md.");
    }

private:
    bool isThere(std::string_view key)
    {
        m_known.emplace(key);
        const Json* value = memberOf(m_object, key);
        return value != nullptr && !value->is_null();
    }
    std::optional<std::string> textOf(std::string_view key)
    {
        if (!isThere(key))
            return std::nullopt;
        auto text = readString(m_object, key);
        if (text && characterCount(*text) <= UserSettings::longestText)
            return trimmed(*text);
        complain(key, "a text of at most " + std::to_string(UserSettings::longestText) + " characters");
        return std::nullopt;
    }
    std::optional<std::int64_t> countOf(std::string_view key) const
    {
        const auto value = readInteger(m_object, key);
        return value && *value > 0 ? value : std::nullopt;
    }
    template <typename Value, typename Place>
    void take(std::string_view key, const std::optional<Value>& value, Place& into, const std::string& wanted)
    {
        if (!isThere(key))
            return;
        if (value)
            into = *value;
        else
            complain(key, wanted);
    }
    template <typename Choice, typename Place>
    void choose(std::string_view key, Place& into, const std::map<std::string, Choice>& choices)
    {
        std::string names;
        for (const auto& [name, choice] : choices)
            names += (names.empty() ? "\"" : ", \"") + name + "\"";
        const auto chosen = choices.find(readString(m_object, key).value_or(""));
        take(key, chosen != choices.end() ? std::optional(chosen->second) : std::nullopt, into, "one of " + names);
    }
    void complain(std::string_view key, const std::string& wanted)
    {
        m_problems.push_back(
            "The setting \"" + std::string(key) + "\" in " + m_path + " is left out: it must be " + wanted + ".");
    }

    const Json& m_object;
    const std::string& m_path;
    std::vector<std::string>& m_problems;
    std::set<std::string, std::less<>> m_known; ///< Every key that was asked for.
};

/// The keys that backends have for the names of their models; several may share one.
std::set<std::string_view> modelKeys()
{
    std::set<std::string_view> keys;
    for (const LiveBackendTraits& backend : LiveBackendTraits::all())
        for (const auto& choice : {backend.voiceModel, backend.voice, backend.backendModel})
            if (!choice.setting.empty())
                keys.insert(choice.setting);
    return keys;
}

/// Nothing when there is no such file.
std::optional<std::string> contentOf(const std::string& path, std::vector<std::string>& problems)
{
    struct stat status { };
    if (stat(path.c_str(), &status) != 0) {
        if (errno != ENOENT && errno != ENOTDIR)
            problems.push_back("The settings in " + path + " could not be read: " + std::strerror(errno)
                + ". The usual settings are used.");
        return std::nullopt;
    }
    const auto content = readFile(path, UserSettings::longestFile);
    if (!content || content->empty()) {
        problems.push_back("The settings in " + path
            + " could not be read: the file is empty, too large, not for you to read or "
              "no ordinary file. The usual settings are used.");
        return std::nullopt;
    }
    return content;
}

} // namespace

const std::map<std::string, LiveTransport>& UserSettings::transports()
{
    static const std::map<std::string, LiveTransport> names{
        {"auto", LiveTransport::automatic}, {"webrtc", LiveTransport::webRTC}, {"websocket", LiveTransport::webSocket}};
    return names;
}

UserSettings::Reading UserSettings::read(const std::string& path)
{
    Reading reading;
    const auto content = contentOf(path, reading.problems);
    return content ? parsed(*content, path) : reading;
}

UserSettings::Reading UserSettings::parsed(const std::string& content, const std::string& path)
{
    Reading reading;
    const auto json = parseJson(content);
    if (!json || !json->is_object()) {
        reading.problems.push_back("The settings in " + path
            + " are not a JSON object. Correct the file or remove it; until then the usual settings are used.");
        return reading;
    }
    Taker taker(*json, path, reading.problems);
    reading.settings.each(taker);
    for (const std::string_view key : modelKeys()) {
        std::optional<std::string> name;
        taker(key, name);
        if (name)
            reading.settings.modelNames.emplace(key, *std::move(name));
    }
    taker.complainOfUnknown();
    return reading;
}

LiveModelSettings UserSettings::modelsFor(LiveBackend wanted) const
{
    const LiveBackendTraits& traits = LiveBackendTraits::of(wanted);
    LiveModelSettings models = LiveModelSettings::usual(wanted);
    models.options = modelOptions;
    const auto prefer = [this](const LiveBackendTraits::Choice& choice, std::string& name) {
        if (const auto named = modelNames.find(choice.setting); named != modelNames.end())
            name = named->second;
    };
    prefer(traits.voiceModel, models.voiceModel);
    prefer(traits.voice, models.voice);
    prefer(traits.backendModel, models.backendModel);
    return models;
}

UserSettings UserSettings::readTelling(const ProgramEnvironment& environment, std::ostream& complaints)
{
    Reading reading = read(environment.configFolder + "/settings.json");
    for (const std::string& problem : reading.problems)
        complaints << problem << std::endl;
    return std::move(reading.settings);
}

} // namespace quorvell
