#pragma once

#include <netdb.h>
#include <renderer/common/Medium.h>
#include <sys/socket.h>

#include <mutex>
#include <set>
#include <string>
#include <vector>

namespace voro::renderer {

/** How close an address is. */
enum class Zone {
    Machine,
    Link,
    /** Networks that the Internet does not reach. */
    Site,
    World,
};

Zone zoneOf(const sockaddr &address);

/**
 * Where a medium from the net may lead: no closer than to where it came from, so that a list on the Internet does not
 * make the player call the user's router. What the user has named himself may always be reached. The process's own
 * `connect()` and `getaddrinfo()` ask here. May be used by every thread.
 */
class NetworkRules {
public:
    static NetworkRules &instance();

    /** Takes over what the user names: a medium, and the URLs of others. */
    void setNamed(const Medium &medium, const std::vector<std::string> &others);
    /** Learns which addresses a name has. */
    void learn(const std::string &host, const addrinfo *addresses);
    bool mayConnect(const sockaddr &address) const;

private:
    void learnNow(const std::string &host, const std::string &address, Zone zone);

    mutable std::mutex m_mutex;
    std::string m_medium;
    std::set<std::string> m_others;
    /** The addresses of these names, which are always allowed. */
    std::set<std::string> m_addresses;
    /** All other addresses have to be in this zone or one farther away. */
    Zone m_closest = Zone::Machine;
};

} // namespace voro::renderer
