// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "settingsfixture.h"

#include <printersettings.h>

namespace {

const QString Printer = QStringLiteral("AV_268");

} // namespace

class TestPrinterSettings : public SettingsFixture
{
    Q_OBJECT

private Q_SLOTS:
    void listsEverything();
    void listsWhatWasSet();
    void takesValues_data();
    void takesValues();
    void refuses_data();
    void refuses();
    void takesListsInOrder();
    void ignoresModels();
    void sharesOnePort();
    void escapesNames();
};

void TestPrinterSettings::listsEverything()
{
    const QStringList expected{QStringLiteral("PRINTER printerType int 0"),
                               QStringLiteral("PRINTER printerName QString "),
                               QStringLiteral("PRINTER emptyStringsAtEnd int 5"),
                               QStringLiteral("PRINTER spacesBeforeString int 0"),
                               QStringLiteral("PRINTER paperLoopFlag int 0"),
                               QStringLiteral("PRINTER moveCheckTo int 50"),
                               QStringLiteral("PRINTER characterMode int 0"),
                               QStringLiteral("PRINTER enablePortLogging int 0"),
                               QStringLiteral("PRINTER frPrintTout int 10000"),
                               QStringLiteral("PRINTER frSrvTestTout int 5000"),
                               QStringLiteral(" portName QString "),
                               QStringLiteral(" baudRate int 9600"),
                               QStringLiteral(" dataBits int 8"),
                               QStringLiteral(" parity int 0"),
                               QStringLiteral(" stopBits int 1"),
                               QStringLiteral(" flowControl int 0")};
    QCOMPARE(described(PrinterSettings().toList()), expected);
}

void TestPrinterSettings::listsWhatWasSet()
{
    PrinterSettings settings;
    settings.setPrinterType(3);
    settings.setPrinterId(Printer);
    settings.setEmptyStringsAtEnd(-1); // setters do not check
    settings.setSpacesBeforeString(4);
    settings.setPaperLoopFlag(PaperLoopOff);
    settings.setCheckMovingTo(-7);
    settings.setCharactersMode(IPrintDeviceSettings::CharactersLower);
    settings.setPortLoggingEnabled(true);
    settings.setFrPrintTout(1);
    settings.setFrSrvTestTout(99999);
    settings.port()->setPortName(QStringLiteral("ttyS1"));
    const QStringList lines = described(settings.toList());
    const QStringList expected{
        QStringLiteral("PRINTER printerType int 3"),        QStringLiteral("PRINTER printerName QString AV_268"),
        QStringLiteral("PRINTER emptyStringsAtEnd int -1"), QStringLiteral("PRINTER spacesBeforeString int 4"),
        QStringLiteral("PRINTER paperLoopFlag int 2"),      QStringLiteral("PRINTER moveCheckTo int -7"),
        QStringLiteral("PRINTER characterMode int 2"),      QStringLiteral("PRINTER enablePortLogging int 1"),
        QStringLiteral("PRINTER frPrintTout int 1"),        QStringLiteral("PRINTER frSrvTestTout int 99999"),
        QStringLiteral("AV_268 portName QString ttyS1")};
    QCOMPARE(QStringList(lines.mid(0, expected.size())), expected);
    const QVector<int> numbers{int(settings.printerType()), settings.spacessBeforeString(),
                               settings.charactersMode(),   settings.frPrintTout(),
                               settings.frSrvTestTout(),    settings.paperLoopFlag(Printer)};
    QCOMPARE(numbers,
             (QVector<int>{3, 4, 2, 1, 99999, PaperLoopAsConfigured})); // without a loop the flag does not count
    QVERIFY(settings.portLoggingEnabled());
}

void TestPrinterSettings::takesValues_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QVariant>("expected");

    const auto row = [](const char *key, const QVariant &value, const QVariant &expected) {
        QTest::addRow("%s %s", key, qPrintable(value.toString())) << QString::fromLatin1(key) << value << expected;
    };
    row("printerType", 7, 7);
    row("printerType", QStringLiteral("-1"), 0);
    row("printerType", QStringLiteral("0x10"), 0);
    row("printerName", QStringLiteral("PNG"), QStringLiteral("PNG"));
    row("emptyStringsAtEnd", QStringLiteral("-3"), -3);
    row("emptyStringsAtEnd", QStringLiteral("none"), 0);
    row("spacesBeforeString", 1000000, 1000000);
    row("paperLoopFlag", 1, 1);
    row("paperLoopFlag", QStringLiteral("2"), 2);
    row("paperLoopFlag", QStringLiteral("3"), 0);
    row("paperLoopFlag", -1, 0);
    row("moveCheckTo", 127, 127);
    row("moveCheckTo", 200, -56);
    row("moveCheckTo", 256, 0);
    row("characterMode", 2, 2);
    row("characterMode", QStringLiteral("upper"), 0);
    row("enablePortLogging", -5, 1);
    row("enablePortLogging", QStringLiteral("true"), 0); // numbers only
    for (const char *key : {"frPrintTout", "frSrvTestTout"}) {
        row(key, 999, 1000);
        row(key, 1000, 1000);
        row(key, 30000, 30000);
        row(key, QStringLiteral("90000"), 30000);
        row(key, QStringLiteral("99999999999"), 1000); // no int
        row(key, QStringLiteral("abc"), 1000);
        row(key, QVariant(), 1000);
    }
}

