// SPDX-License-Identifier: MIT
#include "Wyoming/WyomingReader.h"

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

constexpr JsonLimits limits{.maximumBytes = WyomingReader::longestData, .maximumDepth = 16};

/// Absent or null is none.
std::optional<std::size_t> readLength(const Json& head, std::string_view key, std::size_t most)
{
    const Json* value = memberOf(head, key);
    if (!value || value->is_null())
        return 0;
    const auto length = readInteger(*value);
    if (!length || *length < 0 || *length > static_cast<std::int64_t>(most))
        return std::nullopt;
    return static_cast<std::size_t>(*length);
}

} // namespace

std::optional<WyomingEvent> WyomingReader::next()
{
    if (m_isBroken || (!m_event && !readHead()) || waiting() < m_dataLength + m_payloadLength)
        return std::nullopt;
    if (m_dataLength > 0) {
        const auto more = parseJson(rest().substr(0, m_dataLength), limits);
        m_isBroken = !more || !more->is_object();
        if (m_isBroken)
            return std::nullopt;
        for (const auto& [key, value] : more->items())
            m_event->data[key] = value;
    }
    m_event->payload = rest().substr(m_dataLength, m_payloadLength);
    skip(m_dataLength + m_payloadLength);
    return std::exchange(m_event, std::nullopt);
}

void WyomingReader::skip(std::size_t bytes)
{
    constexpr std::size_t stride = 64 * 1024;
    m_start += bytes;
    if (m_start < stride && m_start < m_bytes.size())
        return;
    m_bytes.erase(0, m_start);
    m_start = 0;
}

bool WyomingReader::readHead()
{
    const std::size_t end = rest().find('\n', m_searched);
    m_searched = end == std::string_view::npos ? waiting() : 0;
    m_isBroken = std::min(end, waiting()) > longestHead;
    if (m_isBroken || end == std::string_view::npos)
        return false;
    const auto head = parseJson(rest().substr(0, end), limits);
    skip(end + 1);
    const auto type = head ? readString(*head, "type") : std::nullopt;
    const auto data = head ? readLength(*head, "data_length", longestData) : std::nullopt;
    const auto payload = head ? readLength(*head, "payload_length", longestPayload) : std::nullopt;
    m_isBroken = !type || type->empty() || !data || !payload;
    if (m_isBroken)
        return false;
    m_event = WyomingEvent{*type, Json::object(), {}};
    m_dataLength = *data;
    m_payloadLength = *payload;
    if (const Json* inside = memberOf(*head, "data"); inside && inside->is_object())
        m_event->data = *inside;
    return true;
}

} // namespace quorvell
