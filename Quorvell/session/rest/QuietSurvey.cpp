// SPDX-License-Identifier: MIT
#include "Quorvell/session/rest/QuietSurvey.h"

namespace quorvell {

QuietFacts QuietSurvey::facts() const
{
    QuietFacts facts;
    facts.isTurnOpen = turn.isOpen();
    facts.isVoiceSounding = turn.isVoiceSounding();
    facts.isUserSpeaking = listening.ear().isHearingSpeech();
    facts.areWordsAwaited = listening.areWordsAwaited();
    facts.isToolRunning = desk.isWorking();
    facts.isActing = desk.isActing();
    facts.isConsentPending = quiet.isConsentPending();
    facts.isMessageWaiting = !outbox.isEmpty();
    facts.isDeviceSpeaking = notices.isSpeaking();
    facts.isHighlighted = quiet.isHighlighted();
    facts.isConnected = lines.ready() != nullptr;
    facts.isListening = listening.ear().isListening();
    facts.canRest = resting.canRest();
    facts.doze = resting.state();
    return facts;
}

} // namespace quorvell
