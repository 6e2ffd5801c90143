// SPDX-License-Identifier: MIT
#include "QuorvellCore/reckoning/sums/ExactNumber.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <utility>

namespace quorvell {

namespace {

__extension__ using Wide = __int128;

constexpr long double mostRough = 1e300L;

Wide greatestDivisor(Wide left, Wide right)
{
    while (right != 0)
        left = std::exchange(right, left % right);
    return left < 0 ? -left : left;
}

std::optional<Wide> times(Wide left, Wide right)
{
    Wide result = 0;
    return __builtin_mul_overflow(left, right, &result) ? std::nullopt : std::optional(result);
}

std::optional<Wide> plus(Wide left, Wide right)
{
    Wide result = 0;
    return __builtin_add_overflow(left, right, &result) ? std::nullopt : std::optional(result);
}

std::string digitsOf(Wide number)
{
    std::string digits;
    do {
        digits += static_cast<char>('0' + static_cast<int>(number % 10));
        number /= 10;
    } while (number > 0);
    std::ranges::reverse(digits);
    return digits;
}

/// With a point, whatever the locale of the program writes.
std::string inDigits(long double number, std::chars_format format, int places)
{
    std::array<char, 64> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, format, places);
    return {buffer.data(), end.ptr};
}

/// "1250000" as "1,250,000"
std::string grouped(std::string digits)
{
    constexpr std::size_t group = 3;
    constexpr std::size_t ungrouped = 4; // "1500" is read as easily without
    if (digits.size() <= ungrouped)
        return digits;
    for (std::size_t place = digits.size() - group; place > 0 && place < digits.size(); place -= std::min(place, group))
        digits.insert(place, ",");
    return digits;
}

std::optional<Wide> wholeRoot(Wide number, int degree)
{
    const long double guess =
        std::round(std::pow(static_cast<long double>(number), 1.0L / static_cast<long double>(degree)));
    if (guess > 1e18L)
        return std::nullopt;
    const auto root = static_cast<Wide>(guess);
    std::optional<Wide> power = 1;
    for (int step = 0; step < degree && power; ++step)
        power = times(*power, root);
    return power && *power == number ? std::optional(root) : std::nullopt;
}

} // namespace

ExactNumber ExactNumber::of(long long whole)
{
    return of(whole, 1);
}

ExactNumber ExactNumber::of(long long numerator, long long denominator)
{
    return exact(numerator, denominator).value_or(ExactNumber());
}

std::optional<ExactNumber> ExactNumber::parse(std::string_view text)
{
    constexpr std::size_t mostDigits = 15;
    Wide numerator = 0;
    Wide denominator = 1;
    std::size_t digits = 0;
    bool isBehindPoint = false;
    for (const char letter : text) {
        if (letter == ',')
            continue;
        if (letter == '.' && !isBehindPoint) {
            isBehindPoint = true;
            continue;
        }
        if (letter < '0' || letter > '9' || ++digits > mostDigits)
            return std::nullopt;
        numerator = 10 * numerator + (letter - '0');
        denominator *= isBehindPoint ? 10 : 1;
    }
    return digits == 0 ? std::nullopt : exact(numerator, denominator);
}

std::optional<ExactNumber> ExactNumber::exact(Wide numerator, Wide denominator)
{
    if (denominator == 0)
        return std::nullopt;
    const Wide divisor = std::max<Wide>(1, greatestDivisor(numerator, denominator));
    const Wide sign = denominator < 0 ? -1 : 1;
    ExactNumber number;
    number.m_numerator = sign * numerator / divisor;
    number.m_denominator = sign * denominator / divisor;
    return number;
}

std::optional<ExactNumber> ExactNumber::rough(long double value)
{
    if (!std::isfinite(value) || std::fabs(value) > mostRough)
        return std::nullopt;
    ExactNumber number;
    number.m_isExact = false;
    number.m_value = value;
    return number;
}

long double ExactNumber::value() const
{
    return m_isExact ? static_cast<long double>(m_numerator) / static_cast<long double>(m_denominator) : m_value;
}

std::optional<ExactNumber> ExactNumber::sum(const ExactNumber& left, const ExactNumber& right)
{
    if (left.m_isExact && right.m_isExact) {
        const auto first = times(left.m_numerator, right.m_denominator);
        const auto second = times(right.m_numerator, left.m_denominator);
        const auto numerator = first && second ? plus(*first, *second) : std::nullopt;
        const auto denominator = times(left.m_denominator, right.m_denominator);
        if (numerator && denominator)
            return exact(*numerator, *denominator);
    }
    return rough(left.value() + right.value());
}

