// SPDX-License-Identifier: MIT
// Asks whether words are a goodbye without waiting for the answer.
#pragma once

#include "Quorvell/files/FileWorker.h"
#include "Quorvell/loop/Scheduler.h"
#include "QuorvellCore/automation/engine/pim/PimDismissalClassifier.h"

#include <functional>
#include <memory>
#include <stop_token>
#include <string>

namespace quorvell {

/// The service where there is a key for it, on a thread of its own; else the table of plain farewells, at once. Main
/// thread; the scheduler is borrowed.
class FarewellAsker {
public:
    FarewellAsker(PimDismissalClassifier classifier, Scheduler& scheduler);
    /// Abandons what is being asked.
    ~FarewellAsker();
    FarewellAsker(const FarewellAsker&) = delete;
    FarewellAsker& operator=(const FarewellAsker&) = delete;

    /// Abandons what was asked before, which is then no goodbye.
    void ask(const std::string& words, std::function<void(bool isFarewell)> answer);

private:
    PimDismissalClassifier m_classifier;
    std::stop_source m_stop;
    std::unique_ptr<FileWorker> m_worker; ///< Null without a key.
};

} // namespace quorvell
