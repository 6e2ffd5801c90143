#pragma once

#include <string>

namespace quorvell {

/// Why there is no sound.
enum class SoundProblem { none, noServer, refused, noMicrophone, noLoudspeaker, deviceBusy };

/// For the user, with what to do next. Empty for none.
std::string sentenceOf(SoundProblem problem);

} // namespace quorvell
