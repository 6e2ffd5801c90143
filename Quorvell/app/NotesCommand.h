#pragma once

#include <functional>

namespace CLI {
class App;
}

namespace quorvell {

struct ProgramEnvironment;

/// `quorvell notes [list | find WORDS... | show ID | edit ID | history ID | restore ID NUMBER | confirm ID | delete ID
/// | export TARGET | move TARGET] [--json]`. Reading needs no owner of the notebook; what changes it goes through the
/// owner.
std::function<int()> addNotesCommand(CLI::App& program, const ProgramEnvironment& environment);

} // namespace quorvell
