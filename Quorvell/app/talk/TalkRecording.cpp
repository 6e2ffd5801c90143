// SPDX-License-Identifier: MIT
#include "Quorvell/app/talk/TalkRecording.h"

#include "Media/audio/WavFile.h"
#include "Quorvell/app/conversation/ConversationEvents.h"
#include "Quorvell/app/conversation/ConversationOptions.h"
#include "Quorvell/app/conversation/ConversationText.h"
#include "Quorvell/app/conversation/WorkNote.h"
#include "Quorvell/app/program/ExitCode.h"
#include "Quorvell/app/program/Interrupts.h"
#include "Quorvell/app/program/ProgramLoop.h"
#include "Quorvell/app/talk/ReplyRecorder.h"
#include "Quorvell/app/talk/TalkTurn.h"
#include "Quorvell/assistant/Assistant.h"
#include "Quorvell/session/reports/ObserverGroup.h"

#include <nlohmann/json.hpp>

#include <filesystem>
#include <iostream>
#include <system_error>
#include <utility>
#include <vector>

namespace quorvell {

namespace {

constexpr int clearSpeechRateHz = 16000; ///< Below, the sounds that tell consonants apart are missing.

int complain(const std::string& problem)
{
    std::cerr << problem << std::endl;
    return exit_code::couldNot;
}

/// What the turn looks like to whoever asked for it.
struct TalkView {
    std::unique_ptr<ConversationEvents> events; ///< With --json.
    std::unique_ptr<ConversationText> text; ///< Without, as is the next.
    std::unique_ptr<WorkNote> work;

    std::vector<SessionAudience*> observersWith(SessionAudience& last) const
    {
        if (events)
            return {events.get(), &last};
        return {text.get(), work.get(), &last};
    }
    void tellProblem(const std::string& sentence) const
    {
        if (events)
            events->problemArose(sentence);
        else
            text->problemArose(sentence);
    }
    void tell(std::string_view event) const
    {
        if (events)
            events->write(event, Json::object());
    }
};

TalkView makeView(const ProgramEnvironment& environment, const ConversationOptions& options, QtScheduler& scheduler)
{
    if (options.asJson)
        return {std::make_unique<ConversationEvents>(std::cout, scheduler), nullptr, nullptr};
    ConversationText::Style style = options.textStyle(environment);
    style.speakers = ConversationText::Speakers::named;
    auto text = std::make_unique<ConversationText>(std::cout, std::cerr, style);
    auto work =
        std::make_unique<WorkNote>(scheduler, [shown = text.get()](const std::string& note) { shown->note(note); });
    return {nullptr, std::move(text), std::move(work)};
}

int keepReply(const TalkFiles& files, const ReplyRecorder& recorder)
{
    if (!files.reply)
        return 0;
    if (recorder.samples().empty())
        return complain("The answer had no sound, so " + *files.reply + " was not written.");
    const auto problem = WavFile::write(*files.reply, recorder.samples(), MicrophoneStream::sampleRateHz);
    return problem ? complain(*problem) : 0;
}

} // namespace

int talkFromRecording(const ProgramEnvironment& environment, const ConversationOptions& options, const TalkFiles& files)
{
    const WavReading recording = WavFile::read(files.recording, MicrophoneStream::sampleRateHz);
    if (!recording.samples)
        return complain(recording.problem);
    if (!recording.isWhole)
        return complain(files.recording
            + " breaks off or is damaged, so that words in it may be missing. It was not played; record it once more, "
              "or save the part that you can hear as a new file.");
    if (recording.recordedRateHz < clearSpeechRateHz)
        std::cerr << files.recording << " was recorded at " << recording.recordedRateHz
                  << " Hz, as telephones do; words are often misheard. Record at 16000 Hz or more." << std::endl;
    if (std::error_code failure; files.reply && std::filesystem::equivalent(files.recording, *files.reply, failure))
        return complain("The answer would take the place of the recording. Give another name after --reply.");
    if (const auto problem = files.reply ? WavFile::problemOfWriting(*files.reply) : std::nullopt)
        return complain(*problem);
    ProgramLoop loop;
    QtScheduler& scheduler = loop.scheduler();
    const TalkView view = makeView(environment, options, scheduler);
    const UserSettings settings = UserSettings::readTelling(environment, std::cerr);
    ReplyRecorder recorder([&] { view.tell("voice_started"); });
    const auto finished = [&](const TalkTurn::Outcome& outcome) {
        if (!outcome.problem.empty())
            view.tellProblem(outcome.problem);
        ProgramLoop::end(outcome.isAnswered ? exit_code::done : exit_code::couldNot);
    };
    TalkTurn turn({scheduler, [&] { view.tell("input_ended"); }, finished}, *recording.samples);
    ObserverGroup observers(view.observersWith(turn));
    Assistant::Wishes wishes{options.host, options.backend, options.transport};
    wishes.limits = TalkTurn::limitsFor(recording.samples->size());
    const Assistant::Made made = Assistant::create(environment, settings, scheduler, wishes, {recorder}, observers);
    if (!made.assistant)
        return complain(made.problem);
    const Interrupts interrupts({[&] { turn.interrupt(); }});
    scheduler.post([&] { turn.begin(made.assistant->session()); });
    const int exitCode = loop.run();
    return exitCode != 0 ? exitCode : keepReply(files, recorder);
}

} // namespace quorvell
