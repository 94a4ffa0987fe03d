#include "ContextStage.h"

#include <QtCore/QDir>
#include <QtCore/QTemporaryDir>

#include <Files.h>
#include <Rows.h>

using namespace context;

/** A context that records, and its file. */
class tst_ContextRecording : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(QDir(m_folder.path()).mkdir(QStringLiteral("folder.wav")));
        QVERIFY(QFile::link(QStringLiteral("/dev/null"), m_folder.filePath(QStringLiteral("null.wav"))));
    }

    void recordingSteps_data()
    {
        const Rows<QStringList, QList<int>, QByteArray> row("commands", "codes", "state");
        const QString file = output("a.wav");
        const QString source = QStringLiteral("input_attach url::audio:default type::track");
        const char *const ready = "state::stopped speed:n:1000 error:n:0 error_pos::1:0";
        row("prepared", {file, source}, {0, 0}, ready);
        row("prepared, stopped", {file, source, "stop"}, {0, 0, 0}, ready);
        row("reset", {file, source, "stop", "input_detach", "output_detach output:n:0"}, {0, 0, 0, 0, 0},
            "state::idle speed:n:1000");
        row("reset and prepared", {file, source, "input_detach", "output_detach output:n:0", file, source},
            {0, 0, 0, 0, 0, 0}, ready);
        row("recording", {file, source, "play", "play"}, {0, 0, 0, 0}, "state::playing speed:n:1000");
        row("paused", {file, source, "play", "speed_set speed:n:0"}, {0, 0, 0, 0}, "state::playing speed:n:0");
        row("speeds", {file, source, "speed_set speed:n:2000", "speed_set speed:n:-1000", "speed_set speed:n:0"},
            {0, 0, 4, 4, 0}, "state::stopped speed:n:0 error:n:0 error_pos::1:0");
        row("complete", {file, source, "play", "!status position:n:900", "stop"}, {0, 0, 0, 0, 0},
            "state::stopped speed:n:1000 error:n:0 error_pos::1:900");
        row("complete, play", {file, source, "play", "stop", "play"}, {0, 0, 0, 0, 3}, ready);
        row("complete, another file, play", {file, source, "play", "stop", output("b.wav"), "play"}, {0, 0, 0, 0, 0, 0},
            "state::playing speed:n:1000");
        row("another file while recording", {file, source, "play", output("b.wav")}, {0, 0, 0, 0}, ready);
        row("the file goes while recording", {file, source, "play", "output_detach output:n:0", "play"},
            {0, 0, 0, 0, 3}, ready);
        row("a failure", {file, source, "play", "!failed err:n:9 position:n:700 track:n:1"}, {0, 0, 0, 0},
            "state::stopped speed:n:1000 error:n:9 error_pos::1:700");
        row("a crash, play", {file, source, "play", "!status position:n:700", "!die", "play"}, {0, 0, 0, 0, 0, 3},
            "state::stopped speed:n:1000 error:n:1 error_pos::1:700");
        row("a crash while prepared, play", {file, source, "!die", "play"}, {0, 0, 0, 0},
            "state::playing speed:n:1000");
        row("a crash, prepared again", {file, source, "play", "!die", "input_detach", output("a.wav"), source, "play"},
            {0, 0, 0, 0, 0, 0, 0, 0}, "state::playing speed:n:1000");
        row("inputs",
            {file, "input_attach url::audio:other type::track", "input_attach url::audio:default?nchan=3 type::track",
             "input_attach url::audio:default?x=1 type::track", "input_attach url::/a.ogg type::autolist",
             "input_attach url::audio:default?nchan=2 type::track"},
            {0, 10, 4, 2, 7, 0}, ready);
        row("files",
            {output("a.txt"), output("a"), output(".wav"), output("no/a.wav"), output("folder.wav"), output("null.wav"),
             output("a.wav/b.wav"), "output_attach url::a.wav type::file",
             "output_attach url::http://x/a.wav type::file", output("A.OPUS"),
             "output_parameters output:n:0 dat::volume::50"},
            {5, 5, 5, 12, 12, 12, 12, 12, 12, 0, 2}, "");
    }

    void recordingSteps() { trySteps(); }

    // What can be seen of a file that a recorder has: an existing one stays, and a new one does not appear, until the
    // engine records.
    void recordingFile_isLeftAlone_untilItStarts()
    {
        const QString path = writeFile(m_folder.filePath(QStringLiteral("kept.wav")), "kept");
        Stage stage;
        for (const char *name : {"kept.wav", "new.wav"}) {
            QCOMPARE(stage.step(output(name).toStdString()), 0);
            QCOMPARE(stage.step("input_attach url::audio:default?nchan=1 type::track"), 0);
            stage.run([&](Broker &) { stage.engines.answers["play"] = {ErrorCode::SourceUnavailable, "no source"}; });
            QCOMPARE(stage.step("play"), static_cast<int>(ErrorCode::SourceUnavailable));
            stage.run([&](Broker &) { stage.engines.answers.clear(); });
        }
        QVERIFY(!QFile::exists(m_folder.filePath(QStringLiteral("new.wav"))));
        QCOMPARE(readFile(path), QByteArray("kept"));
        const QByteArrayList log = toList(stage.takeLog());
        QVERIFY2(log.first().contains(
                     "type::track speed:n:1000 track:n:1 position:n:0 channels:n:1 format::wav recording_role::"),
                 log.first());
        QCOMPARE(log.mid(1, 2), (QByteArrayList{"file", "play"}));

        QVERIFY(!stage.engines.isCompleting());
        QCOMPARE(stage.step("play"), 0);
        QVERIFY(stage.engines.isCompleting());
        QVERIFY(QFile::exists(m_folder.filePath(QStringLiteral("new.wav"))));
        QCOMPARE(stage.step("stop"), 0);
        QVERIFY(!stage.engines.isCompleting());
    }

    void recordingFile_goesWithAFailure_whenNothingIsInIt_data()
    {
        const Rows<bool, QByteArray, QString, bool> row("wasThere", "content", "end", "isLeft");
        const QString failed = QStringLiteral("!failed err:n:9 position:n:0 track:n:1");
        row("a new file, a failure", false, "", failed, false);
        row("a new file, a crash", false, "", "!die", false);
        row("a new file, stopped", false, "", "stop", true);
        row("with content", false, "sound", failed, true);
        row("an older file", true, "", failed, true);
    }

    void recordingFile_goesWithAFailure_whenNothingIsInIt()
    {
        QFETCH(const bool, wasThere);
        QFETCH(const QByteArray, content);
        QFETCH(const QString, end);
        QFETCH(const bool, isLeft);
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("a.wav"));
        const QString marker = folder.filePath(QStringLiteral("b.wav"));
        if (wasThere) {
            writeFile(path, {});
        }
        Stage stage;
        for (const QString &file : {path, marker}) {
            QCOMPARE(stage.step(outputCommand(file).toStdString()), 0);
            QCOMPARE(stage.step("input_attach url::audio:default type::track"), 0);
            QCOMPARE(stage.step("play"), 0);
            QVERIFY(QFile::exists(file));
            if (file == path && !content.isEmpty()) {
                writeFile(path, content);
            }
            stage.step(file == path ? end.toStdString() : "!failed err:n:9 position:n:0 track:n:1");
        }
        QTRY_VERIFY(!QFile::exists(marker));
        QTRY_COMPARE(QFile::exists(path), isLeft);
    }

    void recordingFile_isOneRecorders()
    {
        const QString path = writeFile(m_folder.filePath(QStringLiteral("one.wav")), {});
        QVERIFY(QFile::link(path, m_folder.filePath(QStringLiteral("link.wav"))));
        Stage first;
        QCOMPARE(first.step(output("one.wav").toStdString()), 0);
        // The same file again is the same recorder's.
        QCOMPARE(first.step(output("one.wav").toStdString()), 0);
        {
            Stage second;
            for (const char *name : {"one.wav", "folder.wav/../one.wav", "link.wav"}) {
                QCOMPARE(second.step(output(name).toStdString()), static_cast<int>(ErrorCode::ResourceUnavailable));
            }
        }
        // Who gets no input keeps the file from nobody, and gets it again with an input when nobody else has it.
        const char *const attach = "input_attach url::audio:default type::track";
        first.run([&](Broker &) { first.engines.answers["open"] = {ErrorCode::SourceUnavailable, "no source"}; });
        QCOMPARE(first.step(attach), static_cast<int>(ErrorCode::SourceUnavailable));
        first.run([&](Broker &) { first.engines.answers.clear(); });
        {
            Stage second;
            QCOMPARE(second.step(output("one.wav").toStdString()), 0);
            QCOMPARE(first.step(attach), static_cast<int>(ErrorCode::ResourceUnavailable));
        }
        QCOMPARE(first.step(attach), 0);
        Stage second;
        QCOMPARE(second.step(output("one.wav").toStdString()), static_cast<int>(ErrorCode::ResourceUnavailable));
        QCOMPARE(first.step("output_detach output:n:1"), 0);
        QCOMPARE(second.step(output("one.wav").toStdString()), 0);
    }

private:
    QString output(const char *name) const { return outputCommand(m_folder.filePath(QString::fromUtf8(name))); }

    QTemporaryDir m_folder;
};

QTEST_GUILESS_MAIN(tst_ContextRecording)
#include "tst_context_recording.moc"
