// SPDX-License-Identifier: MIT
#include "LiveService/speech/SpeechWorkerPool.h"

#include <utility>

namespace quorvell {

SpeechWorkerPool::SpeechWorkerPool(SpeechWorker::MakePort makePort, Readiness readiness)
    : m_makePort(std::move(makePort))
    , m_readiness(readiness)
{
    if (m_readiness == Readiness::always)
        m_ready = make();
}

std::unique_ptr<SpeechWorker> SpeechWorkerPool::take()
{
    return m_ready ? std::move(m_ready) : make();
}

std::unique_ptr<SpeechWorker> SpeechWorkerPool::make() const
{
    auto worker = std::make_unique<SpeechWorker>(m_makePort);
    if (m_readiness == Readiness::always)
        worker->expectSpeech();
    return worker;
}

void SpeechWorkerPool::giveBack(std::unique_ptr<SpeechWorker> worker)
{
    worker->release();
    if (!m_ready) {
        m_ready = std::move(worker);
        return;
    }
    end(std::move(worker));
}

void SpeechWorkerPool::letGo()
{
    if (m_ready)
        end(std::move(m_ready));
}

void SpeechWorkerPool::end(std::unique_ptr<SpeechWorker> worker)
{
    m_undertaker.post([ended = std::shared_ptr<SpeechWorker>(std::move(worker))]() mutable { ended.reset(); });
}

} // namespace quorvell
