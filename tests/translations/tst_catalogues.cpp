// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QDirIterator>
#include <QtTest>
#include <QXmlStreamReader>

#include <MButton>
#include <MButtonModel>
#include <MDialog>

#include "core/texts.h"

using namespace Qt::StringLiterals;

namespace {

// One entry of a catalogue. A text without length variants is its only one.
struct Message
{
    QString source;
    QStringList variants;
    QStringList forms; ///< By number, of a text that counts; such a text has no variants
    QString state;     ///< unfinished, vanished, obsolete; empty when the entry is fit for use

    // What stands for the whole: the longest variant, or the form for many.
    QString text() const { return forms.isEmpty() ? variants.value(0) : forms.last(); }
};

using Messages = QMap<QString, Message>;

// The texts of <translation>, with the reader on its start.
QStringList readVariants(QXmlStreamReader &xml)
{
    if (xml.attributes().value("variants"_L1) != "yes"_L1)
        return {xml.readElementText()};
    QStringList variants;
    while (xml.readNextStartElement())
        variants.append(xml.readElementText());
    return variants;
}

// The texts of a <translation> that depend on a number.
QStringList readForms(QXmlStreamReader &xml)
{
    QStringList forms;
    while (xml.readNextStartElement())
        forms.append(xml.readElementText());
    return forms;
}

Message readMessage(QXmlStreamReader &xml)
{
    Message message;
    const bool counts = xml.attributes().value("numerus"_L1) == "yes"_L1;
    while (xml.readNextStartElement()) {
        if (xml.name() == "source"_L1) {
            message.source = xml.readElementText();
        } else if (xml.name() == "translation"_L1) {
            message.state = xml.attributes().value("type"_L1).toString();
            if (counts)
                message.forms = readForms(xml);
            else
                message.variants = readVariants(xml);
        } else {
            xml.skipCurrentElement();
        }
    }
    return message;
}

QStringList catalogueFiles()
{
    return QDir(SOURCES "/translations"_L1).entryList({u"*.ts"_s}, QDir::Files, QDir::Name);
}

Messages readCatalogue(const QString &name)
{
    Messages messages;
    QFile file(SOURCES "/translations/"_L1 + name);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("Catalogues: unable to read %s", qUtf8Printable(file.fileName()));
    QXmlStreamReader xml(&file);
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement || xml.name() != "message"_L1)
            continue;
        const QString id = xml.attributes().value("id"_L1).toString();
        if (messages.contains(id))
            qFatal("Catalogues: %s is twice in %s", qUtf8Printable(id), qUtf8Printable(name));
        messages.insert(id, readMessage(xml));
    }
    if (xml.hasError())
        qFatal("Catalogues: %s: %s", qUtf8Printable(name), qUtf8Printable(xml.errorString()));
    return messages;
}

// Every id that stands in the code: within qtTrId() and in tables alike.
QStringList usedIds(const QString &pattern = u"\"(qtn_[^\"]*)\""_s)
{
    const QRegularExpression literal(pattern);
    QSet<QString> ids;
    for (const QString &folder : {u"src"_s, u"platform"_s, u"client"_s, u"examples"_s, u"viewer"_s}) {
        QDirIterator files(SOURCES "/"_L1 + folder, {u"*.cpp"_s, u"*.h"_s}, QDir::Files,
                           QDirIterator::Subdirectories);
        while (files.hasNext()) {
            QFile file(files.next());
            if (!file.open(QIODevice::ReadOnly))
                qFatal("Catalogues: unable to read %s", qUtf8Printable(file.fileName()));
            QRegularExpressionMatchIterator found = literal.globalMatch(QString::fromUtf8(file.readAll()));
            while (found.hasNext())
                ids.insert(found.next().captured(1));
        }
    }
    QStringList sorted(ids.begin(), ids.end());
    sorted.sort();
    return sorted;
}

// %1, %2 and so on, each as often as it is there, whatever their order.
QStringList placeholders(const QString &text)
{
    static const QRegularExpression placeholder(u"%L?[0-9n]+"_s);
    QStringList found;
    QRegularExpressionMatchIterator matches = placeholder.globalMatch(text);
    while (matches.hasNext())
        found.append(matches.next().captured());
    found.sort();
    return found;
}

