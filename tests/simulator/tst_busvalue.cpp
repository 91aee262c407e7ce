// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QJsonArray>
#include <QJsonDocument>
#include <QTest>

#include "panel/busvalue.h"

class TestBusValue : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void valueStandsInOneLine_data();
    void valueStandsInOneLine();
};

void TestBusValue::valueStandsInOneLine_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("line");
    const auto add = [](const char *name, const QByteArray &json, const char *line) {
        QTest::newRow(name) << json << QString::fromUtf8(line);
    };
    add("string", R"("ok")", R"("ok")");
    add("empty string", R"("")", R"("")");
    add("quotation mark and backslash", R"("a\"b\\c")", R"("a\"b\\c")");
    add("line feed", R"("a\nb")", R"("a\u000ab")");
    add("line separator", R"("a\u2028b")", R"("a\u2028b")");
    add("paragraph separator", R"("a\u2029b")", R"("a\u2029b")");
    add("right-to-left override", R"("a\u202eb")", R"("a\u202eb")");
    add("accents and symbols", R"("Zoë 😀")", R"("Zoë 😀")");
    add("long string", '"' + QByteArray(61, 'x') + '"', ('"' + QByteArray(60, 'x') + "…\""));
    add("string as long as may be", '"' + QByteArray(60, 'x') + '"', ('"' + QByteArray(60, 'x') + '"'));
    add("yes or no", "true", "true");
    add("number", "300", "300");
    add("greatest number, rounded", "18446744073709551615", "18446744073709552000");
    add("bytes", "[0,9,255]", "00 09 ff");
    const QByteArray most = QByteArray("17,").repeated(23);
    add("bytes, as many as may be", '[' + most + "17]", QByteArray("11 ").repeated(24).chopped(1));
    add("too many bytes", '[' + most + "17,17]", QByteArray("11 ").repeated(24) + "… (25 bytes)");
    add("empty array", "[]", "[]");
    add("structures", R"([["session","a.b","/a",""]])", R"([["session", "a.b", "/a", ""]])");
    add("too many strings", '[' + QByteArray(R"("a",)").repeated(24) + R"("a"])",
        '[' + QByteArray(R"("a", )").repeated(24) + "…]");
    add("variant", R"({"type":"s","data":"on"})", R"("on")");
    add("dictionary", R"({"State":{"type":"s","data":"on"},"a\n":{"type":"b","data":true}})",
        R"({"State": "on", "a\u000a": true})");
    add("dictionary with a type", R"({"type":{"type":"s","data":"on"},"name":{"type":"s","data":"a"}})",
        R"({"name": "a", "type": "on"})");
}

void TestBusValue::valueStandsInOneLine()
{
    QFETCH(QByteArray, json);
    const QJsonArray values = QJsonDocument::fromJson('[' + json + ']').array();
    QCOMPARE(values.size(), 1);
    QTEST(BusValue::text(values.first()), "line");
}

QTEST_APPLESS_MAIN(TestBusValue)
#include "tst_busvalue.moc"
