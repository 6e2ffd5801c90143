// SPDX-License-Identifier: MIT
#include "Quorvell/app/program/LiveServiceCommand.h"

#include "LiveService/server/LiveServer.h"
#include "LiveService/speech/OnDeviceSpeechPort.h"
#include "LiveService/speech/ServiceSpeechPort.h"
#include "OnDeviceSpeech/SpeechVoice.h"
#include "Quorvell/app/program/ExitCode.h"
#include "Quorvell/app/program/GivenFile.h"
#include "Quorvell/app/program/Interrupts.h"
#include "Quorvell/app/program/OwnServices.h"
#include "Quorvell/settings/ProgramEnvironment.h"
#include "Quorvell/settings/UserSettings.h"
#include "Quorvell/settings/UsersCalendar.h"

#include <QCoreApplication>
#include <QRandomGenerator>
#include <QSocketNotifier>
#include <QSslCertificate>
#include <QSslKey>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quorvell {

namespace {

constexpr std::size_t longestToken = 4096;
constexpr std::size_t mostPemBytes = 256 * 1024; ///< A chain of certificates has some 10 KiB.

struct Options {
    std::string host = "127.0.0.1";
    std::uint16_t port = 0;
    std::string tokenFile;
    std::string voice = "slt";
    std::string certificateFile;
    std::string keyFile;
    std::vector<std::string> faults;
    bool isChild = false;
    bool expectsSpeech = false;
};

std::string randomHex(int words)
{
    std::string text;
    for (int word = 0; word < words; ++word) {
        std::array<char, 9> digits{};
        std::snprintf(digits.data(), digits.size(), "%08x", QRandomGenerator::system()->generate());
        text += digits.data();
    }
    return text;
}

std::string firstLine(const std::string& text)
{
    std::string line = text.substr(0, text.find('\n'));
    while (!line.empty() && (line.back() == '\r' || line.back() == ' '))
        line.pop_back();
    return line;
}

/// The key that clients must show, and whether it was made up here and has to be told.
struct Token {
    std::string text;
    bool isNew = false;
};

/// Letter by letter: what comes behind it must not be read along, since it carries connections.
std::string firstLineOfInput()
{
    std::string line;
    for (char letter{}; line.size() < longestToken && read(STDIN_FILENO, &letter, 1) == 1 && letter != '\n';)
        line += letter;
    return line;
}

std::optional<Token> readToken(const Options& options, const ProgramEnvironment& environment)
{
    if (options.isChild || !options.tokenFile.empty()) {
        Token token{options.isChild ? firstLineOfInput()
                                    : firstLine(GivenFile::read(options.tokenFile, longestToken).value_or(""))};
        return token.text.empty() ? std::nullopt : std::optional(token);
    }
    if (environment.liveToken)
        return Token{*environment.liveToken};
    return Token{randomHex(8), true};
}

/// What the options say about failing on purpose and about encryption.
struct Manner {
    std::vector<Fault> faults;
    std::optional<QSslConfiguration> tls;
    std::string problem; ///< A sentence; empty when all is well.
};

std::optional<QSslConfiguration> readTls(const Options& options, std::string& problem)
{
    if (options.certificateFile.empty())
        return std::nullopt;
    const std::string first = GivenFile::read(options.certificateFile, mostPemBytes).value_or("");
    const auto certificates = QSslCertificate::fromData(QByteArray::fromStdString(first));
    const QByteArray pem = QByteArray::fromStdString(
        options.keyFile.empty() ? first : GivenFile::read(options.keyFile, mostPemBytes).value_or(""));
    const QSslKey rsa(pem, QSsl::Rsa);
    const QSslKey key = rsa.isNull() ? QSslKey(pem, QSsl::Ec) : rsa;
    if (certificates.isEmpty() || key.isNull()) {
        problem =
            "--tls-certificate and --tls-key must name PEM files with a certificate and its key without a password.";
        return std::nullopt;
    }
    QSslConfiguration tls = QSslConfiguration::defaultConfiguration();
    tls.setLocalCertificateChain(certificates);
    tls.setPrivateKey(key);
    return tls;
}

Manner readManner(const Options& options)
{
    Manner manner;
    for (const std::string& text : options.faults) {
        if (const auto fault = Fault::parse(text, manner.problem))
            manner.faults.push_back(*fault);
    }
    manner.tls = readTls(options, manner.problem);
    return manner;
}

LiveServer::Settings settingsFor(const Options& options, const ProgramEnvironment& environment, std::string token,
    Calendar calendar, const Manner& manner)
{
    const SpeechModels models = SpeechModels::find(environment.programFolder);
    // What is wrong with them the assistant and `doctor` tell; here it only means doing without.
    const auto own = OwnServices::of(UserSettings::read(environment.configFolder + "/settings.json").settings);
    const ServiceSpeechPort::Services speech{own.recogniser, own.voice};
    return {std::move(token), std::move(calendar),
        [] { return std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now()); },
        [](std::string_view prefix) { return std::string(prefix) + randomHex(3); },
        [models, voice = options.voice, speech]() -> std::unique_ptr<SpeechPort> {
            auto port = std::make_unique<OnDeviceSpeechPort>(models, voice);
            if (!speech.areAny())
                return port;
            return std::make_unique<ServiceSpeechPort>(std::move(port), speech);
        },
        LiveServer::usualSessions, manner.faults, manner.tls,
        options.expectsSpeech ? SpeechWorkerPool::Readiness::always : SpeechWorkerPool::Readiness::whenSpeechComes,
        own.model};
}

