// SPDX-License-Identifier: MIT
// Lets the records of automation be keys of unordered containers.
#pragma once

#include "QuorvellCore/automation/json/AutomationFields.h"

#include <cstddef>
#include <functional>
#include <string_view>

namespace quorvell {

class AutomationHash {
public:
    template <AutomationRecord Record> static std::size_t of(const Record& record)
    {
        AutomationHash hash;
        hash.add(record);
        return hash.m_value;
    }

    template <typename Value> void field(const char*, const Value& value) { add(value); }

private:
    template <AutomationRecord Record> void add(const Record& record) { visitFields(record, *this); }
    template <typename Value>
    requires std::is_arithmetic_v<Value> || std::is_enum_v<Value>
    void add(Value value) { mix(static_cast<std::size_t>(value)); }
    void add(const std::string& text) { mix(std::hash<std::string>{}(text)); }
    template <typename Value> void add(const std::optional<Value>& value)
    {
        add(value.has_value());
        if (value)
            add(*value);
    }
    template <typename Value> void add(const std::vector<Value>& values)
    {
        mix(values.size());
        for (const Value& value : values)
            add(value);
    }
    /// Of a picture its bytes as one text.
    void add(const Bytes& bytes)
    {
        mix(std::hash<std::string_view>{}({reinterpret_cast<const char*>(bytes.data()), bytes.size()}));
    }
    /// The order of the parts counts. The constant is 2^64 divided by the golden ratio, which spreads small numbers.
    void mix(std::size_t part) { m_value = (m_value ^ part) * 0x9E3779B97F4A7C15ull + (m_value >> 29); }

    std::size_t m_value = 0;
};

} // namespace quorvell

template <quorvell::AutomationRecord Record> struct std::hash<Record> {
    std::size_t operator()(const Record& record) const { return quorvell::AutomationHash::of(record); }
};
