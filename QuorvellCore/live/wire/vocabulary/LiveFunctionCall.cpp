// SPDX-License-Identifier: MIT
#include "QuorvellCore/live/wire/vocabulary/LiveFunctionCall.h"

#include "QuorvellCore/text/Characters.h"

#include <charconv>
#include <cmath>
#include <utility>

namespace quorvell {

namespace {

std::optional<Json> parseArguments(std::string_view text)
{
    if (trimmed(text).empty())
        return Json::object();
    auto parsed = parseJson(text);
    return parsed && parsed->is_object() ? std::move(parsed) : std::nullopt;
}

/// The whole text is one finite number, with or without white space around it.
std::optional<double> numberFromText(std::string_view text)
{
    std::string digits = trimmed(text);
    if (digits.starts_with('+') && !digits.starts_with("+-"))
        digits.erase(0, 1); // the reader below knows the other sign only
    double value = 0;
    const auto [end, problem] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (problem != std::errc{} || end != digits.data() + digits.size() || !std::isfinite(value))
        return std::nullopt;
    return value;
}

} // namespace

LiveFunctionCall LiveFunctionCall::fromArgumentsText(
    std::string id, std::string name, std::string_view argumentsText, bool incomplete)
{
    auto args = parseArguments(argumentsText);
    LiveFunctionCall call{std::move(id), std::move(name), args ? std::move(*args) : Json::object()};
    if (!args || incomplete)
        call.args[std::string(cutOffKey)] = true;
    return call;
}

std::optional<std::string> LiveFunctionCall::string(std::string_view key) const
{
    return readString(args, key);
}

std::optional<double> LiveFunctionCall::number(std::string_view key) const
{
    if (const auto value = readNumber(args, key))
        return value;
    const auto text = readString(args, key);
    return text ? numberFromText(*text) : std::nullopt;
}

bool LiveFunctionCall::wasCutOff() const
{
    return memberOf(args, cutOffKey) != nullptr;
}

} // namespace quorvell
