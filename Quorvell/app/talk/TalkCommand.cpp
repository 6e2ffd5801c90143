// SPDX-License-Identifier: MIT
#include "Quorvell/app/talk/TalkCommand.h"

#include "Quorvell/app/conversation/ConversationOptions.h"
#include "Quorvell/app/talk/TalkAloud.h"
#include "Quorvell/app/talk/TalkRecording.h"
#include "Quorvell/settings/ProgramEnvironment.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace quorvell {

namespace {

struct Options {
    TalkFiles files;
    TalkWishes wishes;
    bool listsDevices = false;
};

} // namespace

std::function<int()> addTalkCommand(CLI::App& program, const ProgramEnvironment& environment)
{
    CLI::App* command = program.add_subcommand(
        "talk", "Talk to the assistant through microphone and loudspeaker, or play a recording to it");
    const auto chosen = std::make_shared<Options>();
    auto* recording = command->add_option(
        "recording", chosen->files.recording, "What is said to the assistant, a WAV file (default: the microphone)");
    command->add_option("--reply", chosen->files.reply, "Where to keep what it answers, a WAV file")->needs(recording);
    command->add_option("--device", chosen->wishes.microphone, "The microphone, as --list-devices names it")
        ->excludes(recording);
    command->add_option("--loudspeaker", chosen->wishes.loudspeaker, "The loudspeaker, as --list-devices names it")
        ->excludes(recording);
    command->add_flag("--push-to-talk", chosen->wishes.isPushToTalk, "Listen only between two presses of Space")
        ->excludes(recording);
    command->add_flag("--list-devices", chosen->listsDevices, "List microphones and loudspeakers")->excludes(recording);
    const auto options = ConversationOptions::declare(*command);
    return [environment, options, chosen] {
        if (chosen->listsDevices)
            return listSoundDevices(environment, options->asJson);
        if (chosen->files.recording.empty())
            return talkAloud(environment, *options, chosen->wishes);
        return talkFromRecording(environment, *options, chosen->files);
    };
}

} // namespace quorvell
