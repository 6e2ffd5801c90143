#include "Quorvell/app/ChatCommand.h"

#include "Quorvell/app/Assistant.h"
#include "Quorvell/app/ChatConversation.h"
#include "Quorvell/app/ConversationEvents.h"
#include "Quorvell/app/ConversationOptions.h"
#include "Quorvell/app/ConversationText.h"
#include "Quorvell/app/Interrupts.h"
#include "Quorvell/app/ObserverGroup.h"
#include "Quorvell/app/PipedLines.h"
#include "Quorvell/app/SilentPlayer.h"
#include "Quorvell/app/TerminalLines.h"

#include <CLI/CLI.hpp>
#include <QCoreApplication>
#include <unistd.h>

#include <iostream>

namespace quorvell {

namespace {

constexpr int couldNot = 1;

bool isForAPerson(const ProgramEnvironment& environment, const ConversationOptions& options)
{
    return environment.isInputTerminal && environment.isOutputTerminal && !options.asJson;
}

std::unique_ptr<SessionObserver> makeView(
    const ProgramEnvironment& environment, const ConversationOptions& options, const QtScheduler& scheduler)
{
    if (options.asJson)
        return std::make_unique<ConversationEvents>(std::cout, scheduler);
    ConversationText::Style style;
    style.colour = environment.allowsColour ? ConversationText::Colour::ansi : ConversationText::Colour::none;
    if (environment.isOutputTerminal)
        style.progress = "Calling the assistant …";
    return std::make_unique<ConversationText>(std::cout, std::cerr, style);
}

std::unique_ptr<LineSource> makeLines(bool isPerson)
{
    if (isPerson)
        return std::make_unique<TerminalLines>("> ");
    return std::make_unique<PipedLines>(
        STDIN_FILENO, [](const std::string& sentence) { std::cerr << sentence << std::endl; });
}

void welcome(const Assistant& assistant)
{
    std::cout << (assistant.isOnDevice() ? "Quorvell on this computer, without an account: nothing you say leaves it."
                                         : "Quorvell with a hosted model: what you type is sent to it.")
              << " Type a line; Ctrl+D ends." << std::endl;
}

int runChat(const ProgramEnvironment& environment, const ConversationOptions& options)
{
    int argumentCount = 1;
    std::string name = "quorvell";
    char* arguments[] = {name.data(), nullptr};
    QCoreApplication application(argumentCount, arguments);
    QtScheduler scheduler;
    const bool isPerson = isForAPerson(environment, options);

    const auto view = makeView(environment, options, scheduler);
    const auto lines = makeLines(isPerson);
    ChatConversation conversation({scheduler, *lines, [](int exitCode) { QCoreApplication::exit(exitCode); }},
        isPerson ? ChatConversation::Partner::person : ChatConversation::Partner::script);
    ObserverGroup observers({view.get(), &conversation});
    SilentPlayer player;
    Assistant::Wishes wishes{options.host, SessionSettings::Replies::shown};
    if (isPerson)
        wishes.greeting = SessionSettings::Greeting::spoken;
    const Assistant::Made made = Assistant::create(environment, scheduler, wishes, player, observers);
    for (const std::string& notice : made.notices)
        std::cerr << notice << std::endl;
    if (!made.assistant) {
        std::cerr << made.problem << std::endl;
        return couldNot;
    }
    if (isPerson)
        welcome(*made.assistant);
    const Interrupts interrupts([&] { conversation.interrupt(); });
    scheduler.post([&] { conversation.begin(made.assistant->session()); });
    return QCoreApplication::exec();
}

} // namespace

std::function<int()> addChatCommand(CLI::App& program, const ProgramEnvironment& environment)
{
    CLI::App* command = program.add_subcommand(
        "chat", "Talk to the assistant in writing: a line is a message, the end of the input ends the conversation");
    const auto options = ConversationOptions::declare(*command);
    return [environment, options] { return runChat(environment, *options); };
}

} // namespace quorvell
