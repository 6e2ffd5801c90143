#include "LiveService/speech/SpeechWorkerPool.h"

#include <utility>

namespace quorvell {

SpeechWorkerPool::SpeechWorkerPool(SpeechWorker::MakePort makePort)
    : m_makePort(std::move(makePort))
    , m_ready(std::make_unique<SpeechWorker>(m_makePort))
{
}

std::unique_ptr<SpeechWorker> SpeechWorkerPool::take()
{
    return m_ready ? std::move(m_ready) : std::make_unique<SpeechWorker>(m_makePort);
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
