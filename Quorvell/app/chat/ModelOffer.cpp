// SPDX-License-Identifier: MIT
#include "Quorvell/app/chat/ModelOffer.h"

#include "Quorvell/settings/PrivateFile.h"
#include "Quorvell/settings/ProgramEnvironment.h"
#include "Quorvell/settings/UserSettings.h"

#include <utility>

namespace quorvell {

namespace {

constexpr std::size_t longestMark = 64; ///< Bytes.

} // namespace

ModelOffer::ModelOffer(
    const ProgramEnvironment& environment, const UserSettings& settings, Scheduler& scheduler, Tell tell)
    : m_settingsFile(environment.configFolder + "/settings.json")
    , m_stateFolder(environment.stateFolder)
    , m_mark(environment.stateFolder + "/model-offered")
    , m_tell(std::move(tell))
    , m_search(ModelSearch::usualPlaces(), scheduler)
{
    const bool isSetUp = settings.localModelHost || settings.localModel;
    if (!isSetUp && PrivateFile::readWhole(m_mark, longestMark).empty())
        m_search.search([this](const std::vector<ModelSearch::Found>& found) { offer(found); });
}

void ModelOffer::offer(const std::vector<ModelSearch::Found>& found)
{
    const std::string offer = text(found, m_settingsFile);
    if (offer.empty())
        return;
    PrivateFile::prepareFolder(m_stateFolder);
    // What cannot be remembered is not told: it would be again each time.
    if (PrivateFile::replace(m_mark, "told\n"))
        m_tell(offer);
}

std::string ModelOffer::text(const std::vector<ModelSearch::Found>& found, const std::string& settingsFile)
{
    if (found.empty())
        return {};
    const ModelSearch::Found& first = found.front();
    return "A model runs on this computer (" + first.models.front()
        + "). It can answer what Quorvell does not understand by "
          "itself: put \"local_model_host\": \""
        + first.address.host + "\", \"local_model\": \"" + first.models.front() + "\" into " + settingsFile
        + ". This is said once.";
}

} // namespace quorvell
