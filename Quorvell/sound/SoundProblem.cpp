// SPDX-License-Identifier: MIT
#include "Quorvell/sound/SoundProblem.h"

namespace quorvell {

std::string sentenceOf(SoundProblem problem)
{
    switch (problem) {
    case SoundProblem::none:
        return {};
    case SoundProblem::noServer:
        return "There is no sound: no sound server is running. Start it with \"systemctl --user start pipewire-pulse\" "
               "or \"pulseaudio --start\"; typing works without it.";
    case SoundProblem::noFolder:
        return "There is no sound: the folder in which programs meet the sound server cannot be made. See that "
               "XDG_RUNTIME_DIR names a folder that is yours; typing works without it.";
    case SoundProblem::refused:
        return "There is no sound: the sound server refused access. Run Quorvell as the user who is logged in at this "
               "computer, or check the server's cookie file; typing works without it.";
    case SoundProblem::noMicrophone:
        return "You cannot be heard: no microphone is connected. Connect one or choose another; it is used as soon as "
               "it is there. Typing works without it.";
    case SoundProblem::noLoudspeaker:
        return "You cannot hear answers: no loudspeaker is connected. Connect one or choose another; it is used as "
               "soon as it is there. Answers can be read meanwhile.";
    case SoundProblem::deviceBusy:
        return "There is no sound: the sound device cannot be used, perhaps because another program keeps it for "
               "itself. "
               "End that program or choose another device; typing works without it.";
    }
    return {};
}

} // namespace quorvell
