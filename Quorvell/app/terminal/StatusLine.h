// SPDX-License-Identifier: MIT
// One faint line at the end of a terminal's output that changes in place and makes room for whatever else is printed.
#pragma once

#include "Quorvell/settings/TerminalColour.h"

#include <functional>
#include <iosfwd>
#include <string>

namespace quorvell {

/// Only for terminals that know cursor movement. Main thread.
class StatusLine {
public:
    /// The stream is borrowed.
    explicit StatusLine(std::ostream& out, TerminalColour colour = TerminalColour::ansi)
        : m_out(out)
        , m_colour(colour)
    {
    }
    ~StatusLine() { hide(); }
    StatusLine(const StatusLine&) = delete;
    StatusLine& operator=(const StatusLine&) = delete;

    /// Cut to the width of the terminal; an empty text hides the line.
    void show(const std::string& text);
    void hide();
    /// Prints above the line.
    void aside(const std::function<void()>& print);

private:
    std::ostream& m_out;
    TerminalColour m_colour;
    std::string m_text; ///< Empty while hidden.
};

} // namespace quorvell