void addCatalogues()
{
    QTest::addColumn<QString>("catalogue");
    const QStringList files = catalogueFiles();
    for (const QString &file : files)
        QTest::newRow(qUtf8Printable(file)) << file;
}

} // namespace

class TestCatalogues : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void languagesAreThere();
    void everyUsedIdIsThereAndNoOther_data();
    void everyUsedIdIsThereAndNoOther();
    void everyTextIsFinished_data();
    void everyTextIsFinished();
    void sourceIsTheEnglishText_data();
    void sourceIsTheEnglishText();
    void noPlaceholderIsLost_data();
    void noPlaceholderIsLost();
    void lengthVariantsGoFromLongToShort_data();
    void lengthVariantsGoFromLongToShort();
    void everyTextIsInTheTranslatorsTable();
    void everyNumberHasItsForm_data();
    void everyNumberHasItsForm();
    void whatCountsIsAskedForWithTheNumber_data();
    void whatCountsIsAskedForWithTheNumber();
    void formsDiffer_data();
    void formsDiffer();
    void digitsAreOfOneKind_data();
    void digitsAreOfOneKind();
    void germanTagIsNoDay();
    void cancelIsOneWord_data();
    void cancelIsOneWord();
    void toolkitSpeaksTheSameLanguage_data();
    void toolkitSpeaksTheSameLanguage();
};

void TestCatalogues::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void TestCatalogues::cleanup()
{
    // Each test speaks its own language.
    qDeleteAll(QCoreApplication::instance()->findChildren<QTranslator *>());
    QLocale::setDefault(QLocale::c());
}

void TestCatalogues::languagesAreThere()
{
    const QStringList files = catalogueFiles();
    for (const QString &language : {u"ar"_s, u"de"_s, u"en"_s, u"fi"_s})
        QVERIFY2(files.contains(u"connui-nfc_%1.ts"_s.arg(language)), qUtf8Printable(language));
}

void TestCatalogues::everyUsedIdIsThereAndNoOther_data()
{
    addCatalogues();
}

void TestCatalogues::everyUsedIdIsThereAndNoOther()
{
    QFETCH(QString, catalogue);
    const QStringList used = usedIds();
    QVERIFY(used.contains(u"qtn_comm_kilobytes"_s));
    QCOMPARE(QStringList(readCatalogue(catalogue).keys()), used);
}

void TestCatalogues::everyTextIsFinished_data()
{
    addCatalogues();
}

void TestCatalogues::everyTextIsFinished()
{
    QFETCH(QString, catalogue);
    const Messages messages = readCatalogue(catalogue);
    for (auto message = messages.begin(); message != messages.end(); ++message) {
        QVERIFY2(message->state.isEmpty(), qUtf8Printable(message.key()));
        const QStringList texts = message->variants + message->forms;
        QVERIFY2(!texts.isEmpty(), qUtf8Printable(message.key()));
        for (const QString &variant : texts)
            QVERIFY2(!variant.trimmed().isEmpty(), qUtf8Printable(message.key()));
    }
}

void TestCatalogues::sourceIsTheEnglishText_data()
{
    addCatalogues();
}

// A text whose English has changed is to be translated anew.
void TestCatalogues::sourceIsTheEnglishText()
{
    QFETCH(QString, catalogue);
    const Messages english = readCatalogue(u"connui-nfc_en.ts"_s);
    const Messages messages = readCatalogue(catalogue);
    for (auto message = messages.begin(); message != messages.end(); ++message)
        QCOMPARE(message->source, english.value(message.key()).text());
}

void TestCatalogues::noPlaceholderIsLost_data()
{
    addCatalogues();
}

void TestCatalogues::noPlaceholderIsLost()
{
    QFETCH(QString, catalogue);
    const Messages messages = readCatalogue(catalogue);
    for (const Message &message : messages)
        for (const QString &variant : message.variants + message.forms)
            QVERIFY2(placeholders(variant) == placeholders(message.source), qUtf8Printable(variant));
}

