// SPDX-License-Identifier: MIT
#include "Quorvell/app/talk/TalkCommand.h"

#include "Quorvell/app/conversation/ConversationOptions.h"
#include "Quorvell/app/talk/TalkAloud.h"
#include "Quorvell/app/talk/TalkRecording.h"
#include "Quorvell/settings/ProgramEnvironment.h"

#include <memory>

namespace quorvell {

namespace {

struct Options {
    TalkFiles files;
    TalkWishes wishes;
    bool listsDevices = false;
};

} // namespace

Command talkCommand(const ProgramEnvironment& environment)
{
    Command command("talk", "Talk to the assistant through microphone and loudspeaker, or play a recording to it");
    const auto chosen = std::make_shared<Options>();
    command.text("recording", chosen->files.recording,
        "What is said to the assistant: a WAV, FLAC, Ogg or MP3 file (default: the microphone)");
    command.text("--reply", chosen->files.reply, "Where to keep what it answers, a WAV file").needs("recording");
    command.text("--device", chosen->wishes.microphone, "The microphone, as --list-devices names it")
        .excludes("recording");
    command.text("--loudspeaker", chosen->wishes.loudspeaker, "The loudspeaker, as --list-devices names it")
        .excludes("recording");
    command.flag("--push-to-talk", chosen->wishes.isPushToTalk, "Listen only between two presses of Space")
        .excludes("recording");
    command.flag("--list-devices", chosen->listsDevices, "List microphones and loudspeakers").excludes("recording");
    const auto options = ConversationOptions::declare(command);
    command.run = [environment, options, chosen] {
        if (chosen->listsDevices)
            return listSoundDevices(environment, options->asJson);
        if (chosen->files.recording.empty())
            return talkAloud(environment, *options, chosen->wishes);
        return talkFromRecording(environment, *options, chosen->files);
    };
    return command;
}

} // namespace quorvell
