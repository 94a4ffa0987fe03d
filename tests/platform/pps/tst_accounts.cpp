#include "BrokerThread.h"
#include "ChildProcess.h"
#include "Daemon.h"
#include "RawClient.h"

#include <QtTest/QtTest>

#include <fcntl.h>
#include <pps/broker/Store.h>
#include <pps/FdPassing.h>
#include <pps/Runtime.h>
#include <Rows.h>
#include <sys/resource.h>

#include <random>

using namespace voro;
using namespace voro::pps;

namespace {

constexpr size_t Mebibyte = 1024 * 1024;
constexpr const char *Frames = "/frames.sock";
constexpr const char *ServiceControl = "/pps/services/multimedia/renderer/control";

ObjectPath parsed(const std::string &path)
{
    ObjectPath result;
    if (!parsePath(path, result)) {
        qFatal("no path");
    }
    return result;
}

std::string smallAttributes(size_t count)
{
    std::string text;
    for (size_t i = 0; i < count; ++i) {
        text += std::to_string(i) + "::\n";
    }
    return text;
}

/** One request of an application: its answer shows that all before it was handled. */
bool ask(Connection &control, const std::string &command)
{
    std::string text;
    return control.write("msg::" + command) && control.read(text, true) && !text.empty();
}

} // namespace

/** What one process takes, and what that leaves to others. */
class tst_Accounts : public QObject {
    Q_OBJECT
private Q_SLOTS:
    // Whoever asks gets what fits into a quarter of what the others leave; what was left behind is in nobody's way.
    void chargesAtRandom_agreeWithTheRule()
    {
        struct Model {
            pid_t process;
            size_t amount;
            Accounts::Charge charge;
        };
        Accounts accounts;
        const size_t all = accounts.room(Accounts::Services, Resource::Memory);
        std::vector<Model> charges;
        std::mt19937 random(11);
        for (int step = 0; step < 20'000; ++step) {
            const auto process = static_cast<pid_t>(random() % 8);
            const auto isThere = [](const Model &one) {
                return one.process != Accounts::Services && !one.charge.isLeft();
            };
            size_t own = 0;
            size_t others = 0;
            for (const Model &one : charges) {
                own += one.process == process && !one.charge.isLeft() ? one.amount : 0;
                others += one.process != process && isThere(one) ? one.amount : 0;
            }
            const size_t most = process == Accounts::Services ? all : (all - others) / 4;
            QCOMPARE(accounts.room(process, Resource::Memory), most - std::min(most, own));
            const size_t index = charges.empty() ? 0 : random() % charges.size();
            switch (random() % 5) {
            case 0:
            case 1: {
                const size_t amount = random() % (all / 16);
                Model model{process, amount, accounts.take(process, Resource::Memory, amount)};
                QCOMPARE(model.charge.isValid(), own + amount <= most);
                if (model.charge.isValid()) {
                    charges.push_back(std::move(model));
                }
                break;
            }
            case 2:
                if (!charges.empty() && charges[index].process == process && !charges[index].charge.isLeft()) {
                    const size_t amount = random() % (all / 16);
                    const size_t before = charges[index].amount;
                    const bool fits = amount <= before || own - before + amount <= most;
                    QCOMPARE(charges[index].charge.resize(amount), fits);
                    charges[index].amount = fits ? amount : before;
                }
                break;
            case 3:
                if (!charges.empty() && isThere(charges[index])) {
                    charges[index].charge.leave();
                }
                break;
            default:
                if (!charges.empty()) {
                    charges.erase(charges.begin() + static_cast<std::ptrdiff_t>(index));
                }
            }
        }
        charges.clear();
        QCOMPARE(accounts.room(1, Resource::Memory), all / 4);
    }

    // Twelve processes write, delete and leave as they like; the honest one keeps four objects and is never refused.
    void hostileAndHonest_atRandom_honestOnesNeverNotice()
    {
        constexpr pid_t Honest = 1000;
        Accounts accounts;
        Store store(accounts);
        Subscriber watcher;
        store.subscribe(parsed("/pps/hostile/.all"), watcher);
        std::mt19937 random(7);
        const size_t room = accounts.room(Honest, Resource::Memory);
        Object *object = nullptr;
        for (int step = 0; step < 4000; ++step) {
            const auto process = static_cast<pid_t>(1 + random() % 12);
            const ObjectPath path = parsed("/pps/hostile/o" + std::to_string(random() % 5000));
            const unsigned what = random() % 100;
            if (what == 0) {
                store.leave(process);
            } else if (what < 10) {
                store.publish(path, "-@" + path.name + '\n', false, process, object);
            } else {
                store.publish(path, smallAttributes(random() % 300), false, process, object);
            }
            while (accounts.isOverfull() && store.removeOldestLeft(object)) {
            }
            QVERIFY(!accounts.isOverfull());
            const ObjectPath own = parsed("/pps/honest/o" + std::to_string(step % 4));
            QVERIFY(store.publish(own, "step:n:" + std::to_string(step) + '\n', false, Honest, object));
            QVERIFY(store.content(own).ends_with("step:n:" + std::to_string(step) + '\n'));
        }
        store.unsubscribe(watcher);
        store.remove(parsed("/pps/hostile"));
        store.remove(parsed("/pps/honest"));
        QCOMPARE(accounts.room(Honest, Resource::Memory), room);
    }

