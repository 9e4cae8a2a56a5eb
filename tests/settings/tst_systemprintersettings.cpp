// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "settingsfixture.h"

#include <systemprintersettings.h>

#include <QTemporaryDir>

namespace {

const QString Printer = QStringLiteral("Office");

enum class EPitch {
    Fixed,
    Proportional,
};

enum class ELetters {
    Latin,
    Cyrillic,
};

struct TestFont
{
    QString family;
    EPitch pitch;
    ELetters letters;
};

QByteArray bitmapOf(int character)
{
    return "STARTCHAR c" + QByteArray::number(character) + "\nENCODING " + QByteArray::number(character)
        + "\nSWIDTH 500 0\nDWIDTH 8 0\nBBX 8 8 0 0\nBITMAP\nFF\n81\n81\n81\n81\n81\n81\nFF\nENDCHAR\n";
}

// A bitmap font of boxes: no font of the machine takes part in the test.
QByteArray bitmapFont(const TestFont &font)
{
    QByteArray glyphs;
    int count = 0;
    const auto append = [&](int first, int last) {
        for (int character = first; character <= last; ++character, ++count) {
            glyphs += bitmapOf(character);
        }
    };
    append(0x20, 0x7E);
    if (font.letters == ELetters::Cyrillic) {
        append(0x400, 0x45F);
    }
    const QByteArray spacing = font.pitch == EPitch::Fixed ? "C" : "P";
    const QByteArray family = font.family.toLatin1();
    return "STARTFONT 2.1\nFONT -test-" + family + "-Medium-R-Normal--8-80-72-72-" + spacing
        + "-80-ISO10646-1\nSIZE 8 72 72\nFONTBOUNDINGBOX 8 8 0 0\nSTARTPROPERTIES 6\nFAMILY_NAME \"" + family
        + "\"\nSPACING \"" + spacing + "\"\nFONT_ASCENT 8\nFONT_DESCENT 0\nCHARSET_REGISTRY \"ISO10646\"\n"
        + "CHARSET_ENCODING \"1\"\nENDPROPERTIES\nCHARS " + QByteArray::number(count) + '\n' + glyphs + "ENDFONT\n";
}

void writeFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
}

} // namespace

Q_DECLARE_METATYPE(QVector<TestFont>)

class TestSystemPrinterSettings : public SettingsFixture
{
    Q_OBJECT

private Q_SLOTS:
    void lists();
    void takesItsOwnListBack();
    void takesValues_data();
    void takesValues();
    void listTakesTheFontOfAnyGroup();
    void convertsUnits_data();
    void convertsUnits();
    void convertsOrientations();
    void answersFonts_data();
    void answersFonts();
    void answersStoredFonts_data();
    void answersStoredFonts();

private:
    static QString askForFont(const QStringList &arguments, const QVector<TestFont> &fonts);
};

void TestSystemPrinterSettings::lists()
{
    SystemPrinterSettings settings;
    settings.setPrinterId(Printer);
    settings.setLeftMargin(QStringLiteral("any"), 2.5);
    const QStringList expected{
        QStringLiteral("Office defaultFont QString "),  QStringLiteral("Office unit int 0"),
        QStringLiteral("Office pageSizeKey QString "),  QStringLiteral("Office pageWidth double 0"),
        QStringLiteral("Office pageHeight double 0"),   QStringLiteral("Office autoPageHeight bool false"),
        QStringLiteral("Office emptyStrings int 0"),    QStringLiteral("Office leftMargin double 2.5"),
        QStringLiteral("Office rightMargin double 0"),  QStringLiteral("Office topMargin double 0"),
        QStringLiteral("Office bottomMargin double 0"), QStringLiteral("Office orientation int 0"),
        QStringLiteral("Office printerMode int 1"),     QStringLiteral("Office fullJustifyAlignment int 1")};
    QCOMPARE(described(settings.toList()), described(PrinterSettings().toList()) + expected);
}

