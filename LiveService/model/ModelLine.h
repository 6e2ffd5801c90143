// SPDX-License-Identifier: MIT
// The way to a model's server: one request at a time, whose answer is handed on as it comes.
#pragma once

#include "LocalModel/ModelAccess.h"
#include "LocalModel/ModelEnd.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QObject>
#include <QTimer>

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace quorvell {

/// It has no clock and no bound on what comes: whoever asks stops it. Goes past every proxy and follows no redirection,
/// so that the user's words reach the host that was named and no other. Main thread.
class ModelLine {
public:
    static constexpr qint64 mostAtOnce = 16 * 1024; ///< Bytes handed on before other things have their turn.

    struct Reports {
        std::function<void(std::string_view)> sent; ///< Of an answer with a status of success.
        std::function<void(ModelEnd)> ended; ///< Once, unless it was stopped.
    };

    /// Reports may ask again, and may stop it.
    ModelLine(ServiceAddress address, Reports reports);
    ~ModelLine();
    ModelLine(const ModelLine&) = delete;
    ModelLine& operator=(const ModelLine&) = delete;

    void ask(const std::string& path, const std::string& body);
    /// Nothing of what was asked is reported any more.
    void stop();

private:
    struct Abandon {
        void operator()(QNetworkReply* reply) const;
    };

    void piecesArrived();
    void finished();
    void end(ModelEnd end);
    bool isSuccess() const;

    ServiceAddress m_address;
    Reports m_reports;
    QNetworkAccessManager m_web;
    QTimer m_next; ///< Runs while more has come than one turn takes.
    std::unique_ptr<QNetworkReply, Abandon> m_reply;
    std::unique_ptr<QObject> m_context; ///< Receives the reply's signals; goes with it.
};

} // namespace quorvell
