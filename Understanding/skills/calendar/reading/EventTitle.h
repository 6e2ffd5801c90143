// SPDX-License-Identifier: MIT
// What an event is called, out of the words that asked for it. Pure.
#pragma once

#include <string>
#include <string_view>

namespace quorvell {

struct EventTitle {
    /// "[date : tomorrow]" and "(time)" of forms that were filled in by half: what they hold stays, the rest goes.
    static std::string withoutForms(std::string_view words);
    /// `rest` is what is left of `words` without those of the time; what led to these goes as well.
    static std::string from(std::string_view rest, std::string_view words);
    /// "Dentist", "yoga class": what people go to.
    static bool namesOccasion(std::string_view title);
    /// "Ana's birthday", "holiday": nobody expects an hour of it.
    static bool takesDays(std::string_view title);
};

} // namespace quorvell
