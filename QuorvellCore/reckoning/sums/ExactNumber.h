// SPDX-License-Identifier: MIT
// A number that is counted with as people do on paper: exactly, as a fraction, while that goes.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

/// Numerator and denominator have up to 38 digits. Beyond that, and for roots, the number goes on as a binary one with
/// about 18 digits, and says so. Nothing comes of what has no value: a division by zero, or a number beyond the binary
/// ones.
class ExactNumber {
public:
    static constexpr int mostPlaces = 6; ///< Behind the point, in words; what is cut off is rounded.

    ExactNumber() = default;
    static ExactNumber of(long long whole);
    static ExactNumber of(long long numerator, long long denominator); ///< Of a denominator above 0.
    /// "1,250.5", "0.1", "12"; at most 15 digits.
    static std::optional<ExactNumber> parse(std::string_view text);

    static std::optional<ExactNumber> sum(const ExactNumber& left, const ExactNumber& right);
    static std::optional<ExactNumber> difference(const ExactNumber& left, const ExactNumber& right);
    static std::optional<ExactNumber> product(const ExactNumber& left, const ExactNumber& right);
    static std::optional<ExactNumber> quotient(const ExactNumber& left, const ExactNumber& right);
    static std::optional<ExactNumber> power(const ExactNumber& base, const ExactNumber& exponent);
    /// What is left of a division of whole numbers.
    static std::optional<ExactNumber> remainder(const ExactNumber& left, const ExactNumber& right);
    /// Exact where it comes out even.
    static std::optional<ExactNumber> squareRoot(const ExactNumber& number);
    static std::optional<ExactNumber> cubeRoot(const ExactNumber& number);

    bool isZero() const { return m_isExact ? m_numerator == 0 : m_value == 0; }
    bool isWhole() const { return m_isExact && m_denominator == 1; }
    /// Whether `text` is all of it: exact, and nothing rounded away.
    bool isShownWhole() const;
    /// "1,250.5", "0.333333", "1.27 times 10 to the power of 30".
    std::string text() const;
    long double value() const;

private:
    __extension__ using Wide = __int128;

    static std::optional<ExactNumber> exact(Wide numerator, Wide denominator);
    static std::optional<ExactNumber> rough(long double value);

    Wide m_numerator = 0;
    Wide m_denominator = 1; ///< Above 0, without a common factor.
    long double m_value = 0; ///< Where it is not exact.
    bool m_isExact = true;
};

} // namespace quorvell
