// SPDX-License-Identifier: MIT
#include "Quorvell/app/practice/PracticeCommand.h"

#include "Quorvell/app/practice/GivenWorld.h"
#include "Quorvell/app/practice/PracticeTalk.h"
#include "Quorvell/app/program/ExitCode.h"
#include "Quorvell/app/program/Interrupts.h"
#include "Quorvell/app/program/ProgramLoop.h"
#include "Quorvell/app/terminal/PipedLines.h"
#include "Quorvell/app/terminal/TerminalLines.h"
#include "Quorvell/deciders/Deciders.h"
#include "Quorvell/loop/FreshUUID.h"
#include "Quorvell/practice/helper/PracticeHelper.h"
#include "Quorvell/settings/UserSettings.h"

#include <unistd.h>

#include <chrono>
#include <iostream>
#include <memory>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace quorvell {

namespace {

constexpr const char* prompt = "> ";

struct Wish {
    std::string file;
    bool isCheckOnly = false;
};

/// With the deciders that the user has chosen, as on the real screen; ways that were learned are of that, and left out.
TieredDecisionEngine::Parts enginePartsOf(const ProgramEnvironment& environment, const UserSettings& settings)
{
    const auto steady = [] { return std::chrono::steady_clock::now(); };
    const Deciders deciders =
        Deciders::create(DeciderChoice::of(settings.deciders, environment.deciderKeys), environment.webProxy, steady);
    TieredDecisionEngine::Parts parts;
    parts.planner = deciders.planner;
    parts.pim = deciders.selector;
    parts.pimMode = deciders.mode;
    parts.now = steady;
    parts.freshID = freshUUID;
    return parts;
}

int talk(const ProgramEnvironment& environment, PracticeDescription description)
{
    const UserSettings settings = UserSettings::readTelling(environment, std::cerr);
    const auto make = [&](Screen& screen, Scheduler& scheduler, const std::vector<std::string>& applications) {
        TieredDecisionEngine::Parts parts = enginePartsOf(environment, settings);
        parts.applications = applications;
        return std::make_unique<PracticeHelper>(screen, scheduler, std::move(parts));
    };
    ProgramLoop loop;
    std::unique_ptr<LineSource> lines;
    if (environment.isInputTerminal && environment.movesCursor)
        lines = std::make_unique<TerminalLines>(prompt, std::nullopt, environment.colour());
    else
        lines = std::make_unique<PipedLines>(
            STDIN_FILENO, [](const std::string& sentence) { std::cerr << sentence << std::endl; },
            environment.isInputTerminal ? prompt : "");
    const auto tell = [&lines](const std::string& text) { lines->aside([&] { std::cout << text << std::endl; }); };
    PracticeTalk practice({loop.scheduler(), *lines, tell, &ProgramLoop::end}, std::move(description), make);
    const Interrupts interrupts(
        {[&] { practice.interrupt(); }, [] { ProgramLoop::end(exit_code::couldNot); }, [&] { lines->resized(); }});
    loop.scheduler().post([&] { practice.begin(); });
    return loop.run();
}

} // namespace

Command practiceCommand(const ProgramEnvironment& environment)
{
    Command command("practice", "Try the assistant in a small world that a file describes");
    const auto wish = std::make_shared<Wish>();
    command.text("FILE", wish->file, "The world, as JSON").isRequired();
    command.flag("--check", wish->isCheckOnly, "Only say what is wrong with the file");
    command.run = [environment, wish] {
        auto description = givenWorld(wish->file, std::cerr);
        if (!description)
            return exit_code::couldNot;
        if (!wish->isCheckOnly)
            return talk(environment, std::move(*description));
        std::cout << "Nothing is wrong with it: " << description->title << "." << std::endl;
        return exit_code::done;
    };
    return command;
}

} // namespace quorvell
