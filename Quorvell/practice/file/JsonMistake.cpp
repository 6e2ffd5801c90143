// SPDX-License-Identifier: MIT
#include "Quorvell/practice/file/JsonMistake.h"

#include "QuorvellCore/text/Json.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <optional>

namespace quorvell {

namespace {

/// Takes in nothing but the place.
class MistakeFinder : public nlohmann::json_sax<Json> {
public:
    bool null() override { return true; }
    bool boolean(bool) override { return true; }
    bool number_integer(number_integer_t) override { return true; }
    bool number_unsigned(number_unsigned_t) override { return true; }
    bool number_float(number_float_t, const string_t&) override { return true; }
    bool string(string_t&) override { return true; }
    bool binary(binary_t&) override { return true; }
    bool start_object(std::size_t) override { return true; }
    bool end_object() override { return true; }
    bool start_array(std::size_t) override { return true; }
    bool end_array() override { return true; }
    bool key(string_t&) override { return true; }
    bool parse_error(std::size_t position, const std::string&, const nlohmann::detail::exception&) override
    {
        m_position = position;
        return false;
    }

    std::optional<std::size_t> position() const { return m_position; }

private:
    std::optional<std::size_t> m_position; ///< One behind the byte that does not fit.
};

} // namespace

std::string JsonMistake::place(std::string_view text)
{
    MistakeFinder finder;
    Json::sax_parse(text, &finder);
    if (!finder.position())
        return {};
    const std::size_t place = std::min(std::max<std::size_t>(*finder.position(), 1) - 1, text.size());
    const std::string_view before = text.substr(0, place);
    const std::size_t line = static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n')) + 1;
    const std::size_t begin = before.rfind('\n') + 1; // 0 where there is none
    return "line " + std::to_string(line) + ", column " + std::to_string(place - begin + 1);
}

} // namespace quorvell