void TestSystemPrinterSettings::takesItsOwnListBack()
{
    SystemPrinterSettings settings;
    settings.setPrinterId(Printer);
    settings.setDefaultFont(Printer, QFont(QStringLiteral("Serif"), 9));
    settings.setUnit(Printer, ISystemPrinterSettings::UnitInch);
    settings.setPageSizeKey(Printer, QStringLiteral("A4"));
    settings.setPageWidth(Printer, 1.5);
    settings.setPageHeight(Printer, 2.5);
    settings.setAutoPageHeight(Printer, true);
    settings.setEmptyStrings(Printer, 3);
    settings.setLeftMargin(Printer, 4.5);
    settings.setRightMargin(Printer, 5.5);
    settings.setTopMargin(Printer, 6.5);
    settings.setBottomMargin(Printer, 7.5);
    settings.setOrientation(Printer, ISystemPrinterSettings::OrientationLandscape);
    settings.setPrinterMode(Printer, QPrinter::HighResolution);
    settings.setFullJustifyAlign(Printer, false);
    const QVariantList list = settings.toList();
    init();
    settings.setList(list);
    QCOMPARE(described(settings.toList()), described(list));
    const QVector<double> sizes{settings.pageWidgth(Printer),       settings.pageHeight(Printer),
                                settings.leftMargin(Printer),       settings.rightMargin(Printer),
                                settings.topMargin(Printer),        settings.bottomMargin(Printer),
                                settings.emtyStrings(Printer) + 0.0};
    QCOMPARE(sizes, (QVector<double>{1.5, 2.5, 4.5, 5.5, 6.5, 7.5, 3}));
    QCOMPARE(settings.pageSizeKey(Printer), QStringLiteral("A4"));
    QVERIFY(settings.autoPageHeight(Printer) && !settings.fullJustifyAlign(Printer));
    QCOMPARE(settings.defaultFont(Printer).family(), QStringLiteral("Serif"));
}

void TestSystemPrinterSettings::takesValues_data()
{
    QTest::addColumn<QVariantMap>("change");
    QTest::addColumn<bool>("isTaken");
    QTest::addColumn<QVariant>("expected");

    const auto row = [](const char *key, const QVariant &value, const QVariant &expected) {
        QTest::addRow("%s %s", key, qPrintable(value.toString()))
            << descriptor(Printer, QString::fromLatin1(key), value) << true << expected;
    };
    row("unit", 7, 7); // no range is checked
    row("unit", QStringLiteral("x"), 0);
    row("orientation", -1, -1);
    row("printerMode", QStringLiteral("2"), 2);
    row("emptyStrings", -4, -4);
    row("pageWidth", QStringLiteral("79.5"), 79.5);
    row("topMargin", QStringLiteral("wide"), 0.0);
    row("autoPageHeight", QStringLiteral("true"), true);
    row("autoPageHeight", 0, false);
    row("fullJustifyAlignment", 2, 1);
    row("fullJustifyAlignment", 0, 0);
    const QString margin = QStringLiteral("leftMargin");
    QTest::newRow("other printer") << descriptor(QStringLiteral("PNG"), margin, 5) << false << QVariant(0.0);
    QTest::newRow("own section") << descriptor(QStringLiteral("PRINTER"), margin, 5) << false << QVariant(0.0);
    QTest::newRow("no group") << QVariantMap{{QStringLiteral("key"), margin}} << false << QVariant(0.0);
    QTest::newRow("unknown key") << descriptor(Printer, QStringLiteral("margin"), 5) << false << QVariant();
}

void TestSystemPrinterSettings::takesValues()
{
    QFETCH(QVariantMap, change);
    SystemPrinterSettings settings;
    settings.setPrinterId(Printer);
    QTEST(settings.setValue(change), "isTaken");
    QTEST(shown(settings.toList(), change.value(QStringLiteral("key")).toString()), "expected");
}

void TestSystemPrinterSettings::listTakesTheFontOfAnyGroup()
{
    SystemPrinterSettings settings;
    settings.setPrinterId(Printer);
    const QVariantMap font = descriptor(QStringLiteral("PNG"), QStringLiteral("defaultFont"), QStringLiteral("Serif"));
    QVERIFY(!settings.setValue(font));
    settings.setList({font, descriptor(QStringLiteral("PNG"), QStringLiteral("unit"), 2)});
    QCOMPARE(shown(settings.toList(), QStringLiteral("defaultFont")).toString(), QStringLiteral("Serif"));
    QCOMPARE(settings.unit(Printer), ISystemPrinterSettings::UnitMillimeter);
}

void TestSystemPrinterSettings::convertsUnits_data()
{
    QTest::addColumn<int>("unit");
    QTest::addColumn<bool>("isKnown");
    for (int unit = 0; unit <= 7; ++unit) {
        QTest::addRow("%d", unit) << unit << (unit <= 5);
    }
}

void TestSystemPrinterSettings::convertsUnits()
{
    QFETCH(int, unit);
    QFETCH(bool, isKnown);
    SystemPrinterSettings settings;
    settings.setUnit(Printer, static_cast<ISystemPrinterSettings::Unit>(unit));
    QCOMPARE(int(settings.pageLayoutUnit(Printer)), isKnown ? unit : 0);
    QCOMPARE(int(settings.pageSizeUnit(Printer)), isKnown ? unit : 0);
    settings.setUnit(Printer, ISystemPrinterSettings::UnitPica);
    settings.setPageLayoutUnit(Printer, static_cast<QPageLayout::Unit>(unit));
    QCOMPARE(int(settings.unit(Printer)), isKnown ? unit : 3);
}

