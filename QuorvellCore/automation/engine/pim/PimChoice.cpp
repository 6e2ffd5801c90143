// SPDX-License-Identifier: MIT
#include "QuorvellCore/automation/engine/pim/PimChoice.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <unordered_map>

namespace quorvell {

namespace {

/// What is left of a difference that was meant to be exact: 0.98 is no number that a double can hold.
constexpr double roundingOfDoubles = 1e-9;

bool isShare(double value)
{
    return std::isfinite(value) && value >= 0 && value <= 1;
}

using Probabilities = std::unordered_map<std::string_view, double>;

/// Of each option that was offered and of nothing else.
std::optional<Probabilities> probabilitiesOf(const Json& object, const std::vector<std::string>& allowed)
{
    Probabilities given;
    for (const std::string& option : allowed)
        given.emplace(option, -1);
    if (!object.is_object() || object.size() != given.size())
        return std::nullopt;
    for (const auto& member : object.items()) {
        const auto place = given.find(member.key());
        const double value = readNumber(member.value()).value_or(-1);
        if (place == given.end() || !isShare(value))
            return std::nullopt;
        place->second = value;
    }
    return given;
}

} // namespace

std::optional<PimSelection> PimChoice::choice(const Json& answer, const std::vector<std::string>& allowed)
{
    auto chosen = readString(answer, "choice");
    const auto confidence = reading(answer, "confidence");
    const Json* object = memberOf(answer, "probabilities");
    const auto probabilities = object ? probabilitiesOf(*object, allowed) : std::nullopt;
    if (!chosen || !confidence || !probabilities)
        return std::nullopt;
    const auto own = probabilities->find(*chosen);
    if (own == probabilities->end())
        return std::nullopt;
    double sum = 0;
    double most = 0;
    for (const auto& [option, probability] : *probabilities) {
        sum += probability;
        most = std::max(most, probability);
    }
    if (std::abs(sum - 1) > roundingOfSum + roundingOfDoubles || own->second < most)
        return std::nullopt;
    const double probability = own->second;
    return PimSelection{std::move(*chosen), *confidence, probability, std::nullopt};
}

std::optional<double> PimChoice::reading(const Json& object, std::string_view key)
{
    const auto value = readNumber(object, key);
    return value && isShare(*value) ? value : std::nullopt;
}

} // namespace quorvell
