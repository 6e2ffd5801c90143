// SPDX-License-Identifier: MIT
#include "Quorvell/practice/file/PracticeElementFields.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace quorvell {

namespace {

/// Names of the accessibility layer.
constexpr std::string_view roles[] = {"AXButton", "AXCell", "AXCheckBox", "AXComboBox", "AXDisclosureTriangle",
    "AXGroup", "AXHeading", "AXImage", "AXLink", "AXList", "AXMenuButton", "AXMenuItem", "AXOutline", "AXPopUpButton",
    "AXProgressIndicator", "AXRadioButton", "AXRow", "AXSlider", "AXStaticText", "AXSwitch", "AXTab", "AXTabGroup",
    "AXTable", "AXTextArea", "AXTextField", "AXToolbar"};

constexpr std::pair<std::string_view, PracticeElement::Answer> answers[] = {{"", PracticeElement::Answer::done},
    {"done", PracticeElement::Answer::done}, {"failed", PracticeElement::Answer::failed},
    {"unknown", PracticeElement::Answer::unknown}};

} // namespace

PracticeElement PracticeElementFields::element(PracticeFields& fields, Content content)
{
    PracticeElement element;
    element.name = fields.text("name");
    if (element.name.empty())
        element.name = "element " + std::to_string(++m_unnamed);
    element.fact = fields.text("fact");
    if (element.fact.empty())
        element.fact = element.name;
    std::string value = fields.text("value");
    if (const auto [fact, isNew] = m_facts.try_emplace(element.fact, value); !isNew && fields.has("value"))
        fact->second = std::move(value);
    element.role = fields.needed("role");
    if (!element.role.empty() && std::find(std::begin(roles), std::end(roles), element.role) == std::end(roles))
        fields.wrong("role", "There is no such role.");
    element.label = fields.text("label");
    element.hint = fields.text("hint");
    element.description = fields.text("description");
    element.subrole = fields.text("subrole");
    element.address = fields.text("address");
    element.options = fields.texts("options", PracticeFields::mostInList);
    if (const auto area = fields.numbers("area", 4, 0, 1'000); !area.empty())
        element.area = ScreenArea{area[0], area[1], area[2], area[3]};
    if (const auto fold = fields.number("fold", 0, 100))
        element.fold = static_cast<int>(*fold);
    element.shownWhen = conditions(fields, "when");
    element.enabledWhen = conditions(fields, "enabled_when");
    element.isEnabled = fields.flag("enabled", true);
    element.isSecure = fields.flag("secure", false);
    element.isDefault = fields.flag("default", false);
    element.isCancel = fields.flag("cancel", false);
    element.isContent = fields.flag("content", content == Content::yes);
    const std::string answer = fields.text("answers");
    const auto known =
        std::find_if(std::begin(answers), std::end(answers), [&](const auto& entry) { return entry.first == answer; });
    if (known != std::end(answers))
        element.answer = known->second;
    else
        fields.wrong("answers", "This must be done, failed or unknown.");
    element.answerDelay = fields.time("answers_after_ms");
    element.pressed = effects(fields, "press");
    element.submitted = effects(fields, "submit");
    element.changed = effects(fields, "changed");
    for (auto& [target, dropped] : fields.lists("drops", PracticeFields::mostInList))
        element.drops[target] = effects(dropped);
    fields.end();
    return element;
}

PracticeEffects PracticeElementFields::effects(PracticeFields& fields, const char* key)
{
    std::vector<PracticeFields> list = fields.objects(key, PracticeFields::mostInList);
    return effects(list);
}

PracticeEffects PracticeElementFields::effects(std::vector<PracticeFields>& list)
{
    PracticeEffects effects;
    for (PracticeFields& fields : list)
        effects.push_back(effect(fields));
    return effects;
}

PracticeEffect PracticeElementFields::effect(PracticeFields& fields)
{
    using Kind = PracticeEffect::Kind;
    static constexpr std::pair<std::string_view, Kind> kinds[] = {{"set", Kind::set}, {"window", Kind::window},
        {"close", Kind::close}, {"app", Kind::app}, {"page", Kind::page}, {"happens", Kind::happens},
        {"notify", Kind::notify}, {"focus", Kind::focus}};
    PracticeEffect effect;
    const std::string_view verb = fields.oneOf({"set", "window", "close", "app", "page", "happens", "notify", "focus"});
    for (const auto& [name, kind] : kinds) {
        if (name == verb)
            effect.kind = kind;
    }
    effect.name = verb.empty() ? std::string() : fields.needed(verb.data());
    if (effect.kind == Kind::set)
        effect.text = fields.text("to");
    if (effect.kind == Kind::happens) {
        (void)consequence(fields, "happens", effect.name);
        effect.text = fields.text("about");
    }
    if (effect.kind == Kind::page || effect.kind == Kind::notify)
        effect.text = std::exchange(effect.name, {});
    effect.conditions = conditions(fields, "if");
    effect.delay = fields.time("after_ms");
    fields.end();
    return effect;
}

PracticeConditions PracticeElementFields::conditions(PracticeFields& fields, const char* key)
{
    PracticeConditions conditions;
    for (PracticeFields& one : fields.objects(key, PracticeFields::mostInList))
        conditions.push_back(condition(one));
    return conditions;
}

PracticeCondition PracticeElementFields::condition(PracticeFields& fields)
{
    using Kind = PracticeCondition::Kind;
    static constexpr std::pair<std::string_view, Kind> kinds[] = {{"app", Kind::app}, {"window", Kind::window},
        {"page", Kind::page}, {"happened", Kind::happened}, {"not_happened", Kind::notHappened}, {"is", Kind::factIs},
        {"is_not", Kind::factIsNot}, {"contains", Kind::factContains}};
    PracticeCondition condition;
    const std::string_view subject = fields.oneOf({"fact", "app", "window", "page", "happened", "not_happened"});
    const std::string_view verb = subject == "fact" ? fields.oneOf({"is", "is_not", "contains"}) : subject;
    for (const auto& [name, kind] : kinds) {
        if (name == verb)
            condition.kind = kind;
    }
    if (!subject.empty())
        condition.name = fields.needed(subject.data());
    if (subject == "fact" && !verb.empty())
        condition.value = fields.text(verb.data());
    if (subject == "happened" || subject == "not_happened") {
        (void)consequence(fields, subject.data(), condition.name);
        condition.value = fields.text("about");
    }
    fields.end();
    return condition;
}

std::optional<PracticeConsequence::Kind> PracticeElementFields::consequence(
    PracticeFields& fields, const char* key, const std::string& stored)
{
    const auto kind = practiceConsequence(stored);
    if (!kind && !stored.empty())
        fields.wrong(key, "There is no such consequence.");
    return kind;
}

} // namespace quorvell
