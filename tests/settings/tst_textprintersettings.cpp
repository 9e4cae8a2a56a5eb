// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "settingsfixture.h"

#include <textprintermodels.h>
#include <textprintersettings.h>

namespace {

QStringList ownLines(const TextPrinterSettings &settings)
{
    constexpr int baseLines = 16;
    return SettingsFixture::described(settings.toList().mid(baseLines));
}

} // namespace

class TestTextPrinterSettings : public SettingsFixture
{
    Q_OBJECT

private Q_SLOTS:
    void lists_data();
    void lists();
    void obeysTheModel_data();
    void obeysTheModel();
    void choosesThePaper_data();
    void choosesThePaper();
    void takesValues_data();
    void takesValues();
    void takesItsOwnListBack();
    void appliesKeysOfANewPrinter();
};

void TestTextPrinterSettings::lists_data()
{
    QTest::addColumn<QString>("printer");
    QTest::addColumn<bool>("isImage");
    QTest::addColumn<QStringList>("expected");

    const QString vkp80 = TextPrinterModels::MODEL_CUSTOM_VKP_80;
    QTest::newRow("pictures off") << vkp80 << false
                                  << QStringList{QStringLiteral("CUSTOM_VKP_80 paperTypeId int 2"),
                                                 QStringLiteral("CUSTOM_VKP_80 printAsImage int 0")};
    QTest::newRow("pictures on") << vkp80 << true
                                 << QStringList{QStringLiteral("CUSTOM_VKP_80 paperTypeId int 2"),
                                                QStringLiteral("CUSTOM_VKP_80 printAsImage int 1"),
                                                QStringLiteral("CUSTOM_VKP_80 defaultFont QString Mono")};
    QTest::newRow("codec") << TextPrinterModels::MODEL_GENERAL_EPSON << true
                           << QStringList{QStringLiteral("GENERAL_EPSON_PROTOCOL paperTypeId int 2"),
                                          QStringLiteral("GENERAL_EPSON_PROTOCOL codec QString cp866")};
    QTest::newRow("neither") << TextPrinterModels::MODEL_AV_268 << true
                             << QStringList{QStringLiteral("AV_268 paperTypeId int 2")};
    QTest::newRow("none") << QString() << true << QStringList{QStringLiteral(" paperTypeId int 2")};
}

void TestTextPrinterSettings::lists()
{
    QFETCH(QString, printer);
    QFETCH(bool, isImage);
    TextPrinterSettings settings;
    settings.setPrinterId(printer);
    settings.setPaperTypeId(2);
    settings.setDefaultFont(QStringLiteral("Mono"));
    settings.setPrintAsImage(isImage);
    QCOMPARE(described(settings.toList().mid(0, 16)), described(PrinterSettings().toList()));
    QTEST(ownLines(settings), "expected");
}

void TestTextPrinterSettings::obeysTheModel_data()
{
    QTest::addColumn<bool>("hasLoopAndMove");
    QTest::addColumn<bool>("hasImages");
    QTest::addColumn<bool>("needsCodec");

    QTest::newRow("CUSTOM_VKP_80") << true << true << false;
    QTest::newRow("CUSTOM_TG_2480_H") << false << true << false;
    QTest::newRow("CUSTOM_TG_2480_SE") << false << true << false;
    QTest::newRow("CITIZEN_PPU_700") << false << false << false;
    QTest::newRow("CITIZEN_CBM_1000") << false << false << false;
    QTest::newRow("CITIZEN_CTS_2000") << false << false << false;
    QTest::newRow("AV_268") << false << false << false;
    QTest::newRow("GENERAL_EPSON_PROTOCOL") << false << false << true;
    QTest::newRow("TSP-TUP") << false << false << false;
    QTest::newRow("CITIZEN_PPU_231") << false << false << false;
    QTest::newRow("EPSON_EU_4XX") << false << false << false;
    QTest::newRow("SWECOIN_TM_20XX") << false << false << false;
    QTest::newRow("CITIZEN_CPP_8001") << false << false << false;
    QTest::newRow("WPK_833") << false << true << false;
    QTest::newRow("PNG") << false << false << false;
    QTest::newRow("unknown") << false << false << false;
}

