// SPDX-License-Identifier: MIT
// Tells the model what is on the screen, and knows which look its element ids come from.
#pragma once

#include "Quorvell/actions/tools/LookText.h"
#include "QuorvellCore/automation/proposals/WordOrigin.h"
#include "QuorvellCore/automation/surface/ScreenLook.h"

#include <functional>
#include <optional>
#include <string>

namespace quorvell {

/// Whoever shows the model a screen, of a tool call or of a task, does it through the one of the conversation: ids of a
/// look that it was never told would name other elements. Main thread.
class LookTeller {
public:
    enum class Picture { none, shown };

    struct Ports {
        /// Marks a text as somebody else's, and keeps in mind that the model has read it. Never null.
        std::function<std::string(std::string text, WordOrigin origin)> fence;
        /// All that is on it may from now on be in the model's words. May be null.
        std::function<void(const ScreenLook&)> seen{};
    };

    explicit LookTeller(Ports ports);

    std::string tell(
        const ScreenLook& look, LookText::Extent extent = LookText::brief, Picture picture = Picture::none);
    /// Of a text that was read on the screen or the page.
    std::string fenced(std::string text) const { return m_ports.fence(std::move(text), WordOrigin::screen); }

    /// What the model was told last, without its picture; null before the first.
    const ScreenLook* shown() const { return m_shown ? &*m_shown : nullptr; }
    bool hasShownPicture() const { return m_picture == Picture::shown; }
    void forget(); ///< A new conversation.

private:
    Ports m_ports;
    std::optional<ScreenLook> m_shown;
    Picture m_picture = Picture::none;
};

} // namespace quorvell
