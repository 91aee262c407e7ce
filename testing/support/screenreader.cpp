// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "screenreader.h"

#include <algorithm>
#include <utility>

#include <QCoreApplication>
#include <QEventLoop>
#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QTest>
#include <QTimer>

namespace {

constexpr int patience = 30000; // ms

QStringList toStrings(const QJsonValue &array)
{
    QStringList strings;
    const QJsonArray all = array.toArray();
    for (const QJsonValue &each : all)
        strings.append(each.toString());
    return strings;
}

QList<double> toNumbers(const QJsonValue &array)
{
    QList<double> numbers;
    const QJsonArray all = array.toArray();
    for (const QJsonValue &each : all)
        numbers.append(each.toDouble());
    return numbers;
}

SpokenNode toNode(const QJsonObject &object)
{
    SpokenNode node;
    node.role = object[u"role"].toString();
    node.name = object[u"name"].toString();
    node.description = object[u"description"].toString();
    node.states = toStrings(object[u"states"]);
    node.actions = toStrings(object[u"actions"]);
    node.value = toNumbers(object[u"value"]);
    node.index = object[u"index"].toInt(-1);
    const QList<double> rect = toNumbers(object[u"rect"]);
    if (rect.size() == 4)
        node.rect = QRect(int(rect[0]), int(rect[1]), int(rect[2]), int(rect[3]));
    const QJsonArray children = object[u"children"].toArray();
    for (const QJsonValue &child : children)
        node.children.append(toNode(child.toObject()));
    return node;
}

} // namespace

const SpokenNode *SpokenNode::find(const char *role, const QString &name) const
{
    if (this->role == QLatin1String(role) && (name.isEmpty() || this->name == name))
        return this;
    for (const SpokenNode &child : children)
        if (const SpokenNode *found = child.find(role, name))
            return found;
    return nullptr;
}

QStringList SpokenNode::names(const char *role) const
{
    QStringList names;
    for (const SpokenNode &child : children) {
        if (child.role == QLatin1String(role))
            names.append(child.name);
        names.append(child.names(role));
    }
    return names;
}

ScreenReader::ScreenReader()
{
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QStringLiteral(SCREEN_READER), {QString::number(QCoreApplication::applicationPid())});
    if (!waitForLine() || process.readLine() != "\"ready\"\n")
        qFatal("ScreenReader: the reader does not start");
}

ScreenReader::~ScreenReader()
{
    process.closeWriteChannel();
    // It may still ask this program something.
    (void)QTest::qWaitFor([this] { return process.state() == QProcess::NotRunning; }, patience);
}

// An event loop proper: the reader asks this program several things for each node.
bool ScreenReader::waitForLine()
{
    QEventLoop loop;
    QObject::connect(&process, &QProcess::readyReadStandardOutput, &loop, [&] {
        if (process.canReadLine())
            loop.quit();
    });
    QObject::connect(&process, &QProcess::finished, &loop, &QEventLoop::quit);
    QTimer::singleShot(patience, &loop, &QEventLoop::quit);
    if (!process.canReadLine())
        loop.exec();
    return process.canReadLine();
}

QJsonValue ScreenReader::ask(const QJsonObject &request)
{
    process.write(QJsonDocument(request).toJson(QJsonDocument::Compact) + '\n');
    if (!waitForLine())
        qFatal("ScreenReader: the reader does not answer");
    // A value that is neither an object nor an array has to stand in one.
    return QJsonDocument::fromJson('[' + process.readLine() + ']').array().at(0);
}

SpokenNode ScreenReader::tree()
{
    SpokenNode all;
    const QJsonArray windows = ask({{QStringLiteral("do"), QStringLiteral("tree")}}).toArray();
    for (const QJsonValue &window : windows)
        all.children.append(toNode(window.toObject()));
    return all;
}

bool ScreenReader::press(const QString &name)
{
    return ask({{QStringLiteral("do"), QStringLiteral("press")}, {QStringLiteral("name"), name}}).toBool();
}

bool ScreenReader::focus(const QString &name)
{
    return ask({{QStringLiteral("do"), QStringLiteral("focus")}, {QStringLiteral("name"), name}}).toBool();
}

QString ScreenReader::at(const QPoint &point)
{
    return ask({{QStringLiteral("do"), QStringLiteral("at")},
                {QStringLiteral("x"), point.x()},
                {QStringLiteral("y"), point.y()}})
        .toString();
}

QList<SpokenEvent> ScreenReader::events()
{
    const QJsonArray news = ask({{QStringLiteral("do"), QStringLiteral("events")}}).toArray();
    for (const QJsonValue &each : news) {
        const QJsonObject event = each.toObject();
        heard.append({event[u"type"].toString(), event[u"role"].toString(), event[u"name"].toString(),
                      event[u"description"].toString(), event[u"text"].toString(), event[u"detail"].toInt()});
    }
    return std::exchange(heard, {});
}

void ScreenReader::listen()
{
    const QJsonObject find{{QStringLiteral("do"), QStringLiteral("find")}};
    if (!QTest::qWaitFor([&] { return ask(find).toBool(); }, patience))
        qFatal("ScreenReader: the program cannot be read");
    (void)ask({{QStringLiteral("do"), QStringLiteral("settle")}});
    (void)events();
}

bool ScreenReader::hears(const QString &type, const QString &text)
{
    return QTest::qWaitFor(
        [&] {
            heard = events();
            return std::any_of(
                heard.cbegin(), heard.cend(),
                [&](const SpokenEvent &event) {
                    return event.type.startsWith(type) && (event.text == text || event.name == text);
                });
        },
        patience);
}

void failOnWarningsExceptOfThingsThatAreGone()
{
    QTest::failOnWarning(QRegularExpression(
        QStringLiteral("^(?!Could not find accessible on path: \"/org/a11y/atspi/accessible/\\d+\"$)")));
}
