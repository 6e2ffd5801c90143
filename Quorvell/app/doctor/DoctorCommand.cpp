// SPDX-License-Identifier: MIT
#include "Quorvell/app/doctor/DoctorCommand.h"

#include "Quorvell/app/doctor/Doctor.h"
#include "Quorvell/app/program/ProgramLoop.h"
#include "Quorvell/app/terminal/TerminalColumns.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <iostream>
#include <memory>

namespace quorvell {

namespace {

void print(const std::vector<DoctorFinding>& findings, const ProgramEnvironment& environment, bool asJson)
{
    const std::size_t columns = outputColumns(environment);
    for (const DoctorFinding& finding : findings)
        std::cout << (asJson ? dumpJson(finding.json()) : finding.text(columns)) << "\n";
    if (!asJson)
        std::cout << "\n" << DoctorFinding::summary(findings) << "\n";
    std::cout << std::flush;
}

int runDoctor(const ProgramEnvironment& environment, bool asJson)
{
    ProgramLoop loop;
    Doctor doctor(environment, loop.scheduler());
    doctor.examine([&environment, asJson](const std::vector<DoctorFinding>& findings) {
        print(findings, environment, asJson);
        ProgramLoop::end(DoctorFinding::exitCode(findings));
    });
    return loop.run();
}

} // namespace

std::function<int()> addDoctorCommand(CLI::App& program, const ProgramEnvironment& environment)
{
    CLI::App* command = program.add_subcommand("doctor", "Look what works, what does not, and say what to do");
    const auto asJson = std::make_shared<bool>(false);
    command->add_flag("--json", *asJson, "Print one JSON object a finding");
    return [environment, asJson] { return runDoctor(environment, *asJson); };
}

} // namespace quorvell
