// SPDX-License-Identifier: MIT
// Reads the members of one object of a practice file, and says what is wrong with each.
#pragma once

#include "Quorvell/practice/file/PracticeMistakes.h"
#include "QuorvellCore/text/Json.h"

#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quorvell {

/// What is absent or wrong reads as empty. Borrows the object and the mistakes.
class PracticeFields {
public:
    static constexpr std::size_t longestText = 8 * 1024; ///< Bytes.
    static constexpr std::size_t mostInList = 100; ///< Effects, conditions, options, menus, steps ...
    static constexpr std::chrono::milliseconds longestTime{600'000};

    PracticeFields(const Json& object, std::string place, PracticeMistakes& mistakes);

    std::string text(const char* key);
    /// It is a mistake to leave it out, or empty.
    std::string needed(const char* key);
    bool flag(const char* key, bool otherwise);
    std::chrono::milliseconds time(const char* key);
    std::optional<double> number(const char* key, double least, double most);
    std::vector<std::string> texts(const char* key, std::size_t most);
    std::vector<double> numbers(const char* key, std::size_t count, double least, double most);
    std::vector<PracticeFields> objects(const char* key, std::size_t most);
    /// The members of an object, each a list of objects.
    std::vector<std::pair<std::string, std::vector<PracticeFields>>> lists(const char* key, std::size_t most);
    /// The members of an object, each a text.
    std::vector<std::pair<std::string, std::string>> namedTexts(const char* key, std::size_t most);
    /// The one of these keys that is there; it is a mistake when it is none, or when there are two.
    std::string_view oneOf(const std::vector<const char*>& keys);

    bool has(const char* key) const { return memberOf(m_object, key) != nullptr; }
    const Json& json() const { return m_object; }
    const std::string& place() const { return m_place; }
    void wrong(std::string_view key, std::string sentence);
    /// Whatever was not asked for is a slip of the pen.
    void end();

private:
    const Json* member(const char* key);
    std::string under(std::string_view key) const;
    std::vector<PracticeFields> listOf(const Json& list, const std::string& place, std::size_t most);
    std::optional<std::string> textOf(const Json& value, const std::string& place);

    const Json& m_object;
    std::string m_place;
    PracticeMistakes& m_mistakes;
    std::set<std::string, std::less<>> m_known;
};

} // namespace quorvell
