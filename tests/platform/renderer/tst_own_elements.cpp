#include <QtTest/QtTest>

#include <renderer/worker/process/OwnElements.h>
#include <Rows.h>
#include <Texts.h>

using namespace voro::renderer;

/** What a worker is let see for sinks and sources of the user's own. */
class tst_OwnElements : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void description_opensWhatItsElementsNeed_data()
    {
        const Rows<QByteArray, QByteArrayList, QByteArrayList, QByteArrayList> row("description", "folders", "files",
                                                                                   "unknown");
        row("nothing", "", {}, {}, {});
        row("harmless elements", "audioconvert ! volume volume=0.5 ! pulsesink device=a", {}, {}, {});
        row("a file to write", "wavenc ! filesink location=/tmp/a/b.wav sync=true", {"/tmp/a"}, {}, {});
        row("a file to write, in quotes, with other blanks", "wavenc!\n\tfilesink  location=\"/tmp/a/b.wav\"",
            {"/tmp/a"}, {}, {});
        row("a file to read", "filesrc location=/srv/a.wav ! wavparse", {}, {"/srv/a.wav"}, {});
        row("caps", "audio/x-raw,rate=8000 ! fakesink", {}, {}, {});
        row("elements that nobody knows", "tee ! alsasink device=hw:0 ! shmsink socket-path=/tmp/s", {}, {},
            {"alsasink", "shmsink"});
    }

    void description_opensWhatItsElementsNeed()
    {
        QFETCH(const QByteArray, description);
        OwnElements elements;
        elements.add(description.toStdString());
        QTEST(toList(elements.folders), "folders");
        QTEST(toList(elements.files), "files");
        QTEST(toList(elements.unknown), "unknown");
    }
};

QTEST_APPLESS_MAIN(tst_OwnElements)

#include "tst_own_elements.moc"
