// SPDX-License-Identifier: MIT
#include "Quorvell/assistant/FarewellAsker.h"

#include <utility>

namespace quorvell {

FarewellAsker::FarewellAsker(PimDismissalClassifier classifier, Scheduler& scheduler)
    : m_classifier(std::move(classifier))
{
    if (!m_classifier.apiKey.empty())
        m_worker = std::make_unique<FileWorker>(
            [&scheduler](std::function<void()> action) { scheduler.post(std::move(action)); });
}

FarewellAsker::~FarewellAsker()
{
    m_stop.request_stop();
}

void FarewellAsker::ask(const std::string& words, std::function<void(bool isFarewell)> answer)
{
    if (!m_worker)
        return answer(PimDismissalClassifier::isPlainFarewell(words));
    m_stop.request_stop();
    m_stop = {};
    m_worker->run(
        [classifier = m_classifier, words, stop = m_stop.get_token()] { return classifier.shouldDismiss(words, stop); },
        std::move(answer));
}

} // namespace quorvell
