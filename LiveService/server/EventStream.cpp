// SPDX-License-Identifier: MIT
#include "LiveService/server/EventStream.h"

#include <QCoreApplication>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <memory>
#include <utility>

namespace quorvell {

namespace {

FaultyWire::Time wireNow()
{
    return std::chrono::duration_cast<FaultyWire::Time>(std::chrono::steady_clock::now().time_since_epoch());
}

/// Sends what is due, and comes back for the rest.
void sendDue(const std::shared_ptr<FaultyWire>& wire, const HttpAnswer& answer)
{
    for (const WireAction& action : wire->due(wireNow())) {
        if (const auto* send = std::get_if<wire_action::Send>(&action))
            answer.send(send->text);
        else if (std::holds_alternative<wire_action::Close>(action))
            return answer.abort();
        else
            return; // It hangs from here on.
    }
    const auto next = wire->nextDue();
    if (!next)
        return answer.finish();
    QTimer::singleShot(std::max(*next - wireNow(), FaultyWire::Time::zero()), QCoreApplication::instance(),
        [wire, answer] { sendDue(wire, answer); });
}

} // namespace

void EventStream::send(const HttpAnswer& answer, SessionFaults faults, const std::vector<std::string>& events)
{
    const auto wire = std::make_shared<FaultyWire>(std::move(faults));
    answer.send(HttpResponse::eventStreamHead());
    for (const std::string& event : events)
        wire->take(event, wireNow());
    sendDue(wire, answer);
}

} // namespace quorvell
