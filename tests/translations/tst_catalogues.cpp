// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QDirIterator>
#include <QtTest>
#include <QXmlStreamReader>

#include <MButton>
#include <MButtonModel>
#include <MDialog>
#include <NfcTranslations>

namespace {

// One entry of a catalogue. A text without length variants is its only one.
struct Message
{
    QString source;
    QStringList variants;
    QStringList forms; ///< By number, of a text that counts; such a text has no variants
    QString state;     ///< unfinished, vanished, obsolete; empty when the entry is fit for use

    // The variant that stands for the whole: the longest one, or the form for many.
    QString text() const { return forms.isEmpty() ? variants.value(0) : forms.last(); }
};

using Messages = QMap<QString, Message>;

// The texts of <translation>, with the reader on its start.
QStringList readVariants(QXmlStreamReader &xml)
{
    if (xml.attributes().value(QLatin1String("variants")) != QLatin1String("yes"))
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
    const bool counts = xml.attributes().value(QLatin1String("numerus")) == QLatin1String("yes");
    while (xml.readNextStartElement()) {
        if (xml.name() == QLatin1String("source")) {
            message.source = xml.readElementText();
        } else if (xml.name() == QLatin1String("translation")) {
            message.state = xml.attributes().value(QLatin1String("type")).toString();
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
    return QDir(QLatin1String(SOURCES "/translations"))
        .entryList({QStringLiteral("*.ts")}, QDir::Files, QDir::Name);
}

Messages readCatalogue(const QString &name)
{
    Messages messages;
    QFile file(QLatin1String(SOURCES "/translations/") + name);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("Catalogues: unable to read %s", qUtf8Printable(file.fileName()));
    QXmlStreamReader xml(&file);
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement || xml.name() != QLatin1String("message"))
            continue;
        const QString id = xml.attributes().value(QLatin1String("id")).toString();
        if (messages.contains(id))
            qFatal("Catalogues: %s is twice in %s", qUtf8Printable(id), qUtf8Printable(name));
        messages.insert(id, readMessage(xml));
    }
    if (xml.hasError())
        qFatal("Catalogues: %s: %s", qUtf8Printable(name), qUtf8Printable(xml.errorString()));
    return messages;
}

// Every id that stands in the code: within qtTrId() and in tables alike.
QStringList usedIds(const QString &pattern = QStringLiteral("\"(qtn_[^\"]*)\""))
{
    const QRegularExpression literal(pattern);
    QSet<QString> ids;
    for (const QString &folder : {QStringLiteral("src"), QStringLiteral("platform"), QStringLiteral("client"),
                                  QStringLiteral("examples"), QStringLiteral("viewer")}) {
        QDirIterator files(QLatin1String(SOURCES "/") + folder,
                           {QStringLiteral("*.cpp"), QStringLiteral("*.h")}, QDir::Files,
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

// %1, %2, %L1, %n and so on, each as often as it is there, whatever their order.
QStringList placeholders(const QString &text)
{
    static const QRegularExpression placeholder(QStringLiteral("%L?[0-9n]+"));
    QStringList found;
    QRegularExpressionMatchIterator matches = placeholder.globalMatch(text);
    while (matches.hasNext())
        found.append(matches.next().captured());
    found.sort();
    return found;
}

// One or, where a language has a form for it, two.
bool isForOneNumber(const Message &message, qsizetype form)
{
    constexpr qsizetype formsWithDual = 6;
    return message.forms.size() == formsWithDual ? form == 1 || form == 2 : form == 0;
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
    void everyCountingTextHasForms();
    void lengthVariantsGoFromLongToShort_data();
    void lengthVariantsGoFromLongToShort();
    void everyTextIsInTheTranslatorsTable();
    void everyNumberHasItsForm_data();
    void everyNumberHasItsForm();
    void textsWithNumbersAreAskedForWithTheirNumber_data();
    void textsWithNumbersAreAskedForWithTheirNumber();
    void formsDiffer_data();
    void formsDiffer();
    void digitsAreOfOneKind_data();
    void digitsAreOfOneKind();
    void germanWordTagMeansNoDay();
    void oneThingHasOneWord_data();
    void oneThingHasOneWord();
    void cancelIsOneWord_data();
    void cancelIsOneWord();
    void toolkitSpeaksTheSameLanguage_data();
    void toolkitSpeaksTheSameLanguage();
};

void TestCatalogues::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
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
    for (const QString &language :
         {QStringLiteral("ar"), QStringLiteral("de"), QStringLiteral("en"), QStringLiteral("fi")})
        QVERIFY2(files.contains(QStringLiteral("connui-nfc_%1.ts").arg(language)), qUtf8Printable(language));
}

void TestCatalogues::everyUsedIdIsThereAndNoOther_data()
{
    addCatalogues();
}

void TestCatalogues::everyUsedIdIsThereAndNoOther()
{
    QFETCH(QString, catalogue);
    const QStringList used = usedIds();
    QVERIFY(used.contains(QStringLiteral("qtn_comm_kilobytes")));
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
    const Messages english = readCatalogue(QStringLiteral("connui-nfc_en.ts"));
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
    for (const Message &message : messages) {
        const QStringList expected = placeholders(message.source);
        for (const QString &variant : message.variants)
            QVERIFY2(placeholders(variant) == expected, qUtf8Printable(variant));
        for (qsizetype form = 0; form < message.forms.size(); ++form) {
            const QStringList found = placeholders(message.forms[form]);
            // Qt puts a number into %Ln where there is one: "two hours" need not be written with a digit.
            const bool isInWords = found.isEmpty() && expected == QStringList(QStringLiteral("%Ln"));
            QVERIFY2(found == expected || (isInWords && isForOneNumber(message, form)),
                     qUtf8Printable(message.forms[form]));
        }
    }
}

// Words after a number depend on the number. Units of sizes do not.
void TestCatalogues::everyCountingTextHasForms()
{
    static const QStringList sizes = {
        QStringLiteral("qtn_comm_gigabytes"), QStringLiteral("qtn_comm_kilobytes"),
        QStringLiteral("qtn_comm_megabytes"), QStringLiteral("qtn_nfc_receive_amount")};
    const Messages messages = readCatalogue(QStringLiteral("connui-nfc_en.ts"));
    for (auto message = messages.begin(); message != messages.end(); ++message)
        if (message->source.contains(QStringLiteral("%L")))
            QVERIFY2(!message->forms.isEmpty() || sizes.contains(message.key()),
                     qUtf8Printable(message.key()));
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
    static const QRegularExpression line(QStringLiteral("^\\| `(qtn_[^`]*)` \\|"),
                                         QRegularExpression::MultilineOption);
    QFile file(QLatin1String(SOURCES "/docs/translating.md"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QStringList ids;
    QRegularExpressionMatchIterator found = line.globalMatch(QString::fromUtf8(file.readAll()));
    while (found.hasNext())
        ids.append(found.next().captured(1));
    ids.sort();
    QCOMPARE(ids, QStringList(readCatalogue(QStringLiteral("connui-nfc_en.ts")).keys()));
}

void TestCatalogues::everyNumberHasItsForm_data()
{
    QTest::addColumn<QString>("catalogue");
    QTest::addColumn<qsizetype>("forms");
    QTest::newRow("English") << QStringLiteral("connui-nfc_en.ts") << qsizetype(2);
    QTest::newRow("German") << QStringLiteral("connui-nfc_de.ts") << qsizetype(2);
    QTest::newRow("Finnish") << QStringLiteral("connui-nfc_fi.ts") << qsizetype(2);
    QTest::newRow("Arabic") << QStringLiteral("connui-nfc_ar.ts") << qsizetype(6);
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

void TestCatalogues::textsWithNumbersAreAskedForWithTheirNumber_data()
{
    addCatalogues();
}

// A number that the catalogue does not get always takes the first form.
void TestCatalogues::textsWithNumbersAreAskedForWithTheirNumber()
{
    QFETCH(QString, catalogue);
    QStringList counting;
    const Messages messages = readCatalogue(catalogue);
    for (auto message = messages.begin(); message != messages.end(); ++message)
        if (!message->forms.isEmpty())
            counting.append(message.key());
    QCOMPARE(counting, usedIds(QStringLiteral("qtTrId\\(\"(qtn_[^\"]*)\", ")));
}

void TestCatalogues::formsDiffer_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<int>("one");
    QTest::addColumn<int>("other");
    QTest::newRow("English") << QStringLiteral("en") << 1 << 2;
    QTest::newRow("German") << QStringLiteral("de") << 1 << 2;
    QTest::newRow("Finnish") << QStringLiteral("fi") << 1 << 2;
    QTest::newRow("Arabic, two and three") << QStringLiteral("ar") << 2 << 3;
    QTest::newRow("Arabic, three and eleven") << QStringLiteral("ar") << 3 << 11;
}

void TestCatalogues::formsDiffer()
{
    QFETCH(QString, language);
    QFETCH(int, one);
    QFETCH(int, other);
    QLocale::setDefault(QLocale(language));
    ConnUi::installTranslations();
    const QString less = qtTrId("qtn_nfc_waiting_more", one);
    const QString more = qtTrId("qtn_nfc_waiting_more", other);
    QVERIFY(less.contains(QStringLiteral("%L1")));
    QVERIFY2(less != more, qUtf8Printable(more));
}

void TestCatalogues::digitsAreOfOneKind_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<char32_t>("zero");
    QTest::newRow("Egypt") << QStringLiteral("ar_EG") << U'\u0660';
    QTest::newRow("Morocco") << QStringLiteral("ar_MA") << U'0';
    QTest::newRow("Germany") << QStringLiteral("de_DE") << U'0';
}

void TestCatalogues::digitsAreOfOneKind()
{
    QFETCH(QString, locale);
    QFETCH(char32_t, zero);
    QLocale::setDefault(QLocale(locale));
    ConnUi::installTranslations();
    // As the sheet of a file that arrives puts them together.
    QStringList texts;
    for (const char *unit : {"qtn_comm_kilobytes", "qtn_comm_megabytes", "qtn_comm_gigabytes"})
        texts.append(QStringLiteral("%L1/%2").arg(1000).arg(qtTrId(unit).arg(3000)));
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
void TestCatalogues::germanWordTagMeansNoDay()
{
    static const QRegularExpression day(QStringLiteral("(?<!NFC-)\\bTags?\\b"));
    const Messages messages = readCatalogue(QStringLiteral("connui-nfc_de.ts"));
    for (const Message &message : messages)
        for (const QString &text : message.variants + message.forms)
            QVERIFY2(!text.contains(day), qUtf8Printable(text));
}

void TestCatalogues::oneThingHasOneWord_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("thing"); // as the English text names it
    QTest::addColumn<QString>("word");  // the part of the language's word that never changes
    const auto add = [](const char *language, const char *thing, const char *word) {
        QTest::addRow("%s, %s", language, thing)
            << QString::fromLatin1(language) << QString::fromLatin1(thing) << QString::fromUtf8(word);
    };
    add("de", "\\btags?\\b", "NFC-Tag");
    add("de", "\\btouch", "berühr");
    add("de", "\\bpair\\b", "koppeln");
    add("de", "\\bshar(e|ing)\\b", "teilen");
    add("de", "\\bapplications?\\b", "Anwendung");
    add("fi", "\\btags?\\b", "tunniste");
    add("fi", "\\btouch", "koske");
    add("fi", "\\bpair\\b", "pari");
    add("fi", "\\bshar(e|ing)\\b", "ja(ka|et|a )");
    add("fi", "\\bapplications?\\b", "sovellu");
    add("ar", "\\btags?\\b", "علام");
    add("ar", "\\btouch", "لمس");
    add("ar", "\\bpair\\b", "اقتران");
    add("ar", "\\bshar(e|ing)\\b", "مشارك");
    add("ar", "\\bapplications?\\b", "تطبيق");
}

// A text that names a thing of the glossary in English names it in the other language, with that one word.
void TestCatalogues::oneThingHasOneWord()
{
    QFETCH(QString, language);
    QFETCH(QString, thing);
    QFETCH(QString, word);
    const QRegularExpression named(thing, QRegularExpression::CaseInsensitiveOption);
    const QRegularExpression wanted(word, QRegularExpression::CaseInsensitiveOption);
    const Messages messages = readCatalogue(QStringLiteral("connui-nfc_%1.ts").arg(language));
    int times = 0;
    for (const Message &message : messages) {
        if (!message.source.contains(named))
            continue;
        ++times;
        QVERIFY2(message.text().contains(wanted), qUtf8Printable(message.text()));
    }
    QVERIFY(times > 1);
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
    ConnUi::installTranslations();
    const MDialog dialog(QString(), M::CancelButton);
    QCOMPARE(qtTrId("qtn_comm_cancel"), dialog.buttons().constFirst()->text());
}

void TestCatalogues::toolkitSpeaksTheSameLanguage_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QStringList>("labels");
    QTest::addColumn<Qt::LayoutDirection>("direction");
    QTest::newRow("English") << QStringLiteral("en")
                             << QStringList{QStringLiteral("OK"), QStringLiteral("Yes"), QStringLiteral("No"),
                                            QStringLiteral("Cancel")}
                             << Qt::LeftToRight;
    QTest::newRow("German") << QStringLiteral("de")
                            << QStringList{QStringLiteral("OK"), QStringLiteral("Ja"), QStringLiteral("Nein"),
                                           QStringLiteral("Abbrechen")}
                            << Qt::LeftToRight;
    QTest::newRow("Finnish") << QStringLiteral("fi")
                             << QStringList{QStringLiteral("OK"), QStringLiteral("Kyllä"),
                                            QStringLiteral("Ei"), QStringLiteral("Peru")}
                             << Qt::LeftToRight;
    QTest::newRow("Arabic") << QStringLiteral("ar")
                            << QStringList{QStringLiteral("حسنًا"), QStringLiteral("نعم"),
                                           QStringLiteral("لا"), QStringLiteral("ألغِ")}
                            << Qt::RightToLeft;
}

// The labels of buttons that dialogs do not name, in a program that loads our texts.
void TestCatalogues::toolkitSpeaksTheSameLanguage()
{
    QFETCH(QString, language);
    QFETCH(QStringList, labels);
    QFETCH(Qt::LayoutDirection, direction);
    QLocale::setDefault(QLocale(language));
    ConnUi::installTranslations();

    const MDialog dialog(QString(), M::OkButton | M::YesButton | M::NoButton | M::CancelButton);
    QStringList shown;
    for (const MButtonModel *button : dialog.buttons())
        shown.append(button->text());
    QCOMPARE(shown, labels);
    QCOMPARE(QGuiApplication::layoutDirection(), direction);
}

QTEST_MAIN(TestCatalogues)

#include "tst_catalogues.moc"
