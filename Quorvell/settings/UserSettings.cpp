// SPDX-License-Identifier: MIT
#include "Quorvell/settings/UserSettings.h"

#include "Quorvell/settings/ProgramEnvironment.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Json.h"

#include <nlohmann/json.hpp>
#include <sys/stat.h>

#include <cerrno>
#include <cstring>
#include <fstream>
#include <functional>
#include <map>
#include <set>
#include <utility>

namespace quorvell {

namespace {

/// Takes values out of the settings object and remembers what it could not take.
class Taker {
public:
    Taker(const Json& object, const std::string& path, std::vector<std::string>& problems)
        : m_object(object)
        , m_path(path)
        , m_problems(problems)
    {
    }

    void take(const char* key, std::string& into)
    {
        if (auto text = textOf(key))
            into = *std::move(text);
    }
    void take(const char* key, std::optional<std::string>& into)
    {
        if (auto text = textOf(key); text && !text->empty())
            into = *std::move(text);
    }
    void take(const char* key, bool& into)
    {
        if (!isThere(key))
            return;
        if (const auto value = readBool(m_object, key))
            into = *value;
        else
            complain(key, "true or false");
    }
    template <typename Choice> void take(const char* key, Choice& into, const std::map<std::string, Choice>& choices)
    {
        if (!isThere(key))
            return;
        std::string wanted;
        for (const auto& [name, choice] : choices) {
            if (readString(m_object, key) == name) {
                into = choice;
                return;
            }
            wanted += (wanted.empty() ? "\"" : ", \"") + name + "\"";
        }
        complain(key, ("one of " + wanted).c_str());
    }
    void take(const char* key, std::optional<std::chrono::minutes>& into)
    {
        if (!isThere(key))
            return;
        constexpr std::int64_t minutesOfADay = 24 * 60;
        if (const auto value = readInteger(m_object, key); value && *value > 0 && *value <= minutesOfADay)
            into = std::chrono::minutes(*value);
        else
            complain(key, "a whole number of minutes from 1 to 1440");
    }
    void takeFolder(const char* key, std::optional<std::string>& into)
    {
        if (auto text = textOf(key); text && text->starts_with('/'))
            into = *std::move(text);
        else if (text)
            complain(key, "the full path of a folder, beginning with /");
    }
    void take(const char* key, WakingHours& into)
    {
        const auto text = textOf(key);
        if (const auto hours = WakingHours::parse(text.value_or("")))
            into = *hours;
        else if (text)
            complain(key, "two times of day, as \"8:00-22:00\"");
    }
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
    void take(const char* key, std::optional<std::int64_t>& into)
    {
        if (!isThere(key))
            return;
        if (const auto value = readInteger(m_object, key); value && *value > 0)
            into = *value;
        else
            complain(key, "a whole number above 0");
    }

private:
    bool isThere(const char* key)
    {
        m_known.insert(key);
        const Json* value = memberOf(m_object, key);
        return value != nullptr && !value->is_null();
    }
    std::optional<std::string> textOf(const char* key)
    {
        if (!isThere(key))
            return std::nullopt;
        auto text = readString(m_object, key);
        if (text && characterCount(*text) <= UserSettings::longestText)
            return trimmed(*text);
        complain(key, ("a text of at most " + std::to_string(UserSettings::longestText) + " characters").c_str());
        return std::nullopt;
    }
    void complain(const char* key, const char* wanted)
    {
        m_problems.push_back(
            "The setting \"" + std::string(key) + "\" in " + m_path + " is left out: it must be " + wanted + ".");
    }

    const Json& m_object;
    const std::string& m_path;
    std::vector<std::string>& m_problems;
    std::set<std::string, std::less<>> m_known; ///< Every key that was asked for.
};

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
    std::ifstream file(path, std::ios::binary);
    std::string content(UserSettings::longestFile + 1, '\0');
    if (S_ISREG(status.st_mode))
        file.read(content.data(), static_cast<std::streamsize>(content.size()));
    content.resize(static_cast<std::size_t>(file.gcount()));
    if (content.empty() || content.size() > UserSettings::longestFile) {
        problems.push_back("The settings in " + path
            + " could not be read: the file is empty, too large or not for "
              "you to read. The usual settings are used.");
        return std::nullopt;
    }
    return content;
}

} // namespace

const std::map<std::string, LiveBackend>& UserSettings::backends()
{
    static const std::map<std::string, LiveBackend> names{{"auto", LiveBackend::automatic},
        {"openai", LiveBackend::openAI}, {"gemini", LiveBackend::gemini}, {"on_device", LiveBackend::onDevice}};
    return names;
}

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
    if (!content)
        return reading;
    const auto json = parseJson(*content);
    if (!json || !json->is_object()) {
        reading.problems.push_back("The settings in " + path
            + " are not a JSON object. Correct the file or remove it; until then the usual settings are used.");
        return reading;
    }
    UserSettings& settings = reading.settings;
    Taker taker(*json, path, reading.problems);
    taker.take("user_name", settings.userName);
    taker.take("family_name", settings.familyName);
    taker.take("live_host", settings.liveHost);
    taker.take("backend", settings.backend, backends());
    taker.take("transport", settings.transport, transports());
    taker.take<HelpMode>(
        "help_mode", settings.helpMode, {{"guide", HelpMode::guide}, {"auto", HelpMode::auto_}, {"do", HelpMode::do_}});
    taker.take<Listening>("listening", settings.listening,
        {{"open", Listening::openMicrophone}, {"push_to_talk", Listening::pushToTalk}});
    taker.take("only_send_speech", settings.sendsOnlySpeech);
    taker.take("rest_when_quiet", settings.restsWhenQuiet);
    taker.take("keep_typed_history", settings.keepsTypedHistory);
    taker.take("daily_minutes", settings.dailyMinutes);
    taker.take("microphone", settings.microphone);
    taker.take("loudspeaker", settings.loudspeaker);
    taker.takeFolder("notebook_folder", settings.notebookFolder);
    taker.takeFolder("calendar_folder", settings.calendarFolder);
    taker.take("waking_hours", settings.wakingHours);
    taker.take("voice", settings.models.voice);
    taker.take("gemini_model", settings.models.geminiModel);
    taker.take("gemini_voice", settings.models.geminiVoice);
    taker.take("voice_model", settings.models.voiceModel);
    taker.take("backend_model", settings.models.backendModel);
    taker.take("reasoning_effort", settings.models.reasoningEffort);
    taker.take("reasoning_summary", settings.models.reasoningSummary);
    taker.take("service_tier", settings.models.serviceTier);
    taker.take("verbosity", settings.models.verbosity);
    taker.take("max_output_tokens", settings.models.maxOutputTokens);
    taker.complainOfUnknown();
    return reading;
}

UserSettings UserSettings::readTelling(const ProgramEnvironment& environment, std::ostream& complaints)
{
    Reading reading = read(environment.configFolder + "/settings.json");
    for (const std::string& problem : reading.problems)
        complaints << problem << std::endl;
    return std::move(reading.settings);
}

} // namespace quorvell
