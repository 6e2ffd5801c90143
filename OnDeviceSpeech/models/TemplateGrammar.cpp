// SPDX-License-Identifier: MIT
#include "OnDeviceSpeech/models/TemplateGrammar.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <numeric>
#include <utility>

namespace quorvell {

namespace {

/// Of two wordings, with and without an optional part, this share has it.
constexpr double optionalShare = 0.4;

std::string withoutComments(std::string_view text)
{
    std::string result;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        // The words of the format never hold two slashes: weights are single slashes around a number.
        result += line.starts_with("#JSGF") ? std::string_view{} : line.substr(0, line.find("//"));
        result += '\n';
    }
    return result;
}

bool isSpace(char c)
{
    return c == ' ' || c == '\n' || c == '\t' || c == '\r';
}

} // namespace

double RepeatableRandom::next()
{
    state += 0x9e3779b97f4a7c15ULL;
    std::uint64_t mixed = state;
    mixed = (mixed ^ (mixed >> 30)) * 0xbf58476d1ce4e5b9ULL;
    mixed = (mixed ^ (mixed >> 27)) * 0x94d049bb133111ebULL;
    mixed ^= mixed >> 31;
    return static_cast<double>(mixed >> 11) * 0x1.0p-53;
}

/// Reads one file from front to back; `problem` is set at the first mistake.
struct TemplateGrammar::Reader {
    std::string_view text;
    std::size_t at = 0;
    std::string problem;

    void fail(const std::string& what)
    {
        if (problem.empty()) {
            const auto line = 1 + std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(at), '\n');
            problem = "line " + std::to_string(line) + ": " + what;
        }
    }

    std::string_view token()
    {
        while (at < text.size() && isSpace(text[at])) {
            ++at;
        }
        const std::size_t start = at;
        constexpr std::string_view single = ";=|()[]";
        if (at < text.size() && single.find(text[at]) != single.npos) {
            ++at;
        } else if (at < text.size() && (text[at] == '<' || text[at] == '/')) {
            const std::size_t end = text.find(text[at] == '<' ? '>' : '/', at + 1);
            at = end == text.npos ? text.size() : end + 1;
        } else {
            while (
                at < text.size() && !isSpace(text[at]) && std::string_view(";=|()[]</").find(text[at]) == text.npos) {
                ++at;
            }
        }
        return text.substr(start, at - start);
    }

    std::string_view peek()
    {
        const std::size_t before = at;
        const std::string_view result = token();
        at = before;
        return result;
    }

    void expect(std::string_view wanted)
    {
        if (token() != wanted) {
            fail("\"" + std::string(wanted) + "\" is missing");
        }
    }

    double weight()
    {
        if (!peek().starts_with('/')) {
            return 1;
        }
        const std::string_view written = token();
        double value = 0;
        const auto read = std::from_chars(written.data() + 1, written.data() + written.size() - 1, value);
        if (read.ec != std::errc{} || value <= 0) {
            fail("a weight is a number above 0 between slashes");
        }
        return value;
    }

    Expansion choice()
    {
        Expansion result{Expansion::Kind::choice, {}, {}, {}};
        do {
            result.weights.push_back(weight());
            result.parts.push_back(sequence());
        } while (problem.empty() && peek() == "|" && !token().empty());
        return result;
    }

    Expansion sequence()
    {
        Expansion result;
        for (std::string_view next = peek(); problem.empty(); next = peek()) {
            if (next.empty() || next == ";" || next == "|" || next == ")" || next == "]") {
                break;
            }
            result.parts.push_back(part());
        }
        if (result.parts.empty()) {
            fail("an alternative is empty");
        }
        return result;
    }

    Expansion part()
    {
        const std::string_view first = token();
        if (first == "(") {
            Expansion inner = choice();
            expect(")");
            return inner;
        }
        if (first == "[") {
            Expansion inner{Expansion::Kind::choice, {}, {choice(), Expansion{}}, {optionalShare, 1 - optionalShare}};
            expect("]");
            return inner;
        }
        if (first == "<NULL>") {
            return {};
        }
        if (first.starts_with('<')) {
            return {Expansion::Kind::rule, std::string(first.substr(1, first.size() - 2)), {}, {}};
        }
        if (first.starts_with('/') || first == "=") {
            fail("a word was expected");
        }
        return {Expansion::Kind::word, std::string(first), {}, {}};
    }
};

