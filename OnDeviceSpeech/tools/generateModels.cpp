// SPDX-License-Identifier: MIT
// Writes what leads the recogniser: a trigram language model of the requests that the on-device service understands,
// and a dictionary of its words and of the general language model's. Run by the build.
#include "OnDeviceSpeech/models/Pronunciation.h"
#include "OnDeviceSpeech/models/TemplateGrammar.h"
#include "OnDeviceSpeech/models/TrigramModel.h"

#include <err.h>
#include <ngram_model.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <set>
#include <string>
#include <vector>

using namespace quorvell;

namespace {

constexpr int sentenceCount = 60000;
constexpr std::uint64_t seed = 20261121;
/// Tuned on spoken requests whose words are partly outside the templates.
constexpr double openness = 2;

using Dictionary = std::multimap<std::string, std::string>; ///< Word to sounds.

/// Further pronunciations of a word are written "word(2)" in the file.
Dictionary readDictionary(const std::string& path)
{
    Dictionary result;
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);) {
        if (const std::size_t space = line.find(' '); space != line.npos) {
            const std::string word = line.substr(0, space);
            result.emplace(word.substr(0, word.find('(', 1)), line.substr(space + 1));
        }
    }
    return result;
}

std::string entryOf(const std::string& word, const Dictionary& known)
{
    std::vector<std::string> ways;
    const auto [first, last] = known.equal_range(word);
    std::transform(first, last, std::back_inserter(ways), [](const auto& entry) { return entry.second; });
    const std::vector<std::string> own = ownPronunciations(word);
    ways.insert(ways.end(), own.begin(), own.end());
    if (ways.empty()) {
        ways.push_back(guessedPronunciation(word));
    }
    std::string result;
    int count = 0;
    for (const std::string& way : ways) {
        result += word + (++count == 1 ? " " : "(" + std::to_string(count) + ") ") + way + '\n';
    }
    return result;
}

std::string dictionaryOf(const std::set<std::string>& words, const Dictionary& known)
{
    std::string result;
    for (const std::string& word : words) {
        result += entryOf(word, known);
    }
    return result;
}

/// Those of the general language model that the dictionary can pronounce; empty when there is no model.
std::set<std::string> generalWords(const char* path, const Dictionary& known)
{
    std::set<std::string> result;
    logmath_t* logarithms = logmath_init(1.0001, 0, 0);
    if (ngram_model_t* model = ngram_model_read(nullptr, path, NGRAM_AUTO, logarithms)) {
        for (std::uint32_t word = 0; word < ngram_model_get_counts(model)[0]; ++word) {
            if (const char* text = ngram_word(model, static_cast<int>(word)); known.contains(text)) {
                result.insert(text);
            }
        }
        ngram_model_free(model);
    }
    logmath_free(logarithms);
    return result;
}

std::string contentOf(const char* path)
{
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

bool write(const std::filesystem::path& path, const std::string& text)
{
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file << text;
    return static_cast<bool>(file.flush());
}

int fail(const std::string& sentence)
{
    std::cerr << sentence << '\n';
    return 1;
}

TrigramModel trained(const TemplateGrammar& grammar, const std::string& rule)
{
    TrigramModel model(openness);
    RepeatableRandom random{seed};
    for (int i = 0; i < sentenceCount; ++i) {
        std::vector<std::string> sentence;
        grammar.draw(rule, random, sentence);
        model.add(sentence);
    }
    return model;
}

} // namespace

int main(int argumentCount, char** arguments)
{
    if (argumentCount < 5) {
        return fail("Usage: generateModels OUTPUT_FOLDER DICTIONARY GENERAL_MODEL TEMPLATES.jsgf ...");
    }
    err_set_logfp(nullptr);
    const std::filesystem::path folder = arguments[1];
    const Dictionary known = readDictionary(arguments[2]);
    std::set<std::string> general = generalWords(arguments[3], known);
    if (known.empty() || general.empty()) {
        return fail(std::string(known.empty() ? "No dictionary at " : "No language model at ")
            + arguments[known.empty() ? 2 : 3] + ": install the package pocketsphinx-en-us.");
    }

    TemplateGrammar grammar;
    std::string problem;
    for (int file = 4; file < argumentCount && problem.empty(); ++file) {
        problem = grammar.add(contentOf(arguments[file]), arguments[file]);
    }
    if (problem = problem.empty() ? grammar.check() : problem; !problem.empty()) {
        return fail(problem);
    }
    const std::set<std::string> words = grammar.words();
    general.insert(words.begin(), words.end());
    const bool isWritten = write(folder / "commands.lm", trained(grammar, "request").written())
        && write(folder / "commands.dict", dictionaryOf(words, known))
        && write(folder / "general.dict", dictionaryOf(general, known));
    return isWritten ? 0 : fail("Cannot write to " + folder.string() + '.');
}
