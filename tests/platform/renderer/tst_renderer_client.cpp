#include <voro/mmr.h>

#include <QtTest/QtTest>

#include <BrokerThread.h>
#include <pps/Runtime.h>
#include <renderer/client/RequestChannel.h>
#include <renderer/common/Protocol.h>
#include <Rows.h>

#include <chrono>
#include <functional>

using namespace std::chrono_literals;
using namespace voro::renderer;
using voro::pps::Broker;
using voro::pps::ClientId;
using voro::pps::Message;

namespace {

/** The lines of a request without its number. */
QByteArray lines(std::string_view text)
{
    QByteArrayList lines = QByteArray(text.data(), static_cast<qsizetype>(text.size())).split('\n');
    lines.removeIf([](const QByteArray &line) { return line.isEmpty() || line.startsWith("id:n:"); });
    return lines.join(' ');
}

/** A renderer service that records what it is asked and answers as the test says. */
class Script : public voro::pps::Service {
public:
    explicit Script(Broker &broker) : m_broker(broker)
    {
        broker.serve(ServicePath, this);
        broker.serve(std::string(ContextFolder) + "c/control", this);
    }

    /**
     * Lines of the next answer; empty: the request succeeded; "close": the client is closed instead; "none": there is
     * no answer.
     */
    std::string next;
    /** All requests, and what its clients are given as their return with each answer. */
    QByteArrayList requests;
    std::string back;
    int clients = 0;

private:
    void clientOpened(ClientId, const voro::pps::Peer &) override { ++clients; }
    void clientClosed(ClientId) override { --clients; }
    void clientMessage(ClientId client, std::string_view text) override
    {
        requests += lines(text);
        Message message;
        message.parse(text);
        if (next == "close") {
            m_broker.disconnect(client);
            return;
        }
        std::string success = answer(message.text("msg"), message.number("id"), {});
        if (message.text("msg") == "context_create") {
            voro::pps::appendText(success, "path", std::string(ContextFolder) + message.text("name"));
        }
        // What a client has to pass over: events, and answers that are not its own.
        m_broker.send(client, "msg::news\nid:n:" + std::to_string(message.number("id")));
        m_broker.send(client, answer(message.text("msg"), message.number("id") - 1, {ErrorCode::Read, "late"}));
        m_broker.setReturn(client, back);
        if (next == "none") {
            return;
        }
        m_broker.send(client, next.empty() ? success : "id:n:" + std::to_string(message.number("id")) + '\n' + next);
    }

    Broker &m_broker;
};

} // namespace

Q_DECLARE_METATYPE(std::function<int(mmr_context_t *)>)

