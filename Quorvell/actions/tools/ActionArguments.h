// SPDX-License-Identifier: MIT
// The arguments of a tool that acts, as the steps that they ask for.
#pragma once

#include "QuorvellCore/automation/screen/Postcondition.h"
#include "QuorvellCore/automation/surface/ScreenAction.h"
#include "QuorvellCore/text/Json.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace quorvell {

/// One step as it was asked for: element ids are still those of the look that the model saw.
struct AskedStep {
    std::string tool{};
    ScreenAction action{};
    std::optional<Postcondition> expected{};

    bool operator==(const AskedStep&) const = default;
};

struct ActionArguments {
    static constexpr std::size_t mostSteps = 10; ///< Of do_steps.
    static constexpr std::size_t mostFields = 30; ///< Of fill_form.

    /// Never empty; or a sentence for the model that says what is wrong with the arguments. Whether it can be done on
    /// the screen is not judged here.
    static std::variant<std::vector<AskedStep>, std::string> read(std::string_view tool, const Json& arguments);

    /// The tools that end in actions, in the order of the catalogue.
    static std::vector<std::string_view> tools();
};

} // namespace quorvell
