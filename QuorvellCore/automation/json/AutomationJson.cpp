// SPDX-License-Identifier: MIT
#include "QuorvellCore/automation/json/AutomationJson.h"

#include "QuorvellCore/automation/screen/ObservationBounds.h"
#include "QuorvellCore/text/Base64.h"

#include <nlohmann/json.hpp>

#include <utility>

namespace quorvell {

namespace {

/// Adds members in the order of the calls.
class AutomationWriter {
public:
    template <typename Record> static Json object(const Record& record)
    {
        AutomationWriter writer;
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
    static Json json(const std::string& value) { return value; }
    static Json json(bool value) { return value; }
    static Json json(std::int64_t value) { return value; }
    static Json json(const Bytes& value) { return base64Encode(value); }
    template <AutomationRecord Record> static Json json(const Record& value) { return object(value); }
    template <typename Kind>
    requires std::is_enum_v<Kind>
    static Json json(Kind value) { return storedText(value); }
    template <typename Value> static Json json(const std::vector<Value>& values)
    {
        Json array = Json::array();
        for (const Value& value : values)
            array.push_back(json(value));
        return array;
    }

    Json m_object = Json::object();
};

// What a record read from outside has to keep to besides the types of its fields; false when it is no record then.

template <typename Record> bool settle(Record&, std::vector<std::string>&)
{
    return true;
}

bool settle(AutomationObservation& observation, std::vector<std::string>& problems)
{
    for (std::string& problem : ObservationBounds::keep(observation))
        problems.push_back(std::move(problem));
    return true;
}

/// Not cut: half of what is expected holds more easily than all of it.
bool settle(Postcondition& condition, std::vector<std::string>&)
{
    return condition.value.size() <= Postcondition::longestValue;
}

bool settle(AutomationDecision& decision, std::vector<std::string>& problems)
{
    if (ObservationBounds::cut(decision.message, AutomationDecision::longestMessage))
        problems.emplace_back("The message was too long and was cut off.");
    return decision.kind != AutomationDecision::Kind::action || decision.action;
}

bool settle(AutomationHistory& step, std::vector<std::string>&)
{
    ObservationBounds::cut(step.operation, ObservationBounds::longestTitle);
    ObservationBounds::cut(step.target, ObservationBounds::longestTitle);
    return true;
}

bool settle(DecisionContext& context, std::vector<std::string>& problems)
{
    if (ObservationBounds::cut(context.goal, DecisionContext::longestGoal))
        problems.emplace_back("The goal was too long and was cut off.");
    if (auto& steps = context.history; steps.size() > DecisionContext::mostHistory) {
        steps.erase(steps.begin(), steps.end() - static_cast<std::ptrdiff_t>(DecisionContext::mostHistory));
        problems.emplace_back("The oldest steps were left out.");
    }
    return true;
}

/// Fills fields and remembers whether each member was what it had to be.
class AutomationReader {
public:
    template <typename Record>
    static std::optional<Record> record(const Json& object, std::vector<std::string>& problems)
    {
        Record record;
        AutomationReader reader(object, problems);
        visitFields(record, reader);
        const bool isRecord = reader.m_isWhole && settle(record, problems);
        return isRecord ? std::optional(std::move(record)) : std::nullopt;
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
    AutomationReader(const Json& object, std::vector<std::string>& problems)
        : m_object(object)
        , m_problems(problems)
        , m_isWhole(object.is_object())
    {
    }

    template <typename Value> static bool take(std::optional<Value> value, Value& field)
    {
        if (value)
            field = std::move(*value);
        return value.has_value();
    }

    bool read(const Json& value, std::string& field) const { return take(readString(value), field); }
    bool read(const Json& value, bool& field) const { return take(readBool(value), field); }
    bool read(const Json& value, std::int64_t& field) const { return take(readInteger(value), field); }
    bool read(const Json& value, AutomationAction::Tool& field) const
    {
        return take(automationTool(readString(value).value_or("")), field);
    }
    bool read(const Json& value, Postcondition::Kind& field) const
    {
        return take(postconditionKind(readString(value).value_or("")), field);
    }
    bool read(const Json& value, AutomationDecision::Kind& field) const
    {
        return take(decisionKind(readString(value).value_or("")), field);
    }
    bool read(const Json& value, Bytes& field) const
    {
        const auto text = readString(value);
        return text && take(base64Decode(*text), field);
    }
    template <AutomationRecord Record> bool read(const Json& value, Record& field) const
    {
        return take(record<Record>(value, m_problems), field);
    }
    template <typename Value> bool read(const Json& value, std::vector<Value>& field) const
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
    std::vector<std::string>& m_problems;
    bool m_isWhole;
};

} // namespace

template <AutomationRecord Record> Json AutomationJson::encode(const Record& record)
{
    return AutomationWriter::object(record);
}

template <AutomationRecord Record>
std::optional<Record> AutomationJson::decode(const Json& object, std::vector<std::string>& problems)
{
    return AutomationReader::record<Record>(object, problems);
}

template Json AutomationJson::encode(const AutomationCandidate&);
template Json AutomationJson::encode(const AutomationObservation&);
template Json AutomationJson::encode(const AutomationAction&);
template Json AutomationJson::encode(const Postcondition&);
template Json AutomationJson::encode(const AutomationDecision&);
template Json AutomationJson::encode(const AutomationHistory&);
template Json AutomationJson::encode(const DecisionContext&);
template std::optional<AutomationCandidate> AutomationJson::decode(const Json&, std::vector<std::string>&);
template std::optional<AutomationObservation> AutomationJson::decode(const Json&, std::vector<std::string>&);
template std::optional<AutomationAction> AutomationJson::decode(const Json&, std::vector<std::string>&);
template std::optional<Postcondition> AutomationJson::decode(const Json&, std::vector<std::string>&);
template std::optional<AutomationDecision> AutomationJson::decode(const Json&, std::vector<std::string>&);
template std::optional<AutomationHistory> AutomationJson::decode(const Json&, std::vector<std::string>&);
template std::optional<DecisionContext> AutomationJson::decode(const Json&, std::vector<std::string>&);

} // namespace quorvell
