// SPDX-License-Identifier: MIT
#include "LocalModel/ModelStream.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

constexpr std::string_view opening = "<think>";
constexpr std::string_view closing = "</think>";
constexpr JsonLimits limits{.maximumBytes = ModelStream::mostBytes, .maximumDepth = 32};

/// How many bytes at the end of `text` may be the beginning of `mark`.
std::size_t begunMark(std::string_view text, std::string_view mark)
{
    for (std::size_t length = std::min(text.size(), mark.size() - 1); length > 0; --length)
        if (text.ends_with(mark.substr(0, length)))
            return length;
    return 0;
}

const Json* firstChoice(const Json& json)
{
    const Json* choices = memberOf(json, "choices");
    return choices && choices->is_array() && !choices->empty() ? &choices->front() : nullptr;
}

} // namespace

void ModelStream::add(std::string_view bytes)
{
    if (m_state == State::broken || m_state == State::whole)
        return;
    if (m_bytes == 0) {
        const std::size_t start = bytes.find_first_not_of(" \r\n\t");
        bytes.remove_prefix(std::min(start, bytes.size()));
        m_isPlain = bytes.starts_with('{');
    }
    m_bytes += bytes.size();
    if (m_bytes > mostBytes)
        return fail();
    if (m_isPlain) {
        m_body += bytes;
        return;
    }
    for (const ServerSentEvent& event : m_events.add(bytes))
        take(event.data);
}

void ModelStream::end()
{
    if (m_isPlain && m_state == State::waiting)
        take(m_body);
    if (m_isPlain && m_state == State::running)
        m_state = State::whole;
    if (m_state != State::whole)
        fail();
}

void ModelStream::take(std::string_view data)
{
    if (m_state == State::broken || m_state == State::whole)
        return;
    if (data == "[DONE]") {
        m_state = State::whole;
        return sortWords();
    }
    const auto json = parseJson(data, limits);
    if (!json || memberOf(*json, "error") || !memberOf(*json, "choices"))
        return fail();
    const Json* choice = firstChoice(*json);
    if (!choice)
        return; // Some servers end with a count of what was used, which has none.
    const Json* message = memberOf(*choice, m_isPlain ? "message" : "delta");
    if (message)
        takeChoice(*message);
    // The mark of the end is left out by some servers; nothing comes behind a reason to have finished.
    if (m_state == State::running && readString(*choice, "finish_reason")) {
        m_state = State::whole;
        sortWords();
    }
}

void ModelStream::takeChoice(const Json& message)
{
    m_state = State::running;
    if (const auto words = readString(message, "content"))
        takeWords(*words);
    if (const Json* calls = memberOf(message, "tool_calls"); calls && calls->is_array())
        takeCalls(*calls);
}

void ModelStream::takeCalls(const Json& calls)
{
    std::size_t place = 0;
    for (const Json& part : calls)
        takeCall(part, place++);
}

/// Pieces of one call come with its index; a server that gives whole ones may leave it out.
void ModelStream::takeCall(const Json& part, std::size_t place)
{
    const std::int64_t index = readInteger(part, "index").value_or(static_cast<std::int64_t>(place));
    const Json* function = memberOf(part, "function");
    if (index < 0 || index > static_cast<std::int64_t>(m_calls.size()) || index >= std::int64_t{mostCalls} || !function)
        return fail();
    if (index == static_cast<std::int64_t>(m_calls.size()))
        m_calls.emplace_back();
    Call& call = m_calls[static_cast<std::size_t>(index)];
    if (const auto name = readString(*function, "name"); name && call.name.empty())
        call.name = *name;
    if (const Json* arguments = memberOf(*function, "arguments"))
        call.arguments += arguments->is_object() ? dumpJson(*arguments) : readString(*arguments).value_or("");
    if (call.name.size() > longestName || call.arguments.size() > longestArguments)
        fail();
}

void ModelStream::takeWords(std::string_view words)
{
    m_raw += words;
    sortWords();
    if (m_textBytes > longestText)
        fail();
}

void ModelStream::sortWords()
{
    while (!m_raw.empty()) {
        const std::string_view mark = m_isThinking ? closing : opening;
        const std::size_t found = m_raw.find(mark);
        const std::size_t held = m_state == State::whole ? 0 : begunMark(m_raw, mark);
        const std::size_t before = found == std::string::npos ? m_raw.size() - held : found;
        if (!m_isThinking) {
            m_text.append(m_raw, 0, before);
            m_textBytes += before;
        }
        m_raw.erase(0, before + (found == std::string::npos ? 0 : mark.size()));
        if (found == std::string::npos)
            return;
        m_isThinking = !m_isThinking;
    }
}

std::string ModelStream::takeText()
{
    return std::exchange(m_text, {});
}

} // namespace quorvell
