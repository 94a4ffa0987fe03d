#include "Nursery.h"

#include "SocketPair.h"

#include <pps/FdPassing.h>
#include <pps/Log.h>
#include <renderer/common/FileRequest.h>
#include <renderer/common/Protocol.h>

#include <cerrno>
#include <span>
#include <utility>

namespace voro::renderer {

namespace {

constexpr int MostFailures = 3;
/** How long it has to have been there, in milliseconds, so that its end is none of a nursery that cannot work. */
constexpr int ShortLife = 10'000;
/** How long a process may take, in milliseconds; the first one waits for the plugins of the whole machine. */
constexpr int LongestBirth = 5'000;
constexpr int LongestStart = 60'000;

} // namespace

Nursery::Nursery(pps::Broker &broker, std::string program, bool mayFork, EndingProcesses &ending)
    : m_broker(broker),
      m_program(std::move(program)),
      m_mayFork(mayFork),
      m_ending(ending),
      m_patience(broker, [this] { fail(); })
{}

Nursery::~Nursery()
{
    close();
}

void Nursery::prepare()
{
    if (!m_mayFork || isThere() || m_failures >= MostFailures) {
        return;
    }
    auto [network, theirNetwork] = socketPair();
    auto [local, theirLocal] = socketPair();
    if (!theirNetwork.isValid() || !theirLocal.isValid()) {
        return;
    }
    const std::array<Process::Socket, 2> sockets{
        {{theirNetwork.get(), NetworkNurserySocket}, {theirLocal.get(), LocalNurserySocket}}};
    auto process = std::make_unique<Process>(m_program, sockets, std::vector<std::string>{NurseryOption});
    if (!process->isRunning()) {
        return;
    }
    m_age.start();
    process->onEnd([this] { fail(); });
    m_halves[0] = {std::move(network), std::move(process)};
    m_halves[1] = {std::move(local), nullptr};
    for (Half &half : m_halves) {
        watch(half);
    }
    if (m_expectsFilms) {
        prepareForFilms();
    }
}

void Nursery::expectFilms()
{
    if (!std::exchange(m_expectsFilms, true) && isThere()) {
        prepareForFilms();
    }
}

void Nursery::prepareForFilms()
{
    const BirthRequest request;
    for (const Half &half : m_halves) {
        pps::sendPacket(half.socket.get(), std::as_bytes(std::span(&request, 1)));
    }
}

void Nursery::watch(Half &half)
{
    m_broker.watch(half.socket.get(), [this, &half] { receive(half); });
}

void Nursery::start(Reach reach, Sockets sockets, Started started)
{
    Birth birth{reach, std::move(sockets), std::move(started)};
    prepare();
    const BirthRequest request{++m_lastId, reach.windows ? 1 : 0};
    std::array<int, WorkerSockets> descriptors{};
    for (size_t i = 0; i < descriptors.size(); ++i) {
        descriptors[i] = birth.sockets[i].get();
    }
    if (isThere() && pps::sendPacket(halfFor(reach).socket.get(), std::as_bytes(std::span(&request, 1)), descriptors)) {
        m_births.emplace(request.id, std::move(birth));
        if (m_births.size() == 1) {
            awaitBirth();
        }
    } else {
        spawn(birth);
    }
}

void Nursery::spawn(const Birth &birth) const
{
    constexpr int Numbers[WorkerSockets] = {WorkerSocket, WorkerFilesSocket, WorkerMediaSocket};
    std::array<Process::Socket, WorkerSockets> sockets{};
    for (size_t i = 0; i < sockets.size(); ++i) {
        sockets[i] = {birth.sockets[i].get(), Numbers[i]};
    }
    std::vector<std::string> options;
    if (birth.reach.network) {
        options.emplace_back(NetworkOption);
    }
    if (birth.reach.windows) {
        options.emplace_back(WindowsOption);
    }
    birth.started(std::make_unique<Process>(m_program, sockets, options));
}

void Nursery::awaitBirth()
{
    if (m_births.empty()) {
        m_patience.stop();
    } else {
        m_patience.start(m_isReady ? LongestBirth : LongestStart);
    }
}

void Nursery::receive(Half &half)
{
    BirthAnswer answer;
    pps::Fd pidfd;
    const ssize_t size = pps::receivePacket(half.socket.get(), std::as_writable_bytes(std::span(&answer, 1)), pidfd);
    if (size < 0 && errno == EAGAIN) {
        return;
    }
    if (size != sizeof answer) {
        fail();
        return;
    }
    std::unique_ptr<Process> process;
    if (answer.process > 0 && pidfd.isValid()) {
        process = std::make_unique<Process>(static_cast<pid_t>(answer.process), std::move(pidfd));
    }
    if (answer.id == 0 && process) {
        half.process = std::move(process);
        half.process->onEnd([this] { fail(); });
    } else if (auto birth = m_births.extract(answer.id)) {
        m_isReady = true;
        awaitBirth();
        if (process) {
            birth.mapped().started(std::move(process));
        } else {
            spawn(birth.mapped());
        }
    } else if (process) {
        m_ending.add(std::move(process));
    } else {
        fail();
    }
}

/** It is gone: pending requests get processes that are started as programs. */
void Nursery::fail()
{
    m_failures = m_age.hasExpired(ShortLife) ? 0 : m_failures + 1;
    log::warn(log::Category::Worker,
              m_failures < MostFailures ? "the nursery of workers has gone" : "workers are started without a nursery");
    close();
    for (const auto &[id, birth] : std::exchange(m_births, {})) {
        spawn(birth);
    }
}

void Nursery::close()
{
    m_isReady = false;
    m_patience.stop();
    for (Half &half : m_halves) {
        if (half.socket.isValid()) {
            m_broker.unwatch(half.socket.get());
            half.socket.reset();
        }
        m_ending.add(std::move(half.process));
    }
}

} // namespace voro::renderer
