// SPDX-License-Identifier: MIT
// The wording of the notebook tools' results.
#pragma once

#include "QuorvellCore/text/Json.h"
#include "Understanding/dialogue/memory/RequestMemory.h"

#include <string>
#include <string_view>

namespace quorvell {

struct NoteReply {
    /// A result of the search without the reminders, alarms, lists and facts that are found there, too.
    static Json onlyNotes(const Json& result);
    static std::string kept(const Json& result);
    static std::string found(const Json& result, std::string_view query, RequestMemory::SearchPurpose purpose);
    static std::string read(const Json& result);
};

} // namespace quorvell