void TestCatalogues::lengthVariantsGoFromLongToShort_data()
{
    addCatalogues();
}

// A label shows the first variant that fits.
void TestCatalogues::lengthVariantsGoFromLongToShort()
{
    QFETCH(QString, catalogue);
    const Messages messages = readCatalogue(catalogue);
    for (const Message &message : messages) {
        for (qsizetype i = 1; i < message.variants.size(); ++i)
            QVERIFY2(message.variants[i].size() < message.variants[i - 1].size(),
                     qUtf8Printable(message.variants[i]));
    }
}

void TestCatalogues::everyTextIsInTheTranslatorsTable()
{
    static const QRegularExpression line(u"^\\| `(qtn_[^`]*)` \\|"_s, QRegularExpression::MultilineOption);
    QFile file(SOURCES "/docs/translating.md"_L1);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QStringList ids;
    QRegularExpressionMatchIterator found = line.globalMatch(QString::fromUtf8(file.readAll()));
    while (found.hasNext())
        ids.append(found.next().captured(1));
    ids.sort();
    QCOMPARE(ids, QStringList(readCatalogue(u"connui-nfc_en.ts"_s).keys()));
}

void TestCatalogues::everyNumberHasItsForm_data()
{
    QTest::addColumn<QString>("catalogue");
    QTest::addColumn<qsizetype>("forms");
    QTest::newRow("English") << u"connui-nfc_en.ts"_s << qsizetype(2);
    QTest::newRow("German") << u"connui-nfc_de.ts"_s << qsizetype(2);
    QTest::newRow("Finnish") << u"connui-nfc_fi.ts"_s << qsizetype(2);
    QTest::newRow("Arabic") << u"connui-nfc_ar.ts"_s << qsizetype(6);
}

void TestCatalogues::everyNumberHasItsForm()
{
    QFETCH(QString, catalogue);
    QFETCH(qsizetype, forms);
    const Messages messages = readCatalogue(catalogue);
    qsizetype counting = 0;
    for (auto message = messages.begin(); message != messages.end(); ++message) {
        if (message->forms.isEmpty())
            continue;
        ++counting;
        QVERIFY2(message->forms.size() == forms, qUtf8Printable(message.key()));
    }
    QVERIFY(counting > 0);
}

void TestCatalogues::whatCountsIsAskedForWithTheNumber_data()
{
    addCatalogues();
}

// A number that the catalogue is not told always takes the first form.
void TestCatalogues::whatCountsIsAskedForWithTheNumber()
{
    QFETCH(QString, catalogue);
    QStringList counting;
    const Messages messages = readCatalogue(catalogue);
    for (auto message = messages.begin(); message != messages.end(); ++message)
        if (!message->forms.isEmpty())
            counting.append(message.key());
    QCOMPARE(counting, usedIds(u"qtTrId\\(\"(qtn_[^\"]*)\", "_s));
}

void TestCatalogues::formsDiffer_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<int>("one");
    QTest::addColumn<int>("other");
    QTest::newRow("English") << u"en"_s << 1 << 2;
    QTest::newRow("German") << u"de"_s << 1 << 2;
    QTest::newRow("Finnish") << u"fi"_s << 1 << 2;
    QTest::newRow("Arabic, two and three") << u"ar"_s << 2 << 3;
    QTest::newRow("Arabic, three and eleven") << u"ar"_s << 3 << 11;
}

void TestCatalogues::formsDiffer()
{
    QFETCH(QString, language);
    QFETCH(int, one);
    QFETCH(int, other);
    QLocale::setDefault(QLocale(language));
    loadTexts();
    const QString less = qtTrId("qtn_nfc_waiting_more", one);
    const QString more = qtTrId("qtn_nfc_waiting_more", other);
    QVERIFY(less.contains(u"%L1"_s));
    QVERIFY2(less != more, qUtf8Printable(more));
}

void TestCatalogues::digitsAreOfOneKind_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<char32_t>("zero");
    QTest::newRow("Egypt") << u"ar_EG"_s << U'\u0660';
    QTest::newRow("Morocco") << u"ar_MA"_s << U'0';
    QTest::newRow("Germany") << u"de_DE"_s << U'0';
}

