// SPDX-License-Identifier: MIT
// What was used, in words for the user.
#pragma once

#include "Quorvell/records/UsageBook.h"
#include "Quorvell/session/reports/SessionUsage.h"

#include <string>
#include <string_view>

namespace quorvell {

struct UsageText {
    enum class Service { hosted, onDevice }; ///< Only a hosted one bills what it counts.

    /// "12 min 5 s"; below a minute "5 s".
    static std::string duration(double seconds);
    /// "Today: ...", and a line for the month. `today` is a day as the book has it.
    static std::string ofDays(const UsageBook& book, std::string_view today, Service service);
    static std::string ofConversation(const SessionUsage& usage, Service service);
};

} // namespace quorvell
