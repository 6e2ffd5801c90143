// SPDX-License-Identifier: MIT
#include "Quorvell/app/chat/ChatCommand.h"

#include "Quorvell/app/chat/ChatConversation.h"
#include "Quorvell/app/chat/ChatPractice.h"
#include "Quorvell/app/chat/ModelOffer.h"
#include "Quorvell/app/conversation/ConversationEvents.h"
#include "Quorvell/app/conversation/ConversationOptions.h"
#include "Quorvell/app/conversation/ConversationText.h"
#include "Quorvell/app/conversation/WorkNote.h"
#include "Quorvell/app/conversation/WorkStatus.h"
#include "Quorvell/app/practice/GivenWorld.h"
#include "Quorvell/app/program/ExitCode.h"
#include "Quorvell/app/program/Interrupts.h"
#include "Quorvell/app/program/OwnServices.h"
#include "Quorvell/app/program/ProgramLoop.h"
#include "Quorvell/app/terminal/PipedLines.h"
#include "Quorvell/app/terminal/ShownOutput.h"
#include "Quorvell/app/terminal/StatusLine.h"
#include "Quorvell/app/terminal/TerminalColumns.h"
#include "Quorvell/app/terminal/TerminalLines.h"
#include "Quorvell/assistant/Assistant.h"
#include "Quorvell/assistant/DesktopSound.h"
#include "Quorvell/assistant/SilentPlayer.h"
#include "Quorvell/session/reports/ObserverGroup.h"
#include "Quorvell/settings/PrivateFile.h"

#include <unistd.h>

#include <iostream>
#include <optional>
#include <string>
#include <utility>

namespace quorvell {

namespace {

constexpr const char* prompt = "> ";

bool isForAPerson(const ProgramEnvironment& environment, const ConversationOptions& options)
{
    return environment.isInputTerminal && environment.isOutputTerminal && !options.asJson;
}

/// What a person sees of a conversation; scripts see events.
class ChatView {
public:
    ChatView(const ProgramEnvironment& environment, const ConversationOptions& options, QtScheduler& scheduler,
        LineSource& lines)
        : m_status(std::cout, environment.colour())
    {
        if (options.asJson) {
            m_views.push_back(std::make_unique<ConversationEvents>(std::cout, scheduler));
            return;
        }
        ConversationText::Style style = options.textStyle(environment);
        style.aside = [this, &lines](const auto& print) { lines.aside([&] { m_status.aside(print); }); };
        auto text = std::make_unique<ConversationText>(std::cout, std::cerr, style);
        ConversationText& shown = *text;
        m_views.push_back(std::move(text));
        if (environment.movesCursor && environment.isInputTerminal)
            m_views.push_back(std::make_unique<WorkStatus>(scheduler, m_status));
        else
            m_views.push_back(
                std::make_unique<WorkNote>(scheduler, [&shown](const std::string& note) { shown.note(note); }));
    }

    std::vector<SessionAudience*> observersWith(SessionAudience& last) const
    {
        std::vector<SessionAudience*> observers;
        for (const auto& view : m_views)
            observers.push_back(view.get());
        observers.push_back(&last);
        return observers;
    }

private:
    StatusLine m_status;
    std::vector<std::unique_ptr<SessionObserver>> m_views;
};

std::unique_ptr<LineSource> makeLines(
    bool isPerson, const ProgramEnvironment& environment, const UserSettings& settings)
{
    if (!isPerson || !environment.movesCursor)
        return std::make_unique<PipedLines>(
            STDIN_FILENO, [](const std::string& sentence) { std::cerr << sentence << std::endl; },
            isPerson ? prompt : "");
    PrivateFile::prepareFolder(environment.stateFolder);
    std::optional<CommandHistoryFile> history;
    if (settings.keepsTypedHistory)
        history.emplace(environment.stateFolder, "typed.jsonl");
    return std::make_unique<TerminalLines>(prompt, std::move(history), environment.colour());
}

std::string welcome(const Assistant& assistant, const UserSettings& settings)
{
    return (assistant.isOnDevice()
                   ? "Quorvell on this computer, without an account: " + OwnServices::of(settings).whereWordsGo()
                   : "Quorvell with a hosted model: what you type is sent to it.")
        + " Type a line; /help lists what else there is, Ctrl+D ends.";
}

Assistant::Wishes wishesFor(const ConversationOptions& options, bool isPerson, ChatConversation::Voice voice)
{
    const bool isAloud = voice == ChatConversation::Voice::aloud;
    Assistant::Wishes wishes{options.host, options.backend, options.transport};
    wishes.medium = isAloud ? LiveMedium::voice : LiveMedium::text;
    wishes.replies = isAloud ? SessionSettings::Replies::spoken : SessionSettings::Replies::shown;
    wishes.listening = SessionSettings::Listening::none;
    if (!isPerson)
        return wishes;
    wishes.greeting = SessionSettings::Greeting::spoken;
    wishes.bell = [] {
        ShownOutput::control(std::cout, "\a");
        std::cout.flush();
    };
    return wishes;
}

struct ChatWish {
    bool isAloud = false;
    std::string practice; ///< The file of a practice world; empty: none.