    void whatWasLeftBehind_goesOldestFirst()
    {
        Accounts accounts;
        Store store(accounts);
        Object *object = nullptr;
        const std::string text = "a::" + std::string(60000, 'x') + '\n';
        const auto path = [](int number) { return parsed("/pps/f/o" + std::to_string(number)); };
        int written = 0;
        for (pid_t process = 1; !accounts.isOverfull(); ++process) {
            while (store.publish(path(written), text, false, process, object)) {
                ++written;
            }
            store.leave(process);
        }
        int removed = 0;
        for (; accounts.isOverfull(); ++removed) {
            QVERIFY(store.removeOldestLeft(object));
        }
        for (int i = 0; i < written; ++i) {
            QCOMPARE(store.content(path(i)).empty(), i < removed);
        }
        // Who writes it again has to stand for it, and it is no longer the oldest.
        QVERIFY(store.publish(path(removed), "a::1\n", false, 1, object));
        QVERIFY(store.removeOldestLeft(object));
        QVERIFY(!store.content(path(removed)).empty() && store.content(path(removed + 1)).empty());
    }

    void unreadMessages_areBoundedAltogether()
    {
        BrokerThread broker;
        std::vector<std::unique_ptr<Connection>> sleepers;
        auto server = broker.open("/pps/f/control?server", PublishSubscribe);
        for (int i = 0; i < 100; ++i) {
            sleepers.push_back(broker.open("/pps/f/control", PublishSubscribe));
        }
        size_t room = 0;
        const auto look = [&](Broker &b) { room = b.accounts().room(getpid(), Resource::Memory); };
        broker.run(look);
        const size_t before = room;
        QVERIFY(before < 17 * Mebibyte);
        std::string text;
        for (int i = 0; i < 110; ++i) {
            QVERIFY(server->write("@control\na::" + std::string(10000, 'x')));
        }
        // Every one of them was at most 1 MiB behind: what did not fit altogether was cut off before.
        int ended = 0;
        for (const auto &sleeper : sleepers) {
            int messages = 0;
            while (sleeper->read(text, messages < 110)) {
                if (text.empty()) {
                    break;
                }
                ++messages;
            }
            ended += !sleeper->isOpen();
        }
        QVERIFY2(ended > 50 && ended < 100, std::to_string(ended).c_str());
        sleepers.clear();
        broker.open("/pps/f/o", Publish);
        broker.run(look);
        QVERIFY(room >= before);
    }

    void contexts_areCommandedByTheirProcess_andLeftToOthers()
    {
        Daemon daemon;
        Connection control;
        QVERIFY(control.open(ServiceControl, PublishSubscribe));
        const auto create = [](Connection &service, const std::string &name) {
            std::string text;
            service.write("msg::context_create\nname::" + name);
            service.read(text, true);
            return text.find("err:n:0\n") != std::string::npos;
        };
        int contexts = 0;
        while (contexts < 2000 && create(control, 'c' + std::to_string(contexts))) {
            ++contexts;
        }
        QCOMPARE(contexts, 256);
        const std::string others = "/pps/services/multimedia/renderer/context/c0/control";
        ChildProcess other([&](ChildProcess &) {
            Connection service;
            if (!service.open(ServiceControl, PublishSubscribe) || !create(service, "mine")) {
                return 1;
            }
            Connection context;
            std::string text;
            return context.open(others, PublishSubscribe) && context.read(text, true) ? 2 : 0;
        });
        QCOMPARE(other.wait(), 0);
        Connection own;
        QVERIFY(own.open(others, PublishSubscribe));
        QVERIFY(ask(own, "stop"));
    }

    void daemonsObjects_areWrittenByNobodyElse_data()
    {
        // The rows have their paths as titles.
        const Rows<unsigned, int> row("mode", "error");
        row("/pps/services/multimedia/mediaplayer/status", Publish, EACCES);
        row("/pps/services/multimedia/mediaplayer/status?delta", PublishSubscribe, EACCES);
        row("/pps/services/multimedia/mediaplayer/status?wait", Subscribe, 0);
        row("/pps/services/multimedia/new/control?server", PublishSubscribe, EACCES);
        row("/pps/services/multimedia/sound/control", PublishSubscribe, 0);
        row("/pps/services/multimedias/o", Publish, 0);
    }