void TestPrinterSettings::takesValues()
{
    QFETCH(QString, key);
    QFETCH(QVariant, value);
    PrinterSettings settings;
    settings.setPaperLoopFlag(PaperLoopOn);
    settings.setCharactersMode(IPrintDeviceSettings::CharactersUpper);
    QVERIFY(settings.setValue(descriptor(QStringLiteral("PRINTER"), key, value)));
    QTEST(shown(settings.toList(), key), "expected");
}

void TestPrinterSettings::refuses_data()
{
    QTest::addColumn<QVariantMap>("change");
    const QString key = QStringLiteral("emptyStringsAtEnd");
    const QString parity = QStringLiteral("parity");
    QTest::newRow("no group") << QVariantMap{{QStringLiteral("key"), key}, {QStringLiteral("value"), 1}};
    QTest::newRow("nothing") << QVariantMap();
    QTest::newRow("unknown key") << descriptor(QStringLiteral("PRINTER"), QStringLiteral("printerId"), 1);
    QTest::newRow("other case") << descriptor(QStringLiteral("printer"), key, 1);
    QTest::newRow("own key in the printer's group") << descriptor(Printer, key, 1);
    QTest::newRow("port of another printer") << descriptor(QStringLiteral("PNG"), parity, 2);
    QTest::newRow("port in the own group") << descriptor(QStringLiteral("PRINTER"), parity, 2);
}

void TestPrinterSettings::refuses()
{
    QFETCH(QVariantMap, change);
    PrinterSettings settings;
    settings.setPrinterId(Printer);
    const QStringList before = described(settings.toList());
    QVERIFY(!settings.setValue(change));
    settings.setList({change, QStringLiteral("no map"), QVariant()});
    QCOMPARE(described(settings.toList()), before);
}

void TestPrinterSettings::takesListsInOrder()
{
    PrinterSettings settings;
    settings.setList({descriptor(Printer, QStringLiteral("baudRate"), 4800), // not yet this printer's
                      descriptor(QStringLiteral("PRINTER"), QStringLiteral("printerName"), Printer),
                      descriptor(Printer, QStringLiteral("parity"), 2),
                      descriptor(QStringLiteral("PRINTER"), QStringLiteral("frPrintTout"), 2000),
                      descriptor(QStringLiteral("PRINTER"), QStringLiteral("frPrintTout"), 3000)});
    QCOMPARE(settings.port()->baudRate(), 9600);
    QCOMPARE(settings.port()->parity(), QSerialPort::EvenParity);
    QCOMPARE(settings.port()->section(), Printer);
    QCOMPARE(settings.frPrintTout(), 3000);
}

void TestPrinterSettings::ignoresModels()
{
    const QString vkp80 = QStringLiteral("CUSTOM_VKP_80");
    PrinterSettings settings;
    settings.setPrinterId(vkp80);
    settings.setPaperLoopFlag(PaperLoopOn);
    QCOMPARE(settings.paperLoopFlag(), PaperLoopAsConfigured);
    QCOMPARE(shown(settings.toList(), QStringLiteral("paperLoopFlag")).toInt(), 1);
    settings.setPaperLoopFlag(PaperLoopOn, vkp80); // takes the flag away,
    QCOMPARE(shown(settings.toList(), QStringLiteral("paperLoopFlag")).toInt(), 0);
    settings.setCheckMovingTo(vkp80, 10); // while this one changes nothing
    QCOMPARE(settings.moveCheckTo(), qint8{0});
    QCOMPARE(shown(settings.toList(), QStringLiteral("moveCheckTo")).toInt(), 50);
}

void TestPrinterSettings::sharesOnePort()
{
    PrinterSettings settings;
    settings.setPrinterId(Printer);
    const QSharedPointer<RS232Settings> port = settings.port();
    QCOMPARE(port->section(), Printer);
    QCOMPARE(PrinterSettings().port(QStringLiteral("PNG")), port);
    QCOMPARE(port->section(), QStringLiteral("PNG"));

    RS232Settings other(QStringLiteral("WPK_833"));
    other.setBaudRate(19200);
    settings.setPortSettings(Printer, other);
    QCOMPARE(*port, other);

    settings.setValue(descriptor(QStringLiteral("PRINTER"), QStringLiteral("printerName"), QStringLiteral("TSP-TUP")));
    QCOMPARE(port->section(), QStringLiteral("WPK_833")); // until the port is used
    QCOMPARE(settings.port()->section(), QStringLiteral("TSP-TUP"));
}

void TestPrinterSettings::escapesNames()
{
    QCOMPARE(PrinterSettings().printerNameToSection(QStringLiteral("A<B>&\"C\"")),
             QStringLiteral("A&lt;B&gt;&amp;&quot;C&quot;"));
}

QTEST_GUILESS_MAIN(TestPrinterSettings)
#include "tst_printersettings.moc"
