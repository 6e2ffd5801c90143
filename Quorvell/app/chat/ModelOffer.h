// SPDX-License-Identifier: MIT
// Tells once that a model runs on this computer which could answer what the rules do not understand.
#pragma once

#include "Quorvell/app/program/ModelSearch.h"

#include <functional>
#include <string>
#include <vector>

namespace quorvell {

struct ProgramEnvironment;
struct UserSettings;

/// Looks on this computer only, and not at all where a model is set up or the offer was made before. Main thread.
class ModelOffer {
public:
    using Tell = std::function<void(const std::string&)>;

    ModelOffer(const ProgramEnvironment& environment, const UserSettings& settings, Scheduler& scheduler, Tell tell);

    /// The offer; empty where nothing was found.
    static std::string text(const std::vector<ModelSearch::Found>& found, const std::string& settingsFile);

private:
    void offer(const std::vector<ModelSearch::Found>& found);

    std::string m_settingsFile;
    std::string m_stateFolder;
    std::string m_mark; ///< The file that says that it was made.
    Tell m_tell;
    ModelSearch m_search;
};

} // namespace quorvell
