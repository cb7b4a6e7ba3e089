// SPDX-License-Identifier: Apache-2.0
#include "config/JsonReader.h"

#include "tests/support/TestFiles.h"

#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QtTest>

namespace {

QJsonValue asQt(const Json::Value &value)
{
    switch (value.type) {
    case Json::Type::Null:
        return {};
    case Json::Type::Boolean:
        return value.isTrue;
    case Json::Type::Number:
        return value.text.toDouble();
    case Json::Type::Text:
        return value.text;
    case Json::Type::List: {
        QJsonArray list;
        for (const Json::Value &item : value.values)
            list.append(asQt(item));
        return list;
    }
    case Json::Type::Object:
        break;
    }
    QJsonObject object;
    for (const Json::Value &member : value.values)
        object.insert(member.name, asQt(member));
    return object;
}

} // namespace

class tst_JsonReader : public QObject
{
    Q_OBJECT

private slots:
    void qtReadsTheSame_data();
    void qtReadsTheSame();
    void everythingHasItsPlace();
    void whatIsNoJsonIsRefusedWithItsPlace_data();
    void whatIsNoJsonIsRefusedWithItsPlace();
    void pythonRefusesWhatIsRefused();
    void hostileJsonIsRefusedAtOnce_data();
    void hostileJsonIsRefusedAtOnce();
};

void tst_JsonReader::qtReadsTheSame_data()
{
    QTest::addColumn<QByteArray>("json");
    const QByteArrayList samples = {"[]",
                                    "{}",
                                    "[1, -0, 2.5e+3, 1E2]",
                                    "{\"a\": [true, false, null], \"b\": {\"a\": \"\"}}",
                                    "[\"\\\"\\\\\\/\\b\\f\\n\\r\\t\\u00e4\\ud83d\\ude00\"]",
                                    "[\"\xc3\xa4 \xf0\x9f\x98\x80\"]",
                                    " \r\n\t[ { \"x\" : [ [ [ ] ] ] } ]\n"};
    for (const QByteArray &json : samples)
        QTest::newRow(json.constData()) << json;
}

void tst_JsonReader::qtReadsTheSame()
{
    QFETCH(QByteArray, json);
    const Result<Json::Value> value = Json::read(json);
    QVERIFY2(value, qPrintable(value.problem().text));
    const QJsonDocument expected = QJsonDocument::fromJson(json);
    QVERIFY(!expected.isNull());
    QCOMPARE(asQt(*value), expected.isArray() ? QJsonValue(expected.array()) : QJsonValue(expected.object()));
}

void tst_JsonReader::everythingHasItsPlace()
{
    const Result<Json::Value> value =
        Json::read("{\n  \"\xf0\x9f\x98\x80\": 1,\r\n  \"b\": [\"x\",\n null]}");
    QVERIFY(value);
    QCOMPARE(value->place.text(), QStringLiteral("line 1, column 1"));
    const Json::Value &first = value->values.at(0);
    QCOMPARE(first.namePlace.text(), QStringLiteral("line 2, column 3"));
    QCOMPARE(first.place.text(), QStringLiteral("line 2, column 8"));
    const Json::Value *second = value->member(QStringLiteral("b"));
    QVERIFY(second);
    QCOMPARE(second->values.at(0).place.text(), QStringLiteral("line 3, column 9"));
    QCOMPARE(second->values.at(1).place.text(), QStringLiteral("line 4, column 2"));
    QVERIFY(!value->member(QStringLiteral("c")));
}

