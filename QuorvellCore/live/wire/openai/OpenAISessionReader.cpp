// SPDX-License-Identifier: MIT
#include "QuorvellCore/live/wire/openai/OpenAISessionReader.h"

#include "QuorvellCore/live/wire/openai/OpenAILiveMessage.h"
#include "QuorvellCore/live/wire/vocabulary/LiveHistorySeed.h"

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

/// The text of a message item's only part; nothing when the item has another form.
std::optional<std::string> itemText(const Json& item)
{
    const Json* content = memberOf(item, "content");
    if (readString(item, "type") != "message" || !content || !content->is_array() || content->size() != 1)
        return std::nullopt;
    return readString(content->front(), "text");
}

} // namespace

std::optional<OpenAILiveSetupOptions> OpenAISessionReader::read(const Json& session)
{
    m_options.model = requiredString(session, "model");
    m_options.instructions = requiredString(session, "instructions");
    readAudio(session);
    const Json* delegation = memberOf(session, "delegation");
    const Json* backend = delegation ? memberOf(*delegation, "response") : nullptr;
    if (backend && readString(*delegation, "type") == "response")
        readBackend(*backend);
    else
        fail("\"delegation\" must be of type \"response\" and hold a \"response\".");
    readHistory(session);
    return m_problem.empty() ? std::optional(std::move(m_options)) : std::nullopt;
}

std::optional<OpenAILiveSetupOptions> OpenAISessionReader::readBackendAlone(const Json& backend)
{
    readBackend(backend);
    return m_problem.empty() ? std::optional(std::move(m_options)) : std::nullopt;
}

void OpenAISessionReader::readAudio(const Json& session)
{
    const Json* audio = memberOf(session, "audio");
    const Json* output = audio ? memberOf(*audio, "output") : nullptr;
    if (!output) {
        fail("\"audio\" must hold an \"output\" with a \"voice\".");
        return;
    }
    m_options.voice = requiredString(*output, "voice");
    m_options.sampleRate = OpenAILiveMessage::sampleRate;
    const Json* format = memberOf(*audio, "format");
    if (!format)
        return;
    const auto rate = readInteger(*format, "rate").value_or(OpenAILiveMessage::sampleRate);
    if (readString(*format, "type") != "audio/pcm" || rate < minimumSampleRate || rate > maximumSampleRate)
        fail("\"format\" must be \"audio/pcm\" with a \"rate\" from 8000 to 48000.");
    else
        m_options.sampleRate = static_cast<int>(rate);
}

void OpenAISessionReader::readBackend(const Json& backend)
{
    m_options.backendModel = requiredString(backend, "model");
    m_options.backendInstructions = requiredString(backend, "instructions");
    readTools(backend);
    if (const Json* reasoning = memberOf(backend, "reasoning")) {
        m_options.reasoningEffort = readString(*reasoning, "effort");
        m_options.reasoningSummary = readString(*reasoning, "summary");
    }
    m_options.serviceTier = readString(backend, "service_tier");
    if (const Json* text = memberOf(backend, "text"))
        m_options.verbosity = readString(*text, "verbosity");
    m_options.maxOutputTokens = readInteger(backend, "max_output_tokens");
}

void OpenAISessionReader::readTools(const Json& backend)
{
    const Json* tools = memberOf(backend, "tools");
    if (!tools)
        return;
    const bool isListOfObjects = tools->is_array() && tools->size() <= maximumTools
        && std::all_of(tools->begin(), tools->end(), [](const Json& tool) { return tool.is_object(); });
    if (isListOfObjects)
        m_options.tools = *tools;
    else
        fail("\"tools\" must be a list of at most " + std::to_string(maximumTools) + " objects.");
}

void OpenAISessionReader::readHistory(const Json& session)
{
    const Json* input = memberOf(session, "input");
    if (!input)
        return;
    if (!input->is_array() || input->size() > LiveHistorySeed::entries) {
        fail("\"input\" must be a list of at most " + std::to_string(LiveHistorySeed::entries) + " messages.");
        return;
    }
    for (const Json& item : *input) {
        auto text = itemText(item);
        if (text)
            m_options.history.push_back({requiredString(item, "role"), std::move(*text)});
        else
            fail("An entry of \"input\" is no message with one text.");
    }
}

std::string OpenAISessionReader::requiredString(const Json& object, const char* key)
{
    auto text = readString(object, key);
    if (!text)
        fail(std::string("\"") + key + "\" is missing or is no text.");
    return text ? std::move(*text) : std::string();
}

void OpenAISessionReader::fail(std::string problem)
{
    if (m_problem.empty())
        m_problem = std::move(problem);
}

} // namespace quorvell
