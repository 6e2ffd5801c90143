// SPDX-License-Identifier: MIT
// The program's standard input, output and error: usable from the start, and at the end nothing printed is lost unseen.
#pragma once

namespace quorvell {

struct StandardStreams {
    /// First of all, before anything is opened: a stream that the program was started without must not become one of
    /// its own files, which would then hold what is printed. An input that is missing is an empty one. A file that
    /// grows beyond what the system allows is from now on an error to be told, not the program's end.
    static void prepare();

    /// Last of all: what is printed reaches its place. Returns `exitCode`; 1 instead of 0 where something was lost,
    /// which is told.
    static int finish(int exitCode);
};

} // namespace quorvell
