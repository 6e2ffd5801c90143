// SPDX-License-Identifier: MIT
// The way of the user's voice to the model: what is sent, what is kept until the model reacts to it, whose words have
// come, and what the user speaks over.
#pragma once

#include "Quorvell/loop/EventLog.h"
#include "Quorvell/loop/Scheduler.h"
#include "Quorvell/session/connection/ConnectionKeeper.h"
#include "Quorvell/session/consent/SpeechRecord.h"
#include "Quorvell/session/hearing/Ear.h"
#include "Quorvell/session/hearing/HeldSpeech.h"
#include "Quorvell/session/listening/ListeningReport.h"
#include "Quorvell/session/ports/AudioCapture.h"
#include "Quorvell/session/ports/AudioPlayer.h"
#include "Quorvell/session/quiet/QuietWatch.h"
#include "Quorvell/session/reports/ActionWatch.h"
#include "Quorvell/session/reports/UserNotices.h"
#include "Quorvell/session/settings/SessionSettings.h"
#include "Quorvell/session/tools/HeldModeCalls.h"
#include "Quorvell/session/turn/ConversationTurn.h"
#include "Quorvell/session/turn/WordlessSpeech.h"
#include "Quorvell/session/usage/TalkMeter.h"

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

namespace quorvell {

/// Main thread; what it borrows must outlive it.
class Listening {
public:
    /// After the user's speech, for the service to notice that it was spoken over.
    static constexpr std::chrono::milliseconds bargeInNotice{2'000};

    struct Ports {
        Scheduler& scheduler;
        AudioCapture* capture; ///< Absent: sound comes from elsewhere, or never.
        AudioPlayer& player;
        EventLog& log;
        SessionAudience& observer;
        ConnectionKeeper& lines;
        ConversationTurn& turn;
        TalkMeter& meter;
        QuietWatch& quiet;
        UserNotices& notices;
        SpeechRecord& speech;
        std::function<void(ListeningReport)> report;
        ActionWatch& watch = ActionWatch::nobody();
    };

    Listening(Ports ports, const SessionSettings& settings);
    Listening(const Listening&) = delete;
    Listening& operator=(const Listening&) = delete;

    void begin();
    void end();
    /// There is no line any more, and none is wanted: nothing is kept. What the gate still held is given away.
    Bytes startAfresh();

    Ear& ear() { return m_ear; }
    const Ear& ear() const { return m_ear; }
    /// Sound of the microphone: 16-bit little-endian mono at MicrophoneStream::sampleRateHz, in pieces of any size.
    void captured(std::span<const std::uint8_t> pcm);
    /// listening_report::SpeechCut has come.
    void speechCut(const std::vector<MicGateOutput>& ending);
    /// A line is ready and takes what no other has taken.
    void flushHeldChunks();
    void lineLost();
    /// Whatever was said so far is to be said once more.
    void giveUp();

    /// A piece of the user's words.
    void wordsCame(const std::string& words);
    /// Words that belong to sound: what was typed is complete as it comes.
    HeldModeCalls::Words spokenWords() const;
    /// The model reacts otherwise than by its voice. To what?
    ConversationTurn::Act modelActed();
    /// The model speaks. A voice that does so before the user's words have come may still speak of something else.
    void voiceReacted();
    /// Reports listening_report::RequestMissed where the model has not taken up what was said; looks again later where
    /// that is not certain.
    void followThrough();

    bool areWordsAwaited() const;
    bool isHoldingSpeech() const { return !m_heldChunks.isEmpty(); }

private:
    void hear(const MicrophoneStream::Step& step);
    void handleSpeechOnset();
    void forgetHeldNoise();
    void speechEnded();
    void modelReacted();
    void awaitFollowThrough();
    bool isSpeechRecent() const;

    Ports m_ports;
    SessionSettings::Microphone m_microphone;
    std::chrono::milliseconds m_followThrough;
    Ear m_ear;
    HeldSpeech m_heldChunks;
    WordlessSpeech m_wordless;
    bool m_haveWordsCome = false; ///< Of the speech that began last.
    SessionTime m_lastWords{}; ///< When the last piece of words came.
    SessionTime m_lastSpeech{}; ///< When the last chunk of the user's speech came.
    TimerHandle m_bargeInTimer;
    TimerHandle m_followThroughTimer;
};

} // namespace quorvell
