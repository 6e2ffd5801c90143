// SPDX-License-Identifier: MIT
#include "QuorvellCore/automation/engine/planner/DecisionSchema.h"

#include "QuorvellCore/automation/json/AutomationFields.h"

#include <nlohmann/json.hpp>

#include <utility>

namespace quorvell {

namespace {

template <typename Kind, std::size_t Count> Json namesOf(const std::array<Kind, Count>& kinds)
{
    Json names = Json::array();
    for (const Kind kind : kinds)
        names.push_back(storedText(kind));
    return {{"type", "string"}, {"enum", std::move(names)}};
}

class SchemaWriter {
public:
    template <AutomationRecord Record> static Json object()
    {
        const Record record{};
        SchemaWriter writer;
        visitFields(record, writer);
        return {{"type", "object"}, {"properties", std::move(writer.m_properties)},
            {"required", std::move(writer.m_required)}, {"additionalProperties", false}};
    }

    template <typename Value> void field(const char* key, const Value& value)
    {
        m_properties[key] = schema(value);
        m_required.push_back(key);
    }
    template <typename Value> void field(const char* key, const std::optional<Value>&)
    {
        field(key, Value{});
        Json& type = m_properties[key]["type"];
        type = Json::array({type, "null"});
    }

private:
    static Json schema(const std::string&) { return {{"type", "string"}}; }
    static Json schema(const std::vector<std::string>&) { return {{"type", "array"}, {"items", {{"type", "string"}}}}; }
    static Json schema(AutomationAction::Tool) { return namesOf(allAutomationTools); }
    static Json schema(Postcondition::Kind) { return namesOf(allPostconditionKinds); }
    static Json schema(AutomationDecision::Kind) { return namesOf(allDecisionKinds); }
    template <AutomationRecord Record> static Json schema(const Record&) { return object<Record>(); }

    Json m_properties = Json::object();
    Json m_required = Json::array();
};

} // namespace

Json decisionSchema()
{
    return SchemaWriter::object<AutomationDecision>();
}

} // namespace quorvell
