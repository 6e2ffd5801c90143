// SPDX-License-Identifier: MIT
#include "Quorvell/sound/DeviceStream.h"

#include <utility>

namespace quorvell {

DeviceStream::DeviceStream(SoundServer& server, Owner& owner, Request request, Reports reports)
    : m_server(server)
    , m_owner(owner)
    , m_request(request)
    , m_reports(std::move(reports))
    , m_post(server.scheduler())
{
    m_server.addListener(*this);
}

DeviceStream::~DeviceStream()
{
    m_server.removeListener(*this);
}

void DeviceStream::chooseDevice(std::string name)
{
    m_chosen = std::move(name);
    review();
}

void DeviceStream::open()
{
    if (std::exchange(m_isWanted, true))
        return;
    m_retries = {};
    m_told = SoundProblem::none;
    m_server.retry();
    m_post([this] { review(); });
}

void DeviceStream::close()
{
    m_isWanted = false;
    dropStream();
}

void DeviceStream::works()
{
    m_retries = {};
    if (std::exchange(m_told, SoundProblem::none) != SoundProblem::none)
        m_reports.recovered();
}

void DeviceStream::setQueue(std::uint32_t bytes)
{
    if (handle())
        m_stream->setQueue(bytes);
}

void DeviceStream::soundServerChanged()
{
    m_owner.devicesChanged();
    review();
}

void DeviceStream::review()
{
    if (!m_isWanted)
        return;
    const SoundDevice* device = m_server.isReady() ? bestDevice() : nullptr;
    if (!device) {
        dropStream();
        const auto missing = isRecording() ? SoundProblem::noMicrophone : SoundProblem::noLoudspeaker;
        beWithout(m_server.isReady() ? missing : m_server.problem());
    } else if (isOn(*device)) {
        m_wantedDevice = device->name; // the server may have moved it there by itself
    } else {
        makeStream(*device);
    }
}

const SoundDevice* DeviceStream::bestDevice() const
{
    const SoundDevices& devices = m_server.devices();
    return isRecording() ? devices.microphone(m_chosen) : devices.loudspeaker(m_chosen);
}

bool DeviceStream::isOn(const SoundDevice& device) const
{
    return m_stream && (device.name == m_wantedDevice || m_stream->device() == device.name);
}

void DeviceStream::makeStream(const SoundDevice& device)
{
    dropStream();
    m_wantedDevice = device.name;
    m_owner.streamOpens();
    const SoundDevices& devices = m_server.devices();
    const std::string& usual = isRecording() ? devices.defaultMicrophone : devices.defaultLoudspeaker;
    const bool isDefault = device.name == usual && device.name != m_chosen;
    m_stream = std::make_unique<PulseStream>(m_server,
        PulseStream::Request{m_request.direction, m_request.title, isDefault ? "" : device.name, m_request.queueBytes},
        PulseStream::Reports{
            [&owner = m_owner](pa_stream* stream, std::size_t bytes) { owner.streamMovable(stream, bytes); },
            [this] { m_owner.streamStarted(); }, [this] { streamEnded(); }});
}

void DeviceStream::dropStream()
{
    m_retry.cancel();
    m_wantedDevice.clear();
    if (!m_stream)
        return;
    m_owner.streamGoes();
    m_stream.reset();
}

void DeviceStream::streamEnded()
{
    dropStream();
    if (const auto wait = m_retries.ended())
        m_retry = m_server.scheduler().after(*wait, [this] { review(); });
    else
        beWithout(SoundProblem::deviceBusy);
}

void DeviceStream::beWithout(SoundProblem problem)
{
    if (problem != SoundProblem::none && std::exchange(m_told, problem) != problem)
        m_reports.failed(sentenceOf(problem));
    m_owner.streamMissing();
}

} // namespace quorvell