void tst_JsonReader::whatIsNoJsonIsRefusedWithItsPlace_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("problem");
    const auto row = [](const char *name, const QByteArray &json, const char *problem) {
        QTest::newRow(name) << json << QString::fromUtf8(problem);
    };
    row("nothing", "", "line 1, column 1: expected a value, not the end");
    row("twice", "{\"a\": 1,\n \"a\": 2}", "line 2, column 2: \"a\" stands there twice");
    row("twice, escaped", "{\"a\": 1, \"\\u0061\": 2}", "line 1, column 10: \"a\" stands there twice");
    row("NUL", QByteArray("[\0]", 3), "line 1, column 2: expected a value, not \"\\x00\"");
    row("NUL in a text", QByteArray("[\"\0\"]", 5),
        "line 1, column 3: a text holds the control character \"\\x00\"");
    row("NUL as escape", "[\"\\u0000\"]",
        "line 1, column 3: \\u needs four hexadecimal digits other than 0000");
    row("no digits", "[\"\\u12G4\"]", "line 1, column 3: \\u needs four hexadecimal digits other than 0000");
    row("half a pair", "[\"\\ud800\"]", "line 1, column 2: the text holds half of a surrogate pair");
    row("unknown escape", "[\"\\x\"]", "line 1, column 3: unknown escape \\\"x\"");
    row("line break in a text", "[\"a\nb\"]", "line 1, column 4: a text holds the control character \"\\n\"");
    row("comment", "[1] // one", "line 1, column 5: there is more behind the value");
    row("comma at the end", "[1,]", "line 1, column 4: expected a value, not \"]\"");
    row("no comma", "[1 2]", "line 1, column 4: expected \",\" or \"]\", not \"2\"");
    row("no colon", "{\"a\" 1}", "line 1, column 6: expected \":\", not \"1\"");
    row("name without quotes", "{a: 1}", "line 1, column 2: expected a name in quotes, not \"a\"");
    row("leading zero", "[01]", "line 1, column 2: expected a value, not 01");
    row("not a number", "[NaN]", "line 1, column 2: expected a value, not NaN");
    row("open text", "[\"abc", "line 1, column 2: the text has no end");
    row("open list", "[1", "line 1, column 3: expected \",\" or \"]\", not the end");
    row("two values", "{} {}", "line 1, column 4: there is more behind the value");
    row("not UTF-8", "[\"\xff\"]", "it is not in UTF-8");
    row("overlong", "[\"\xc0\xaf\"]", "it is not in UTF-8");
    row("UTF-16", QByteArray("\xff\xfe{\0}\0", 6), "it is not in UTF-8");
}

void tst_JsonReader::whatIsNoJsonIsRefusedWithItsPlace()
{
    QFETCH(QByteArray, json);
    const Result<Json::Value> value = Json::read(json);
    QVERIFY(!value);
    QTEST(value.problem().text, "problem");
}

/// Python's reader takes the last of equal keys and half pairs, so only the rest can be compared.
void tst_JsonReader::pythonRefusesWhatIsRefused()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("sample.json"));
    const QByteArray sample = "{\"a\": [1, -2.5e3, \"x\\n\\u00e9\"], \"b\": {\"c\": null, \"d\": true}}";
    const QString check =
        QStringLiteral("import json,sys\n"
                       "def refuse(c): raise ValueError(c)\n"
                       "for line in open(sys.argv[1], 'rb').read().split(b'\\n---\\n'):\n"
                       "  try: json.loads(line.decode('utf-8'), parse_constant=refuse); print('y', end='')\n"
                       "  except ValueError: print('n', end='')\n");
    QByteArray all;
    QByteArray ours;
    const QByteArray alphabet = "{}[]\",:0-.e\\ntu a1";
    for (int at = 0; at < sample.size(); ++at) {
        for (const char c : alphabet) {
            QByteArray changed = sample;
            changed[at] = c;
            const Result<Json::Value> value = Json::read(changed);
            const bool isOnlyOurs = !value && value.problem().text.contains(QLatin1String("twice"));
            if (isOnlyOurs)
                continue;
            all += (ours.isEmpty() ? "" : "\n---\n") + changed;
            ours += value ? 'y' : 'n';
        }
    }
    TestFiles::write(path, all);
    QCOMPARE(TestFiles::outputOf(QStringLiteral("python3"), {QStringLiteral("-c"), check, path}), ours);
    QVERIFY(ours.count('y') > 50 && ours.count('n') > 200);
}

void tst_JsonReader::hostileJsonIsRefusedAtOnce_data()
{
    QTest::addColumn<QByteArray>("json");
    QByteArray keys = "{\"k\":0";
    for (int i = 0; i < 1000 * 1000; ++i)
        keys += ",\"" + QByteArray::number(i) + "\":0";
    QTest::newRow("a million keys") << keys + '}';
    QTest::newRow("deep lists") << QByteArray(1000 * 1000, '[');
    QTest::newRow("deep objects") << QByteArray("{\"a\":").repeated(200 * 1000);
    QTest::newRow("a long number") << QByteArray(8 * 1000 * 1000, '1');
    QTest::newRow("a long open text") << '"' + QByteArray(8 * 1000 * 1000, 'x');
}

void tst_JsonReader::hostileJsonIsRefusedAtOnce()
{
    QFETCH(QByteArray, json);
    QElapsedTimer timer;
    timer.start();
    QVERIFY(!Json::read(json));
    QVERIFY2(timer.elapsed() < 5000, qPrintable(QString::number(timer.elapsed())));
}

QTEST_GUILESS_MAIN(tst_JsonReader)
#include "tst_JsonReader.moc"