void TestCatalogues::digitsAreOfOneKind()
{
    QFETCH(QString, locale);
    QFETCH(char32_t, zero);
    QLocale::setDefault(QLocale(locale));
    loadTexts();
    // As the sheet of a file that arrives puts them together.
    QStringList texts;
    for (const char *unit : {"qtn_comm_kilobytes", "qtn_comm_megabytes", "qtn_comm_gigabytes"})
        texts.append(u"%L1/%2"_s.arg(1000).arg(qtTrId(unit).arg(3000)));
    texts.append(qtTrId("qtn_nfc_waiting_more", 25).arg(25));
    for (const QString &text : std::as_const(texts)) {
        qsizetype digits = 0;
        for (const QChar each : text) {
            if (!each.isDigit())
                continue;
            ++digits;
            QVERIFY2(each.unicode() >= zero && each.unicode() <= zero + 9, qUtf8Printable(text));
        }
        QVERIFY2(digits >= 2, qUtf8Printable(text));
        // Both numbers are grouped, or none is.
        if (text.contains(u'/'))
            QCOMPARE(text.section(u'/', 0, 0).size(), QLocale().toString(1000).size());
        if (text.contains(u'/'))
            QVERIFY2(text.contains(QLocale().toString(3000)), qUtf8Printable(text));
    }
}

// "Dieser Tag ist leer" says that this day is empty.
void TestCatalogues::germanTagIsNoDay()
{
    static const QRegularExpression day(u"(?<!NFC-)\\bTags?\\b"_s);
    const Messages messages = readCatalogue(u"connui-nfc_de.ts"_s);
    for (const Message &message : messages)
        for (const QString &text : message.variants + message.forms)
            QVERIFY2(!text.contains(day), qUtf8Printable(text));
}

void TestCatalogues::cancelIsOneWord_data()
{
    QTest::addColumn<QString>("language");
    for (const char *language : {"ar", "de", "en", "fi"})
        QTest::newRow(language) << QString::fromLatin1(language);
}

void TestCatalogues::cancelIsOneWord()
{
    QFETCH(QString, language);
    QLocale::setDefault(QLocale(language));
    loadTexts();
    const MDialog dialog(QString(), M::CancelButton);
    QCOMPARE(qtTrId("qtn_comm_cancel"), dialog.buttons().constFirst()->text());
}

void TestCatalogues::toolkitSpeaksTheSameLanguage_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QStringList>("labels");
    QTest::addColumn<Qt::LayoutDirection>("direction");
    QTest::newRow("English") << u"en"_s << QStringList{u"OK"_s, u"Yes"_s, u"No"_s, u"Cancel"_s}
                             << Qt::LeftToRight;
    QTest::newRow("German") << u"de"_s << QStringList{u"OK"_s, u"Ja"_s, u"Nein"_s, u"Abbrechen"_s}
                            << Qt::LeftToRight;
    QTest::newRow("Finnish") << u"fi"_s << QStringList{u"OK"_s, u"Kyllä"_s, u"Ei"_s, u"Peru"_s}
                             << Qt::LeftToRight;
    QTest::newRow("Arabic") << u"ar"_s << QStringList{u"حسنًا"_s, u"نعم"_s, u"لا"_s, u"ألغِ"_s}
                            << Qt::RightToLeft;
}

// What a program that loads our texts sees on the buttons that no dialog names itself.
void TestCatalogues::toolkitSpeaksTheSameLanguage()
{
    QFETCH(QString, language);
    QFETCH(QStringList, labels);
    QFETCH(Qt::LayoutDirection, direction);
    QLocale::setDefault(QLocale(language));
    loadTexts();

    const MDialog dialog(QString(), M::OkButton | M::YesButton | M::NoButton | M::CancelButton);
    QStringList shown;
    for (const MButtonModel *button : dialog.buttons())
        shown.append(button->text());
    QCOMPARE(shown, labels);
    QCOMPARE(QGuiApplication::layoutDirection(), direction);
}

QTEST_MAIN(TestCatalogues)

#include "tst_catalogues.moc"
