#include "Hub.h"

#include <pps/Text.h>

#include <algorithm>
#include <charconv>

namespace voro::pps {

namespace {

constexpr std::string_view ServiceLine = "@control";

std::string clientLine(const Client &client)
{
    return std::string(ServiceLine) + '.' + std::to_string(client.id);
}

// Splits a message into its object line, empty without one, and the rest.
std::pair<std::string_view, std::string_view> splitObject(std::string_view text)
{
    LineReader reader(text);
    Line line;
    if (!reader.nextUnchecked(line) || line.kind != Line::Kind::Object) {
        return {{}, text};
    }
    return {line.name, text.substr(std::min(line.whole.size() + 1, text.size()))};
}

} // namespace

Endpoint *Hub::find(const std::string &path)
{
    const auto found = m_endpoints.find(path);
    return found == m_endpoints.end() ? nullptr : found->second.get();
}

Endpoint *Hub::add(const std::string &path)
{
    std::unique_ptr<Endpoint> &endpoint = m_endpoints[path];
    if (endpoint) {
        return nullptr;
    }
    endpoint = std::make_unique<Endpoint>();
    endpoint->path = path;
    return endpoint.get();
}

std::vector<Client *> Hub::remove(Endpoint &endpoint)
{
    std::vector<Client *> clients = std::move(endpoint.clients);
    for (Client *client : clients) {
        client->endpoint = nullptr;
    }
    if (endpoint.server) {
        endpoint.server->endpoint = nullptr;
    }
    m_endpoints.erase(m_endpoints.find(endpoint.path));
    return clients;
}

void Hub::addClient(Endpoint &endpoint, Client &client)
{
    client.endpoint = &endpoint;
    endpoint.clients.push_back(&client);
    if (endpoint.service) {
        endpoint.service->clientOpened(client.id, client.peer);
    } else {
        send(*endpoint.server, '+' + clientLine(client), {});
    }
}

void Hub::removeClient(Client &client)
{
    Endpoint &endpoint = *std::exchange(client.endpoint, nullptr);
    std::erase(endpoint.clients, &client);
    if (endpoint.service) {
        endpoint.service->clientClosed(client.id);
    } else {
        send(*endpoint.server, '-' + clientLine(client), {});
    }
}

void Hub::toServer(Client &client, std::string_view text)
{
    const std::string_view lines = splitObject(text).second;
    if (client.endpoint->service) {
        client.endpoint->service->clientMessage(client.id, lines);
    } else {
        send(*client.endpoint->server, clientLine(client), lines);
    }
}

void Hub::fromServer(Endpoint &endpoint, std::string_view text)
{
    const auto [object, lines] = splitObject(text);
    const size_t dot = object.find('.');
    if (dot == std::string_view::npos) {
        toAll(endpoint, lines);
        return;
    }
    ClientId id = 0;
    std::from_chars(object.data() + dot + 1, object.data() + object.size(), id);
    const auto found = std::find_if(endpoint.clients.begin(), endpoint.clients.end(),
                                    [id](const Client *client) { return client->id == id; });
    if (found != endpoint.clients.end()) {
        toClient(**found, lines);
    }
}

bool Hub::toClient(Client &client, std::string_view lines)
{
    if (lines.size() > MaximumMessage) {
        return false;
    }
    if (client.reads()) {
        send(client, ServiceLine, lines);
    }
    return true;
}

bool Hub::toAll(Endpoint &endpoint, std::string_view lines)
{
    return std::all_of(endpoint.clients.begin(), endpoint.clients.end(),
                       [&](Client *client) { return toClient(*client, lines); });
}

void Hub::send(Client &client, std::string_view object, std::string_view lines)
{
    Reply header{};
    header.type = Reply::Message;
    std::string text(object);
    text.append("\n").append(lines);
    if (text.back() != '\n') {
        text += '\n';
    }
    client.send(header, {}, text);
    m_afterSend(client);
}

std::vector<std::string> Hub::paths() const
{
    std::vector<std::string> paths;
    for (const auto &[path, endpoint] : m_endpoints) {
        paths.push_back(path);
    }
    return paths;
}

} // namespace voro::pps
