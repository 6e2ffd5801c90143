// SPDX-License-Identifier: MIT
#include "QuorvellCore/automation/engine/macros/KeepableText.h"

#include "QuorvellCore/safety/SafetyGuard.h"
#include "QuorvellCore/text/web/WebAddress.h"

#include <algorithm>

namespace quorvell {

namespace {

bool hasLongNumber(std::string_view text)
{
    constexpr std::string_view separators = " -./()";
    std::size_t digits = 0;
    for (const char letter : text) {
        if (letter >= '0' && letter <= '9')
            ++digits;
        else if (separators.find(letter) == std::string_view::npos)
            digits = 0;
        if (digits >= KeepableText::longNumber)
            return true;
    }
    return false;
}

bool hasLongPart(std::string_view path)
{
    for (std::size_t start = 0; start < path.size();) {
        const std::size_t end = std::min(path.find('/', start), path.size());
        if (end - start > KeepableText::longestPathPart)
            return true;
        start = end + 1;
    }
    return false;
}

} // namespace

bool KeepableText::isPublic(std::string_view text)
{
    return !hasLongNumber(text) && SafetyGuard::textRisk(text).isSafe();
}

bool KeepableText::isPublicGoal(std::string_view goal)
{
    return isPublic(goal) && SafetyGuard::fieldRisk(goal, "AXTextField").isSafe();
}

bool KeepableText::isPlace(std::string_view address)
{
    const auto parsed = WebAddress::parse(address);
    return parsed && isPublic(address) && address.find_first_of("?#@%") == std::string_view::npos
        && !hasLongPart(parsed->path);
}

} // namespace quorvell
