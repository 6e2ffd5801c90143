// SPDX-License-Identifier: MIT
#include "Quorvell/app/talk/TalkAloud.h"

#include "Quorvell/app/conversation/ConversationEvents.h"
#include "Quorvell/app/conversation/ConversationOptions.h"
#include "Quorvell/app/conversation/ConversationText.h"
#include "Quorvell/app/conversation/WorkNote.h"
#include "Quorvell/app/program/ExitCode.h"
#include "Quorvell/app/program/Interrupts.h"
#include "Quorvell/app/program/OwnServices.h"
#include "Quorvell/app/program/ProgramLoop.h"
#include "Quorvell/app/talk/LiveTalk.h"
#include "Quorvell/app/talk/TalkStatus.h"
#include "Quorvell/app/terminal/Keyboard.h"
#include "Quorvell/app/terminal/StatusLine.h"
#include "Quorvell/app/terminal/TerminalColumns.h"
#include "Quorvell/assistant/Assistant.h"
#include "Quorvell/assistant/DesktopSound.h"
#include "Quorvell/assistant/RingingSound.h"
#include "Quorvell/speech/DeviceEar.h"
#include "Quorvell/speech/DeviceVoice.h"
#include "QuorvellCore/text/PrintableText.h"

#include <nlohmann/json.hpp>

#include <iostream>
#include <utility>

namespace quorvell {

namespace {

constexpr const char* elseType = " `quorvell chat` is for typing.";

/// One spoken conversation with everything that shows and carries it.
class AloudTalk {
public:
    AloudTalk(const ProgramEnvironment& environment, const ConversationOptions& options, const TalkWishes& wishes)
        : m_environment(environment)
        , m_options(options)
        , m_settings(UserSettings::readTelling(environment, std::cerr))
        , m_listening(wishes.isPushToTalk || m_settings.listening == UserSettings::Listening::pushToTalk
                  ? SessionSettings::Listening::pushToTalk
                  : SessionSettings::Listening::openMicrophone)
        , m_sound(environment.runtimeFolder, m_loop.scheduler(),
              {wishes.microphone.value_or(m_settings.microphone.value_or("")),
                  wishes.loudspeaker.value_or(m_settings.loudspeaker.value_or(""))},
              {[this](std::span<const std::uint8_t> pcm) { captured(pcm); },
                  [this](const std::string& sentence) { soundFailed(sentence); }})
        , m_voice(m_sound.player(), m_loop.scheduler())
        , m_ear(
              SpeechModels::find(environment.programFolder), m_loop.scheduler(), OwnServices::of(m_settings).recogniser)
        , m_talk({m_loop.scheduler(), [this](const std::string& sentence) { tell(sentence); },
                     [this] { return m_assistant->usageText(); }, &ProgramLoop::end},
              m_listening)
    {
        makeViews();
    }

    int run()
    {
        const Interrupts interrupts({[this] { interrupt(); }, [this] { leave(); }});
        m_sound.whenKnown([this](const std::string& problem) { soundKnown(problem); });
        return m_loop.run();
    }

private:
    void makeViews()
    {
        std::vector<SessionAudience*> observers;
        if (m_options.asJson) {
            m_events = std::make_unique<ConversationEvents>(std::cout, m_loop.scheduler());
            observers.push_back(m_events.get());
        } else {
            ConversationText::Style style = m_options.textStyle(m_environment);
            style.speakers = ConversationText::Speakers::named;
            style.aside = [this](const auto& print) { m_line.aside(print); };
            m_text = std::make_unique<ConversationText>(std::cout, std::cerr, style);
            observers.push_back(m_text.get());
        }
        if (m_text && m_environment.movesCursor) {
            m_status = std::make_unique<TalkStatus>(
                m_loop.scheduler(), m_line, [this] { return m_assistant ? m_assistant->usage().secondsToday() : 0.0; });
            observers.push_back(m_status.get());
        } else if (m_text) {
            m_work =
                std::make_unique<WorkNote>(m_loop.scheduler(), [this](const std::string& note) { m_text->note(note); });
            observers.push_back(m_work.get());
        }
        observers.push_back(&m_talk);
        m_observers = std::make_unique<ObserverGroup>(observers);
    }

    void soundKnown(const std::string& problem)
    {
        if (!problem.empty())
            return fail(problem + elseType);
        if (const std::string choice = m_sound.problemOfChoice(); !choice.empty())
            return fail(choice);
        if (!m_sound.devices().microphone({}))
            return fail(std::string("No microphone is connected. Connect one and start again.") + elseType);
        Assistant::Wishes wishes{m_options.host, m_options.backend, m_options.transport};
        wishes.listening = m_listening;
        wishes.greeting = SessionSettings::Greeting::spoken;
        Assistant::Made made = Assistant::create(m_environment, m_settings, m_loop.scheduler(), wishes,
            {m_sound.player(), &m_sound.capture(), &m_ear, &m_voice, &m_alarm}, *m_observers);
        if (!made.assistant)
            return fail(made.problem);
        m_assistant = std::move(made.assistant);
        welcome();
        if (m_environment.isInputTerminal)
            m_keyboard = std::make_unique<Keyboard>([this](char key) { m_talk.keyPressed(key); });
        m_talk.begin(m_assistant->session());
    }

