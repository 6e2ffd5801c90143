// SPDX-License-Identifier: MIT
#include "Quorvell/app/records/UsageCommand.h"

#include "Quorvell/app/program/ExitCode.h"
#include "Quorvell/app/program/ProgramLoop.h"
#include "Quorvell/records/UsageFile.h"
#include "Quorvell/records/UsageText.h"
#include "Quorvell/settings/ProgramEnvironment.h"
#include "Quorvell/settings/UserSettings.h"
#include "Quorvell/settings/UsersCalendar.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <iostream>
#include <memory>

namespace quorvell {

namespace {

Json jsonOf(const UsageBook::Day& used)
{
    return {{"spoken_seconds", used.spokenSeconds}, {"billed_seconds", used.billedSeconds},
        {"microphone_seconds", used.microphoneSeconds}, {"voice_seconds", used.voiceSeconds}, {"tokens", used.tokens},
        {"images", used.images}};
}

Json jsonOf(const UsageFile& usage)
{
    const UsageBook book = usage.book();
    return {{"today", jsonOf(book.sumOf(usage.today()))}, {"month", jsonOf(book.sumOf(usage.today().substr(0, 7)))}};
}

int runUsage(const ProgramEnvironment& environment, bool asJson)
{
    ProgramLoop loop;
    const UserSettings settings = UserSettings::readTelling(environment, std::cerr);
    const auto calendar = calendarIn(environment.timeZone, environment.locale);
    if (!calendar) {
        std::cerr << environment.unknownTimeZone() << std::endl;
        return exit_code::couldNot;
    }
    const UsageFile hosted(environment.stateFolder + "/usage.json", loop.scheduler(), *calendar);
    const UsageFile onDevice(environment.stateFolder + "/usage-on-device.json", loop.scheduler(), *calendar);
    if (asJson) {
        std::cout << dumpJson({{"hosted", jsonOf(hosted)}, {"on_device", jsonOf(onDevice)},
            {"daily_minutes", settings.dailyMinutes ? Json(settings.dailyMinutes->count()) : Json()}})
                  << std::endl;
        return 0;
    }
    std::cout << "With a hosted model:\n"
              << UsageText::ofDays(hosted.book(), hosted.today(), UsageText::Service::hosted) << "\n";
    if (settings.dailyMinutes) {
        const double left = 60.0 * static_cast<double>(settings.dailyMinutes->count()) - hosted.secondsToday();
        const auto minutes = settings.dailyMinutes->count();
        std::cout << "Your limit is " << minutes << (minutes == 1 ? " minute" : " minutes") << " a day; "
                  << UsageText::duration(std::max(left, 0.0)) << " are left today.\n";
    }
    std::cout << "\nOn this computer, free of charge:\n"
              << UsageText::ofDays(onDevice.book(), onDevice.today(), UsageText::Service::onDevice) << std::endl;
    return 0;
}

} // namespace

Command usageCommand(const ProgramEnvironment& environment)
{
    Command command("usage", "Show what was spoken and used today and this month");
    const auto asJson = std::make_shared<bool>(false);
    command.flag("--json", *asJson, "Print one JSON object");
    command.run = [environment, asJson] { return runUsage(environment, *asJson); };
    return command;
}

} // namespace quorvell
