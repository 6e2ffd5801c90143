// SPDX-License-Identifier: MIT
// Whatever is said or typed is taken apart and weighed: nothing of it may stop the service, and what a request is about
// never holds more than was said.
#include "Understanding/requests/RequestEvidence.h"
#include "Understanding/requests/SkillTable.h"
#include "Understanding/words/RequestWords.h"
#include "fuzzing.h"

void quorvell::search(std::string_view text)
{
    const RequestWords words(text);
    require(words.size() <= RequestWords::most + 1);
    require(words.said().size() <= text.size());
    for (std::size_t index = 0; index < words.size(); ++index)
        require(words.said(index, index + 1).size() <= text.size());
    const RequestReading reading = RequestReading::of(text, SkillTable::cues());
    require(reading.content.size() <= text.size());
    for (const RequestKind* kind :
        RequestEvidence::ranked(reading, {.hasMoment = text.size() % 2 == 0, .hasLength = text.size() % 3 == 0}))
        require(kind->read != nullptr);
}
