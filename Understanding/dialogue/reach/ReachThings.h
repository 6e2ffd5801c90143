// SPDX-License-Identifier: MIT
// Which of several things that are out of reach was named, so that the reply names it and no other.
#pragma once

#include "Understanding/dialogue/reach/ReachReply.h"

#include <string>

namespace quorvell::ReachThings {

/// `matter` with the reply for the thing that is in the words; as it is where they name none.
ReachReply named(const ReachReply& matter, const std::string& phrase);

} // namespace quorvell::ReachThings
