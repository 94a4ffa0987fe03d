#include <fuzzer/FuzzedDataProvider.h>
#include <pps/broker/Broker.h>
#include <pps/Wire.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <vector>

using namespace voro::pps;

namespace {

/** A service that does something with everything that it is told. */
class BusyService : public Service {
public:
    explicit BusyService(Broker &broker) : m_broker(broker) {}
    void clientOpened(ClientId client, const Peer &) override { m_broker.send(client, "msg::hello"); }
    void clientMessage(ClientId client, std::string_view text) override
    {
        m_broker.publish("/pps/f/b", text, Broker::Fence::Hold);
        m_broker.sendAll("/pps/f/control", text);
        if (text.size() % 16 == 15) {
            m_broker.disconnect(client);
        } else if (text.size() % 16 == 14) {
            m_broker.remove("/pps/f");
        }
    }
    void clientClosed(ClientId) override { m_broker.publish("/pps/f/a", "gone::1"); }

private:
    Broker &m_broker;
};

constexpr const char *Paths[] = {"/pps/f/a",       "/pps/f/b?delta",  "/pps/f/.all",         "/pps/f/.all?delta,f=x",
                                 "/pps/f/.list",   "/pps/f/control",  "/pps/f/control?wait", "/pps/g/control?server",
                                 "/pps/g/control", "/pps/f/a?f=x,f=y"};

/** The other ends of some of the broker's sockets. */
class Clients {
public:
    explicit Clients(Broker &broker)
    {
        for (int &client : m_sockets) {
            int ends[2];
            if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0) {
                std::abort();
            }
            broker.adopt(ends[1]);
            client = ends[0];
        }
    }
    ~Clients()
    {
        for (const int client : m_sockets) {
            close(client);
        }
    }
    void send(size_t client, const std::string &packet)
    {
        ::send(m_sockets[client % std::size(m_sockets)], packet.data(), packet.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
    }
    /** What the broker sends is well formed, whatever was sent to it. */
    void read(size_t client)
    {
        static char buffer[2 * MaximumReply];
        const ssize_t size = recv(m_sockets[client % std::size(m_sockets)], buffer, sizeof buffer, MSG_DONTWAIT);
        Reply header{};
        if (size <= 0) {
            return;
        }
        if (static_cast<size_t>(size) < sizeof header || static_cast<size_t>(size) > MaximumReply) {
            std::abort();
        }
        std::memcpy(&header, buffer, sizeof header);
        if (header.type < Reply::Opened || header.type > Reply::Closed
            || header.heldCount * sizeof(Held) > static_cast<size_t>(size) - sizeof header) {
            std::abort();
        }
    }

private:
    int m_sockets[6];
};

std::string packet(FuzzedDataProvider &input, uint64_t &number)
{
    const auto byte = [&input] { return input.ConsumeIntegral<uint8_t>(); };
    const uint8_t kind = byte();
    Request header{};
    header.type = static_cast<uint8_t>(kind % 6);
    header.mode = static_cast<uint8_t>(1 + kind / 6 % 4);
    header.version = WireVersion;
    header.process = 1 + byte() % 2;
    // Mostly in order, sometimes with gaps and backwards.
    number += byte() % 3;
    header.number = number;
    header.seen = {byte(), byte()};
    std::string body =
        header.type == Request::Open ? input.PickValueInArray(Paths) : input.ConsumeBytesAsString(byte());
    if (kind >= 250) {
        return body;
    }
    return std::string(reinterpret_cast<const char *>(&header), sizeof header) + body;
}

} // namespace

// Clients of one or two processes send packets, good and bad ones, over several sockets.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    Broker broker;
    BusyService service(broker);
    broker.serve("/pps/f/control", &service);
    Clients clients(broker);
    FuzzedDataProvider input(data, size);
    uint64_t number = 0;
    while (input.remaining_bytes() > 0) {
        const auto step = input.ConsumeIntegral<uint8_t>();
        if (step % 4 == 3) {
            clients.read(step / 4);
        } else {
            clients.send(step / 4, packet(input, number));
        }
        if (step % 2 == 0) {
            broker.process();
        }
    }
    broker.process();
    broker.publish("/pps/f/a", "end::1");
    if (broker.content("/pps/f/a").find("end::1\n") == std::string::npos) {
        std::abort();
    }
    return 0;
}
