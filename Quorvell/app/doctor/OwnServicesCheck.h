// SPDX-License-Identifier: MIT
// Whether the services of the user's own are there: the model, the recogniser, the voice; and which model is at hand
// that nobody has set up.
#pragma once

#include "Quorvell/app/doctor/DoctorFinding.h"
#include "Quorvell/app/program/ModelSearch.h"
#include "Quorvell/app/program/OwnServices.h"
#include "Quorvell/loop/Scheduler.h"

#include <functional>
#include <memory>
#include <vector>

namespace quorvell {

/// Asks them what they can do and nothing else. Main thread; used once.
class OwnServicesCheck {
public:
    OwnServicesCheck(OwnServices services, Scheduler& scheduler);

    void examine(std::function<void(const std::vector<DoctorFinding>&)> done);

    /// `found` are the servers that answered.
    static DoctorFinding model(const OwnServices& services, const std::vector<ModelSearch::Found>& found);
    /// `describes`: the service said what it can do; false too where it was not asked.
    static DoctorFinding speech(const std::string& subject, const std::string& what,
        const std::optional<WyomingAddress>& address, const std::string& problem, bool describes);

private:
    OwnServices m_services;
    std::unique_ptr<ModelSearch> m_search;
};

} // namespace quorvell
