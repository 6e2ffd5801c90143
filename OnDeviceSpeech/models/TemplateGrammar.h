// SPDX-License-Identifier: MIT
// The request templates as a grammar from which sentences can be drawn. Only the generator of the command models and
// its tests use it; recognition reads what the generator wrote.
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// The same sequence for the same seed on every machine, so that two builds give the same models.
struct RepeatableRandom {
    std::uint64_t state = 0;

    /// From 0 up to, not including, 1.
    double next();
};

/// Rules in the JSpeech Grammar Format without tags: words, `<rule>`, `<NULL>`, `( )`, `[ ]`, `|`, /weights/
/// before alternatives. Rules may not lead back to themselves. All files are one grammar, and a public rule may have
/// alternatives in several of them.
class TemplateGrammar {
public:
    /// Adds the rules of one file. Empty when they were understood, else a sentence with the line of the mistake.
    std::string add(std::string_view text, std::string_view fileName);
    /// Empty when every rule that is used exists and none contains itself.
    std::string check() const;

    std::set<std::string> words() const;
    /// Appends one sentence of a rule that check() has seen.
    void draw(const std::string& rule, RepeatableRandom& random, std::vector<std::string>& sentence) const;

private:
    struct Expansion {
        enum class Kind { word, rule, sequence, choice };
        Kind kind = Kind::sequence;
        std::string name; ///< The word or the rule.
        std::vector<Expansion> parts;
        std::vector<double> weights; ///< One for each part of a choice.
    };
    struct Rule {
        Expansion choice;
        bool isPublic = false;
    };
    struct Reader;

    bool add(const std::string& name, Rule rule);
    bool leadsTo(const Expansion& expansion, std::set<std::string>& open, std::string& problem) const;
    void draw(const Expansion& expansion, RepeatableRandom& random, std::vector<std::string>& sentence) const;

    std::map<std::string, Rule> m_rules;
};

} // namespace quorvell