void TestTextPrinterSettings::obeysTheModel()
{
    QFETCH(bool, hasLoopAndMove);
    QFETCH(bool, hasImages);
    const QString printer = QString::fromLatin1(QTest::currentDataTag());
    TextPrinterSettings settings;
    settings.setPrinterId(printer);

    QTEST(settings.needCodecSettings(), "needsCodec");
    QCOMPARE(settings.moveCheckTo(), qint8(hasLoopAndMove ? 50 : 0));
    settings.setCheckMovingTo(printer, 10);
    QCOMPARE(shown(settings.toList(), QStringLiteral("moveCheckTo")).toInt(), hasLoopAndMove ? 10 : 50);

    settings.setPaperLoopFlag(PaperLoopOn);
    QCOMPARE(settings.paperLoopFlag(), hasLoopAndMove ? PaperLoopOn : PaperLoopAsConfigured);
    settings.setPaperLoopFlag(PaperLoopOff, printer);
    QCOMPARE(shown(settings.toList(), QStringLiteral("paperLoopFlag")).toInt(), hasLoopAndMove ? 2 : 0);

    settings.setPrintAsImage(true);
    QCOMPARE(settings.printAsImage(), hasImages);
    settings.setPrinterId(TextPrinterModels::MODEL_CUSTOM_VKP_80);
    QCOMPARE(settings.printAsImage(), hasImages); // what was stored, not what the model masks
}

void TestTextPrinterSettings::choosesThePaper_data()
{
    QTest::addColumn<QString>("printer");
    QTest::addColumn<int>("paperTypeId");
    QTest::addColumn<int>("expectedId");
    QTest::addColumn<QString>("caption");

    const QString cbm1000 = TextPrinterModels::MODEL_CITIZEN_CBM_1000;
    QTest::newRow("first") << cbm1000 << 0 << 0 << "80 mm";
    QTest::newRow("above") << cbm1000 << 7 << 1 << "58 mm";
    QTest::newRow("below") << cbm1000 << -1 << 0 << "80 mm";
    QTest::newRow("other printer") << TextPrinterModels::MODEL_CUSTOM_VKP_80 << 2 << 2 << "76 mm";
    QTest::newRow("unknown model") << TextPrinterModels::MODEL_PNG << 0 << -1 << QString();
}

void TestTextPrinterSettings::choosesThePaper()
{
    QFETCH(QString, printer);
    QFETCH(int, paperTypeId);
    TextPrinterSettings settings;
    settings.setPaperTypeId(QStringLiteral("any"), paperTypeId);
    QTEST(int(settings.paper(printer).id()), "expectedId");
    settings.setPrinterId(printer);
    QTEST(settings.paper().caption(), "caption");
}

