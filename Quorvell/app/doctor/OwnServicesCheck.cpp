// SPDX-License-Identifier: MIT
#include "Quorvell/app/doctor/OwnServicesCheck.h"

#include "Wyoming/WyomingLine.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace quorvell {

namespace {

using Verdict = DoctorFinding::Verdict;

constexpr std::chrono::milliseconds speechPatience{1'000};

/// Whether it says what it can do. Waits at most for the patience above, on this thread: two services at most.
bool describes(const WyomingAddress& address)
{
    const auto now = std::chrono::steady_clock::now();
    WyomingLine line(address, now);
    line.send({"describe", Json::object(), {}}, now);
    WyomingEvent event;
    while (line.receive(event, now + speechPatience, {}) == WyomingLine::Waiting::open)
        if (event.type == "info")
            return true;
    return false;
}

std::string listed(const std::vector<std::string>& names)
{
    std::string all;
    for (const std::string& name : names)
        all += (all.empty() ? "" : ", ") + name;
    return all;
}

DoctorFinding setUpModel(const ModelAccess& access, const std::vector<ModelSearch::Found>& found)
{
    const std::string place = access.model + " at " + access.address.webUrl("");
    const auto server = std::ranges::find(found, access.address, &ModelSearch::Found::address);
    if (server == found.end())
        return {"local model", Verdict::limited, place + " does not answer; what the rules do not understand stays so",
            "Start the server, or take \"local_model_host\" out of the settings."};
    if (std::ranges::find(server->models, access.model) == server->models.end())
        return {"local model", Verdict::limited, "the server has no model " + access.model,
            "Set \"local_model\" to one that it has: " + listed(server->models) + "."};
    const std::string where = access.address.isThisComputer()
        ? ""
        : ", which is another computer: what the rules do not understand, and the few turns before it, are sent there "
          "encrypted";
    return {"local model", Verdict::works, place + where};
}

} // namespace

OwnServicesCheck::OwnServicesCheck(OwnServices services, Scheduler& scheduler)
    : m_services(std::move(services))
{
    const auto places = m_services.model ? std::vector{m_services.model->address} : ModelSearch::usualPlaces();
    m_search = std::make_unique<ModelSearch>(places, scheduler);
}

void OwnServicesCheck::examine(std::function<void(const std::vector<DoctorFinding>&)> done)
{
    const auto isThere = [](const std::optional<WyomingAddress>& address) { return address && describes(*address); };
    const DoctorFinding recogniser = speech("speech recogniser", "the sound of your voice", m_services.recogniser,
        m_services.recogniserProblem, isThere(m_services.recogniser));
    const DoctorFinding voice = speech(
        "voice", "what the assistant says", m_services.voice, m_services.voiceProblem, isThere(m_services.voice));
    m_search->search([this, recogniser, voice, done = std::move(done)](const std::vector<ModelSearch::Found>& found) {
        done({model(m_services, found), recogniser, voice});
    });
}

DoctorFinding OwnServicesCheck::model(const OwnServices& services, const std::vector<ModelSearch::Found>& found)
{
    if (services.model)
        return setUpModel(*services.model, found);
    if (!services.modelProblem.empty())
        return {"local model", Verdict::limited, services.modelProblem,
            found.empty() ? ""
                          : "One runs at " + found.front().address.host + ": " + listed(found.front().models) + "."};
    if (found.empty())
        return {"local model", Verdict::works, "none; the rules alone understand what you say"};
    return {"local model", Verdict::works,
        "none is used, and one runs at " + found.front().address.host + " (" + listed(found.front().models) + ")",
        "To have it answer what the rules do not understand, set \"local_model_host\" to \""
            + found.front().address.host + "\" and \"local_model\" to its name in the settings."};
}

DoctorFinding OwnServicesCheck::speech(const std::string& subject, const std::string& what,
    const std::optional<WyomingAddress>& address, const std::string& problem, bool describes)
{
    if (!problem.empty())
        return {subject, Verdict::limited, problem};
    if (!address)
        return {subject, Verdict::works, "that of this computer"};
    if (!describes)
        return {subject, Verdict::limited,
            "the service at " + address->text() + " does not answer; that of this computer stands in",
            "Start it, or take its line out of the settings."};
    const std::string open =
        ", which is another computer: " + what + " goes there unencrypted, for anyone on the way to hear";
    return {subject, Verdict::works, "the service at " + address->text() + (address->isThisComputer() ? "" : open)};
}

} // namespace quorvell
