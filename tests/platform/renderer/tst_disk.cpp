#include "Application.h"
#include "RealMedia.h"

#include <QtTest/QtTest>

#include <Daemon.h>
#include <fcntl.h>
#include <pps/Fd.h>
#include <renderer/common/Error.h>
#include <Rows.h>
#include <sys/mount.h>

#include <string>

using namespace voro;
using renderer::ErrorCode;

namespace {

/** A medium on a disk that answers. */
constexpr const char *AttachGood = "input_attach\ntype::autolist\nurl::@";

/** A share that answers nothing. */
class SilentShare {
public:
    SilentShare() : m_device(open("/dev/fuse", O_RDWR | O_CLOEXEC))
    {
        const std::string options =
            "fd=" + std::to_string(m_device.get()) + ",rootmode=40000,user_id=0,group_id=0,allow_other";
        if (mount("silent", path().c_str(), "fuse", 0, options.c_str()) != 0) {
            qFatal("cannot mount a share");
        }
    }
    ~SilentShare() { umount2(path().c_str(), MNT_DETACH); }
    std::string path() const { return m_folder.path().toStdString(); }
    /** From here on everything fails that waits. */
    void end() { m_device.reset(); }

private:
    QTemporaryDir m_folder;
    pps::Fd m_device;
};

} // namespace

/** A share that hangs costs its own context an error, and nobody else anything. */
class tst_Disk : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { media::encode(m_medium, "sine=duration=20"); }

    void silentShare_costsItsContextAnError_data()
    {
        const Rows<QStringList, QString, ErrorCode> row("before", "command", "error");
        row("output", {}, "output_attach\ntype::file\nurl::%/a.wav", ErrorCode::OutputUnavailable);
        row("input", {}, "input_attach\ntype::autolist\nurl::%/a.ogg", ErrorCode::SourceUnavailable);
        row("list", {}, "input_attach\ntype::playlist\nurl::%/a.m3u", ErrorCode::SourceUnavailable);
        const QStringList captions{"output_attach\ntype::subpicture\nurl::screen:?winid=w&wingrp=g", AttachGood,
                                   "track_parameters\ntrack:n:1\ndat::subpicture_url::%/a.srt"};
        row("captions, which are left out", captions, "play", ErrorCode::None);
    }

    void silentShare_costsItsContextAnError()
    {
        QFETCH(const QStringList, before);
        QFETCH(const QString, command);
        SilentShare share;
        const auto filled = [&](QString text) {
            return text.replace('%', QString::fromStdString(share.path())).replace('@', m_medium).toStdString();
        };
        const Daemon daemon;
        const Application hangs("hangs");
        const Application good("good");
        const auto control = hangs.watch("control", pps::PublishSubscribe);
        const auto run = [&](const QString &text) {
            control->write("msg::" + filled(text));
            return static_cast<int>(readMessage(*control).number("err", -1));
        };
        QVERIFY(hangs.attachAudio() >= 0);
        for (const QString &earlier : before) {
            QCOMPARE(run(earlier), 0);
        }
        QElapsedTimer time;
        time.start();
        control->write("msg::" + filled(command));
        // The others are answered all the while.
        int answers = 0;
        for (; !control->isReadable(); ++answers) {
            QCOMPARE(mmr_stop(good.context()), 0);
        }
        QVERIFY(answers > 100);
        const pps::Message answer = readMessage(*control);
        QVERIFY2(time.elapsed() >= 2'900 && time.elapsed() < 20'000, std::to_string(time.elapsed()).c_str());
        QTEST(static_cast<ErrorCode>(answer.number("err", -1)), "error");
        const std::string text = answer.text("error");
        QVERIFY2(text.empty() || text.find("does not answer") != std::string::npos, text.c_str());
        // It goes on with another medium.
        for (const char *later : {"stop", "input_detach", "track_parameters\ntrack:n:1\ndat::", AttachGood, "play"}) {
            QCOMPARE(run(later), 0);
        }
        // Ends what still waits, so that the daemon can end in order.
        share.end();
    }

    void silentRuntimeFolder_isRefused()
    {
        SilentShare share;
        qputenv("VORO_RUNTIME_DIR", QByteArray::fromStdString(share.path()));
        QElapsedTimer time;
        time.start();
        pps::Connection connection;
        QVERIFY(!connection.open("/pps/services/multimedia/renderer/control", pps::PublishSubscribe));
        QCOMPARE(connection.error(), ETIMEDOUT);
        QVERIFY2(time.elapsed() < 20'000, std::to_string(time.elapsed()).c_str());
        share.end();
    }

private:
    QTemporaryDir m_folder;
    QString m_medium = m_folder.filePath("a.wav");
};

QTEST_GUILESS_MAIN(tst_Disk)
#include "tst_disk.moc"
