// Turns the templates into the smallest graph of words that accepts the same requests, for the grammar's decoder: its
// work and memory grow with the number of states.
#pragma once

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quorvell {

/// A finite automaton over words. State 0 is the start. First built with steps that need no word, then made
/// deterministic and minimal.
/// Free words are two labels that stay as they are until the graph is written: `entry` is a step into a loop, and
/// `freeWord` stands for any of them. Entering without a word keeps the loop in one place. Spread over all the states
/// that may lead to it, its many words would take most of the memory.
class CommandGraph {
public:
    using State = std::size_t;
    static constexpr std::string_view entry = "<entry>";
    static constexpr std::string_view freeWord = "<free>";

    CommandGraph();
    State addState();
    State start() const { return 0; }
    /// An empty word is a step that needs none.
    void addStep(State from, State to, const std::string& word);
    void setFinal(State state) { m_final.insert(state); }

    CommandGraph minimal() const;
    bool accepts(const std::vector<std::string>& sentence) const; ///< Of a minimal graph.
    std::size_t size() const { return m_steps.size(); }

    /// In the finite state grammar format of the decoder. Free words have `freeProbability`, all others 1.
    std::string written(std::string_view name, const std::vector<std::string>& freeWords, double freeProbability) const;

private:
    std::set<State> reachedWithoutWord(std::set<State> states) const;
    CommandGraph deterministic() const;

    std::vector<std::multimap<std::string, State>> m_steps;
    std::set<State> m_final;
};

} // namespace quorvell
