// SPDX-License-Identifier: MIT
// What is wrong with a practice file, for whoever writes one.
#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace quorvell {

struct PracticeMistake {
    std::string place; ///< Such as "apps[0].windows[1].elements[3].role"; empty: the file as a whole.
    std::string sentence;

    bool operator==(const PracticeMistake&) const = default;
};

/// The first ones: the rest is told when these are mended.
class PracticeMistakes {
public:
    static constexpr std::size_t most = 20;

    void add(std::string place, std::string sentence)
    {
        if (m_mistakes.size() < most)
            m_mistakes.push_back({std::move(place), std::move(sentence)});
    }

    const std::vector<PracticeMistake>& all() const { return m_mistakes; }

private:
    std::vector<PracticeMistake> m_mistakes;
};

} // namespace quorvell