std::optional<ExactNumber> ExactNumber::difference(const ExactNumber& left, const ExactNumber& right)
{
    const auto negative = product(right, of(-1));
    return negative ? sum(left, *negative) : std::nullopt;
}

std::optional<ExactNumber> ExactNumber::product(const ExactNumber& left, const ExactNumber& right)
{
    if (left.m_isExact && right.m_isExact) {
        const auto numerator = times(left.m_numerator, right.m_numerator);
        const auto denominator = times(left.m_denominator, right.m_denominator);
        if (numerator && denominator)
            return exact(*numerator, *denominator);
    }
    return rough(left.value() * right.value());
}

std::optional<ExactNumber> ExactNumber::quotient(const ExactNumber& left, const ExactNumber& right)
{
    if (right.isZero())
        return std::nullopt;
    if (left.m_isExact && right.m_isExact) {
        const auto numerator = times(left.m_numerator, right.m_denominator);
        const auto denominator = times(left.m_denominator, right.m_numerator);
        if (numerator && denominator)
            return exact(*numerator, *denominator);
    }
    return rough(left.value() / right.value());
}

std::optional<ExactNumber> ExactNumber::power(const ExactNumber& base, const ExactNumber& exponent)
{
    constexpr Wide mostSteps = 128;
    const bool isSmall = exponent.isWhole() && exponent.m_numerator <= mostSteps && exponent.m_numerator >= -mostSteps;
    if (base.isZero() && exponent.value() < 0)
        return std::nullopt;
    if (!isSmall || !base.m_isExact)
        return rough(std::pow(base.value(), exponent.value()));
    std::optional<ExactNumber> result = of(1);
    const Wide steps = exponent.m_numerator < 0 ? -exponent.m_numerator : exponent.m_numerator;
    for (Wide step = 0; step < steps && result; ++step)
        result = product(*result, base);
    return result && exponent.m_numerator < 0 ? quotient(of(1), *result) : result;
}

std::optional<ExactNumber> ExactNumber::remainder(const ExactNumber& left, const ExactNumber& right)
{
    if (!left.isWhole() || !right.isWhole() || right.isZero())
        return std::nullopt;
    return exact(left.m_numerator % right.m_numerator, 1);
}

std::optional<ExactNumber> ExactNumber::squareRoot(const ExactNumber& number)
{
    if (number.value() < 0)
        return std::nullopt;
    const auto top = number.m_isExact ? wholeRoot(number.m_numerator, 2) : std::nullopt;
    const auto bottom = top ? wholeRoot(number.m_denominator, 2) : std::nullopt;
    return bottom ? exact(*top, *bottom) : rough(std::sqrt(number.value()));
}

std::optional<ExactNumber> ExactNumber::cubeRoot(const ExactNumber& number)
{
    constexpr int cube = 3;
    const auto top = number.m_isExact && number.m_numerator >= 0 ? wholeRoot(number.m_numerator, cube) : std::nullopt;
    const auto bottom = top ? wholeRoot(number.m_denominator, cube) : std::nullopt;
    return bottom ? exact(*top, *bottom) : rough(std::cbrt(number.value()));
}

bool ExactNumber::isShownWhole() const
{
    Wide scale = 1;
    for (int place = 0; place < mostPlaces; ++place)
        scale *= 10;
    constexpr long double longest = 1e15L;
    return m_isExact && scale % m_denominator == 0 && std::fabs(value()) < longest;
}

std::string ExactNumber::text() const
{
    constexpr long double longest = 1e15L; // more digits nobody follows
    constexpr long double shortest = 1e-6L;
    const long double number = value();
    const long double size = std::fabs(number);
    const std::string sign = number < 0 ? "minus " : "";
    if (size >= longest || (size > 0 && size < shortest)) {
        const std::string digits = inDigits(size, std::chars_format::scientific, 3);
        const std::size_t exponent = std::min(digits.find('e'), digits.size() - 1);
        return sign + digits.substr(0, exponent) + " times 10 to the power of "
            + std::to_string(std::atoi(digits.c_str() + exponent + 1));
    }
    if (isWhole())
        return sign + grouped(digitsOf(m_numerator < 0 ? -m_numerator : m_numerator));
    // Small numbers keep as many digits as large ones.
    const int places = size < 1 || isShownWhole() ? mostPlaces : mostPlaces - 2;
    std::string digits = inDigits(size, std::chars_format::fixed, places);
    digits.resize(digits.find_last_not_of('0') + 1);
    if (digits.ends_with('.'))
        digits.pop_back();
    const std::size_t point = std::min(digits.find('.'), digits.size());
    return sign + grouped(digits.substr(0, point)) + digits.substr(point);
}

} // namespace quorvell