    void welcome()
    {
        if (!m_text)
            return;
        tell(m_assistant->isOnDevice()
                ? "Quorvell on this computer, without an account: " + OwnServices::of(m_settings).whereWordsGo()
                : "Quorvell with a hosted model: what you say while you speak is sent to it.");
        if (m_environment.isInputTerminal)
            tell(LiveTalk::keysText(m_listening));
    }

    void captured(std::span<const std::uint8_t> pcm)
    {
        if (m_status)
            m_status->captured(pcm);
        if (m_assistant)
            m_assistant->session().microphoneCaptured(pcm);
    }

    /// Before the conversation, `soundKnown` tells it.
    void soundFailed(const std::string& sentence)
    {
        if (m_assistant)
            m_observers->problemArose(sentence);
    }

    void interrupt()
    {
        if (m_assistant)
            m_talk.interrupt();
        else
            ProgramLoop::end(exit_code::couldNot);
    }

    void leave()
    {
        if (m_assistant)
            m_talk.leave();
        else
            ProgramLoop::end(exit_code::couldNot);
    }

    void tell(const std::string& sentence)
    {
        m_line.aside([&] {
            if (m_options.asJson)
                std::cerr << sentence << std::endl;
            else
                std::cout << forOutput(sentence, m_environment) << std::endl;
        });
    }

    void fail(const std::string& sentence)
    {
        std::cerr << sentence << std::endl;
        ProgramLoop::end(exit_code::couldNot);
    }

    ProgramEnvironment m_environment;
    ConversationOptions m_options;
    ProgramLoop m_loop;
    UserSettings m_settings;
    SessionSettings::Listening m_listening;
    StatusLine m_line{std::cout, m_environment.colour()};
    DesktopSound m_sound;
    RingingSound m_alarm{m_sound, m_loop.scheduler()};
    DeviceVoice m_voice;
    DeviceEar m_ear;
    LiveTalk m_talk;
    std::unique_ptr<ConversationEvents> m_events; ///< With --json.
    std::unique_ptr<ConversationText> m_text; ///< Without.
    std::unique_ptr<TalkStatus> m_status; ///< Where the terminal can show it.
    std::unique_ptr<WorkNote> m_work; ///< Where it cannot.
    std::unique_ptr<ObserverGroup> m_observers;
    std::unique_ptr<Assistant> m_assistant;
    std::unique_ptr<Keyboard> m_keyboard;
};

void printDevices(const char* title, const std::vector<SoundDevice>& devices, const std::string& usual)
{
    std::cout << title << "\n";
    for (const SoundDevice& device : devices)
        std::cout << (device.name == usual ? "* " : "  ") << printableText(device.name) << "  "
                  << printableText(device.description) << (device.isMonitor ? " (what a loudspeaker plays)" : "")
                  << "\n";
    if (devices.empty())
        std::cout << "  none\n";
}

Json jsonOf(const std::vector<SoundDevice>& devices, const std::string& usual)
{
    Json list = Json::array();
    for (const SoundDevice& device : devices)
        list.push_back({{"name", device.name}, {"description", device.description}, {"default", device.name == usual},
            {"monitor", device.isMonitor}});
    return list;
}

void printDevices(const SoundDevices& devices, bool asJson)
{
    if (asJson) {
        std::cout << dumpJson({{"microphones", jsonOf(devices.microphones, devices.defaultMicrophone)},
            {"loudspeakers", jsonOf(devices.loudspeakers, devices.defaultLoudspeaker)}})
                  << std::endl;
        return;
    }
    printDevices("Microphones", devices.microphones, devices.defaultMicrophone);
    printDevices("Loudspeakers", devices.loudspeakers, devices.defaultLoudspeaker);
    std::cout << "* is what the desktop uses unless another one is chosen." << std::endl;
}

} // namespace

int talkAloud(const ProgramEnvironment& environment, const ConversationOptions& options, const TalkWishes& wishes)
{
    return AloudTalk(environment, options, wishes).run();
}

int listSoundDevices(const ProgramEnvironment& environment, bool asJson)
{
    ProgramLoop loop;
    DesktopSound sound(environment.runtimeFolder, loop.scheduler(), {}, {[](auto) {}, [](const std::string&) {}});
    sound.whenKnown([&](const std::string& problem) {
        if (problem.empty())
            printDevices(sound.devices(), asJson);
        else
            std::cerr << problem << std::endl;
        ProgramLoop::end(problem.empty() ? exit_code::done : exit_code::couldNot);
    });
    return loop.run();
}

} // namespace quorvell