    ChatConversation::Voice voice() const
    {
        return isAloud ? ChatConversation::Voice::aloud : ChatConversation::Voice::none;
    }
};

int runChat(const ProgramEnvironment& environment, const ConversationOptions& options, const ChatWish& wish)
{
    std::optional<PracticeDescription> world;
    if (!wish.practice.empty() && !(world = givenWorld(wish.practice, std::cerr)))
        return exit_code::couldNot;
    const ChatConversation::Voice voice = wish.voice();
    ProgramLoop loop;
    const bool isPerson = isForAPerson(environment, options);
    const UserSettings settings = UserSettings::readTelling(environment, std::cerr);
    const auto lines = makeLines(isPerson, environment, settings);
    ChatView view(environment, options, loop.scheduler(), *lines);
    Assistant* assistant = nullptr;
    const auto usage = [&assistant] { return assistant->usageText(); };
    const auto tell = [&](const std::string& text) {
        lines->aside([&] { std::cout << forOutput(text, environment) << std::endl; });
    };
    ChatConversation conversation({loop.scheduler(), *lines, &ProgramLoop::end, tell, usage},
        isPerson ? ChatConversation::Partner::person : ChatConversation::Partner::script, voice);
    ObserverGroup observers(view.observersWith(conversation));
    std::unique_ptr<ChatPractice> practice;
    if (world) {
        practice = std::make_unique<ChatPractice>(*std::move(world), loop.scheduler(), tell);
        observers.add(*practice);
    }
    SilentPlayer silence;
    std::unique_ptr<DesktopSound> sound;
    if (voice == ChatConversation::Voice::aloud)
        sound = std::make_unique<DesktopSound>(environment.runtimeFolder, loop.scheduler(),
            DesktopSound::Devices{{}, settings.loudspeaker.value_or("")},
            DesktopSound::Reports{
                [](auto) {}, [&observers](const std::string& sentence) { observers.problemArose(sentence); }});
    AudioPlayer& player = sound ? static_cast<AudioPlayer&>(sound->player()) : silence;
    Assistant::Wishes wishes = wishesFor(options, isPerson, voice);
    if (practice) {
        wishes.screen = &practice->screen();
        wishes.applications = practice->applications();
    }
    const Assistant::Made made =
        Assistant::create(environment, settings, loop.scheduler(), wishes, {player}, observers);
    if (!made.assistant) {
        std::cerr << made.problem << std::endl;
        return exit_code::couldNot;
    }
    assistant = made.assistant.get();
    if (isPerson)
        tell(welcome(*assistant, settings));
    std::optional<ModelOffer> offer;
    if (isPerson && assistant->isOnDevice())
        offer.emplace(environment, settings, loop.scheduler(), tell);
    if (practice)
        practice->show();
    const Interrupts interrupts(
        {[&] { conversation.interrupt(); }, [&] { conversation.leave(); }, [&] { lines->resized(); }});
    loop.scheduler().post([&] { conversation.begin(assistant->session()); });
    return loop.run();
}

} // namespace

Command chatCommand(const ProgramEnvironment& environment)
{
    Command command(
        "chat", "Talk to the assistant in writing (what runs when no command is named); each line is a message");
    const auto options = ConversationOptions::declare(command);
    const auto wish = std::make_shared<ChatWish>();
    command.flag("--aloud", wish->isAloud, "Speak the answers too, through the loudspeaker");
    command.text("--practice", wish->practice, "A practice world to work in, as JSON");
    command.run = [environment, options, wish] { return runChat(environment, *options, *wish); };
    return command;
}

} // namespace quorvell
