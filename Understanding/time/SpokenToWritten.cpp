// SPDX-License-Identifier: MIT
#include "Understanding/time/SpokenToWritten.h"

#include "Understanding/time/SpokenTimeReaders.h"

#include <array>

namespace quorvell {

std::string spokenToWritten(std::string_view text)
{
    using Reader = std::optional<WrittenTime> (*)(const SpokenWords&, std::size_t);
    // A span is read before a clock, so that "in five minutes" is none; a date before both ("march five").
    constexpr std::array<Reader, 3> readers{spokenDateAt, spokenSpanAt, spokenClockAt};
    const SpokenWords words(text);
    std::string result;
    for (std::size_t place = 0; place < words.size();) {
        std::optional<WrittenTime> written;
        for (std::size_t reader = 0; reader < readers.size() && !written; ++reader) {
            written = readers[reader](words, place);
        }
        if (written && words.areJoined(place, place + written->words)) {
            result.append(words.spaceBefore(place)).append(written->text);
            place += written->words;
            result.append(words.after(place - 1));
        } else {
            result.append(words.original(place++));
        }
    }
    return result;
}

} // namespace quorvell