std::string TemplateGrammar::add(std::string_view text, std::string_view fileName)
{
    const std::string plain = withoutComments(text);
    Reader reader{plain, 0, {}};
    reader.expect("grammar");
    reader.token();
    reader.expect(";");
    while (reader.problem.empty() && !reader.peek().empty()) {
        std::string_view name = reader.token();
        const bool isPublic = name == "public";
        if (isPublic) {
            name = reader.token();
        }
        if (name.size() < 3 || name.front() != '<') {
            reader.fail("a rule's <name> was expected");
            break;
        }
        reader.expect("=");
        Rule rule{reader.choice(), isPublic};
        reader.expect(";");
        const std::string key(name.substr(1, name.size() - 2));
        if (reader.problem.empty() && !add(key, std::move(rule))) {
            reader.fail("the rule <" + key + "> exists already");
        }
    }
    return reader.problem.empty() ? std::string{} : std::string(fileName) + ", " + reader.problem;
}

/// False when there is such a rule and it does not take more.
bool TemplateGrammar::add(const std::string& name, Rule rule)
{
    const auto known = m_rules.find(name);
    if (known == m_rules.end()) {
        return m_rules.emplace(name, std::move(rule)).second;
    }
    if (!known->second.isPublic || !rule.isPublic) {
        return false;
    }
    Expansion& choice = known->second.choice;
    choice.weights.insert(choice.weights.end(), rule.choice.weights.begin(), rule.choice.weights.end());
    std::move(rule.choice.parts.begin(), rule.choice.parts.end(), std::back_inserter(choice.parts));
    return true;
}

bool TemplateGrammar::leadsTo(const Expansion& expansion, std::set<std::string>& open, std::string& problem) const
{
    if (expansion.kind == Expansion::Kind::rule) {
        const auto rule = m_rules.find(expansion.name);
        if (rule == m_rules.end()) {
            problem = "the rule <" + expansion.name + "> does not exist";
            return false;
        }
        if (!open.insert(expansion.name).second) {
            problem = "the rule <" + expansion.name + "> contains itself";
            return false;
        }
        const bool fine = leadsTo(rule->second.choice, open, problem);
        open.erase(expansion.name);
        return fine;
    }
    return std::all_of(expansion.parts.begin(), expansion.parts.end(),
        [&](const Expansion& part) { return leadsTo(part, open, problem); });
}

std::string TemplateGrammar::check() const
{
    std::string problem;
    std::set<std::string> open;
    for (const auto& [name, rule] : m_rules) {
        if (!leadsTo({Expansion::Kind::rule, name, {}, {}}, open, problem)) {
            break;
        }
    }
    return problem;
}

std::set<std::string> TemplateGrammar::words() const
{
    std::set<std::string> result;
    std::vector<const Expansion*> waiting;
    for (const auto& [name, rule] : m_rules) {
        waiting.push_back(&rule.choice);
    }
    while (!waiting.empty()) {
        const Expansion& next = *waiting.back();
        waiting.pop_back();
        if (next.kind == Expansion::Kind::word) {
            result.insert(next.name);
        }
        for (const Expansion& part : next.parts) {
            waiting.push_back(&part);
        }
    }
    return result;
}

void TemplateGrammar::draw(const std::string& rule, RepeatableRandom& random, std::vector<std::string>& sentence) const
{
    if (const auto found = m_rules.find(rule); found != m_rules.end()) {
        draw(found->second.choice, random, sentence);
    }
}

void TemplateGrammar::draw(
    const Expansion& expansion, RepeatableRandom& random, std::vector<std::string>& sentence) const
{
    switch (expansion.kind) {
    case Expansion::Kind::word:
        sentence.push_back(expansion.name);
        return;
    case Expansion::Kind::rule:
        draw(expansion.name, random, sentence);
        return;
    case Expansion::Kind::sequence:
        for (const Expansion& part : expansion.parts) {
            draw(part, random, sentence);
        }
        return;
    case Expansion::Kind::choice:
        double left = random.next() * std::accumulate(expansion.weights.begin(), expansion.weights.end(), 0.0);
        std::size_t chosen = 0;
        while (chosen + 1 < expansion.parts.size() && left >= expansion.weights[chosen]) {
            left -= expansion.weights[chosen];
            ++chosen;
        }
        draw(expansion.parts[chosen], random, sentence);
        return;
    }
}

} // namespace quorvell
