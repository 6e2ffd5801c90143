// SPDX-License-Identifier: MIT
// What a request asks to be reminded of, tidied of what its time words left dangling.
#pragma once

#include <string>
#include <string_view>

namespace quorvell {

/// Undoes what cutting the time words leaves: "the to water the plants" of "the day after tomorrow to water the
/// plants", "lunch @" of "lunch @5pm", and a "remind me to" that stood behind a time and a comma.
std::string tidiedTask(const std::string& task, std::string_view lowerCasedWords);

} // namespace quorvell
