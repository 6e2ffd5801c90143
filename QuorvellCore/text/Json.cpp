// SPDX-License-Identifier: MIT
#include "QuorvellCore/text/Json.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <limits>

namespace quorvell {

namespace {

/// Judges nesting and the size of objects without parsing. Brackets inside strings do not count; whether the text is
/// JSON at all is the parser's business.
class ShapeScan {
public:
    explicit ShapeScan(const JsonLimits& limits)
        : m_limits(limits)
    {
    }

    bool accepts(std::string_view text)
    {
        for (std::size_t index = 0; index < text.size(); ++index) {
            const char letter = text[index];
            if (m_isInString) {
                if (letter == '\\')
                    ++index;
                else if (letter == '"')
                    m_isInString = false;
            } else if (!acceptOutsideString(letter)) {
                return false;
            }
        }
        return true;
    }

private:
    bool acceptOutsideString(char letter)
    {
        switch (letter) {
        case '"':
            m_isInString = true;
            return true;
        case '{':
        case '[':
            m_open.push_back({letter == '{', 1});
            return m_open.size() <= m_limits.maximumDepth;
        case '}':
        case ']':
            if (!m_open.empty())
                m_open.pop_back();
            return true;
        case ',':
            return m_open.empty() || !m_open.back().isObject || ++m_open.back().members <= m_limits.maximumMembers;
        default:
            return true;
        }
    }

    struct Level {
        bool isObject = false;
        std::size_t members = 0;
    };

    const JsonLimits& m_limits;
    std::vector<Level> m_open;
    bool m_isInString = false;
};

void appendSorted(std::string& text, const Json& value)
{
    if (const auto* array = value.get_ptr<const Json::array_t*>()) {
        text += '[';
        for (const Json& element : *array) {
            if (&element != &array->front())
                text += ',';
            appendSorted(text, element);
        }
        text += ']';
        return;
    }
    const auto* object = value.get_ptr<const Json::object_t*>();
    if (!object) {
        text += dumpJson(value);
        return;
    }
    std::vector<const Json::object_t::value_type*> members;
    for (const auto& member : *object)
        members.push_back(&member);
    std::sort(
        members.begin(), members.end(), [](const auto* left, const auto* right) { return left->first < right->first; });
    text += '{';
    for (const auto* member : members) {
        if (member != members.front())
            text += ',';
        text += dumpJson(Json(member->first)) + ':';
        appendSorted(text, member->second);
    }
    text += '}';
}

std::optional<std::int64_t> wholeNumber(double value)
{
    constexpr double limit = 9223372036854775808.0; // 2^63, the first that no longer fits
    if (!(value >= -limit && value < limit) || std::trunc(value) != value)
        return std::nullopt;
    return static_cast<std::int64_t>(value);
}

/// Applies one of the readers to a member.
template <typename Value>
std::optional<Value> readMember(const Json& object, std::string_view key, std::optional<Value> (*read)(const Json&))
{
    const Json* member = memberOf(object, key);
    return member ? read(*member) : std::nullopt;
}

} // namespace

std::optional<Json> parseJson(std::string_view text, const JsonLimits& limits)
{
    if (text.size() > limits.maximumBytes || !ShapeScan(limits).accepts(text))
        return std::nullopt;
    Json value = Json::parse(text, nullptr, false);
    if (value.is_discarded())
        return std::nullopt;
    return value;
}

std::string dumpJson(const Json& value)
{
    return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::string dumpSortedJson(const Json& value)
{
    std::string text;
    appendSorted(text, value);
    return text;
}

const Json* memberOf(const Json& value, std::string_view key)
{
    const auto* object = value.get_ptr<const Json::object_t*>();
    if (!object)
        return nullptr;
    for (const auto& [name, member] : *object) {
        if (name == key)
            return &member;
    }
    return nullptr;
}

std::optional<std::string> readString(const Json& value)
{
    const auto* text = value.get_ptr<const Json::string_t*>();
    return text ? std::optional(*text) : std::nullopt;
}

std::optional<std::int64_t> readInteger(const Json& value)
{
    if (const auto* number = value.get_ptr<const Json::number_unsigned_t*>()) {
        constexpr std::uint64_t largest = std::numeric_limits<std::int64_t>::max();
        return *number <= largest ? std::optional(static_cast<std::int64_t>(*number)) : std::nullopt;
    }
    if (const auto* number = value.get_ptr<const Json::number_integer_t*>())
        return *number;
    if (const auto* number = value.get_ptr<const Json::number_float_t*>())
        return wholeNumber(*number);
    return std::nullopt;
}

std::optional<double> readNumber(const Json& value)
{
    if (const auto* number = value.get_ptr<const Json::number_float_t*>())
        return *number;
    if (const auto* number = value.get_ptr<const Json::number_unsigned_t*>())
        return static_cast<double>(*number);
    if (const auto* number = value.get_ptr<const Json::number_integer_t*>())
        return static_cast<double>(*number);
    return std::nullopt;
}

std::optional<bool> readBool(const Json& value)
{
    const auto* flag = value.get_ptr<const Json::boolean_t*>();
    return flag ? std::optional(*flag) : std::nullopt;
}

std::optional<std::vector<std::string>> readStrings(const Json& value)
{
    const auto* array = value.get_ptr<const Json::array_t*>();
    if (!array)
        return std::nullopt;
    std::vector<std::string> texts;
    for (const Json& element : *array) {
        auto text = readString(element);
        if (!text)
            return std::nullopt;
        texts.push_back(std::move(*text));
    }
    return texts;
}

std::optional<std::string> readString(const Json& object, std::string_view key)
{
    return readMember<std::string>(object, key, readString);
}

std::optional<std::int64_t> readInteger(const Json& object, std::string_view key)
{
    return readMember<std::int64_t>(object, key, readInteger);
}

std::optional<double> readNumber(const Json& object, std::string_view key)
{
    return readMember<double>(object, key, readNumber);
}

std::optional<bool> readBool(const Json& object, std::string_view key)
{
    return readMember<bool>(object, key, readBool);
}

std::optional<std::vector<std::string>> readStrings(const Json& object, std::string_view key)
{
    return readMember<std::vector<std::string>>(object, key, readStrings);
}

} // namespace quorvell