void TestSystemPrinterSettings::convertsOrientations()
{
    SystemPrinterSettings settings;
    settings.setPageLayoutOrientation(Printer, QPageLayout::Landscape);
    QCOMPARE(settings.orientation(Printer), ISystemPrinterSettings::OrientationLandscape);
    QCOMPARE(settings.pageLayoutOrientation(Printer), QPageLayout::Landscape);
    settings.setOrientation(Printer, static_cast<ISystemPrinterSettings::Orientation>(2));
    QCOMPARE(settings.pageLayoutOrientation(Printer), QPageLayout::Portrait);
}

QString TestSystemPrinterSettings::askForFont(const QStringList &arguments, const QVector<TestFont> &fonts)
{
    const QTemporaryDir folder;
    const QByteArray path = folder.path().toUtf8();
    for (const TestFont &font : fonts) {
        writeFile(folder.filePath(font.family + QStringLiteral(".bdf")), bitmapFont(font));
    }
    const QString config = folder.filePath(QStringLiteral("fonts.conf"));
    writeFile(config, "<fontconfig><dir>" + path + "</dir><cachedir>" + path + "/cache</cachedir></fontconfig>");

    QProcess probe;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("FONTCONFIG_FILE"), config);
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    environment.insert(QStringLiteral("ASAN_OPTIONS"), QStringLiteral("detect_leaks=0")); // Qt's offscreen screen leaks
    probe.setProcessEnvironment(environment);
    probe.start(QStringLiteral(FONTPROBE), arguments);
    return probe.waitForFinished() && probe.exitStatus() == QProcess::NormalExit && probe.exitCode() == 0
        ? QString::fromUtf8(probe.readAllStandardOutput()).trimmed()
        : QStringLiteral("crashed: ") + QString::fromUtf8(probe.readAllStandardError());
}

void TestSystemPrinterSettings::answersFonts_data()
{
    QTest::addColumn<QString>("application");
    QTest::addColumn<QVector<TestFont>>("fonts");
    QTest::addColumn<QString>("expected");

    const QString gui = QStringLiteral("gui");
    const TestFont monospace{QStringLiteral("Monospace"), EPitch::Fixed, ELetters::Cyrillic};
    const TestFont latin{QStringLiteral("Monospace"), EPitch::Fixed, ELetters::Latin};
    const TestFont proportional{QStringLiteral("Alpha"), EPitch::Proportional, ELetters::Cyrillic};
    const TestFont fixed{QStringLiteral("Beta"), EPitch::Fixed, ELetters::Cyrillic};
    const TestFont otherFixed{QStringLiteral("Gamma"), EPitch::Fixed, ELetters::Cyrillic};
    const QString wanted = QStringLiteral("Monospace 14 50 0");
    QTest::newRow("no application") << QStringLiteral("none") << QVector<TestFont>{fixed} << wanted;
    QTest::newRow("no GUI") << QStringLiteral("core") << QVector<TestFont>{fixed} << wanted;
    QTest::newRow("the family") << gui << QVector<TestFont>{proportional, fixed, monospace} << wanted;
    QTest::newRow("Latin only") << gui << QVector<TestFont>{proportional, fixed, otherFixed, latin} << "Beta 14 50 0";
    QTest::newRow("without it") << gui << QVector<TestFont>{otherFixed, proportional, fixed} << "Beta 14 50 0";
}

void TestSystemPrinterSettings::answersFonts()
{
    QFETCH(QString, application);
    QFETCH(QVector<TestFont>, fonts);
    QTEST(askForFont({application}, fonts), "expected");
}

void TestSystemPrinterSettings::answersStoredFonts_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    QTest::newRow("a font") << "Serif,9,-1,5,75,1,0,0,0,0"
                            << "Serif 9 75 1";
    QTest::newRow("no font") << "one,two,three"
                             << "Monospace 14 50 0";
    QTest::newRow("empty") << QString() << "Monospace 14 50 0";
}

void TestSystemPrinterSettings::answersStoredFonts()
{
    QFETCH(QString, text);
    const TestFont monospace{QStringLiteral("Monospace"), EPitch::Fixed, ELetters::Cyrillic};
    for (const QString &application : {QStringLiteral("none"), QStringLiteral("gui")}) {
        QTEST(askForFont({application, text}, {monospace}), "expected");
    }
}

QTEST_GUILESS_MAIN(TestSystemPrinterSettings)
#include "tst_systemprintersettings.moc"
