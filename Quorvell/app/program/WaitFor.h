// SPDX-License-Identifier: MIT
// For commands that do one thing and end: Qt's event loop for as long as something takes.
#pragma once

#include <QCoreApplication>
#include <QEventLoop>

#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace quorvell {

/// The application object that Qt wants, unless there is one already.
class ApplicationWhereNeeded {
public:
    ApplicationWhereNeeded()
    {
        if (!QCoreApplication::instance())
            m_application = std::make_unique<QCoreApplication>(m_count, m_arguments);
    }

private:
    int m_count = 1;
    char m_name[9] = "quorvell";
    char* m_arguments[2] = {m_name, nullptr};
    std::unique_ptr<QCoreApplication> m_application;
};

/// Begins something and runs the event loop until its answer has come.
template <typename Answer> Answer waitFor(const std::function<void(std::function<void(Answer)>)>& begin)
{
    QEventLoop loop;
    std::optional<Answer> answer;
    begin([&](Answer given) {
        answer = std::move(given);
        loop.quit();
    });
    if (!answer)
        loop.exec();
    return std::move(*answer);
}

} // namespace quorvell
