// SPDX-License-Identifier: MIT
// Whatever is said or typed is taken apart and weighed: nothing of it may stop the service, and what a request is about
// never holds more than was said.
#include "Understanding/RequestEvidence.h"
#include "Understanding/RequestWords.h"

#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

using namespace quorvell;

void check(bool holds)
{
    if (!holds)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    const RequestWords words(text);
    check(words.size() <= RequestWords::most + 1);
    check(words.said().size() <= size);
    for (std::size_t index = 0; index < words.size(); ++index)
        check(words.said(index, index + 1).size() <= size);
    const RequestReading reading = RequestReading::of(text);
    check(reading.content.size() <= size);
    const auto kinds = RequestEvidence::ranked(reading, {.hasMoment = size % 2 == 0, .hasLength = size % 3 == 0});
    check(kinds.size() <= static_cast<std::size_t>(RequestKind::count));
    return 0;
}
