// SPDX-License-Identifier: MIT
// What this program has learned of its service, over all connections since the start.
#pragma once

#include "QuorvellCore/live/wire/vocabulary/RefusedSetting.h"

#include <optional>
#include <set>
#include <string>

namespace quorvell {

/// Main thread.
struct ServiceExperience {
    std::set<RefusedSetting> refused{};
    bool wasAsked = false; ///< Whether it is there, by any connection.
    bool answersQuestions = false; ///< It answered; when it no longer does, it is stuck.
    bool wasGivenUpOverSound = false; ///< By the last connection, and no word has come since.
    bool leavesSoundUnanswered = false; ///< Even a fresh connection said nothing to the same sound: it was noise.

    /// `options` have a `serviceTier` and a `reasoningSummary`. False when there is nothing to drop: what is absent
    /// cannot be refused again.
    template <typename Options> bool drop(Options& options, RefusedSetting setting)
    {
        std::optional<std::string>* option = optionOf(options, setting);
        if (option == nullptr || !option->has_value())
            return false;
        option->reset();
        refused.insert(setting);
        return true;
    }

    /// Before asking: without what was refused earlier.
    template <typename Options> void dropRefused(Options& options) const
    {
        for (const RefusedSetting setting : refused)
            optionOf(options, setting)->reset();
    }

private:
    template <typename Options> static std::optional<std::string>* optionOf(Options& options, RefusedSetting setting)
    {
        switch (setting) {
        case RefusedSetting::serviceTier:
            return &options.serviceTier;
        case RefusedSetting::summary:
            return &options.reasoningSummary;
        case RefusedSetting::none:
            return nullptr;
        }
        return nullptr;
    }
};

} // namespace quorvell
