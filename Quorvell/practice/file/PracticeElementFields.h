// SPDX-License-Identifier: MIT
// Reads elements of a practice file, their effects and conditions.
#pragma once

#include "Quorvell/practice/description/PracticeElement.h"
#include "Quorvell/practice/file/PracticeFields.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace quorvell {

/// Values of elements become facts.
class PracticeElementFields {
public:
    enum class Content { no, yes };

    explicit PracticeElementFields(std::map<std::string, std::string>& facts)
        : m_facts(facts)
    {
    }

    PracticeElement element(PracticeFields& fields, Content content);
    PracticeEffects effects(PracticeFields& fields, const char* key);
    PracticeEffects effects(std::vector<PracticeFields>& list);
    PracticeConditions conditions(PracticeFields& fields, const char* key);
    std::optional<PracticeConsequence::Kind> consequence(
        PracticeFields& fields, const char* key, const std::string& stored);

private:
    PracticeEffect effect(PracticeFields& fields);
    PracticeCondition condition(PracticeFields& fields);

    std::map<std::string, std::string>& m_facts;
    int m_unnamed = 0;
};

} // namespace quorvell
