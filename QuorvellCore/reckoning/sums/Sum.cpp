// SPDX-License-Identifier: MIT
#include "QuorvellCore/reckoning/sums/Sum.h"

#include <optional>

namespace quorvell {

namespace {

using Number = std::optional<ExactNumber>;
using Verdict = Sum::Verdict;

/// Goes through the text once. What cannot be read leaves its place, and the verdict is that it is no sum.
class Reader {
public:
    explicit Reader(std::string_view text)
        : m_text(text)
    {
    }

    Sum read()
    {
        const Number value = added();
        skipSpace();
        if (m_problem != Verdict::isValue)
            return {.verdict = m_problem};
        if (!value || m_place < m_text.size())
            return {};
        return {.verdict = Verdict::isValue, .value = *value, .steps = m_steps};
    }

private:
    void skipSpace()
    {
        while (m_place < m_text.size() && m_text[m_place] == ' ')
            ++m_place;
    }

    bool take(std::string_view sign)
    {
        skipSpace();
        if (!m_text.substr(m_place).starts_with(sign))
            return false;
        m_place += sign.size();
        return true;
    }

    Number settled(Number result, Verdict otherwise)
    {
        ++m_steps;
        if (!result && m_problem == Verdict::isValue)
            m_problem = otherwise;
        return result;
    }

    Number added()
    {
        Number left = multiplied();
        while (left) {
            const bool isPlus = take("+");
            if (!isPlus && !take("-"))
                break;
            const Number right = multiplied();
            if (!right)
                return right;
            left = settled(
                isPlus ? ExactNumber::sum(*left, *right) : ExactNumber::difference(*left, *right), Verdict::hasNoValue);
        }
        return left;
    }

    Number multiplied()
    {
        Number left = raised();
        while (left) {
            const bool isTimes = take("*");
            if (!isTimes && !take("/"))
                break;
            const Number right = raised();
            if (!right)
                return right;
            left = isTimes ? settled(ExactNumber::product(*left, *right), Verdict::hasNoValue)
                           : settled(ExactNumber::quotient(*left, *right),
                               right->isZero() ? Verdict::dividesByZero : Verdict::hasNoValue);
        }
        return left;
    }

    Number raised()
    {
        if (take("-")) {
            const Number value = raised();
            return value ? settled(ExactNumber::product(*value, ExactNumber::of(-1)), Verdict::hasNoValue) : value;
        }
        const Number base = atom();
        if (!base || !take("^"))
            return base;
        const Deeper deeper(*this);
        const Number exponent = deeper.isTooDeep() ? std::nullopt : raised();
        return exponent ? settled(ExactNumber::power(*base, *exponent), Verdict::hasNoValue) : exponent;
    }

    Number atom()
    {
        const Deeper deeper(*this);
        if (deeper.isTooDeep())
            return std::nullopt;
        Number value;
        if (take("sqrt")) {
            const Number inner = atom();
            value = inner ? settled(ExactNumber::squareRoot(*inner), Verdict::hasNoValue) : inner;
        } else if (take("cbrt")) {
            const Number inner = atom();
            value = inner ? settled(ExactNumber::cubeRoot(*inner), Verdict::hasNoValue) : inner;
        } else if (take("(")) {
            value = added();
            if (!take(")"))
                return std::nullopt;
        } else {
            value = number();
        }
        while (value && take("%"))
            value = settled(ExactNumber::quotient(*value, ExactNumber::of(100)), Verdict::hasNoValue);
        return value;
    }

    Number number()
    {
        skipSpace();
        const std::size_t end = std::min(m_text.find_first_not_of("0123456789.,", m_place), m_text.size());
        const Number value = ExactNumber::parse(m_text.substr(m_place, end - m_place));
        m_place = value ? end : m_place;
        return value;
    }

    /// One bracket, root or exponent deeper, for as long as it lives.
    class Deeper {
    public:
        explicit Deeper(Reader& reader)
            : m_depth(reader.m_depth)
        {
            ++m_depth;
        }
        ~Deeper() { --m_depth; }
        Deeper(const Deeper&) = delete;
        Deeper& operator=(const Deeper&) = delete;

        bool isTooDeep() const { return m_depth > Sum::deepest; }

    private:
        int& m_depth;
    };

    std::string_view m_text;
    std::size_t m_place = 0;
    int m_depth = 0;
    int m_steps = 0;
    Verdict m_problem = Verdict::isValue;
};

} // namespace

Sum Sum::of(std::string_view text)
{
    return text.size() > longest ? Sum() : Reader(text).read();
}

} // namespace quorvell
