// SPDX-License-Identifier: MIT
// What was done on the screen in this conversation, and how the last of it is taken back.
#pragma once

#include "Quorvell/actions/pipeline/ActionUndo.h"
#include "Quorvell/surface/Screen.h"

#include <cstddef>
#include <deque>
#include <memory>
#include <string>
#include <variant>

namespace quorvell {

/// A value. Only what was done, or may have been, is in it.
class ActionLedger {
public:
    static constexpr std::size_t mostEntries = 500; ///< Beyond it the oldest are forgotten.
    static constexpr std::size_t mostWithLooks = 10; ///< The newest; older ones can no longer be undone.

    enum class Certainty { done, unknown };

    struct Entry {
        std::string text; ///< As screenActionText.
        Certainty certainty = Certainty::done;
        bool isUndone = false;
        std::variant<ActionUndo, std::string> undo{}; ///< Or a sentence why there is none.
        std::shared_ptr<const ScreenLook> after{}; ///< The look that the undo is for; null where there is none.
    };

    /// `after` is null where it was not seen. What could not be done is passed over.
    void add(std::string text, const ScreenAction& action, ScreenOutcome::Kind outcome, const ScreenLook& before,
        std::shared_ptr<const ScreenLook> after);
    /// The newest that is not undone; null where none is left.
    const Entry* last() const;
    /// Of the last; null where there is none.
    const ActionUndo* wayBack() const;
    std::string whyNoWayBack() const; ///< For the model.
    void markLastUndone();
    void clear() { m_entries.clear(); }

    const std::deque<Entry>& entries() const { return m_entries; } ///< Oldest first.

private:
    std::deque<Entry> m_entries;
};

} // namespace quorvell
