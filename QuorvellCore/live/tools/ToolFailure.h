// SPDX-License-Identifier: MIT
// Failures of tools that are answered in a way of their own.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace quorvell {

/// A failure crosses to the model as one sentence and nothing else, so the sentence is its code: it stands here once,
/// for those who fail with it and for those who are told.
enum class ToolFailure : std::uint8_t {
    noReminderWithID,
    noReminderWithWords,
    noReminderDue,
};

/// For the model.
std::string_view sentenceOf(ToolFailure failure);

/// Exactly one of the sentences, else nothing.
std::optional<ToolFailure> toolFailure(std::string_view sentence);

} // namespace quorvell
