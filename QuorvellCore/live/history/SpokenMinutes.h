#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace quorvell {

/// How much was spoken, as a user wants to know it and as hosted voices are paid for. An estimate: services bill by
/// rules of their own.
struct SpokenMinutes {
    std::int64_t microphoneTenths = 0; ///< Sound sent, tenths of a second. Silence that was not sent does not count.
    double replySeconds = 0; ///< Of the voice, as far as it was played.
    std::optional<double> billedSeconds{}; ///< By the service's own count; not every service tells.

    /// What was said both ways.
    double spokenSeconds() const;
    /// What is paid for: the service's count where it is the larger one, for an open session may cost while quiet.
    double chargedSeconds() const;
    /// Charged, in whole minutes, begun ones counted.
    std::int64_t minutes() const;
    /// "less than a minute", "about 1 minute", "about 2 hours and 5 minutes".
    std::string words() const;

    /// Of two connections, or of two days.
    SpokenMinutes operator+(const SpokenMinutes& other) const;

    bool operator==(const SpokenMinutes&) const = default;
};

} // namespace quorvell
