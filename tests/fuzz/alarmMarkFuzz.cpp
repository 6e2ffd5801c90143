// SPDX-License-Identifier: MIT
// What anybody wrote into a note's header is a mark that is written and read back as it is, or none.
#include "Quorvell/reminding/AlarmMark.h"
#include "fuzzing.h"

using namespace quorvell;

void quorvell::search(std::string_view text)
{
    const auto mark = AlarmMark::fromStored(text);
    require(!mark || AlarmMark::fromStored(mark->stored()) == mark);
    require(!mark || (mark->length <= AlarmMark::longestTimer && mark->length.count() >= 0));
}
