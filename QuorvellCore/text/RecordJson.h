// SPDX-License-Identifier: MIT
// Records as JSON objects and back, both by one list of their fields.
#pragma once

#include "QuorvellCore/text/Json.h"

#include <nlohmann/json.hpp>

#include <concepts>
#include <utility>

namespace quorvell {

// A type is a record when there is a function visitFields(record, visitor) beside it, which calls
// `visitor.field(key, member)` for each field. The record is const on the way out.
//
// A `Form` says what a kind of records has besides texts, numbers, yes and no, lists and each other. Where there is
//   Form::text(value)          such a value is that text in JSON,
//   Form::value(text, value)   and is read by it: an optional; its second argument only says what is wanted,
//   form.settle(record)        a record that was read has to keep to more than the types of its fields: false when it
//                              is none after all.

template <typename Value>
concept PlainJsonValue =
    std::same_as<Value, std::string> || std::same_as<Value, bool> || std::same_as<Value, std::int64_t>;

template <typename Value>
concept JsonList = std::same_as<Value, std::vector<typename Value::value_type>>;

/// Adds members in the order of the calls; what is absent is left out.
template <typename Form> class RecordWriter {
public:
    template <typename Record> static Json object(const Record& record)
    {
        RecordWriter writer;
        visitFields(record, writer);
        return std::move(writer.m_object);
    }

    template <typename Value> void field(const char* key, const Value& value) { m_object[key] = json(value); }
    template <typename Value> void field(const char* key, const std::optional<Value>& value)
    {
        if (value)
            field(key, *value);
    }

private:
    template <typename Value> static Json json(const Value& value)
    {
        if constexpr (PlainJsonValue<Value>)
            return value;
        else if constexpr (requires { Form::text(value); })
            return Form::text(value);
        else if constexpr (JsonList<Value>)
            return list(value);
        else
            return object(value);
    }

    template <typename Value> static Json list(const std::vector<Value>& values)
    {
        Json array = Json::array();
        for (const Value& value : values)
            array.push_back(json(value));
        return array;
    }

    Json m_object = Json::object();
};

/// Fills fields and remembers whether each member was what it had to be. An optional field may be absent or null.
template <typename Form> class RecordReader {
public:
    template <typename Record> static std::optional<Record> record(const Json& object, const Form& form = {})
    {
        Record record;
        RecordReader reader(object, form);
        visitFields(record, reader);
        if constexpr (requires { form.settle(record); })
            reader.m_isWhole = reader.m_isWhole && form.settle(record);
        return reader.m_isWhole ? std::optional(std::move(record)) : std::nullopt;
    }

    template <typename Value> void field(const char* key, Value& field)
    {
        const Json* member = memberOf(m_object, key);
        m_isWhole = m_isWhole && member && read(*member, field);
    }
    template <typename Value> void field(const char* key, std::optional<Value>& field)
    {
        const Json* member = memberOf(m_object, key);
        if (member && !member->is_null())
            m_isWhole = m_isWhole && read(*member, field.emplace());
    }

private:
    RecordReader(const Json& object, const Form& form)
        : m_object(object)
        , m_form(form)
        , m_isWhole(object.is_object())
    {
    }

    template <typename Value> static bool take(std::optional<Value> value, Value& field)
    {
        if (value)
            field = std::move(*value);
        return value.has_value();
    }

    static bool read(const Json& value, std::string& field) { return take(readString(value), field); }
    static bool read(const Json& value, bool& field) { return take(readBool(value), field); }
    static bool read(const Json& value, std::int64_t& field) { return take(readInteger(value), field); }
    template <typename Value> bool read(const Json& value, Value& field) const
    {
        if constexpr (requires { Form::value(std::string_view(), field); }) {
            const auto text = readString(value);
            return text && take(Form::value(*text, field), field);
        } else if constexpr (JsonList<Value>) {
            return readList(value, field);
        } else {
            return take(record<Value>(value, m_form), field);
        }
    }

    template <typename Value> bool readList(const Json& value, std::vector<Value>& field) const
    {
        if (!value.is_array())
            return false;
        for (const Json& element : value) {
            if (!read(element, field.emplace_back()))
                return false;
        }
        return true;
    }

    const Json& m_object;
    const Form& m_form;
    bool m_isWhole;
};

} // namespace quorvell
