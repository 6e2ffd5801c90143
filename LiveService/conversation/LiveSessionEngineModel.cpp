// SPDX-License-Identifier: MIT
// The part of a session that concerns the user's own model: its words come in pieces, between all else that happens.
#include "LiveService/conversation/LiveSessionEngine.h"

#include <utility>

namespace quorvell {

EngineEffects LiveSessionEngine::modelSent(std::string_view bytes, Time now)
{
    if (m_phase != Phase::open)
        return {};
    BackendOutputs outputs;
    m_backend->modelSent(bytes, now, outputs);
    carryOut(std::move(outputs));
    endReplyOfModel(now);
    return taken();
}

EngineEffects LiveSessionEngine::modelEnded(ModelEnd end, Time now)
{
    if (m_phase != Phase::open)
        return {};
    BackendOutputs outputs;
    m_backend->modelEnded(end, now, outputs);
    carryOut(std::move(outputs));
    endReplyOfModel(now);
    return taken();
}

void LiveSessionEngine::tickModel(Time now)
{
    BackendOutputs outputs;
    m_backend->tick(now, outputs);
    carryOut(std::move(outputs));
    endReplyOfModel(now);
}

void LiveSessionEngine::stopModel()
{
    BackendOutputs outputs;
    m_backend->stopModel(outputs);
    carryOut(std::move(outputs));
    if (!m_isVoicing)
        m_pacer->endReply();
}

/// While a model writes, the voice stays in the middle of a reply: the next sentence belongs to it.
void LiveSessionEngine::endReplyOfModel(Time now)
{
    if (m_backend->isModelAsked() || m_isVoicing || !m_pacer->isSpeaking())
        return;
    m_pacer->endReply();
    sendDue(now);
}

} // namespace quorvell