/** The client functions against a scripted service. */
class tst_RendererClient : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        qputenv("VORO_RUNTIME_DIR", m_folder.path().toUtf8());
        qputenv("VORO_AUTOSPAWN", "0");
    }

    void init()
    {
        startThread();
        m_connection = mmr_connect(nullptr);
        QVERIFY(m_connection);
        m_context = mmr_context_create(m_connection, "c", 0, 0700);
        QVERIFY(m_context);
    }

    void cleanup()
    {
        mmr_context_destroy(m_context);
        mmr_disconnect(m_connection);
        m_context = nullptr;
        m_connection = nullptr;
        m_thread.reset();
        m_script.reset();
    }

    void cleanupTestCase()
    {
        mmr_context_destroy(nullptr);
        mmr_disconnect(nullptr);
        strm_dict_destroy(nullptr);
    }

    void request_data()
    {
        // The rows have what is expected as titles.
        const Rows<Call> row("call");
        row("msg::play", [](auto *c) { return mmr_play(c); });
        row("msg::stop", [](auto *c) { return mmr_stop(c); });
        row("msg::seek position::2:1500", [](auto *c) { return mmr_seek(c, "2:1500"); });
        row("msg::speed_set speed:n:-500", [](auto *c) { return mmr_speed_set(c, -500); });
        row("msg::input_attach url::/a: b.ogg type::autolist",
            [](auto *c) { return mmr_input_attach(c, "/a: b.ogg", "autolist"); });
        row("msg::input_attach url:c:/a\\nmsg::stop type::autolist",
            [](auto *c) { return mmr_input_attach(c, "/a\nmsg::stop", "autolist"); });
        row("msg::input_attach url:: type::", [](auto *c) { return mmr_input_attach(c, "", ""); });
        row("msg::input_detach", [](auto *c) { return mmr_input_detach(c); });
        row("msg::output_detach output:n:-1", [](auto *c) { return mmr_output_detach(c, -1); });
        row("msg::output_parameters output:n:3 dat:c:volume::9\\n", [](auto *c) {
            return mmr_output_parameters(c, 3, dictionary({"volume", "9"}));
        });
        row("msg::context_parameters dat:c:updateinterval::20\\n", [](auto *c) {
            return mmr_context_parameters(c, dictionary({"updateinterval", "1", "updateinterval", "20"}));
        });
        row("msg::input_parameters dat::", [](auto *c) { return mmr_input_parameters(c, dictionary({})); });
        row("msg::track_parameters track:n:4294967295 dat:c:a:c:x\\\\ny\\n", [](auto *c) {
            return mmr_track_parameters(c, 4294967295u, dictionary({"a", "x\ny"}));
        });
    }

    void request()
    {
        QFETCH(Call, call);
        QCOMPARE(call(m_context), 0);
        QCOMPARE(lastRequest(), QByteArray(QTest::currentDataTag()));
        QVERIFY(!mmr_error_info(m_context));
    }

    void failure_fillsTheRecord_data()
    {
        const Rows<std::string, uint, QByteArray> row("answer", "code", "text");
        row("error", "res::seek\nerr:n:10\nerror::gone away", 10, "gone away");
        row("long cause", "res::seek\nerr:n:5\nerror::" + std::string(400, 'x'), 5, QByteArray(255, 'x'));
        row("no cause", "res::seek\nerr:n:32", 32, "");
        row("neither error nor success", "res::seek", 1, "");
        row("closed", "close", 1, "the renderer is gone");
    }

    void failure_fillsTheRecord()
    {
        QFETCH(std::string, answer);
        QFETCH(uint, code);
        QFETCH(QByteArray, text);
        script(answer);
        QCOMPARE(mmr_seek(m_context, "0"), -1);
        const mmr_error_info_t *info = mmr_error_info(m_context);
        QVERIFY(info);
        QCOMPARE(info->error_code, code);
        QCOMPARE(info->extra_value, 0);
        QCOMPARE(QByteArray(info->extra_text), text);
        script({});
    }

    void record_holdsTheLastFailure()
    {
        script("res::play\nerr:n:3\nerror::not now");
        QCOMPARE(mmr_play(m_context), -1);
        QCOMPARE(mmr_output_attach(m_context, "audio:default", "audio"), -1);
        QCOMPARE(mmr_error_info(m_context)->error_code, 3u);
        script("res::output_attach\nerr:n:0\noutput:n:7");
        QCOMPARE(mmr_output_attach(m_context, "audio:default", "audio"), 7);
        script({});
        QCOMPARE(mmr_play(m_context), 0);
        QCOMPARE(mmr_error_info(m_context)->error_code, 0u);
    }

    void unusableArguments_areRefused_withoutRequest_data()
    {
        const Rows<Call> row("call");
        row("no position", Call([](auto *c) { return mmr_seek(c, nullptr); }));
        row("no URL", Call([](auto *c) { return mmr_input_attach(c, nullptr, "autolist"); }));
        row("no type", Call([](auto *c) { return mmr_output_attach(c, "audio:default", nullptr); }));
        row("no dictionary", Call([](auto *c) { return mmr_input_parameters(c, nullptr); }));
        row("a name that is none", Call([](auto *c) {
                return mmr_input_parameters(c, dictionary({"repeat", "all", "a:b", "1"}));
            }));
        row("an empty name", Call([](auto *c) { return mmr_track_parameters(c, 1, dictionary({"", "1"})); }));
        row("more than fits", Call([](auto *c) {
                return mmr_input_parameters(c, dictionary({"a", QByteArray(70'000, 'x').constData()}));
            }));
        row("longer than fits", Call([](auto *c) { return mmr_seek(c, QByteArray(70'000, '1').constData()); }));
    }

    void unusableArguments_areRefused_withoutRequest()
    {
        QFETCH(Call, call);
        const QByteArray before = lastRequest();
        QCOMPARE(call(m_context), -1);
        QCOMPARE(mmr_error_info(m_context)->error_code, static_cast<uint>(ErrorCode::InvalidParameter));
        QCOMPARE(lastRequest(), before);
        QCOMPARE(call(nullptr), -1);
        QCOMPARE(mmr_play(m_context), 0);
    }

    void contextPath_fitsOrFails()
    {
        const QByteArray expected = QByteArray::fromStdString(std::string(ContextFolder) + "c");
        const QByteArray before = lastRequest();
        char buffer[1024];
        QCOMPARE(mmr_context_path(m_context, buffer, sizeof buffer), expected.size());
        QCOMPARE(QByteArray(buffer), expected);
        QCOMPARE(mmr_context_path(m_context, buffer, static_cast<size_t>(expected.size() + 1)), expected.size());
        QCOMPARE(mmr_context_path(m_context, buffer, static_cast<size_t>(expected.size())), -1);
        QCOMPARE(mmr_context_path(m_context, buffer, 0), -1);
        QCOMPARE(mmr_context_path(m_context, nullptr, 1024), -1);
        QCOMPARE(mmr_context_path(nullptr, buffer, sizeof buffer), -1);
        QCOMPARE(lastRequest(), before);
    }

    void contextCreate_fails_whenRefused()
    {
        QVERIFY(!mmr_context_create(nullptr, "d", 0, 0700));
        QVERIFY(!mmr_context_create(m_connection, nullptr, 0, 0700));
        // A folder that nobody serves.
        QVERIFY(!mmr_context_create(m_connection, "d", 0, 0700));
        script("res::context_create\nerr:n:14");
        QVERIFY(!mmr_context_create(m_connection, "c", 0, 0700));
        script({});
        mmr_context_t *second = mmr_context_create(m_connection, "c", 0, 0700);
        QVERIFY(second);
        QCOMPARE(mmr_context_destroy(second), 0);
        QCOMPARE(lastRequest(), QByteArray("msg::context_destroy name::c"));
    }

    void destroyAndDisconnect_closeEverything()
    {
        QCOMPARE(mmr_context_destroy(m_context), 0);
        mmr_disconnect(m_connection);
        m_context = nullptr;
        m_connection = nullptr;
        // An exchange of another client proves that the broker has seen what came before.
        mmr_connection_t *other = mmr_connect("name");
        QVERIFY(other);
        int clients = 0;
        m_thread->run([&](Broker &) { clients = m_script->clients; });
        QCOMPARE(clients, 1);
        mmr_disconnect(other);
    }

    void lostContext_fails_untilADaemonMakesItAgain()
    {
        m_thread->run([&](Broker &) { m_script->back = "speed:n:500\nurl::a.ogg\n"; });
        QCOMPARE(mmr_play(m_context), 0);
        m_thread.reset();
        for (int i = 0; i < 2; ++i) {
            QCOMPARE(mmr_play(m_context), -1);
            QCOMPARE(mmr_error_info(m_context)->error_code, static_cast<uint>(ErrorCode::Internal));
        }
        startThread();
        QCOMPARE(mmr_play(m_context), 0);
        m_thread->run([&](Broker &) {
            const auto &requests = m_script->requests;
            QCOMPARE(requests.at(requests.size() - 2), "msg::context_create name::c speed:n:500 url::a.ogg will::");
            QCOMPARE(requests.last(), "msg::play");
        });
        m_thread.reset();
        QCOMPARE(mmr_context_destroy(m_context), 0);
        m_context = nullptr;
    }

    // Every call ends. The limit is a shorter one here.
    void callWithoutAnswer_ends_andTheNextOneWorks()
    {
        constexpr auto Limit = 300ms;
        RequestChannel channel(Limit);
        QVERIFY(channel.open(std::string(ContextFolder) + "c/control"));
        script("none");
        QElapsedTimer time;
        time.start();
        const Result result = channel.call("play", {});
        QVERIFY2(time.elapsed() >= Limit.count(), qPrintable(QString::number(time.elapsed())));
        QCOMPARE(result.code, ErrorCode::Internal);
        QCOMPARE(result.text, "the renderer does not answer");
        script({});
        QCOMPARE(channel.call("play", {}).code, ErrorCode::None);
    }

    void noDaemon_connectFails()
    {
        m_thread.reset();
        QVERIFY(!mmr_connect(nullptr));
    }

private:
    using Call = std::function<int(mmr_context_t *)>;

    void startThread()
    {
        m_thread = std::make_unique<voro::pps::BrokerThread>();
        const int listener = voro::pps::listenAt(voro::pps::socketPath(m_folder.path().toStdString())).release();
        QVERIFY(listener >= 0);
        m_thread->run([&](Broker &broker) {
            m_script = std::make_unique<Script>(broker);
            broker.listen(listener);
        });
    }

    void script(const std::string &next)
    {
        m_thread->run([&](Broker &) { m_script->next = next; });
    }
    QByteArray lastRequest()
    {
        QByteArray request;
        m_thread->run([&](Broker &) { request = m_script->requests.value(m_script->requests.size() - 1); });
        return request;
    }
    static strm_dict_t *dictionary(std::initializer_list<const char *> entries)
    {
        strm_dict_t *result = strm_dict_new();
        for (auto entry = entries.begin(); entry != entries.end(); entry += 2) {
            result = strm_dict_set(result, entry[0], entry[1]);
        }
        return result;
    }

    QTemporaryDir m_folder;
    std::unique_ptr<voro::pps::BrokerThread> m_thread;
    std::unique_ptr<Script> m_script;
    mmr_connection_t *m_connection = nullptr;
    mmr_context_t *m_context = nullptr;
};

QTEST_GUILESS_MAIN(tst_RendererClient)
#include "tst_renderer_client.moc"
