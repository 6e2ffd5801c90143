// SPDX-License-Identifier: MIT
// The one way by which text reaches a terminal: whatever it holds, it can only be read there.
#pragma once

#include "Quorvell/settings/TerminalColour.h"
#include "QuorvellCore/text/Secrets.h"

#include <ostream>
#include <streambuf>
#include <string>
#include <string_view>

namespace quorvell {

/// Stands before the buffer of a stream while it lives. Lines are held until they end or the stream is flushed, then
/// freed of what could move the cursor or turn the direction of writing, and of keys. What the program itself wants of
/// the terminal goes past that by `control`. Main thread.
class ShownOutput final : public std::streambuf {
public:
    enum class Reader {
        person, ///< A terminal.
        program, ///< A pipe or a file: only keys are taken out.
    };

    ShownOutput(std::ostream& stream, Reader reader, Secrets secrets);
    ~ShownOutput() override;
    ShownOutput(const ShownOutput&) = delete;
    ShownOutput& operator=(const ShownOutput&) = delete;

    /// A control sequence, in its place between the texts of any stream.
    static void control(std::ostream& stream, std::string_view sequence);
    /// Text between the sequences of TerminalColour; without colour as it is.
    static void faint(std::ostream& stream, std::string_view text, TerminalColour colour);

protected:
    int_type overflow(int_type letter) override;
    std::streamsize xsputn(const char* text, std::streamsize count) override;
    int sync() override;

private:
    bool give(std::size_t bytes);

    std::ostream& m_stream;
    std::streambuf* m_behind;
    Reader m_reader;
    Secrets m_secrets;
    std::string m_held; ///< No whole line.
};

} // namespace quorvell
