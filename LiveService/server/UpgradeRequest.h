// Judges the request that opens a WebSocket. Pure: the bytes so far in, a verdict out.
#pragma once

#include <string>
#include <string_view>

namespace quorvell {

struct UpgradeVerdict {
    enum class Kind { incomplete, accepted, refused };

    Kind kind = Kind::incomplete;
    int status = 0; ///< Of HTTP, when refused.
    std::string reason; ///< A sentence for whoever wrote the client.

    bool operator==(const UpgradeVerdict&) const = default;
    /// The whole answer to a refused request.
    std::string response() const;
};

struct UpgradeRequest {
    static constexpr std::string_view path = "/v1/live/sessions";
    static constexpr std::size_t longestHead = 16 * 1024;

    /// `token` is the key that the client must show.
    static UpgradeVerdict judge(std::string_view bytes, std::string_view token);
    /// Takes as long wherever the texts differ.
    static bool areEqual(std::string_view given, std::string_view expected);
};

} // namespace quorvell
