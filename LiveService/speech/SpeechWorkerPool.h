#pragma once

#include "LiveService/speech/SpeechWorker.h"
#include "LiveService/speech/WorkerThread.h"

#include <memory>

namespace quorvell {

/// Keeps a worker with loaded models at hand, so that the first turn of a session does not wait for them.
/// Used on one thread.
class SpeechWorkerPool {
public:
    /// Starts to load the first worker's models.
    explicit SpeechWorkerPool(SpeechWorker::MakePort makePort);

    std::unique_ptr<SpeechWorker> take();
    /// One is kept for the next session; its models are too large to keep more.
    void giveBack(std::unique_ptr<SpeechWorker> worker);

    /// Nobody has come for long: the models' memory is of more use to others. The next session loads them again.
    void letGo();

private:
    void end(std::unique_ptr<SpeechWorker> worker);

    SpeechWorker::MakePort m_makePort;
    std::unique_ptr<SpeechWorker> m_ready;
    WorkerThread m_undertaker; ///< Ends workers that are not kept, which may take as long as recognising a turn.
};

} // namespace quorvell
