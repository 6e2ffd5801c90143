// SPDX-License-Identifier: MIT
#include "Quorvell/practice/file/PracticeFields.h"

#include <nlohmann/json.hpp>

#include <cstdint>

namespace quorvell {

namespace {

std::string indexed(const std::string& place, std::size_t index)
{
    return place + "[" + std::to_string(index) + "]";
}

/// Keys come from the file, and are shown.
std::string inQuotes(std::string_view key)
{
    return "“" + std::string(key.substr(0, 100)) + "”";
}

} // namespace

PracticeFields::PracticeFields(const Json& object, std::string place, PracticeMistakes& mistakes)
    : m_object(object)
    , m_place(std::move(place))
    , m_mistakes(mistakes)
{
    if (!object.is_object())
        m_mistakes.add(m_place, "This must be an object: { ... }.");
}

std::string PracticeFields::under(std::string_view key) const
{
    return m_place.empty() ? std::string(key) : m_place + "." + std::string(key);
}

void PracticeFields::wrong(std::string_view key, std::string sentence)
{
    m_mistakes.add(key.empty() ? m_place : under(key), std::move(sentence));
}

const Json* PracticeFields::member(const char* key)
{
    m_known.insert(key);
    return memberOf(m_object, key);
}

std::optional<std::string> PracticeFields::textOf(const Json& value, const std::string& place)
{
    auto text = readString(value);
    if (!text)
        m_mistakes.add(place, "This must be a text.");
    else if (text->size() > longestText)
        m_mistakes.add(place, "This text is too long: at most " + std::to_string(longestText) + " bytes.");
    else
        return text;
    return std::nullopt;
}

std::string PracticeFields::text(const char* key)
{
    const Json* value = member(key);
    return value ? textOf(*value, under(key)).value_or("") : std::string();
}

std::string PracticeFields::needed(const char* key)
{
    std::string value = text(key);
    if (value.empty() && m_object.is_object() && (!has(key) || readString(m_object, key)))
        wrong(key, "This is missing.");
    return value;
}

bool PracticeFields::flag(const char* key, bool otherwise)
{
    const Json* value = member(key);
    const auto read = value ? readBool(*value) : std::nullopt;
    if (value && !read)
        wrong(key, "This must be true or false.");
    return read.value_or(otherwise);
}

std::optional<double> PracticeFields::number(const char* key, double least, double most)
{
    const Json* value = member(key);
    const auto read = value ? readNumber(*value) : std::nullopt;
    if (!value || (read && *read >= least && *read <= most))
        return read;
    wrong(key,
        "This must be a number from " + std::to_string(static_cast<int>(least)) + " to "
            + std::to_string(static_cast<int>(most)) + ".");
    return std::nullopt;
}

std::chrono::milliseconds PracticeFields::time(const char* key)
{
    const auto read = number(key, 0, static_cast<double>(longestTime.count()));
    return std::chrono::milliseconds(static_cast<std::int64_t>(read.value_or(0)));
}

std::vector<std::string> PracticeFields::texts(const char* key, std::size_t most)
{
    std::vector<std::string> texts;
    const Json* value = member(key);
    if (!value)
        return texts;
    if (!value->is_array() || value->size() > most) {
        wrong(key, "This must be a list of at most " + std::to_string(most) + " texts.");
        return texts;
    }
    for (std::size_t index = 0; index < value->size(); ++index) {
        if (auto text = textOf((*value)[index], indexed(under(key), index)))
            texts.push_back(std::move(*text));
    }
    return texts;
}

std::vector<double> PracticeFields::numbers(const char* key, std::size_t count, double least, double most)
{
    std::vector<double> numbers;
    const Json* value = member(key);
    for (std::size_t index = 0; value && value->is_array() && index < value->size() && index < count; ++index) {
        const auto read = readNumber((*value)[index]);
        if (read && *read >= least && *read <= most)
            numbers.push_back(*read);
    }
    if (!value || (value->is_array() && value->size() == count && numbers.size() == count))
        return numbers;
    wrong(key,
        "This must be a list of " + std::to_string(count) + " numbers from " + std::to_string(static_cast<int>(least))
            + " to " + std::to_string(static_cast<int>(most)) + ".");
    return {};
}

std::vector<PracticeFields> PracticeFields::listOf(const Json& list, const std::string& place, std::size_t most)
{
    std::vector<PracticeFields> objects;
    if (!list.is_array() || list.size() > most) {
        m_mistakes.add(place, "This must be a list of at most " + std::to_string(most) + " objects.");
        return objects;
    }
    for (std::size_t index = 0; index < list.size(); ++index)
        objects.emplace_back(list[index], indexed(place, index), m_mistakes);
    return objects;
}

std::vector<PracticeFields> PracticeFields::objects(const char* key, std::size_t most)
{
    const Json* value = member(key);
    return value ? listOf(*value, under(key), most) : std::vector<PracticeFields>();
}

std::vector<std::pair<std::string, std::vector<PracticeFields>>> PracticeFields::lists(
    const char* key, std::size_t most)
{
    std::vector<std::pair<std::string, std::vector<PracticeFields>>> lists;
    const Json* value = member(key);
    if (!value)
        return lists;
    if (!value->is_object() || value->size() > most) {
        wrong(key, "This must be an object with at most " + std::to_string(most) + " members.");
        return lists;
    }
    for (const auto& [name, list] : value->items())
        lists.emplace_back(name, listOf(list, under(key) + "." + name, most));
    return lists;
}

std::vector<std::pair<std::string, std::string>> PracticeFields::namedTexts(const char* key, std::size_t most)
{
    std::vector<std::pair<std::string, std::string>> texts;
    const Json* value = member(key);
    if (!value)
        return texts;
    if (!value->is_object() || value->size() > most) {
        wrong(key, "This must be an object with at most " + std::to_string(most) + " members.");
        return texts;
    }
    for (const auto& [name, text] : value->items()) {
        if (auto read = textOf(text, under(key) + "." + name))
            texts.emplace_back(name, std::move(*read));
    }
    return texts;
}

std::string_view PracticeFields::oneOf(const std::vector<const char*>& keys)
{
    std::string_view found;
    std::string names;
    for (const char* key : keys) {
        names += (names.empty() ? "" : ", ") + std::string(key);
        if (!has(key))
            continue;
        if (!found.empty())
            wrong(key, "This cannot stand beside " + inQuotes(found) + ".");
        found = found.empty() ? key : found;
    }
    if (found.empty() && m_object.is_object())
        wrong("", "One of these is missing: " + names + ".");
    return found;
}

void PracticeFields::end()
{
    if (!m_object.is_object())
        return;
    for (const auto& [key, value] : m_object.items()) {
        if (!m_known.contains(key))
            m_mistakes.add(m_place, "Nothing is called " + inQuotes(key) + " here.");
    }
}

} // namespace quorvell
