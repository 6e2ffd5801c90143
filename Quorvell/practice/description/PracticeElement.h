// SPDX-License-Identifier: MIT
// An element of a window or page of a practice world: what it says of itself, and what it does, which may be another
// thing.
#pragma once

#include "Quorvell/practice/description/PracticeEffect.h"
#include "QuorvellCore/automation/surface/ScreenElement.h"

#include <chrono>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace quorvell {

struct PracticeElement {
    enum class Answer {
        done,
        failed, ///< Nothing comes of it, and that is told.
        unknown, ///< It is done, but the application does not say so.
    };

    std::string name{}; ///< In the file; nobody sees it. One for each element of the world.
    std::string fact{}; ///< Holds its value; its own name where the file names none.
    std::string role{}; ///< As accessibility names it.
    std::string label{};
    std::string hint{};
    std::string description{};
    std::string subrole{};
    std::string address{}; ///< Of a link: opened by a press where nothing else is.
    std::vector<std::string> options{};
    std::optional<ScreenArea> area{}; ///< Absent: its row among the elements that are shown.
    std::optional<int> fold{}; ///< Shown only when scrolled down so often; absent: always.
    PracticeConditions shownWhen{};
    PracticeConditions enabledWhen{};
    bool isEnabled = true;
    bool isSecure = false;
    bool isDefault = false; ///< Return presses it.
    bool isCancel = false; ///< Escape presses it.
    bool isContent = false;
    Answer answer = Answer::done;
    std::chrono::milliseconds answerDelay{};
    PracticeEffects pressed{};
    PracticeEffects submitted{}; ///< By Return or a line feed while it has the focus.
    PracticeEffects changed{}; ///< After its value became another by typing, choosing, dragging or switching.
    std::map<std::string, PracticeEffects> drops{}; ///< By the name of the element that it is dragged to.

    bool isTextBox() const;
    bool takesFocus() const; ///< Tab stops at it.

    bool operator==(const PracticeElement&) const = default;
};

} // namespace quorvell
