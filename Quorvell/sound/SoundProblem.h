// SPDX-License-Identifier: MIT
// Why there is no sound.
#pragma once

#include <string>

namespace quorvell {

enum class [[nodiscard]] SoundProblem{none, noServer, noFolder, refused, noMicrophone, noLoudspeaker, deviceBusy};

/// For the user, with what to do next. Empty for none.
std::string sentenceOf(SoundProblem problem);

} // namespace quorvell