void printForPeople(const LiveServer& server, const Options& options, const Token& token)
{
    const bool hasColon = options.host.find(':') != std::string::npos;
    const std::string host = hasColon ? "[" + options.host + "]" : options.host;
    const std::string address = host + ":" + std::to_string(server.port());
    const char* scheme = options.certificateFile.empty() ? "ws://" : "wss://";
    std::cout << "Listening at " << scheme << address << ServiceRoute::sessions << "\n"
              << "Clients show the key in the header \"Authorization: Bearer KEY\".\n";
    if (token.isNew)
        std::cout << "The key, until this ends: " << token.text << "\n";
    std::cout << "For an assistant: QUORVELL_LIVE_HOST=" << scheme << address << " OPENAI_API_KEY=KEY quorvell chat\n"
              << "Stop with Ctrl+C." << std::endl;
}

int complain(const std::string& sentence, int exitCode = exit_code::couldNot)
{
    std::cerr << sentence << std::endl;
    return exitCode;
}

/// Where people or other programs connect to it.
int serveAddress(
    const Options& options, const QHostAddress& host, const Token& token, LiveServer& server, bool isSecure)
{
    if (!server.listen(host, options.port))
        return complain("Cannot listen at " + options.host + " port " + std::to_string(options.port) + ": "
            + server.problem().toStdString() + ". Try --port 0 for any free port.");
    if (!host.isLoopback() && !isSecure)
        std::cerr << "Anyone on the way to " << options.host << " can listen in: the connection is not encrypted.\n";
    printForPeople(server, options, token);
    return exit_code::done;
}

/// The assistant that started this holds the other end of the input.
int serveAssistant(LiveServer& server, std::function<void()> ended)
{
    struct stat input { };
    if (fstat(STDIN_FILENO, &input) != 0 || !S_ISSOCK(input.st_mode))
        return complain(
            "--child is for an assistant, which gives a socket as the standard input.", exit_code::wrongUsage);
    server.serveLine(STDIN_FILENO, std::move(ended));
    std::cout << "{\"ready\":true}" << std::endl;
    return exit_code::done;
}

int serve(const Options& options, const ProgramEnvironment& environment, const Token& token)
{
    const QHostAddress host(QString::fromStdString(options.host));
    auto calendar = calendarIn(environment.timeZone, environment.locale);
    if (!calendar)
        calendar = Calendar::create("UTC", "en_US");
    if (host.isNull() || !calendar)
        return complain("\"" + options.host + "\" is no address of this computer. Try 127.0.0.1.");

    int argumentCount = 0;
    QCoreApplication application(argumentCount, nullptr);
    const Manner manner = readManner(options);
    if (!manner.problem.empty())
        return complain(manner.problem, exit_code::wrongUsage);
    LiveServer server(settingsFor(options, environment, token.text, *calendar, manner));
    const auto end = [&server] { server.stop([] { QCoreApplication::quit(); }); };
    const Interrupts interrupts({end});
    const int served = options.isChild ? serveAssistant(server, end)
                                       : serveAddress(options, host, token, server, manner.tls.has_value());
    if (served != exit_code::done)
        return served;
    QCoreApplication::exec();
    // Every client is gone. Speech models that are still being loaded are not waited for.
    std::_Exit(0);
}

} // namespace

Command liveServiceCommand(const ProgramEnvironment& environment)
{
    Command command("live-service",
        "The live service on this computer: speech, reminders and notes without an account or a network");
    auto options = std::make_shared<Options>();
    command.text("--host", options->host, "Address to listen at. Without --tls-certificate nothing is encrypted.");
    command.number("--port", options->port, std::uint16_t(0), std::uint16_t(65535),
        "Port to listen at; 0 takes any that is free.");
    command.text("--token-file", options->tokenFile,
        "File whose first line is the key that clients must show. Without it QUORVELL_LIVE_TOKEN, else a new one.");
    command.text("--voice", options->voice, "The voice where a client names none that is known here.")
        .checkedBy(CommandValues::oneOf(SpeechVoice::names()));
    command.text("--tls-certificate", options->certificateFile, "PEM file with the certificate to serve TLS with.");
    command.text("--tls-key", options->keyFile, "PEM file with its key, where the certificate's file has none.")
        .needs("--tls-certificate");
    command.texts("--fault", options->faults, "A way to fail on purpose; may be given several times. See below.");
    command.footer = Fault::help();
    command.flag("--expect-speech", options->expectsSpeech,
        "Load speech recognition at once (150 MB). Without it that is done when a client's first sound comes.");
    command
        .flag("--child", options->isChild,
            "For an assistant that starts this: key and connections come over standard input, a socket; ends with it.")
        .excludes("--token-file");
    command.run = [options, &environment] {
        const auto token = readToken(*options, environment);
        if (!token)
            return complain(options->isChild
                    ? "No key came on standard input."
                    : "Cannot read a key from \"" + options->tokenFile + "\". Its first line must hold one.");
        return serve(*options, environment, *token);
    };
    return command;
}

} // namespace quorvell
