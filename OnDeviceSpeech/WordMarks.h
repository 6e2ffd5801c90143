// The command models mark their words, so that what they recognise tells a time's words from a task's.
#pragma once

#include <string_view>

namespace quorvell {

inline constexpr char timeMark = '@'; ///< After a word of a time: "at@ five@".
inline constexpr char freeMark = '~'; ///< After a word that the grammar took for any word: "dentist~".

inline bool isTimeWord(std::string_view marked)
{
    return marked.ends_with(timeMark);
}
inline bool isFreeWord(std::string_view marked)
{
    return marked.ends_with(freeMark);
}

inline std::string_view withoutMark(std::string_view marked)
{
    return isTimeWord(marked) || isFreeWord(marked) ? marked.substr(0, marked.size() - 1) : marked;
}

} // namespace quorvell
