#include "FewPlugins.h"

#include <QtTest/QtTest>

#include <arpa/inet.h>
#include <netdb.h>
#include <netinet/in.h>
#include <renderer/worker/gst/FileSource.h>
#include <renderer/worker/gst/Gst.h>
#include <renderer/worker/lookup/OpenMedia.h>
#include <renderer/worker/process/NetworkRules.h>
#include <Rows.h>
#include <unistd.h>

#include <cerrno>

using namespace voro::renderer;

namespace {

sockaddr_storage addressOf(const QByteArray &text)
{
    sockaddr_storage storage{};
    auto *v4 = reinterpret_cast<sockaddr_in *>(&storage);
    auto *v6 = reinterpret_cast<sockaddr_in6 *>(&storage);
    if (inet_pton(AF_INET, text.constData(), &v4->sin_addr) == 1) {
        v4->sin_family = AF_INET;
    } else if (inet_pton(AF_INET6, text.constData(), &v6->sin6_addr) == 1) {
        v6->sin6_family = AF_INET6;
    }
    return storage;
}

} // namespace

/** A medium from the net leads no closer than to where it came from. */
class tst_NetworkRules : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void mediumFromTheNet_leadsNoCloser_data()
    {
        const Rows<QByteArray, QByteArray, QByteArray, QByteArray, bool> row("medium", "resolved", "captions", "target",
                                                                             "isAllowed");
        row("the world to the world", "http://radio.example/a", "203.0.113.1", "", "198.51.100.1", true);
        row("the world to a router", "http://radio.example/a", "203.0.113.1", "", "192.168.1.1", false);
        row("the world to a router, mapped", "http://radio.example/a", "203.0.113.1", "", "::ffff:192.168.1.1", false);
        row("the world to the link", "http://radio.example/a", "203.0.113.1", "", "169.254.169.254", false);
        row("the world to the link, IPv6", "http://radio.example/a", "2001:db8::1", "", "fe80::1", false);
        row("the world to a site, IPv6", "http://radio.example/a", "2001:db8::1", "", "fd00::1", false);
        row("the world to this machine", "http://radio.example/a", "203.0.113.1", "", "127.0.0.1", false);
        row("the world to this machine, unspecified", "http://radio.example/a", "203.0.113.1", "", "0.0.0.0", false);
        row("a name that is not known yet", "http://radio.example/a", "", "", "10.0.0.1", false);
        row("a name in large letters", "http://NAS.example/a", "10.0.0.1", "", "10.0.0.1", true);
        row("a site to its neighbour", "http://nas.example/a", "10.0.0.1", "", "192.168.1.1", true);
        row("a site to this machine", "http://10.0.0.1:80/a", "", "", "127.0.0.1", false);
        row("this machine to all", "http://localhost:80/a", "", "", "10.0.0.1", true);
        row("an address of this machine", "http://[::1]:80/a", "", "", "127.0.0.1", true);
        row("captions that the user named", "http://203.0.113.1/a", "", "http://192.168.1.1/a.srt", "192.168.1.1",
            true);
        row("beside captions that the user named", "http://203.0.113.1/a", "", "http://192.168.1.1/a.srt",
            "192.168.1.2", false);
        row("a local list", "file:///a.m3u", "", "", "192.168.1.1", true);
    }

    void mediumFromTheNet_leadsNoCloser()
    {
        QFETCH(const QByteArray, medium);
        QFETCH(const QByteArray, resolved);
        QFETCH(const QByteArray, captions);
        QFETCH(const QByteArray, target);
        NetworkRules rules;
        rules.setNamed(Medium(medium.toStdString()), {captions.toStdString()});
        if (!resolved.isEmpty()) {
            sockaddr_storage storage = addressOf(resolved);
            addrinfo info{};
            info.ai_family = storage.ss_family;
            info.ai_addr = reinterpret_cast<sockaddr *>(&storage);
            rules.learn(QUrl(QString::fromUtf8(medium)).host().toStdString(), &info);
        }
        const sockaddr_storage storage = addressOf(target);
        QTEST(rules.mayConnect(reinterpret_cast<const sockaddr &>(storage)), "isAllowed");
    }

    void mediumFromTheNet_namesNoOtherSource()
    {
        const QTemporaryDir plugins;
        startGStreamerWith(plugins, {"coreelements"});
        QVERIFY(registerFileSource(OpenMedia::mayBeOpened));
        const auto isMade = [](const char *uri) {
            GstElement *source = gst_element_make_from_uri(GST_URI_SRC, uri, nullptr, nullptr);
            return Owned<GstElement>(source ? GST_ELEMENT(gst_object_ref_sink(source)) : nullptr) != nullptr;
        };
        constexpr const char *Others[] = {"file:///etc/passwd", "fd://0", "data:,a"};
        for (const char *uri : Others) {
            QVERIFY2(isMade(uri), uri);
        }
        OpenMedia media;
        media.add("http://203.0.113.1/a");
        for (const char *uri : Others) {
            QVERIFY2(!isMade(uri), uri);
        }
    }

    void connectionsAreAsked()
    {
        const sockaddr_storage storage = addressOf("127.0.0.1");
        const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        const auto attempt = [&] {
            errno = 0;
            ::connect(socket, reinterpret_cast<const sockaddr *>(&storage), sizeof(sockaddr_in));
            return errno;
        };
        NetworkRules::instance().setNamed(Medium("http://203.0.113.1/a"), {});
        QCOMPARE(attempt(), EACCES);
        NetworkRules::instance().setNamed(Medium("http://127.0.0.1/a"), {});
        QCOMPARE(attempt(), ECONNREFUSED);
        ::close(socket);
    }
};

QTEST_GUILESS_MAIN(tst_NetworkRules)
#include "tst_network_rules.moc"
