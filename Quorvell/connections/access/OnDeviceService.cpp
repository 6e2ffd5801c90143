// SPDX-License-Identifier: MIT
#include "Quorvell/connections/access/OnDeviceService.h"

#include "QuorvellCore/text/Json.h"

#include <QProcessEnvironment>
#include <QRandomGenerator>
#include <unistd.h>

#include <array>
#include <utility>

namespace quorvell {

namespace {

constexpr qsizetype longestGreeting = 4096; ///< The line that says so is short.
constexpr qsizetype keptErrors = 2000;
constexpr std::chrono::milliseconds endPatience{1'000};

std::string freshKey()
{
    std::array<quint32, 8> words{}; // 256 bits
    QRandomGenerator::system()->fillRange(words.data(), static_cast<qsizetype>(words.size()));
    return QByteArray(reinterpret_cast<const char*>(words.data()), sizeof words).toHex().toStdString();
}

QString toQString(const std::string& text)
{
    return QString::fromStdString(text);
}

/// It needs none of the keys that the user may have for other things.
QProcessEnvironment withoutKeys()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const QString& name : environment.keys())
        for (const char* ending : {"_KEY", "_TOKEN", "_SECRET", "_PASSWORD"})
            if (name.endsWith(QLatin1String(ending), Qt::CaseInsensitive))
                environment.remove(name);
    return environment;
}

bool saysReady(const QByteArray& line)
{
    const auto json = parseJson(std::string_view(line.constData(), static_cast<std::size_t>(line.size())));
    return json && readBool(*json, "ready").value_or(false);
}

/// What the child said last, as an appendix to a sentence.
std::string lastWords(const QByteArray& errors)
{
    const QByteArray text = errors.trimmed();
    const qsizetype start = text.lastIndexOf('\n') + 1;
    return text.isEmpty() ? std::string() : " It said: " + text.mid(start).toStdString();
}

} // namespace

OnDeviceService::OnDeviceService(Command command, std::chrono::milliseconds patience)
    : m_command(std::move(command))
    , m_patience(patience)
{
    m_deadline.setSingleShot(true);
    QObject::connect(&m_deadline, &QTimer::timeout, &m_context, [this] { giveUp(); });
}

OnDeviceService::~OnDeviceService()
{
    if (!m_child)
        return;
    m_child->disconnect(&m_context);
    m_line->hangUp();
    if (!m_child->waitForFinished(static_cast<int>(endPatience.count())))
        m_child->kill();
    m_child->waitForFinished(static_cast<int>(endPatience.count()));
}

void OnDeviceService::find(std::function<void(const Found&)> found)
{
    if (m_access)
        return found({m_access, {}});
    m_waiting.push_back(std::move(found));
    if (!m_child)
        startChild();
}

void OnDeviceService::startChild()
{
    m_key = freshKey();
    m_output.clear();
    m_errors.clear();
    m_child = std::make_unique<QProcess>();
    m_line = std::make_shared<ChildLine>();
    m_child->setProcessEnvironment(withoutKeys());
    m_child->setStandardInputFile(QProcess::nullDevice());
    // In a process group of its own, because Ctrl+C in a terminal would end it before the conversation is closed.
    m_child->setChildProcessModifier([input = m_line->childsEnd()] {
        setpgid(0, 0);
        dup2(input, STDIN_FILENO);
    });
    connectChild();
    QStringList arguments;
    for (const std::string& argument : m_command.arguments)
        arguments.append(toQString(argument));
    m_deadline.start(m_patience);
    const std::shared_ptr<ChildLine> line = m_line;
    const std::string greeting = m_key + "\n";
    // The child is made in here, or that this failed is told in here: then another one may have been started since.
    m_child->start(toQString(m_command.program), arguments);
    line->childStarted();
    line->write(greeting);
}

void OnDeviceService::connectChild()
{
    QProcess* child = m_child.get();
    QObject::connect(child, &QProcess::readyReadStandardOutput, &m_context, [this] { readOutput(); });
    QObject::connect(child, &QProcess::readyReadStandardError, &m_context, [this] { readErrors(); });
    QObject::connect(child, &QProcess::finished, &m_context, [this] { childEnded(); });
    QObject::connect(child, &QProcess::errorOccurred, &m_context, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            childFailedToStart();
    });
}

void OnDeviceService::readOutput()
{
    const QByteArray more = m_child->readAllStandardOutput();
    if (m_access)
        return; // Nothing is expected any more, but a full pipe would stop the child.
    m_output += more.left(longestGreeting - m_output.size());
    const qsizetype end = m_output.indexOf('\n');
    if (end < 0)
        return;
    if (!saysReady(m_output.left(end)))
        return giveUp();
    m_deadline.stop();
    LiveAccess access{{"localhost", OpenAILiveEndpoint::Security::none}, m_key, LiveAccess::Place::onDevice};
    access.line = m_line;
    m_access = std::move(access);
    answer({m_access, {}});
}

void OnDeviceService::readErrors()
{
    m_errors = (m_errors + m_child->readAllStandardError()).right(keptErrors);
}

void OnDeviceService::childEnded()
{
    readErrors();
    const std::string problem =
        "The service on this device ended unexpectedly. Ask again to start it anew." + lastWords(m_errors);
    discardChild();
    answer({std::nullopt, problem});
}

void OnDeviceService::childFailedToStart()
{
    discardChild();
    answer({std::nullopt,
        "The service on this device could not be started: " + m_command.program
            + " cannot be run. Install Quorvell again, or set OPENAI_API_KEY to use a hosted service."});
}

void OnDeviceService::giveUp()
{
    const std::string problem =
        "The service on this device did not become ready. Ask again, or set OPENAI_API_KEY to use a hosted service."
        + lastWords(m_errors);
    discardChild();
    answer({std::nullopt, problem});
}

void OnDeviceService::discardChild()
{
    m_deadline.stop();
    m_access.reset();
    m_line->hangUp();
    QProcess* child = m_child.release();
    child->disconnect(&m_context);
    // Deleted later: it may be on the way out of its own report, and must have ended by then.
    if (child->state() == QProcess::NotRunning)
        return child->deleteLater();
    QObject::connect(child, &QProcess::finished, child, &QObject::deleteLater);
    child->kill();
}

void OnDeviceService::answer(const Found& found)
{
    for (const auto& waiting : std::exchange(m_waiting, {}))
        waiting(found);
}

} // namespace quorvell
