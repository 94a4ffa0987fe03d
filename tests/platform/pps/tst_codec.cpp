#include <voro/PpsObject.h>

#include <QtTest/QtTest>

using namespace voro;

class TestCodec : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void decode_data();
    void decode();
};

void TestCodec::decode_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QVariantMap>("expected");
    QTest::newRow("empty") << QByteArray() << QVariantMap();
}

void TestCodec::decode()
{
    QFETCH(QByteArray, text);
    bool ok = false;
    QTEST(PpsObject::decode(text, &ok), "expected");
    QVERIFY(ok);
}

QTEST_APPLESS_MAIN(TestCodec)
#include "tst_codec.moc"
