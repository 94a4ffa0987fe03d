/*
 * The media key service as the daemon has it, with a folder of devices of its own. Arguments: the runtime folder, the
 * folder of devices.
 */

#include <QtCore/QCoreApplication>
#include <QtCore/QSocketNotifier>

#include <pps/broker/Broker.h>
#include <services/common/SharedControl.h>
#include <services/mediakeys/MediaKeyService.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <cstring>
#include <iostream>
#include <string>

namespace {

int listenAt(const std::string &path)
{
    const int fd = socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, path.c_str(), sizeof(address.sun_path) - 1);
    const bool isListening =
        bind(fd, reinterpret_cast<const sockaddr *>(&address), sizeof(address)) == 0 && listen(fd, SOMAXCONN) == 0;
    return isListening ? fd : -1;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    if (argc != 3) {
        return 2;
    }
    voro::pps::Broker broker;
    QSocketNotifier brokerReady(broker.fd(), QSocketNotifier::Read);
    QObject::connect(&brokerReady, &QSocketNotifier::activated, [&broker] { broker.process(); });
    voro::mediakeys::MediaKeyService service(broker, voro::mediakeys::Mode::Registered, argv[2]);
    voro::SharedControl control(broker, "/pps/services/multimedia/mediaplayer/control");
    control.add(service);
    const int listener = listenAt(std::string(argv[1]) + "/pps.sock");
    if (listener < 0) {
        return 1;
    }
    broker.listen(listener);
    std::cout << "ready" << std::endl;
    // The end of the input is the end.
    QSocketNotifier input(0, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &application, &QCoreApplication::quit);
    return QCoreApplication::exec();
}