    void daemonsObjects_areWrittenByNobodyElse()
    {
        static Daemon daemon;
        QFETCH(unsigned, mode);
        Connection connection;
        const bool isOpen = connection.open(QTest::currentDataTag(), mode);
        QTEST(isOpen ? 0 : connection.error(), "error");
    }

    void workersConnection_opensTheWorkersPathOnly()
    {
        BrokerThread broker;
        const auto server = broker.open("/pps/f/control?server", PublishSubscribe);
        for (const auto &[path, error] : {std::pair("/pps/f/control", 0),
                                          {"/pps/f/control?server", EACCES},
                                          {"/pps/f/o", EACCES},
                                          {"/pps/f/.all", EACCES},
                                          {"/pps/f/.list", EACCES}}) {
            Connection worker;
            const unsigned mode =
                std::string_view(path).find("/.") == std::string_view::npos ? PublishSubscribe : Subscribe;
            QCOMPARE(worker.openOn(broker.connect("/pps/f/control"), path, mode) ? 0 : worker.error(), error);
        }
    }

    void descriptors_beyondTheExpectedOne_areClosed()
    {
        int ends[2];
        QVERIFY(socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) == 0);
        const Fd sender(ends[0]);
        const Fd receiver(ends[1]);
        for (const size_t count : {1, 2, 3, 200}) {
            int pipe[2];
            QVERIFY(pipe2(pipe, O_CLOEXEC) == 0);
            const Fd readEnd(pipe[0]);
            Fd writeEnd(pipe[1]);
            const std::vector<int> descriptors(count, writeEnd.get());
            std::vector<char> control(CMSG_SPACE(count * sizeof(int)));
            char byte = 'x';
            iovec data{&byte, 1};
            msghdr message{};
            message.msg_iov = &data;
            message.msg_iovlen = 1;
            message.msg_control = control.data();
            message.msg_controllen = control.size();
            cmsghdr *const header = CMSG_FIRSTHDR(&message);
            header->cmsg_level = SOL_SOCKET;
            header->cmsg_type = SCM_RIGHTS;
            header->cmsg_len = CMSG_LEN(count * sizeof(int));
            std::memcpy(CMSG_DATA(header), descriptors.data(), count * sizeof(int));
            QCOMPARE(sendmsg(sender.get(), &message, 0), 1);
            writeEnd.reset();
            {
                Fd received;
                std::byte buffer{};
                QCOMPARE(receivePacket(receiver.get(), std::span(&buffer, 1), received), 1);
                QVERIFY(received.isValid());
            }
            pollfd entry{readEnd.get(), POLLIN, 0};
            QCOMPARE(poll(&entry, 1, 0), 1);
            QVERIFY(entry.revents & POLLHUP);
        }
    }

    void frameSocket_turnsAway_whenDescriptorsRunOut()
    {
        Daemon daemon;
        Connection control;
        QVERIFY(control.open(ServiceControl, PublishSubscribe));
        // Once while there are some: the sanitizer needs two of its own to look at a class for the first time.
        RawClient former(connectToSocket(daemon.folder().toStdString() + Frames).release());
        QVERIFY(former.send("1"));
        former.waitForEnd();
        QVERIFY(ask(control, "none"));
        // No new descriptor beyond those that it has.
        const auto process = static_cast<pid_t>(daemon.processId());
        const auto open = static_cast<rlim_t>(
            QDir(QStringLiteral("/proc/%1/fd").arg(process)).entryList(QDir::NoDotAndDotDot | QDir::AllEntries).size());
        rlimit limit{};
        QCOMPARE(prlimit(process, RLIMIT_NOFILE, nullptr, &limit), 0);
        const rlimit low{open, limit.rlim_max};
        QCOMPARE(prlimit(process, RLIMIT_NOFILE, &low, nullptr), 0);
        for (int i = 0; i < 3; ++i) {
            RawClient viewer(connectToSocket(daemon.folder().toStdString() + Frames).release());
            viewer.waitForEnd();
        }
        QVERIFY(ask(control, "none"));
        QCOMPARE(prlimit(process, RLIMIT_NOFILE, &limit, nullptr), 0);
    }

    void frameSocket_closesWhoSaysNoName()
    {
        Daemon daemon;
        const std::string path = daemon.folder().toStdString() + Frames;
        RawClient named(connectToSocket(path).release());
        QVERIFY(named.send("queue"));
        RawClient nameless(connectToSocket(path).release());
        nameless.waitForEnd();
        // It is still there: a second name ends it.
        QVERIFY(named.send("queue"));
        named.waitForEnd();
    }
};

QTEST_GUILESS_MAIN(tst_Accounts)
#include "tst_accounts.moc"
