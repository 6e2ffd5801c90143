// SPDX-License-Identifier: MIT
#include "Quorvell/app/doctor/DoctorCommand.h"

#include "Quorvell/app/doctor/Doctor.h"
#include "Quorvell/app/program/ProgramLoop.h"
#include "Quorvell/app/terminal/TerminalColumns.h"

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

Command doctorCommand(const ProgramEnvironment& environment)
{
    Command command("doctor", "Look what works, what does not, and say what to do");
    const auto asJson = std::make_shared<bool>(false);
    command.flag("--json", *asJson, "Print one JSON object a finding");
    command.run = [environment, asJson] { return runDoctor(environment, *asJson); };
    return command;
}

} // namespace quorvell
