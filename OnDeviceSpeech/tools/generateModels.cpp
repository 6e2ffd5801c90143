// Writes the models of the requests that the on-device service understands: a trigram language model, a grammar and a
// dictionary of their words, and a dictionary of the general language model's words. Run by the build.
#include "OnDeviceSpeech/models/Pronunciation.h"
#include "OnDeviceSpeech/models/TemplateGrammar.h"
#include "OnDeviceSpeech/models/TrigramModel.h"

#include <ngram_model.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

using namespace quorvell;

namespace {

constexpr int sentences = 60000;
constexpr std::uint64_t seed = 20261121;
constexpr double openness = 2;
double soundProbability = std::getenv("SP") ? std::atof(std::getenv("SP")) : 0.1;

/// Reads a pronunciation dictionary; further pronunciations of a word are written "word(2)".
std::multimap<std::string, std::string> readDictionary(const std::string& path)
{
    std::multimap<std::string, std::string> result;
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);) {
        const std::size_t space = line.find(' ');
        const std::string word = line.substr(0, space);
        const std::size_t bracket = word.find('(');
        result.emplace(bracket == 0 ? word : word.substr(0, bracket), line);
    }
    return result;
}

bool write(const std::filesystem::path& path, const std::string& text)
{
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file << text;
    return static_cast<bool>(file.flush());
}

std::string dictionaryOf(const std::set<std::string>& words, const std::multimap<std::string, std::string>& known)
{
    std::string result;
    for (const std::string& word : words) {
        const auto [first, last] = known.equal_range(word);
        for (auto line = first; line != last; ++line) {
            result += line->second + '\n';
        }
        if (first == last) {
            int count = 0;
            for (const std::string& sounds : pronunciations(word)) {
                result += word + (++count == 1 ? " " : "(" + std::to_string(count) + ") ") + sounds + '\n';
            }
        }
    }
    return result;
}

int fail(const std::string& sentence)
{
    std::cerr << sentence << '\n';
    return 1;
}

} // namespace

int main(int argumentCount, char** arguments)
{
    if (argumentCount < 5) {
        return fail("Usage: generateModels OUTPUT_FOLDER DICTIONARY GENERAL_MODEL TEMPLATES.jsgf... FREE_WORDS.jsgf");
    }
    const std::filesystem::path folder = arguments[1];
    const auto known = readDictionary(arguments[2]);
    if (known.empty()) {
        return fail(std::string("No dictionary at ") + arguments[2] + ": install pocketsphinx-en-us.");
    }

    // The first public rule is what sentences are drawn from, the second the looser form that the grammar accepts; the
    // public rules of the last file are free words.
    TemplateGrammar grammar;
    std::size_t fixedRules = 0;
    std::set<std::string> freeWords;
    for (int i = 4; i < argumentCount; ++i) {
        std::ifstream file(arguments[i]);
        std::stringstream text;
        text << file.rdbuf();
        fixedRules = grammar.publicRules().size();
        TemplateGrammar own; own.add(text.str(), ""); freeWords = own.words();
        if (const std::string problem = grammar.add(text.str(), arguments[i]); !problem.empty()) {
            return fail(problem);
        }
    }
    if (const std::string problem = grammar.check(); !problem.empty()) {
        return fail(problem);
    }
    const std::vector<std::string> rules = grammar.publicRules();
    if (fixedRules != 2 || rules.size() <= fixedRules) {
        return fail("The templates need two public rules, and the free words at least one.");
    }

    TrigramModel model(openness);
    RepeatableRandom random {seed};
    for (int i = 0; i < sentences; ++i) {
        std::vector<std::string> sentence;
        grammar.draw(rules[0], random, sentence);
        model.add(sentence);
    }

    std::string soundWords;
    std::vector<std::string> sounds;
    std::map<std::string, double> probabilities;
    for (const std::string& sound : speechSounds()) {
        sounds.push_back(soundWord(sound));
        soundWords += soundWord(sound) + ' ' + sound + '\n';
        probabilities[soundWord(sound)] = soundProbability;
    }
    if (getenv("WORDS")) {
        sounds.clear();
        std::map<std::string,int> often; std::vector<std::pair<int,std::string>> order;
        for (int i = 0; i < 20000; ++i) { std::vector<std::string> x; grammar.draw(i % 2 ? "task" : "remark", random, x); for (auto& w : x) ++often[w]; }
        for (auto& [w, n] : often) order.push_back({-n, w});
        std::sort(order.begin(), order.end());
        freeWords.clear();
        for (std::size_t i = 0; i < order.size() && i < (std::size_t) atoi(getenv("WORDS")); ++i) freeWords.insert(order[i].second);
        for (const std::string& word : freeWords) sounds.push_back(word + "#"), probabilities[word+"#"] = soundProbability;
    }
    std::map<std::string, std::vector<std::string>> loops;
    for (std::size_t rule = fixedRules; rule < rules.size(); ++rule) {
        loops[rules[rule]] = sounds;
    }
    const CommandGraph graph = grammar.graph(rules[1], loops);

    std::set<std::string> generalWords;
    logmath_t* logarithms = logmath_init(1.0001, 0, 0);
    ngram_model_t* general = ngram_model_read(nullptr, arguments[3], NGRAM_AUTO, logarithms);
    if (general == nullptr) {
        return fail(std::string("No language model at ") + arguments[3] + ": install pocketsphinx-en-us.");
    }
    for (std::uint32_t word = 0; word < ngram_model_get_counts(general)[0]; ++word) {
        if (const char* text = ngram_word(general, static_cast<int>(word)); known.contains(text)) {
            generalWords.insert(text);
        }
    }
    ngram_model_free(general);
    logmath_free(logarithms);
    const std::set<std::string> words = grammar.words();
    generalWords.insert(words.begin(), words.end());

    std::cout << words.size() << " words, " << graph.size() << " states\n";
    const bool isWritten = write(folder / "commands.lm", model.written())
        && write(folder / "commands.fsg", graph.written("commands", probabilities))
        && write(folder / "commands.dict", dictionaryOf(words, known) + soundWords)
        && write(folder / "general.dict", dictionaryOf(generalWords, known));
    return isWritten ? 0 : fail("Cannot write to " + folder.string() + '.');
}
