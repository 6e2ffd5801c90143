// SPDX-License-Identifier: MIT
// One end of a WebRTC call with a voice and a channel for texts. The library behind it stays behind this header.
#pragma once

#include "Media/webrtc/WebRTCPeerOptions.h"
#include "Media/webrtc/WebRTCPeerReports.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

namespace quorvell {

/// Everything is called on one thread, the main one, and everything is reported there, through `post`. Sound is 16-bit
/// little-endian mono PCM at 24000 Hz both ways; it travels as Opus. The offering side opens the channel of texts.
/// Making and ending a peer takes a few milliseconds.
class WebRTCPeer {
public:
    using State = WebRTCPeerReports::State;
    using Reports = WebRTCPeerReports;
    using Post = WebRTCPeerReports::Post;

    static constexpr int sampleRate = WebRTCPeerOptions::sampleRate;
    static constexpr std::string_view channelName = "oai-events";
    static constexpr std::size_t largestDescription = 256 * 1024;
    static constexpr std::size_t largestText = 256 * 1024; ///< Of one message, as the peers' stacks agree on.

    WebRTCPeer(WebRTCPeerOptions options, Reports reports, Post post);
    ~WebRTCPeer();
    WebRTCPeer(const WebRTCPeer&) = delete;
    WebRTCPeer& operator=(const WebRTCPeer&) = delete;

    /// The answer to our offer, or the offer that is to be answered. Once.
    void takeDescription(std::string_view sdp);
    /// False when the channel is not open, the text is too long, or too much waits already.
    [[nodiscard]] bool sendText(std::string_view text);
    /// Queued behind what was given before. False when not all of it fitted.
    bool sendSound(std::span<const std::uint8_t> pcm);
    /// Forgets what was given and has not gone out.
    void dropSound();
    std::chrono::milliseconds unsentSound() const;
    /// From now on nothing goes out and nothing is answered, as if this side had vanished without a word; for faults
    /// that are made on purpose. Give it nothing to send any more.
    void stall();

private:
    class Link;
    std::unique_ptr<Link> m_link;
};

} // namespace quorvell
