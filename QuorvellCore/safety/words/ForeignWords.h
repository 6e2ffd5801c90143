// SPDX-License-Identifier: MIT
// What stands on buttons in other languages than English, beside the guard's own words.
#pragma once

#include "QuorvellCore/safety/words/JudgedText.h"

#include <string_view>

namespace quorvell {

/// Words of every language count in every text, since nothing says in which language a label is. So none is here that
/// is an everyday word of another one; a few such count where they are all that a label says.
struct ForeignWords {
    /// Pays, orders, deletes, sends, publishes, installs, signs in or out, accepts and the like. What accepts cookies
    /// does not count, what deletes them does.
    static bool saysThatItActs(const JudgedText& label);

    /// "Ja", "Oui", "Weiter": does what the window says that it does.
    static bool isBareAgreement(std::string_view label);
};

} // namespace quorvell
