// The parts of the program voro that show something in a terminal, print it and read keys.

#include "Display.h"
#include "Keyboard.h"
#include "Meter.h"
#include "SignalPrinter.h"

#include <multimedia/RepeatMode.h>

#include <QtTest/QtTest>

#include <Rows.h>

using namespace voro;

/** Has a signal of every kind that the library's classes have. */
class Sender : public QObject {
    Q_OBJECT
Q_SIGNALS:
    void plain();
    void stateChanged(voro::multimedia::RepeatMode::Type state, unsigned position);
    void stateChanged(voro::multimedia::RepeatMode::Type state, const QVariant &position);
    void positionChanged(const QVariant &position);
    void positionChanged(unsigned position);
    void urlChanged(const QUrl &url);
    void sizeChanged(const QSize &size);
    void metaDataChanged(const QVariantMap &metaData);
    void speedChanged(double speed);
};

class tst_tool_lines : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void keys_data()
    {
        const Rows<QByteArray, QList<int>> add("bytes", "keys");
        const auto row = [&](const char *name, const QByteArray &bytes, std::initializer_list<Key> keys) {
            QList<int> numbers;
            for (Key key : keys) {
                numbers.append(static_cast<int>(key));
            }
            add(name, bytes, numbers);
        };
        row("letters", " +-m[]np<>c?q",
            {Key::PlayPause, Key::Louder, Key::Softer, Key::Mute, Key::Slower, Key::Faster, Key::Next, Key::Previous,
             Key::PreviousChapter, Key::NextChapter, Key::Captions, Key::Help, Key::Quit});
        row("digits", "09", {Key::Tenth0, Key::Tenth9});
        row("arrows", "\x1b[A\x1b[B\x1b[C\x1b[D", {Key::FarForward, Key::FarBack, Key::Forward, Key::Back});
        row("arrows of the application mode", "\x1bOC\x1bOD", {Key::Forward, Key::Back});
        row("unknown keys", "xyz\t\xc3\xa4", {});
        row("unknown sequence is swallowed whole", "\x1b[15~q", {Key::Quit});
        row("letters inside a sequence are no keys", "\x1b[1;5n", {});
        row("escape alone", "\x1bq", {Key::Quit});
        row("escape twice", "\x1b\x1b[C", {Key::Forward});
    }

    void keys()
    {
        QFETCH(QByteArray, bytes);
        KeyDecoder decoder;
        QList<int> keys;
        for (char byte : bytes) {
            if (const auto key = decoder.feed(byte)) {
                keys.append(int(*key));
            }
        }
        QTEST(keys, "keys");
    }

    void times_data()
    {
        const Rows<unsigned, QString> row("milliseconds", "text");
        row("0", 0u, "0:00");
        row("rounded down", 1999u, "0:01");
        row("minutes", 754000u, "12:34");
        row("hours", 3661000u, "1:01:01");
        row("largest", 4294967295u, "1193:02:47");
    }

    void times()
    {
        QFETCH(unsigned, milliseconds);
        QTEST(timeText(milliseconds), "text");
    }

    void statusLine_fits_whateverTheWidth()
    {
        const View view{.isPaused = true,
                        .buffering = 0.5,
                        .position = 4000,
                        .duration = 20000,
                        .volume = 0.8,
                        .track = 3,
                        .trackCount = 12,
                        .captions = true};
        for (int columns = 1; columns < 200; ++columns) {
            QVERIFY2(statusLine(view, columns).size() <= columns, qPrintable(statusLine(view, columns)));
        }
    }

    void statusLine_showsHowFar()
    {
        View view{.position = 5000, .duration = 20000};
        QCOMPARE(statusLine(view, 48), QStringLiteral(">  0:05 [=====---------------] 0:20  volume 100%"));
        view.position = 30000;
        QVERIFY(!statusLine(view, 50).contains(QLatin1Char('-')));
        view.duration = 0;
        QCOMPARE(statusLine(view, 50), QStringLiteral(">  0:30 volume 100%"));
        view.track = 2;
        view.trackCount = 9;
        view.speed = -1.5;
        view.captions = false;
        QCOMPARE(statusLine(view, 80), QStringLiteral(">  0:30 volume 100%  track 2 of 9  speed -1.5  captions off"));
    }

    void peak_isHeld_andFallsToTheLevel()
    {
        PeakHold peak;
        QCOMPARE(peak.update(0.5, 100), 0.5);
        QCOMPARE(peak.update(0.2, 100 + PeakHold::HoldMs - 1), 0.5);
        QCOMPARE(peak.update(0.2, 100 + PeakHold::HoldMs), 0.2);
        QCOMPARE(peak.update(0.9, 101 + PeakHold::HoldMs), 0.9);
        // An equal level holds it for longer.
        QCOMPARE(peak.update(0.9, 2000 + PeakHold::HoldMs), 0.9);
        QCOMPARE(peak.update(0.1, 1999 + 2 * PeakHold::HoldMs), 0.9);
    }

    void recordingLine_fits_whateverTheWidth()
    {
        const RecordingView view{.isPaused = true, .duration = 4000, .level = 0.5, .peak = 1, .size = 123456};
        for (int columns = 1; columns < 200; ++columns) {
            QVERIFY2(recordingLine(view, columns).size() <= columns, qPrintable(recordingLine(view, columns)));
        }
    }

    void recordingLine_showsLevelAndPeak()
    {
        RecordingView view{.duration = 65000, .level = 0.5, .peak = 0.75, .size = 1500000};
        QCOMPARE(recordingLine(view, 39), QStringLiteral("rec 1:05 [==========----|-----]  1.5 MB"));
        view = {.isPaused = true, .level = 7, .peak = -1};
        QCOMPARE(recordingLine(view, 26), QStringLiteral("||  0:00  0 bytes"));
        QCOMPARE(recordingLine(view, 28), QStringLiteral("||  0:00 [========]  0 bytes"));
    }

    void printable_replacesControlCharacters()
    {
        QCOMPARE(printable(QStringLiteral("a\x1b[2Jb\n\u202ec \u00e4")),
                 QStringLiteral("a\ufffd[2Jb\ufffd\ufffdc \u00e4"));
    }

    void signals_arePrintedAsJson()
    {
        using multimedia::RepeatMode;
        Sender sender;
        QByteArrayList lines;
        const SignalPrinter printer(&sender, [&](const QByteArray &line) { lines.append(line); });
        Q_EMIT sender.plain();
        Q_EMIT sender.stateChanged(RepeatMode::All, 7u);
        Q_EMIT sender.stateChanged(RepeatMode::All, QVariant(7u));
        Q_EMIT sender.stateChanged(RepeatMode::Type(9), 7u);
        Q_EMIT sender.positionChanged(QVariant(4000000000u));
        Q_EMIT sender.positionChanged(4000000000u);
        Q_EMIT sender.urlChanged(QUrl(QStringLiteral("http://host/a%20b?\"c")));
        Q_EMIT sender.sizeChanged(QSize(4, 3));
        Q_EMIT sender.metaDataChanged({{QStringLiteral("title"), QStringLiteral("a\nb")}, {QStringLiteral("n"), 1}});
        Q_EMIT sender.speedChanged(0.5);
        sender.setObjectName(QStringLiteral("inherited signals are not printed"));

        const QByteArrayList expected{
            R"("signal":"plain"})",
            R"("signal":"stateChanged","state":"All","position":7})",
            R"("signal":"stateChanged","state":9,"position":7})",
            R"("signal":"positionChanged","position":4000000000})",
            R"("signal":"urlChanged","url":"http://host/a%20b?%22c"})",
            R"("signal":"sizeChanged","size":{"height":3,"width":4}})",
            R"("signal":"metaDataChanged","metaData":{"n":1,"title":"a\nb"}})",
            R"("signal":"speedChanged","speed":0.5})",
        };
        QCOMPARE(lines.size(), expected.size());
        for (qsizetype i = 0; i < lines.size(); ++i) {
            QVERIFY(lines[i].startsWith("{\"t\":"));
            QCOMPARE(lines[i].mid(lines[i].indexOf(',') + 1), expected[i] + '\n');
            QVERIFY(QJsonDocument::fromJson(lines[i]).isObject());
        }
    }
};

QTEST_GUILESS_MAIN(tst_tool_lines)
#include "tst_tool_lines.moc"
