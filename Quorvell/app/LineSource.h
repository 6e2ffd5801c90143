#pragma once

#include <functional>
#include <optional>
#include <string>

namespace quorvell {

/// Where the user's lines come from. Main thread.
class LineSource {
public:
    /// Nothing: there will be no more lines.
    using Report = std::function<void(std::optional<std::string> line)>;

    virtual ~LineSource() = default;

    /// Asks for the next line; `report` is called once, from the event loop.
    virtual void readNext(Report report) = 0;
};

} // namespace quorvell
