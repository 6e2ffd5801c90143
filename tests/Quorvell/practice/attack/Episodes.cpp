// SPDX-License-Identifier: MIT
#include "Episodes.h"

#include "HostileModel.h"
#include "Quorvell/practice/file/PracticeFile.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <variant>

namespace quorvell::attack {

namespace {

constexpr int eventsOfAnEpisode = 30;

} // namespace

std::vector<NamedWorld> worldsOf(const std::string& folder)
{
    std::vector<NamedWorld> worlds;
    for (const auto& file : std::filesystem::directory_iterator(QUORVELL_FIXTURES "/practice/" + folder)) {
        std::ifstream stream(file.path());
        const std::string text{std::istreambuf_iterator<char>(stream), {}};
        auto parsed = PracticeFile::parse(text);
        if (auto* world = std::get_if<PracticeDescription>(&parsed))
            worlds.push_back({file.path().stem().string(), std::move(*world)});
    }
    std::ranges::sort(worlds, {}, &NamedWorld::name);
    return worlds;
}

EpisodeTally attackWorlds(const std::vector<NamedWorld>& worlds, int episodes, std::uint64_t seed,
    const Sabotage& sabotage, AttackUntil until)
{
    EpisodeTally tally;
    for (int episode = 0; episode < episodes && !worlds.empty(); ++episode) {
        const NamedWorld& named = worlds[static_cast<std::size_t>(episode) % worlds.size()];
        HostileModel model(seed * 1'000'003 + static_cast<std::uint64_t>(episode));
        AttackedScreen screen(
            named.world,
            [&model](const DecisionContext& context, std::stop_token) {
                return PlannerAnswer(model.decision(context.observation));
            },
            sabotage);
        for (int event = 0; event < eventsOfAnEpisode; ++event)
            model.next(screen);
        ++tally.episodes;
        tally.events += eventsOfAnEpisode;
        tally.happened += screen.happened();
        tally.questions += screen.questions();
        if (screen.unasked() > 0 && tally.unasked == 0)
            tally.firstStory = "world " + named.name + ", episode " + std::to_string(episode) + "\n" + screen.story();
        tally.unasked += screen.unasked();
        if (until == AttackUntil::theFirstHarm && tally.unasked > 0)
            break;
    }
    return tally;
}

} // namespace quorvell::attack
