// SPDX-License-Identifier: MIT
// The keys that are held while another is pressed, as a set of bits.
#pragma once

namespace quorvell {

struct KeyModifiers {
    static constexpr unsigned control = 1;
    static constexpr unsigned option = 2;
    static constexpr unsigned shift = 4;
    static constexpr unsigned command = 8;
};

} // namespace quorvell
