#include "Quorvell/app/UserSettings.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Json.h"

#include <nlohmann/json.hpp>
#include <sys/stat.h>

#include <cerrno>
#include <cstring>
#include <fstream>

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
    bool isThere(const char* key) const
    {
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
    taker.take("only_send_speech", settings.sendsOnlySpeech);
    taker.take("voice", settings.models.voice);
    taker.take("voice_model", settings.models.voiceModel);
    taker.take("backend_model", settings.models.backendModel);
    taker.take("reasoning_effort", settings.models.reasoningEffort);
    taker.take("reasoning_summary", settings.models.reasoningSummary);
    taker.take("service_tier", settings.models.serviceTier);
    taker.take("verbosity", settings.models.verbosity);
    taker.take("max_output_tokens", settings.models.maxOutputTokens);
    return reading;
}

} // namespace quorvell
