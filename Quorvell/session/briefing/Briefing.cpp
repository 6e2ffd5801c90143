// SPDX-License-Identifier: MIT
#include "Quorvell/session/briefing/Briefing.h"

#include "QuorvellCore/live/prompt/QuorvellPrompt.h"

#include <nlohmann/json.hpp>

#include <utility>

namespace quorvell {

Briefing::Briefing(Ports ports)
    : m_ports(std::move(ports))
{
}

LineBriefing Briefing::write() const
{
    PromptOptions options;
    options.userName = m_ports.settings.userName;
    options.familyName = m_ports.settings.familyName;
    options.startMode = m_ports.modes.mode();
    if (m_ports.whereAndWhen)
        options.whereAndWhen = m_ports.whereAndWhen();
    LiveSetup setup;
    setup.voiceInstructions = QuorvellPrompt::systemInstruction(options);
    setup.toolInstructions = m_ports.settings.medium == LiveMedium::text
        ? QuorvellPrompt::textBackendInstructions(options)
        : QuorvellPrompt::liveBackendInstructions(options);
    options.toolHolder = PromptOptions::ToolHolder::voice;
    setup.soleInstructions = QuorvellPrompt::systemInstruction(options);
    setup.tools = m_ports.tools.offeredTools();
    setup.history = m_ports.turn.conversation().settled();
    return {std::move(setup), m_ports.turn.conversation().settledMark()};
}

} // namespace quorvell
