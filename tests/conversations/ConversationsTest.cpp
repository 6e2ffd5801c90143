// SPDX-License-Identifier: MIT
// Catches what only shows over a whole conversation: a wrong thing changed, a question that traps, a change of mind
// that is not heard. Judged by what stands in notebook and calendar at the end.
#include "Household.h"

#include <fnmatch.h>
#include <gtest/gtest.h>

#include <cctype>
#include <filesystem>
#include <fstream>
#include <regex>

namespace quorvell {
namespace {

std::string small(std::string text)
{
    std::ranges::transform(text, text.begin(), [](unsigned char letter) { return std::tolower(letter); });
    return text;
}

/// tests/fixtures/conversations/<name>.txt: "now 2026-11-23 09:00", then a line each
///     words                what the user says
///     later 90             minutes pass
///     ~ pattern            what was just said to them must hold that, whatever case
///     = pattern            stands there at the end; these are all that does. "*" is anything; capital letters are
///     small
void play(const std::filesystem::path& path)
{
    std::ifstream file(path);
    std::unique_ptr<Household> household;
    std::string said;
    std::string talk;
    std::vector<std::string> expected;
    for (std::string line; std::getline(file, line);) {
        if (line.empty() || line.starts_with("#"))
            continue;
        if (line.starts_with("now ")) {
            household = std::make_unique<Household>(line.substr(4));
            continue;
        }
        ASSERT_TRUE(household) << "the time comes first";
        if (line.starts_with("= ")) {
            expected.push_back(line.substr(2));
        } else if (line.starts_with("~ ")) {
            EXPECT_TRUE(std::regex_search(said, std::regex(line.substr(2), std::regex::icase)))
                << line << "\nafter:\n"
                << talk.substr(talk.size() - std::min<std::size_t>(talk.size(), 600));
        } else if (line.starts_with("later ")) {
            household->pass(std::chrono::minutes(std::stoi(line.substr(6))));
        } else {
            said = household->say(line);
            talk += line + "\n    > " + said + "\n";
        }
    }
    ASSERT_TRUE(household);
    std::vector<std::string> state = household->state();
    for (const std::string& pattern : expected) {
        const std::string glob = std::regex_replace(pattern, std::regex("[\\[?]"), "\\$&");
        const auto found = std::ranges::find_if(
            state, [&](const std::string& line) { return ::fnmatch(glob.c_str(), small(line).c_str(), 0) == 0; });
        EXPECT_NE(found, state.end()) << "missing: " << pattern;
        if (found != state.end())
            state.erase(found);
    }
    for (const std::string& line : state)
        ADD_FAILURE() << "nobody wished for: " << line;
    if (testing::Test::HasFailure())
        ADD_FAILURE() << talk;
}

class Conversations : public testing::TestWithParam<std::filesystem::path> { };

TEST_P(Conversations, endAsWished)
{
    play(GetParam());
}

std::vector<std::filesystem::path> all()
{
    std::vector<std::filesystem::path> paths;
    for (const auto& entry : std::filesystem::directory_iterator(QUORVELL_FIXTURES "/conversations"))
        paths.push_back(entry.path());
    std::ranges::sort(paths);
    return paths;
}

INSTANTIATE_TEST_SUITE_P(family, Conversations, testing::ValuesIn(all()), [](const auto& given) {
    std::string name = given.param.stem().string();
    std::erase_if(name, [](char letter) { return !std::isalnum(static_cast<unsigned char>(letter)); });
    return name;
});

} // namespace
} // namespace quorvell
