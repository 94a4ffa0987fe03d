#include "NetworkRules.h"

#include "SoundServer.h"

#include <arpa/inet.h>
#include <dlfcn.h>
#include <glib.h>
#include <netinet/in.h>
#include <sys/syscall.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <cstring>

namespace voro::renderer {

namespace {

/** The host of a URL in small letters; the whole text when it is no URL. */
std::string hostOf(const std::string &url)
{
    GUri *uri = g_uri_parse(url.c_str(), G_URI_FLAGS_NON_DNS, nullptr);
    const char *host = uri ? g_uri_get_host(uri) : nullptr;
    std::string result = host ? host : url;
    if (uri) {
        g_uri_unref(uri);
    }
    std::ranges::transform(result, result.begin(), g_ascii_tolower);
    return result;
}

in6_addr asV6(const sockaddr &address)
{
    in6_addr result{};
    if (address.sa_family == AF_INET6) {
        return reinterpret_cast<const sockaddr_in6 &>(address).sin6_addr;
    }
    result.s6_addr[10] = result.s6_addr[11] = 0xff;
    std::memcpy(&result.s6_addr[12], &reinterpret_cast<const sockaddr_in &>(address).sin_addr, 4);
    return result;
}

std::string textOf(const sockaddr &address)
{
    const in6_addr wide = asV6(address);
    char text[INET6_ADDRSTRLEN]{};
    inet_ntop(AF_INET6, &wide, text, sizeof text);
    return text;
}

/** The addresses that a host is without being asked for: its own, when it is one, and this machine's. */
std::vector<sockaddr_in6> literal(const std::string &host)
{
    const auto parse = [](const std::string &text, std::vector<sockaddr_in6> &addresses) {
        sockaddr_in6 address{};
        address.sin6_family = AF_INET6;
        if (inet_pton(AF_INET6, text.c_str(), &address.sin6_addr) == 1) {
            addresses.push_back(address);
        }
    };
    std::vector<sockaddr_in6> addresses;
    if (host == "localhost" || host.ends_with(".localhost")) {
        parse("::1", addresses);
        parse("::ffff:127.0.0.1", addresses);
    }
    parse(host, addresses);
    parse("::ffff:" + host, addresses);
    return addresses;
}

/** Where sound goes, and what stands between this machine and the net. */
std::vector<std::string> namedByEnvironment()
{
    std::vector<std::string> names;
    for (const char *variable : {"http_proxy", "https_proxy", "all_proxy", "HTTP_PROXY", "HTTPS_PROXY", "ALL_PROXY"}) {
        if (const char *proxy = std::getenv(variable)) {
            names.push_back(hostOf(proxy));
        }
    }
    for (const std::string &server : soundServers()) {
        const size_t start = server.starts_with("tcp") ? server.find(':') + 1 : 0;
        names.push_back(hostOf(server.substr(start, server.find(':', start) - start)));
    }
    return names;
}

} // namespace

Zone zoneOf(const sockaddr &address)
{
    const in6_addr wide = asV6(address);
    const uint8_t *bytes = wide.s6_addr;
    if (IN6_IS_ADDR_V4MAPPED(&wide)) {
        const uint8_t *v4 = bytes + 12;
        if (v4[0] == 127 || v4[0] == 0) {
            return Zone::Machine;
        }
        if (v4[0] == 169 && v4[1] == 254) {
            return Zone::Link;
        }
        const bool isPrivate = v4[0] == 10 || (v4[0] == 172 && (v4[1] & 0xf0) == 16) || (v4[0] == 192 && v4[1] == 168)
                               || (v4[0] == 100 && (v4[1] & 0xc0) == 64);
        return isPrivate ? Zone::Site : Zone::World;
    }
    if (IN6_IS_ADDR_LOOPBACK(&wide) || IN6_IS_ADDR_UNSPECIFIED(&wide)) {
        return Zone::Machine;
    }
    if (IN6_IS_ADDR_LINKLOCAL(&wide)) {
        return Zone::Link;
    }
    return (bytes[0] & 0xfe) == 0xfc ? Zone::Site : Zone::World;
}

NetworkRules &NetworkRules::instance()
{
    static NetworkRules rules;
    return rules;
}

void NetworkRules::setNamed(const Medium &medium, const std::vector<std::string> &others)
{
    const std::lock_guard lock(m_mutex);
    const std::string host = medium.isLocal() ? std::string() : hostOf(medium.url());
    if (host != m_medium || medium.isLocal()) {
        m_addresses.clear();
        m_closest = medium.isLocal() ? Zone::Machine : Zone::World;
    }
    m_medium = host;
    m_others.clear();
    for (const std::string &name : namedByEnvironment()) {
        m_others.insert(name);
    }
    for (const std::string &url : others) {
        m_others.insert(hostOf(url));
    }
    const auto learnLiteral = [this](const std::string &name) {
        for (const sockaddr_in6 &address : literal(name)) {
            const auto &plain = reinterpret_cast<const sockaddr &>(address);
            learnNow(name, textOf(plain), zoneOf(plain));
        }
    };
    learnLiteral(m_medium);
    std::ranges::for_each(m_others, learnLiteral);
}

void NetworkRules::learn(const std::string &host, const addrinfo *addresses)
{
    const std::lock_guard lock(m_mutex);
    const std::string name = hostOf(host);
    for (; addresses; addresses = addresses->ai_next) {
        const bool isInternet = addresses->ai_family == AF_INET || addresses->ai_family == AF_INET6;
        if (isInternet && addresses->ai_addr) {
            learnNow(name, textOf(*addresses->ai_addr), zoneOf(*addresses->ai_addr));
        }
    }
}

void NetworkRules::learnNow(const std::string &host, const std::string &address, Zone zone)
{
    if (host == m_medium) {
        m_closest = std::min(m_closest, zone);
    }
    if (host == m_medium || m_others.contains(host)) {
        m_addresses.insert(address);
    }
}

bool NetworkRules::mayConnect(const sockaddr &address) const
{
    if (address.sa_family != AF_INET && address.sa_family != AF_INET6) {
        return true;
    }
    const std::lock_guard lock(m_mutex);
    return zoneOf(address) >= m_closest || m_addresses.contains(textOf(address));
}

} // namespace voro::renderer

