// SPDX-License-Identifier: MIT
#include "LiveService/faults/FaultyWire.h"

#include <algorithm>
#include <utility>

namespace quorvell {

FaultyWire::FaultyWire(SessionFaults faults)
    : m_faults(std::move(faults))
{
}

void FaultyWire::take(std::string text, Time now)
{
    if (m_isOver)
        return;
    ++m_taken;
    if (!m_faults.find(Fault::Kind::reorder)) {
        addText(std::move(text), now);
    } else if (m_held) {
        addText(std::move(text), now);
        addText(*std::exchange(m_held, std::nullopt), now);
    } else {
        m_held = std::move(text);
        m_heldUntil = now + longestHold;
    }
    if (isAfter(Fault::Kind::malformed))
        add(wire_action::Send{R"({"type":"session.)"}, now);
    if (isAfter(Fault::Kind::oversized))
        add(wire_action::Send{R"({"type":"error","padding":")" + std::string(oversize, 'a') + "\"}"}, now);
    if (isAfter(Fault::Kind::drop))
        add(wire_action::Close{}, now);
    if (isAfter(Fault::Kind::close))
        add(wire_action::Close{m_faults.find(Fault::Kind::close)->code}, now);
    if (isAfter(Fault::Kind::halfOpen))
        add(wire_action::Freeze{}, now);
    if (isAfter(Fault::Kind::stuck))
        add(wire_action::FallSilent{}, now);
}

std::vector<WireAction> FaultyWire::due(Time now)
{
    if (m_held && now >= m_heldUntil)
        addText(*std::exchange(m_held, std::nullopt), now);
    std::vector<WireAction> actions;
    while (!m_later.empty() && m_later.front().due <= now) {
        actions.push_back(std::move(m_later.front().action));
        m_later.pop_front();
    }
    return actions;
}

std::optional<FaultyWire::Time> FaultyWire::nextDue() const
{
    std::optional<Time> next;
    if (!m_later.empty())
        next = m_later.front().due;
    if (m_held)
        next = std::min(next.value_or(m_heldUntil), m_heldUntil);
    return next;
}

/// The fault strikes after the message that was just taken.
bool FaultyWire::isAfter(Fault::Kind kind) const
{
    const Fault* fault = m_faults.find(kind);
    return fault && fault->count == m_taken && !m_isOver;
}

void FaultyWire::addText(std::string text, Time now)
{
    if (m_faults.find(Fault::Kind::duplicate))
        add(wire_action::Send{text}, now);
    add(wire_action::Send{std::move(text)}, now);
}

void FaultyWire::add(WireAction action, Time now)
{
    const Fault* slow = m_faults.find(Fault::Kind::slow);
    m_isOver = m_isOver || !std::holds_alternative<wire_action::Send>(action);
    m_later.push_back({now + (slow ? slow->time : Time::zero()), std::move(action)});
}

} // namespace quorvell
