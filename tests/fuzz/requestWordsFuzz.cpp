// SPDX-License-Identifier: MIT
// Whatever is said or typed is taken apart and weighed: nothing of it may stop the service, and what a request is about
// never holds more than was said.
#include "Understanding/RequestEvidence.h"
#include "Understanding/RequestWords.h"
#include "fuzzing.h"

namespace {

using namespace quorvell;

} // namespace

void quorvell::search(std::string_view text)
{
    const RequestWords words(text);
    require(words.size() <= RequestWords::most + 1);
    require(words.said().size() <= text.size());
    for (std::size_t index = 0; index < words.size(); ++index)
        require(words.said(index, index + 1).size() <= text.size());
    const RequestReading reading = RequestReading::of(text);
    require(reading.content.size() <= text.size());
    const auto kinds =
        RequestEvidence::ranked(reading, {.hasMoment = text.size() % 2 == 0, .hasLength = text.size() % 3 == 0});
    require(kinds.size() <= static_cast<std::size_t>(RequestKind::count));
}
