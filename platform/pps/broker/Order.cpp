#include "Order.h"

#include <algorithm>

namespace voro::pps {

namespace {

/** Others get their turn after so many packets. */
constexpr int MaximumAtOnce = 64;

/** A dead process left at most this many packets that are handled before its end. */
constexpr int MaximumLeftOver = 10000;

} // namespace

void Order::remove(Client &client)
{
    std::erase(m_fresh, &client);
    const auto process = m_processes.find(client.process);
    if (process == m_processes.end()) {
        return;
    }
    std::erase(process->second.clients, &client);
    if (process->second.clients.empty()) {
        m_processes.erase(process);
    }
}

void Order::readable(Client &client)
{
    if (client.hasPacket()) {
        return;
    }
    ClientPacket packet;
    switch (client.receive(packet, m_buffer)) {
    case Client::Received::Nothing:
        return;
    case Client::Received::Garbage:
        m_handler.handleGarbage(client);
        return;
    case Client::Received::End:
        end(client);
        return;
    case Client::Received::Packet:
        break;
    }
    bind(client, packet.header.process);
    Process &process = m_processes[client.process];
    if (packet.header.number <= process.next) {
        process.next = std::max(process.next, packet.header.number + 1);
        m_handler.handlePacket(client, packet);
        return;
    }
    client.keep(packet);
    if (fallBehind(client.process)) {
        catchUp();
    }
}

// A forked child that writes to an inherited socket counts for itself.
void Order::bind(Client &client, uint64_t process)
{
    Process &wanted = m_processes[process];
    if (std::find(wanted.clients.begin(), wanted.clients.end(), &client) == wanted.clients.end()) {
        wanted.clients.push_back(&client);
        remove(client);
        client.process = process;
    }
}

void Order::readAhead(Client &client)
{
    if (client.hasPacket() || client.isEnded) {
        return;
    }
    ClientPacket packet;
    switch (client.receive(packet, m_buffer)) {
    case Client::Received::Nothing:
        return;
    case Client::Received::Garbage:
        client.isEnded = true;
        m_handler.handleGarbage(client);
        return;
    case Client::Received::End:
        client.isEnded = true;
        return;
    case Client::Received::Packet:
        break;
    }
    client.keep(packet);
    bind(client, packet.header.process);
    fallBehind(client.process);
}

void Order::readAheadAll(uint64_t process)
{
    m_handler.acceptPending();
    for (Client *client : std::vector(m_fresh)) {
        readAhead(*client);
    }
    if (const auto found = m_processes.find(process); found != m_processes.end()) {
        for (Client *client : std::vector(found->second.clients)) {
            readAhead(*client);
        }
    }
}

Client *Order::lowest(uint64_t process)
{
    Client *lowest = nullptr;
    if (const auto found = m_processes.find(process); found != m_processes.end()) {
        for (Client *client : found->second.clients) {
            if (client->hasPacket() && (!lowest || client->packetNumber() < lowest->packetNumber())) {
                lowest = client;
            }
        }
    }
    return lowest;
}

void Order::handleLowest(Client &client)
{
    Process &process = m_processes[client.process];
    process.next = std::max(process.next, client.packetNumber() + 1);
    const auto [header, body] = client.takePacket();
    m_handler.handlePacket(client, {header, body});
}

/** False when it already was. */
bool Order::fallBehind(uint64_t process)
{
    if (std::find(m_behind.begin(), m_behind.end(), process) != m_behind.end()) {
        return false;
    }
    m_behind.push_back(process);
    return true;
}

// Sockets of other processes may have been read ahead as well, on the way to one that had sent nothing yet.
void Order::catchUp()
{
    for (int left = MaximumAtOnce; isBehind() && left > 0; --left) {
        const uint64_t process = m_behind.front();
        Client *client = lowest(process);
        if (!client) {
            m_behind.pop_front();
            continue;
        }
        if (client->packetNumber() > m_processes[process].next) {
            readAheadAll(process);
            client = lowest(process);
        }
        handleLowest(*client);
    }
    if (isBehind()) {
        m_behind.push_back(m_behind.front());
        m_behind.pop_front();
    }
}

// A process that died wrote everything before its sockets closed, so whatever is there comes before the end.
void Order::end(Client &client)
{
    client.isEnded = true;
    for (int left = MaximumAtOnce; client.process != 0 && client.leftOver < MaximumLeftOver; ++client.leftOver) {
        readAheadAll(client.process);
        Client *const next = lowest(client.process);
        if (!next) {
            break;
        }
        if (--left < 0) {
            return;
        }
        handleLowest(*next);
    }
    m_handler.handleEnd(client);
}

} // namespace voro::pps