namespace {

bool isAbstract(const sockaddr *address, socklen_t size)
{
    return address && size > offsetof(sockaddr_un, sun_path) && address->sa_family == AF_UNIX
           && reinterpret_cast<const sockaddr_un *>(address)->sun_path[0] == '\0';
}

} // namespace

// Every library of the process that connects or looks names up comes by here.

extern "C" __attribute__((visibility("default"))) int connect(int socket, const sockaddr *address, socklen_t size)
{
    // The client library of the X server tries the server's abstract name first, which this process may not, and goes
    // on only when nobody is there.
    if (isAbstract(address, size)) {
        errno = ECONNREFUSED;
        return -1;
    }
    const bool isWhole =
        address && size >= (address->sa_family == AF_INET6 ? sizeof(sockaddr_in6) : sizeof(sockaddr_in));
    if (isWhole && !voro::renderer::NetworkRules::instance().mayConnect(*address)) {
        errno = EACCES;
        return -1;
    }
    return static_cast<int>(syscall(SYS_connect, socket, address, size));
}

extern "C" __attribute__((visibility("default"))) int getaddrinfo(const char *host, const char *service,
                                                                  const addrinfo *hints, addrinfo **addresses)
{
    static const auto real = reinterpret_cast<decltype(&getaddrinfo)>(dlsym(RTLD_NEXT, "getaddrinfo"));
    const int result = real(host, service, hints, addresses);
    if (result == 0 && host) {
        voro::renderer::NetworkRules::instance().learn(host, *addresses);
    }
    return result;
}
