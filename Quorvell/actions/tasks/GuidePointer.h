// SPDX-License-Identifier: MIT
// Shows the user where, and watches whether they have done it. Never acts.
#pragma once

#include "Quorvell/actions/ActionObserver.h"
#include "Quorvell/loop/EventLog.h"
#include "Quorvell/loop/Scheduler.h"
#include "Quorvell/session/ports/LiveMessageText.h"
#include "Quorvell/session/tools/ToolReply.h"
#include "Quorvell/surface/Screen.h"
#include "QuorvellCore/live/wire/vocabulary/LiveFunctionCall.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace quorvell {

/// Main thread; what it borrows must outlive it. Its own looks leave the latest one as it is: what the model calls an
/// element keeps its meaning while it waits. What it points at is found again on the screen as it is then.
class GuidePointer final : public ActionObserver {
public:
    static constexpr std::chrono::seconds watchPeriod{1};
    static constexpr int settledLooks = 2; ///< Equal ones, before a change that was not expected is told.
    static constexpr std::size_t longestInstruction = 300; ///< User-perceived characters, of what is expected too.

    struct Ports {
        Scheduler& scheduler;
        EventLog& log;
        Screen& screen;
        std::function<const ScreenLook*()> shown; ///< What the model was told last: its ids are of that. May give null.
        std::function<bool()> hasPicture; ///< It was shown a picture of it.
        std::function<bool()> isActing; ///< Something is done here, so that what changes is not the user's doing.
        std::function<void(LiveMessageText)> tell; ///< An event of the app, for the model.
        std::function<void(std::string, std::function<bool()>)> showTarget; ///< The conversation waits for the user.
        std::function<void()> clearTarget;
    };

    explicit GuidePointer(Ports ports);
    ~GuidePointer() override;
    GuidePointer(const GuidePointer&) = delete;
    GuidePointer& operator=(const GuidePointer&) = delete;

    void pointAt(const LiveFunctionCall& call, ToolReply reply);
    void pointAtSpot(const LiveFunctionCall& call, ToolReply reply);
    void clearPointer(ToolReply reply);
    /// The conversation is over, or its way of helping changed.
    void takeAway();

    bool isShowing() const { return m_shown != nullptr; }

    /// What changes now is our own doing.
    void actionEnded(const ProposedAction& action, const ActionResult& result) override;
    void questionEnded(const ProposedAction& action, QuestionEnd end, const ActionResult& result) override;

private:
    struct Shown;
    struct Wish {
        ScreenAction place; ///< A click on what is to be shown: never done, but found again like one.
        std::string name; ///< For the conversation.
        std::string expect;
    };

    void point(Wish wish, const LiveFunctionCall& call, ToolReply reply);
    void pointOn(const ScreenAction& place, std::function<void(ScreenOutcome)> answer);
    void show(Wish wish, const AutomationObservation& before);
    void watch();
    void watched(const ScreenLook& look);
    void tellEvent(const std::string& words);

    Ports m_ports;
    std::shared_ptr<Shown> m_shown; ///< Null without a highlight.
    std::uint64_t m_count = 0; ///< Of what was pointed at: a late answer is to one of before.
    std::shared_ptr<GuidePointer*> m_self;
};

} // namespace quorvell
