// SPDX-License-Identifier: MIT
#include "Quorvell/app/program/ModelSearch.h"

#include "QuorvellCore/text/Json.h"
#include "QuorvellCore/text/PrintableText.h"

#include <QNetworkProxy>
#include <QNetworkRequest>
#include <QUrl>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <utility>

namespace quorvell {

namespace {

constexpr std::size_t longestName = 80; ///< User-perceived characters.

} // namespace

std::vector<ServiceAddress> ModelSearch::usualPlaces()
{
    std::vector<ServiceAddress> places;
    for (const char* port : {"11434", "1234", "8080", "8000", "1337"})
        places.push_back({std::string("127.0.0.1:") + port, ServiceAddress::Security::none});
    return places;
}

ModelSearch::ModelSearch(const std::vector<ServiceAddress>& places, Scheduler& scheduler)
    : m_scheduler(scheduler)
    , m_places(places)
{
    m_web.setProxy(QNetworkProxy::NoProxy);
}

ModelSearch::~ModelSearch() = default;

void ModelSearch::search(std::function<void(const std::vector<Found>&)> done)
{
    m_done = std::move(done);
    m_deadline = m_scheduler.after(patience, [this] { finish(); });
    for (std::size_t place = 0; place < m_places.size(); ++place) {
        QNetworkRequest request{QUrl(QString::fromStdString(m_places[place].webUrl("/v1/models")))};
        request.setRawHeader("Accept-Encoding", "identity");
        request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
        m_replies.push_back(m_web.get(request));
        QNetworkReply* reply = m_replies.back();
        QObject::connect(
            reply, &QNetworkReply::metaDataChanged, &m_context, [reply] { reply->setReadBufferSize(longestAnswer); });
        QObject::connect(reply, &QNetworkReply::finished, &m_context, [this, place] { answered(place); });
    }
    if (m_places.empty())
        finish();
}

void ModelSearch::answered(std::size_t place)
{
    QNetworkReply* reply = std::exchange(m_replies[place], nullptr);
    const QByteArray body = reply->read(longestAnswer);
    auto models = modelsIn({body.constData(), static_cast<std::size_t>(body.size())});
    if (reply->error() == QNetworkReply::NoError && !models.empty())
        m_found.push_back({m_places[place], std::move(models)});
    reply->deleteLater();
    if (std::ranges::none_of(m_replies, [](const QNetworkReply* left) { return left != nullptr; }))
        finish();
}

void ModelSearch::finish()
{
    m_deadline.cancel();
    if (const auto done = std::exchange(m_done, nullptr))
        m_scheduler.post([done, found = m_found] { done(found); }); // Never from inside a signal of its own.
}

std::vector<std::string> ModelSearch::modelsIn(std::string_view answer)
{
    std::vector<std::string> names;
    const auto json = parseJson(answer, {.maximumBytes = static_cast<std::size_t>(longestAnswer), .maximumDepth = 16});
    const Json* list = json ? memberOf(*json, "data") : nullptr;
    if (!list || !list->is_array())
        return names;
    for (const Json& model : *list) {
        const auto name = readString(model, "id");
        if (name && !name->empty() && printableLine(*name, longestName) == *name && names.size() < mostModels)
            names.push_back(*name);
    }
    return names;
}

} // namespace quorvell
