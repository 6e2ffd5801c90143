// SPDX-License-Identifier: MIT
// Keeps a worker at hand, so that the first turn of a session does not wait for what the last one has loaded.
#pragma once

#include "LiveService/speech/SpeechWorker.h"
#include "LiveService/speech/WorkerThread.h"

#include <memory>

namespace quorvell {

/// Used on one thread.
class SpeechWorkerPool {
public:
    /// When recognition is made ready: where somebody is known to speak soon, at once and for every session.
    enum class Readiness { whenSpeechComes, always };

    SpeechWorkerPool(SpeechWorker::MakePort makePort, Readiness readiness);

    std::unique_ptr<SpeechWorker> take();
    /// One is kept for the next session; its models are too large to keep more.
    void giveBack(std::unique_ptr<SpeechWorker> worker);

    /// Nobody has come for long: the models' memory is of more use to others. The next session loads them again.
    void letGo();

private:
    std::unique_ptr<SpeechWorker> make() const;
    void end(std::unique_ptr<SpeechWorker> worker);

    SpeechWorker::MakePort m_makePort;
    Readiness m_readiness;
    std::unique_ptr<SpeechWorker> m_ready;
    WorkerThread m_undertaker; ///< Ends workers that are not kept, which may take as long as recognising a turn.
};

} // namespace quorvell
