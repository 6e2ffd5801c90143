// SPDX-License-Identifier: MIT
#include "Quorvell/connections/openai/OpenAISocketTransport.h"

#include "QuorvellCore/live/wire/openai/OpenAILiveClientParser.h"
#include "QuorvellCore/live/wire/openai/OpenAILiveMessage.h"

#include <utility>

namespace quorvell {

OpenAISocketTransport::OpenAISocketTransport(Reports reports, LiveTimeLimits limits)
    : m_reports(std::move(reports))
    , m_socket({[this] { opened(); }, m_reports.textReceived, m_reports.closed}, limits)
{
}

void OpenAISocketTransport::open(const LiveAccess& access, const OpenAILiveSetupOptions& options)
{
    m_options = options;
    m_socket.open(access.endpoint.request(access.key), access.line);
}

void OpenAISocketTransport::opened()
{
    send(dumpJson(OpenAILiveMessage::sessionStart(m_options, OpenAILiveMessage::AudioFormat::declared)));
    m_reports.opened();
}

std::size_t OpenAISocketTransport::largestText() const
{
    return OpenAILiveClientParser::limits.maximumBytes;
}

void OpenAISocketTransport::sendSound(std::span<const std::uint8_t> pcm)
{
    if (m_socket.unsentBytes() < LiveSocket::mostUnsentSound)
        m_socket.send(OpenAILiveMessage::audioText(pcm));
}

} // namespace quorvell
