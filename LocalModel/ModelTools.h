// SPDX-License-Identifier: MIT
// The tools of a session in the short form in which a small model is told about them, and the check of its calls.
#pragma once

#include "QuorvellCore/text/Json.h"

#include <nlohmann/json.hpp>

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

/// Every word that a model is told costs the user time: a small computer reads some hundred a second. So descriptions
/// are cut to what matters most, and properties that only serve hosted models on the screen are left out.
class ModelTools {
public:
    static constexpr std::size_t longestDescription = 240; ///< User-perceived characters of a tool's, as the next.
    static constexpr std::size_t longestHint = 120; ///< Of a property's.
    static constexpr std::size_t mostBytes = 48 * 1024; ///< Of all declarations; tools beyond it are left out.
    static constexpr std::size_t longestArguments = 16 * 1024; ///< Bytes of a call.

    ModelTools() = default;
    /// `declarations` as a session offers them: {"name", "description", "parameters"}.
    explicit ModelTools(const Json& declarations);

    /// As the chat completions form lists them.
    const Json& declared() const { return m_declared; }

    /// Why such a call is not made, in a sentence for the model; nothing where it can be.
    std::optional<std::string> problem(std::string_view name, std::string_view arguments) const;

private:
    Json m_declared = Json::array();
    std::map<std::string, Json, std::less<>> m_schemas; ///< Of the arguments, by the tool's name.
};

} // namespace quorvell
