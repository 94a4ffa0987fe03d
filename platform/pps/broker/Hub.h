#pragma once

#include "Client.h"

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace voro::pps {

/** A service object with its server and its clients. */
struct Endpoint {
    std::string path;
    /** Either of these serves it. */
    Service *service = nullptr;
    Client *server = nullptr;
    /** The will of the folder that the object is in. */
    Kept will;
    std::vector<Client *> clients;
};

/** The service objects and the messages between their servers and clients. */
class Hub {
public:
    /** `afterSend` is called for a client whenever a message was sent to it. */
    explicit Hub(std::function<void(Client &)> afterSend) : m_afterSend(std::move(afterSend)) {}

    Endpoint *find(const std::string &path);
    /** Null when the path is served already. */
    Endpoint *add(const std::string &path);
    /** Takes the endpoint away and returns the clients that it had. */
    std::vector<Client *> remove(Endpoint &endpoint);

    void addClient(Endpoint &endpoint, Client &client);
    void removeClient(Client &client);
    /** A message from a client to whoever serves the object. */
    void toServer(Client &client, std::string_view text);
    /** A message of a server in another process, to the client that its object line names or to all. */
    void fromServer(Endpoint &endpoint, std::string_view text);
    bool toClient(Client &client, std::string_view lines);
    bool toAll(Endpoint &endpoint, std::string_view lines);

    std::vector<std::string> paths() const;

private:
    void send(Client &client, std::string_view object, std::string_view lines);

    std::function<void(Client &)> m_afterSend;
    std::map<std::string, std::unique_ptr<Endpoint>> m_endpoints;
};

} // namespace voro::pps
