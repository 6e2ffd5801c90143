// SPDX-License-Identifier: MIT
// The microphone as the user has set it: open, behind a key, muted.
#pragma once

#include "Quorvell/loop/Scheduler.h"
#include "Quorvell/session/hearing/MicrophoneStream.h"
#include "Quorvell/session/ports/AudioCapture.h"
#include "Quorvell/session/reports/SessionAudience.h"
#include "Quorvell/session/settings/SessionSettings.h"

#include <functional>
#include <span>
#include <vector>

namespace quorvell {

/// Main thread; what it borrows must outlive it.
class Ear {
public:
    enum class Muting { heard, muted };

    struct Ports {
        Scheduler& scheduler;
        AudioCapture* capture; ///< Absent: sound comes from elsewhere, or never.
        SessionAudience& observer;
        std::function<void(std::vector<MicGateOutput>)> speechCut; ///< By the key or the mute switch: how it ends.
    };

    /// A last syllable is often spoken while the finger already leaves the key.
    static constexpr std::chrono::milliseconds keyTail{200};
    /// Silence (800 ms) by which every service hears that a sentence is over: as much as the gate lets through.
    static constexpr int quietChunks = MicGate::hangoverChunks;

    Ear(Ports ports, SessionSettings::Listening listening);
    Ear(const Ear&) = delete;
    Ear& operator=(const Ear&) = delete;

    void openForConversation();
    void closeAfterConversation();
    void setMuted(Muting muting);
    void pressKey();
    void releaseKey();
    /// Nothing while nobody is to be heard.
    std::vector<MicrophoneStream::Step> captured(std::span<const std::uint8_t> pcm);
    /// Forgets what was held back of earlier sound, and gives it away: a first syllable may be in it.
    Bytes startAfresh();
    /// Tells the observer when something has changed since the last time.
    void tellState();

    bool isMuted() const { return m_muting == Muting::muted; }
    /// Somebody who speaks now would be heard.
    bool isListening() const;
    bool isHearingSpeech() const { return m_stream.isHearingSpeech(); }
    /// Since the last loud sound of the speech that is being heard; behind a key everything is loud.
    std::chrono::milliseconds quietFor() const { return m_stream.gate.quietChunks * MicrophoneStream::chunkLength; }
    bool isBehindKey() const { return m_listening == SessionSettings::Listening::pushToTalk; }

private:
    void applyToCapture();
    void finishRelease();
    void tellSpeechCut();

    Ports m_ports;
    SessionSettings::Listening m_listening;
    Muting m_muting = Muting::heard;
    bool m_isInConversation = false;
    MicrophoneStream m_stream;
    TimerHandle m_release;
    SessionAudience::Ear m_told = SessionAudience::Ear::closed;
};

} // namespace quorvell