void TestTextPrinterSettings::takesValues_data()
{
    QTest::addColumn<QString>("printer");
    QTest::addColumn<QVariantMap>("change");
    QTest::addColumn<bool>("isTaken");
    QTest::addColumn<QString>("expected"); // paper type, codec, font and stored picture flag

    const auto row
        = [](const char *name, const QString &printer, const QVariantMap &change, bool isTaken, const char *expected) {
              QTest::newRow(name) << printer << change << isTaken << expected;
          };
    const auto own = [](const QString &printer, const char *key, const QVariant &value) {
        return descriptor(printer, QString::fromLatin1(key), value);
    };
    const QString vkp80 = TextPrinterModels::MODEL_CUSTOM_VKP_80;
    const QString epson = TextPrinterModels::MODEL_GENERAL_EPSON;
    const QString av268 = TextPrinterModels::MODEL_AV_268;
    row("paper", av268, own(av268, "paperTypeId", 3), true, "3 cp866 Old 1");
    row("paper, no number", av268, own(av268, "paperTypeId", QStringLiteral("x")), true, "0 cp866 Old 1");
    row("codec", epson, own(epson, "codec", QStringLiteral("cp1251")), true, "1 cp1251 Old 1");
    row("codec not needed", vkp80, own(vkp80, "codec", QStringLiteral("cp1251")), true, "1 cp866 Old 1");
    row("picture off", vkp80, own(vkp80, "printAsImage", 0), true, "1 cp866 Old 0");
    row("picture, negative", vkp80, own(vkp80, "printAsImage", -1), true, "1 cp866 Old 0");
    row("picture, other number", vkp80, own(vkp80, "printAsImage", QStringLiteral("2")), true, "1 cp866 Old 1");
    row("font", vkp80, own(vkp80, "defaultFont", QStringLiteral("New")), true, "1 cp866 New 1");
    row("picture without pictures", av268, own(av268, "printAsImage", 1), true, "1 cp866  0");
    row("font without pictures", av268, own(av268, "defaultFont", QStringLiteral("New")), true, "1 cp866  0");
    row("unknown key without pictures", av268, own(av268, "speed", 1), false, "1 cp866  0");
    row("unknown key with pictures", vkp80, own(vkp80, "speed", 1), false, "1 cp866 Old 1");
    row("serial parameter", av268, own(av268, "parity", 2), true, "1 cp866 Old 1");
    row("other printer", vkp80, own(av268, "paperTypeId", 3), false, "1 cp866 Old 1");
    row("no group, no printer", QString(), {{QStringLiteral("key"), QStringLiteral("x")}}, false, "1 cp866 Old 1");
}

void TestTextPrinterSettings::takesValues()
{
    QFETCH(QString, printer);
    QFETCH(QVariantMap, change);
    TextPrinterSettings settings;
    settings.setPaperTypeId(1);
    settings.setDefaultFont(QStringLiteral("Old"));
    settings.setPrintAsImage(true, TextPrinterModels::MODEL_CUSTOM_VKP_80);
    settings.setPrinterId(printer);
    QTEST(settings.setValue(change), "isTaken");
    settings.setPrinterId(TextPrinterModels::MODEL_CUSTOM_VKP_80);
    const QString stored
        = QStringLiteral("%1 %2 %3 %4").arg(settings.paperTypeId()).arg(settings.codec(), settings.defaultFont());
    QTEST(stored.arg(int(settings.printAsImage())), "expected");
}

void TestTextPrinterSettings::takesItsOwnListBack()
{
    TextPrinterSettings settings;
    settings.setPrinterId(TextPrinterModels::MODEL_CUSTOM_VKP_80);
    settings.setPrintAsImage(true);
    settings.setDefaultFont(QStringLiteral("Mono"));
    settings.setPaperTypeId(3);
    settings.port()->setBaudRate(57600);
    const QVariantList list = settings.toList();
    init();
    settings.setList(list);
    QCOMPARE(described(settings.toList()), described(list));
}

void TestTextPrinterSettings::appliesKeysOfANewPrinter()
{
    const QString epson = TextPrinterModels::MODEL_GENERAL_EPSON;
    TextPrinterSettings settings;
    settings.setPrinterId(TextPrinterModels::MODEL_CUSTOM_VKP_80);
    settings.setDefaultFont(QStringLiteral("Old"));
    settings.setList({descriptor(epson, QStringLiteral("codec"), QStringLiteral("cp1251")),
                      descriptor(epson, QStringLiteral("parity"), 2), // resets the font, as every other key
                      descriptor(QStringLiteral("PRINTER"), QStringLiteral("printerName"), epson)});
    QCOMPARE(settings.codec(), QStringLiteral("cp1251"));
    QCOMPARE(settings.defaultFont(), QString());
    QCOMPARE(settings.port()->parity(), QSerialPort::NoParity);
}

QTEST_GUILESS_MAIN(TestTextPrinterSettings)
#include "tst_textprintersettings.moc"
