// SPDX-License-Identifier: MIT
// Carries out the calls of the tools that look at the screen and read what it shows.
#pragma once

#include "Quorvell/actions/tools/ActionToolPorts.h"
#include "QuorvellCore/live/wire/vocabulary/LiveFunctionCall.h"

#include <chrono>
#include <cstddef>
#include <memory>
#include <string>

namespace quorvell {

/// Answers {"status": "looked", ...}; whatever others wrote is fenced. Main thread.
class SeeingTools {
public:
    static constexpr std::size_t longestText = 64 * 1024; ///< Bytes of a stretch that is read.
    static constexpr std::size_t mostPlaces = 20; ///< Where words were found.
    static constexpr std::size_t mostTabs = 60;
    static constexpr std::chrono::milliseconds waitPeriod{500}; ///< From one look to the next.
    static constexpr double longestWait = 30; ///< Seconds, as are those below.
    static constexpr double usualWait = 5;

    explicit SeeingTools(ActionToolPorts ports);

    void lookAtScreen(const LiveFunctionCall& call, ToolReply reply);
    void readPage(const LiveFunctionCall& call, ToolReply reply);
    void findOnPage(const LiveFunctionCall& call, ToolReply reply);
    void listTabs(const LiveFunctionCall& call, ToolReply reply);
    void waitForScreen(const LiveFunctionCall& call, ToolReply reply);

private:
    struct Wait;

    void waitOn(const std::shared_ptr<Wait>& wait);
    void looked(const std::shared_ptr<Wait>& wait, const ScreenLook& look);

    ActionToolPorts m_ports;
    std::shared_ptr<SeeingTools*> m_self;
};

} // namespace quorvell
