// SPDX-License-Identifier: MIT
// The line to a child: one socket that it inherits, over which it is handed an end of each connection.
#pragma once

#include "Quorvell/connections/access/ServiceLine.h"

#include <string_view>

namespace quorvell {

/// There is no address at which another program could connect, listen or wait: both ends of every connection are made
/// here. Main thread.
class ChildLine : public ServiceLine {
public:
    ChildLine();
    ~ChildLine() override;
    ChildLine(const ChildLine&) = delete;
    ChildLine& operator=(const ChildLine&) = delete;

    /// What is to be the child's standard input; -1 once it has started.
    int childsEnd() const { return m_childs; }
    /// The child has its end; from now on only it does.
    void childStarted();
    /// What the child reads before anything else.
    void write(std::string_view text);
    /// Its input ends, and so does the child. Connections that were made stay.
    void hangUp();

    int connect() override;

private:
    int m_ours = -1;
    int m_childs = -1;
};

} // namespace quorvell
