// SPDX-License-Identifier: MIT
// Under which numbers the notification service shows notices, kept in a file: a program that is killed before it could
// note down that it showed something has it take the place of the earlier notice when it is started again.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

namespace quorvell {

/// Nothing is flushed: it is for programs that are killed, while a computer that stops forgets its notices too. Without
/// a path nothing is kept. Main thread; each call reads or writes a few lines.
class NoticeNumbers {
public:
    /// Later than this a number may be another program's.
    static constexpr std::chrono::minutes valid{2};

    struct Number {
        std::uint32_t id = 0;
        std::string server; ///< The unique name on the bus of the program that gave it.

        bool operator==(const Number&) const = default;
    };

    explicit NoticeNumbers(std::string path);

    std::optional<Number> find(const std::string& key) const;
    void keep(const std::string& key, const Number& number) const;

private:
    std::string m_path;
};

} // namespace quorvell
