// SPDX-License-Identifier: MIT
#include "Media/webrtc/CallReports.h"

#include <utility>

namespace quorvell {

namespace {

constexpr std::size_t costOfReport = 256; ///< Bytes of one that waits, whatever it says.

} // namespace

CallReports::CallReports(WebRTCPeerReports reports, WebRTCPeerReports::Post post)
    : m_reports(std::move(reports))
    , m_post(std::move(post))
{
}

void CallReports::post(std::function<void()> report)
{
    m_post([self = shared_from_this(), report = std::move(report)] {
        if (!self->m_isOver)
            report();
    });
}

bool CallReports::claim(std::atomic<std::size_t>& waiting, std::size_t size, std::size_t most)
{
    if (waiting.fetch_add(size) + size <= most)
        return true;
    waiting.fetch_sub(size);
    return false;
}

void CallReports::descriptionReady(std::string sdp)
{
    post([this, sdp = std::move(sdp)] {
        if (m_reports.descriptionReady)
            m_reports.descriptionReady(sdp);
    });
}

void CallReports::stateChanged(WebRTCPeerReports::State state)
{
    post([this, state] {
        if (m_reports.stateChanged)
            m_reports.stateChanged(state);
    });
}

void CallReports::channelOpened()
{
    post([this] {
        if (m_reports.channelOpened)
            m_reports.channelOpened();
    });
}

void CallReports::textReceived(std::string text)
{
    const std::size_t cost = text.size() + costOfReport;
    if (!claim(m_waitingText, cost, mostWaitingText))
        return failed("more was received than could be read");
    post([this, cost, text = std::move(text)] {
        m_waitingText -= cost;
        if (m_reports.textReceived)
            m_reports.textReceived(text);
    });
}

void CallReports::soundReceived(std::vector<std::uint8_t> pcm)
{
    if (!claim(m_waitingSound, pcm.size(), mostWaitingSound))
        return;
    post([this, pcm = std::move(pcm)] {
        m_waitingSound -= pcm.size();
        if (m_reports.soundReceived)
            m_reports.soundReceived(pcm);
    });
}

void CallReports::failed(std::string problem)
{
    post([this, problem = std::move(problem)] {
        if (!std::exchange(m_hasFailed, true) && m_reports.failed)
            m_reports.failed(problem);
    });
}

} // namespace quorvell
