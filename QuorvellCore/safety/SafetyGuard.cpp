// SPDX-License-Identifier: MIT
#include "QuorvellCore/safety/SafetyGuard.h"

#include "QuorvellCore/safety/ElementRole.h"
#include "QuorvellCore/safety/SpokenConsent.h"
#include "QuorvellCore/safety/SpokenLabel.h"
#include "QuorvellCore/safety/words/GuardWords.h"
#include "QuorvellCore/safety/words/JudgedText.h"
#include "QuorvellCore/safety/words/LabelPatterns.h"
#include "QuorvellCore/text/CodePoints.h"
#include "QuorvellCore/text/LowerCase.h"

#include <unicode/uchar.h>

#include <optional>
#include <string>

namespace quorvell {

namespace {

bool saysSecure(const JudgedText& label, std::string_view role)
{
    return label.contains("secure") || JudgedText(role).contains("secure");
}

ActionRisk question(std::string_view label)
{
    return ActionRisk::askFirst("Shall I press " + SpokenLabel::quoted(label) + " for you?");
}

/// The digits of a number that is written with spaces or hyphens, in ASCII. Nothing for any other text.
std::optional<std::string> digitsAlone(std::string_view text)
{
    std::string digits;
    for (std::size_t position = 0; position < text.size();) {
        const char32_t point = nextCodePoint(text, position);
        const auto code = static_cast<UChar32>(point);
        if (const int digit = u_charDigitValue(code); u_isdigit(code) && digit >= 0)
            digits += static_cast<char>('0' + digit);
        else if (!isWhiteSpace(point) && u_charType(code) != U_DASH_PUNCTUATION)
            return std::nullopt;
    }
    return digits;
}

} // namespace

bool SafetyGuard::isNavigationLink(std::string_view label, std::string_view role)
{
    return role == ElementRole::link || hasSiteName(lowerCased(label));
}

ActionRisk SafetyGuard::risk(std::string_view label, std::string_view role, std::string_view)
{
    return risk(JudgedText(label), label, role);
}

ActionRisk SafetyGuard::risk(const JudgedText& words, std::string_view label, std::string_view role)
{
    if (saysSecure(words, role))
        return ActionRisk::never(
            "This is a password box. I can show you where it is, but only you should type your password.");
    if (role == ElementRole::link || hasSiteName(words.lower()))
        return ActionRisk::safe();
    if (hasPrice(words.lower()) || hasPrice(words.plain()))
        return ActionRisk::never(SpokenLabel::quoted(label) + " is about money, so you should press it yourself.");
    if (const auto word = GuardWords::forbidden().firstIn(words))
        return ActionRisk::never(SpokenLabel::quoted(label) + " can " + std::string(GuardWords::danger(*word))
            + ", so you should press it yourself.");
    if (GuardWords::cookies().firstInWritten(words.lower()))
        return ActionRisk::safe();
    return GuardWords::confirming().isIn(words) ? question(label) : ActionRisk::safe();
}

ActionRisk SafetyGuard::defaultButtonRisk(std::string_view label, std::string_view role, std::string_view app)
{
    const bool isReadable = !SpokenLabel::shown(label).empty();
    const bool isSeen = isReadable && role != ElementRole::window;
    return ActionRisk::strictest(
        risk(label, role, app), isSeen ? ActionRisk::safe() : question(isReadable ? label : "Return"));
}

ActionRisk SafetyGuard::fieldRisk(std::string_view label, std::string_view role)
{
    const JudgedText words(label);
    if (saysSecure(words, role))
        return ActionRisk::never("That's a password box, so only you should type in it.");
    if (GuardWords::privateFields().isIn(words))
        return ActionRisk::never("That box is for private numbers, so only you should type in it.");
    return ActionRisk::safe();
}

ActionRisk SafetyGuard::textRisk(std::string_view text)
{
    constexpr std::size_t shortestCard = 13;
    constexpr std::size_t longestCard = 19;
    const auto digits = digitsAlone(text);
    if (!digits || digits->size() < shortestCard || digits->size() > longestCard || !luhnValid(*digits))
        return ActionRisk::safe();
    return ActionRisk::never("That looks like a card number, so only you should type it.");
}

bool SafetyGuard::isSensitiveValue(std::string_view label, std::string_view role, std::string_view value, bool isSecure)
{
    return isSecure || JudgedText(role).contains("secure")
        || (ElementRole::isTextEntry(role) && !fieldRisk(label, role).isSafe()) || !textRisk(value).isSafe();
}

bool SafetyGuard::luhnValid(std::string_view digits)
{
    int sum = 0;
    bool isDoubled = false;
    for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit, isDoubled = !isDoubled) {
        if (*digit < '0' || *digit > '9')
            return false;
        const int value = (*digit - '0') * (isDoubled ? 2 : 1);
        sum = (sum + value / 10 + value % 10) % 10;
    }
    return !digits.empty() && sum == 0;
}

bool SafetyGuard::isAffirmative(std::string_view text)
{
    return SpokenConsent::isAffirmative(text);
}

bool SafetyGuard::containsWord(std::string_view word, std::string_view text, std::span<const std::string_view> endings)
{
    const std::string lower = lowerCased(word);
    const std::string_view words[] = {lower};
    return WordMatcher(words, endings).firstInWritten(lowerCased(text)).has_value();
}

} // namespace quorvell
