// SPDX-License-Identifier: MIT
// Sends word to the person whom the user trusts with such things.
#pragma once

#include <string>

namespace quorvell {

/// Main thread. Only what can really send is one: without it nobody is told that mail goes out.
class HelperMail {
public:
    virtual ~HelperMail() = default;

    /// The helper's name; empty where none is set up.
    virtual std::string helper() const = 0;
    /// Hands it over for sending; never anything of the screen. False where it is sure not to go out.
    virtual bool tellOfScam(const std::string& reason) = 0;
};

} // namespace quorvell
