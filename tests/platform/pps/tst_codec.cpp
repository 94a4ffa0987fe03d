#include <voro/PpsObject.h>

#include <QtTest/QtTest>

#include <Rows.h>

#include <limits>

using namespace voro;

namespace {

QVariantMap object(const QVariantMap &attributes)
{
    return {{QStringLiteral("@o"), attributes}};
}

QByteArray nested(int depth)
{
    return QByteArray(depth, '[') + QByteArray(depth, ']');
}

} // namespace

class TestCodec : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void decode_reads_data()
    {
        const Rows<QByteArray, QVariantMap> add("text", "expected");
        const auto row = [&](const char *name, const QByteArray &lines, const QVariantMap &attributes) {
            add(name, "@o\n" + lines, object(attributes));
        };
        const QString a = QStringLiteral("a");

        add("nothing", {}, QVariantMap());
        row("no attributes", "", {});
        row("text with colons and blanks", "a:: b:c:d ", {{a, " b:c:d "}});
        row("text beyond ASCII", "gr\u00F6\u00DFe::\u00FC\n",
            {{QStringLiteral("gr\u00F6\u00DFe"), QStringLiteral("\u00FC")}});
        row("bytes that are no UTF-8", "a::x\xFFy", {{a, QStringLiteral("x\uFFFDy")}});
        row("escapes", "a:c:1\\n2\\t\\\\\\\"\\x4A\\x4b\\101\\0339",
            {{a, QStringLiteral("1\n2\t\\\"JKA\x1B"
                                "9")}});
        row("escaped UTF-8", "a:c:\\303\\274", {{a, QStringLiteral("\u00FC")}});
        row("booleans", "a:b:true\nz:b:false", {{a, true}, {QStringLiteral("z"), false}});
        row("largest int", "a:n:2147483647", {{a, std::numeric_limits<int>::max()}});
        row("beyond int", "a:n:2147483648", {{a, Q_INT64_C(2147483648)}});
        row("smallest qint64", "a:n:-9223372036854775808", {{a, std::numeric_limits<qint64>::min()}});
        row("beyond qint64", "a:n:9223372036854775808", {{a, 9223372036854775808.0}});
        row("exponent", "a:n:1e3", {{a, 1000.0}});
        row("JSON", R"(a:json:{"x":[1,2.5,"\u00fc\ud83d\ude00\n",true,null],"y":{}})",
            {{a, QVariantMap{{QStringLiteral("x"),
                              QVariantList{1, 2.5, QStringLiteral("\u00FC\U0001F600\n"), true, QVariant()}},
                             {QStringLiteral("y"), QVariantMap()}}}});
        row("JSON text", R"(a:json: "b" )", {{a, "b"}});
        row("JSON list", "a:json:" + nested(1), {{a, QVariantList()}});
        row("rewritten attribute", "a::1\nb::2\na::3", {{a, "3"}, {QStringLiteral("b"), "2"}});
        row("deleted attributes are left out", "a::1\n-b\n-c:n:1\n-a", {});
        add("marks of the object", "+@o\na::1", object({{a, "1"}}));
        add("several objects, deleted ones left out", "@o\na::1\n-@x\n@p\n",
            QVariantMap{{QStringLiteral("@o"), QVariantMap{{a, "1"}}}, {QStringLiteral("@p"), QVariantMap()}});
    }

    void decode_reads()
    {
        QFETCH(QByteArray, text);
        bool ok = false;
        QTEST(PpsObject::decode(text, &ok), "expected");
        QVERIFY(ok);
    }

    void decode_refuses_data()
    {
        const Rows<QByteArray> add("text");
        const auto row = [&](const char *name, const QByteArray &lines) { add(name, "@o\n" + lines); };

        add("no object line", "a::1");
        add("an object without a name", "@\na::1");
        row("empty line", "a::1\n\nb::2");
        row("no name", "::1");
        row("no encoding", "a");
        row("one colon", "a:1");
        row("a name that is no UTF-8", "a\xFF::1");
        row("a name that is too long", QByteArray(256, 'a') + "::1");
        row("bare mark", "-");
        row("mark of an attribute that has none", "+a::1");
        row("unknown encoding", "a:x:1");
        row("encoding in capitals", "a:N:1");
        row("NUL in a value", QByteArray("a::1\0", 5));
        row("NUL at the end", QByteArray("a::1\n\0", 6));
        for (const char *number :
             {"", " 1", "1 ", "+1", "01", "1.", ".5", "1e", "0x10", "1e999", "nan", "inf", "--1", "1,5"}) {
            QTest::addRow("number '%s'", number) << QByteArray("@o\na:n:") + number;
        }
        for (const char *boolean : {"", "1", "TRUE", "true "}) {
            QTest::addRow("boolean '%s'", boolean) << QByteArray("@o\na:b:") + boolean;
        }
        for (const char *escape : {"\\", "\\q", "\\x", "\\xg", "\\400", "\\8"}) {
            QTest::addRow("escape '%s'", escape) << QByteArray("@o\na:c:") + escape;
        }
        for (const char *json :
             {"", "{", "[1,]", "{\"a\"}", "{\"a\":1,}", "{a:1}", "'a'", "\"a", "\"\\x\"", "\"\\ud800\"",
              "\"\\udc00\\ud800\"", "\"\t\"", "tru", "1 2", "\"\xFF\"", "\"\xED\xA0\x80\"", "-"}) {
            QTest::addRow("JSON '%s'", json) << QByteArray("@o\na:json:") + json;
        }
        row("JSON nested without end", "a:json:" + nested(100000));
        row("bad value of a deleted attribute", "-a:n:x");
    }

    void decode_refuses()
    {
        QFETCH(QByteArray, text);
        bool ok = true;
        QCOMPARE(PpsObject::decode(text, &ok), QVariantMap());
        QVERIFY(!ok);
        ok = true;
        QVERIFY(PpsObject::decodeWithFlags(text, &ok).isEmpty());
        QVERIFY(!ok);
    }

    void decodeWithFlags_tellsWhatHappened()
    {
        using Flag = PpsAttributeFlag;
        bool ok = false;
        const auto objects = PpsObject::decodeWithFlags("+@new\na::1\n-b\n-c:n:3\n-@gone\n*@whole\n@same\n", &ok);
        QVERIFY(ok);
        const QMap<QString, PpsAttribute> attributes{{"a", PpsAttribute(QVariant("1"))},
                                                     {"b", PpsAttribute(QVariant(), Flag::Deleted)},
                                                     {"c", PpsAttribute(QVariant(3), Flag::Deleted)}};
        using Attributes = QMap<QString, PpsAttribute>;
        const Attributes expected{{"@new", PpsAttribute(attributes, Flag::Created)},
                                  {"@gone", PpsAttribute(Attributes(), Flag::Deleted)},
                                  {"@whole", PpsAttribute(Attributes(), Flag::Truncated)},
                                  {"@same", PpsAttribute(Attributes())}};
        QCOMPARE(objects, expected);
        QCOMPARE(objects["@new"].toVariant(), QVariant(QVariantMap{{"a", "1"}}));
    }

    void attribute_converts_data()
    {
        const Rows<QVariant, QString, int, bool> row("value", "text", "number", "truth");
        row("nothing", QVariant(), "", 0, false);
        row("text", QVariant("x"), "x", 0, false);
        row("text of a number", QVariant("12"), "12", 12, false);
        row("text of a truth value", QVariant("true"), "true", 0, true);
        row("number", QVariant(7), "7", 7, true);
        row("a number too large for an int", QVariant(Q_INT64_C(5000000000)), "5000000000", 0, true);
        row("fraction", QVariant(0.25), "0.25", 0, true);
        row("truth value", QVariant(true), "true", 1, true);
        row("map", QVariant(QVariantMap{{"a", 1}}), "", 0, false);
    }

    void attribute_converts()
    {
        QFETCH(QVariant, value);
        const PpsAttribute attribute(value);
        QTEST(attribute.toString(), "text");
        QTEST(attribute.toInt(), "number");
        QTEST(attribute.toBool(), "truth");
        QCOMPARE(attribute.toVariant(), value);
        QCOMPARE(attribute.toMap().keys(), value.toMap().keys());
    }

    void encode_writes_data()
    {
        const Rows<QVariant, QByteArray, QVariant> add("value", "line", "read");
        const auto row = [&](const char *name, const QVariant &value, const QByteArray &line, const QVariant &read) {
            add(name, value, "a:" + line + "\n", read);
        };
        const auto same = [row](const char *name, const QVariant &value, const QByteArray &line) {
            row(name, value, line, value);
        };
        same("text", "b:c", ":b:c");
        same("empty text", "", ":");
        same("text of several lines", "1\n2\t\\", "c:1\\n2\\t\\\\");
        same("text with control characters", QString(QChar(0)) + QChar(0x1B) + QLatin1String("7") + QChar(0x7F),
             "c:\\000\\0337\\177");
        same("text with a backslash only", "\\n", ":\\n");
        same("text beyond ASCII", QStringLiteral("\u00FC"), ":\u00FC");
        same("true", true, "b:true");
        same("int", -3, "n:-3");
        row("uint", 4000000000U, "n:4000000000", Q_INT64_C(4000000000));
        same("qint64", Q_INT64_C(9000000000000), "n:9000000000000");
        row("quint64", std::numeric_limits<quint64>::max(), "n:18446744073709551615", 18446744073709551615.0);
        same("double", 0.1, "n:0.1");
        row("float", 0.1F, "n:0.1", 0.1);
        row("short", QVariant::fromValue<short>(-7), "n:-7", -7);
        same("map in the order of its keys",
             QVariantMap{{"y", QVariantList{1, "x\n\"", true, 0.5}}, {"x", QVariantMap()}},
             "json:{\"x\":{},\"y\":[1,\"x\\u000a\\\"\",true,0.5]}");
        row("list of texts", QStringList{"a", "b"}, R"(json:["a","b"])", QVariantList{"a", "b"});
        same("null in a list", QVariantList{QVariant()}, "json:[null]");
    }

    void encode_writes()
    {
        QFETCH(QVariant, value);
        bool ok = false;
        const QByteArray text = PpsObject::encode({{"a", value}}, &ok);
        QVERIFY(ok);
        QTEST(text, "line");
        const QVariantMap objects = PpsObject::decode("@o\n" + text, &ok);
        QVERIFY(ok);
        QTEST(objects["@o"].toMap()["a"], "read");
    }

    void encode_refuses_data()
    {
        const Rows<QString, QVariant> row("name", "value");
        QVariant deep = QVariantList();
        for (int i = 0; i < 100; ++i) {
            deep = QVariantList{deep};
        }
        row("nothing", "a", QVariant());
        row("bytes", "a", QVariant(QByteArray("x")));
        row("a type that is no value", "a", QVariant(QPoint()));
        row("such a type in a map", "a", QVariant(QVariantMap{{"x", QPoint()}}));
        row("not a number", "a", QVariant(qQNaN()));
        row("infinite in a list", "a", QVariant(QVariantList{qInf()}));
        row("nested deeper than decode allows", "a", deep);
        row("no name", "", QVariant(1));
        row("a name that would end early", "a:b", QVariant(1));
        row("a name of two lines", "a\nb", QVariant(1));
        row("a name that reads as a deletion", "-a", QVariant(1));
        row("a name that reads as an object", "@a", QVariant(1));
    }

    void encode_refuses()
    {
        QFETCH(QString, name);
        QFETCH(QVariant, value);
        bool ok = true;
        QCOMPARE(PpsObject::encode({{"z", 1}, {name, value}}, &ok), QByteArray());
        QVERIFY(!ok);
    }
};

QTEST_APPLESS_MAIN(TestCodec)
#include "tst_codec.moc"
