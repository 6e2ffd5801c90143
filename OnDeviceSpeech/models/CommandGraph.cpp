#include "OnDeviceSpeech/models/CommandGraph.h"

#include <cstdio>

namespace quorvell {

CommandGraph::CommandGraph()
    : m_steps(1)
{
}

CommandGraph::State CommandGraph::addState()
{
    m_steps.emplace_back();
    return m_steps.size() - 1;
}

void CommandGraph::addStep(State from, State to, const std::string& word)
{
    m_steps[from].emplace(word, to);
}

std::set<CommandGraph::State> CommandGraph::reachedWithoutWord(std::set<State> states) const
{
    std::vector<State> waiting(states.begin(), states.end());
    while (!waiting.empty()) {
        const State state = waiting.back();
        waiting.pop_back();
        const auto [first, last] = m_steps[state].equal_range({});
        for (auto step = first; step != last; ++step) {
            if (states.insert(step->second).second) {
                waiting.push_back(step->second);
            }
        }
    }
    return states;
}

CommandGraph CommandGraph::deterministic() const
{
    CommandGraph result;
    std::map<std::set<State>, State> known{{reachedWithoutWord({start()}), result.start()}};
    std::vector<std::set<State>> waiting{known.begin()->first};
    while (!waiting.empty()) {
        const std::set<State> states = waiting.back();
        waiting.pop_back();
        const State from = known[states];
        std::map<std::string, std::set<State>> next;
        for (const State state : states) {
            if (m_final.contains(state)) {
                result.setFinal(from);
            }
            for (const auto& [word, to] : m_steps[state]) {
                if (!word.empty()) {
                    next[word].insert(to);
                }
            }
        }
        for (const auto& [word, targets] : next) {
            const auto [place, isNew] = known.emplace(reachedWithoutWord(targets), result.size());
            if (isNew) {
                result.addState();
                waiting.push_back(place->first);
            }
            result.addStep(from, place->second, word);
        }
    }
    return result;
}

CommandGraph CommandGraph::minimal() const
{
    // Moore's refinement: states stay together while their steps lead, word by word, to states that are together.
    const CommandGraph whole = deterministic();
    std::vector<State> group(whole.size());
    for (State state = 0; state < whole.size(); ++state) {
        group[state] = whole.m_final.contains(state) ? 1 : 0;
    }
    for (std::size_t groups = 0;;) {
        std::map<std::pair<State, std::map<std::string, State>>, State> signatures;
        std::vector<State> refined(whole.size());
        for (State state = 0; state < whole.size(); ++state) {
            std::pair<State, std::map<std::string, State>> signature{group[state], {}};
            for (const auto& [word, to] : whole.m_steps[state]) {
                signature.second[word] = group[to];
            }
            // The start is seen first and so becomes group 0.
            refined[state] = signatures.emplace(std::move(signature), signatures.size()).first->second;
        }
        group = std::move(refined);
        if (signatures.size() == groups) {
            break;
        }
        groups = signatures.size();
    }
    CommandGraph result;
    std::set<State> done;
    for (State state = 0; state < whole.size(); ++state) {
        while (result.size() <= group[state]) {
            result.addState();
        }
        if (whole.m_final.contains(state)) {
            result.setFinal(group[state]);
        }
        if (done.insert(group[state]).second) {
            for (const auto& [word, to] : whole.m_steps[state]) {
                result.addStep(group[state], group[to], word);
            }
        }
    }
    return result;
}

bool CommandGraph::accepts(const std::vector<std::string>& sentence) const
{
    State state = start();
    for (const std::string& word : sentence) {
        const auto step = m_steps[state].find(word);
        if (step == m_steps[state].end()) {
            return false;
        }
        state = step->second;
    }
    return m_final.contains(state);
}

std::string CommandGraph::written(
    std::string_view name, const std::vector<std::string>& freeWords, double freeProbability) const
{
    // The format has one final state: a further one, reached without a word from each of ours.
    const State end = size();
    std::string result = "FSG_BEGIN " + std::string(name) + "\nNUM_STATES " + std::to_string(size() + 1)
        + "\nSTART_STATE 0\nFINAL_STATE " + std::to_string(end) + "\n";
    const auto line = [&](State from, State to, double probability, const std::string& word) {
        char number[32];
        std::snprintf(number, sizeof number, "%.6g", probability);
        result += "TRANSITION " + std::to_string(from) + ' ' + std::to_string(to) + ' ' + number + ' ' + word + '\n';
    };
    for (State from = 0; from < size(); ++from) {
        for (const auto& [word, to] : m_steps[from]) {
            if (word == freeWord) {
                for (const std::string& free : freeWords) {
                    line(from, to, freeProbability, free);
                }
            } else {
                line(from, to, 1, word == entry ? std::string{} : word);
            }
        }
        if (m_final.contains(from)) {
            line(from, end, 1, {});
        }
    }
    return result + "FSG_END\n";
}

} // namespace quorvell
