// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QDir>
#include <QFile>
#include <QLibrary>
#include <QTemporaryDir>
#include <QtTest>

#include <NfcTranslations>

namespace {

// As a button of the toolkit asks for it.
QString cancel()
{
    return QCoreApplication::translate("QPlatformTheme", "Cancel");
}

QString openButton()
{
    return qtTrId("qtn_nfc_tags_open");
}

} // namespace

class TestNfcTranslations : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void languageOfTheLocaleIsInstalledWithQtsOwnTexts_data();
    void languageOfTheLocaleIsInstalledWithQtsOwnTexts();
    void textsAreFoundBesideAMovedLibrary();
    void missingTextsAreWarnedAbout();

private:
    using Install = bool (*)(const QLocale &);

    // The library where somebody has moved it to.
    Install inMovedLibrary();

    std::unique_ptr<QTemporaryDir> prefix;
};

void TestNfcTranslations::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    prefix = std::make_unique<QTemporaryDir>();
    QVERIFY(prefix->isValid());
}

void TestNfcTranslations::cleanup()
{
    const auto texts = QCoreApplication::instance()->findChildren<QTranslator *>();
    for (QTranslator *text : texts)
        delete text;
}

TestNfcTranslations::Install TestNfcTranslations::inMovedLibrary()
{
    const QString file = prefix->filePath(QStringLiteral(LIBRARY_FOLDER "/library.so"));
    if (!QDir().mkpath(QFileInfo(file).path()) || !QFile::copy(QStringLiteral(LIBRARY), file))
        return nullptr;
    QLibrary library(file);
    return reinterpret_cast<Install>(library.resolve("_ZN6ConnUi19installTranslationsERK7QLocale"));
}

void TestNfcTranslations::languageOfTheLocaleIsInstalledWithQtsOwnTexts_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QString>("open");
    QTest::addColumn<QString>("canceling");
    QTest::newRow("German") << QLocale(QStringLiteral("de_AT")) << QStringLiteral("Öffnen")
                            << QStringLiteral("Abbrechen");
    QTest::newRow("Finnish") << QLocale(QStringLiteral("fi_FI")) << QStringLiteral("Avaa")
                             << QStringLiteral("Peru");
    QTest::newRow("English") << QLocale(QStringLiteral("en_GB")) << QStringLiteral("Open")
                             << QStringLiteral("Cancel");
    QTest::newRow("a language without texts")
        << QLocale(QStringLiteral("fr_FR")) << QStringLiteral("Open") << QStringLiteral("Cancel");
}

void TestNfcTranslations::languageOfTheLocaleIsInstalledWithQtsOwnTexts()
{
    QFETCH(QLocale, locale);
    QCOMPARE(openButton(), QStringLiteral("qtn_nfc_tags_open"));
    QVERIFY(ConnUi::installTranslations(locale));
    QTEST(openButton(), "open");
    QTEST(cancel(), "canceling");
}

void TestNfcTranslations::textsAreFoundBesideAMovedLibrary()
{
    const Install install = inMovedLibrary();
    QVERIFY(install);
    const QString folder = prefix->filePath(QStringLiteral("share/connui-nfc"));
    QVERIFY(QDir().mkpath(folder));
    QVERIFY(QFile::link(QStringLiteral(CATALOGUES), folder + QStringLiteral("/translations")));
    QVERIFY(install(QLocale(QLocale::German)));
    QCOMPARE(openButton(), QStringLiteral("Öffnen"));
}

void TestNfcTranslations::missingTextsAreWarnedAbout()
{
    const Install install = inMovedLibrary();
    QVERIFY(install);
    const QString libraries = QFileInfo(prefix->filePath(QStringLiteral(LIBRARY_FOLDER))).canonicalFilePath();
    const QString warning = QStringLiteral("No texts in ") + libraries +
                            QStringLiteral("/" DATA_FROM_LIBRARIES "/connui-nfc/translations");
    QTest::ignoreMessage(QtWarningMsg, qPrintable(warning));
    QVERIFY(!install(QLocale(QLocale::German)));
    QCOMPARE(openButton(), QStringLiteral("qtn_nfc_tags_open"));
}

QTEST_GUILESS_MAIN(TestNfcTranslations)
#include "tst_nfctranslations.moc"
