// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "printerinfo.h"
#include "testfixture.h"
#include "textprintermodels.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

// One model as its documentation gives it. Papers: width mm / dots in a line / caption. Fonts: cell, millimetres, "S"
// when symbols can be loaded, cell of such a symbol.
struct Model
{
    const QString &id;
    const char *name;
    const char *lacks;
    const char *papers;
    const char *fonts;
};

QVector<Model> models()
{
    using Id = TextPrinterModels;
    return {
        {Id::MODEL_CUSTOM_VKP_80, "Custom VKP-80", "italic alignJustify retractTimeout",
         "74/512/80 mm; 54/400/60 mm; 70/512/76 mm; 76/512/82 mm",
         "10x24 1.3x3 S 10x24; 14x24 1.75x3 S 13x24; 14x24 1.75x3 S 13x24; 18x24 2.18x3 S 16x24"},
        {Id::MODEL_CUSTOM_TG_2480_H, "Custom TG 2480 H (TG 2460 H)", "italic alignJustify retractTimeout",
         "74/640/80 mm", "10x24 1.24x3 S 10x24; 14x24 1.73x3 S 13x24; 14x24 1.73x3 S 13x24; 18x24 2.23x3 S 16x24"},
        {Id::MODEL_CUSTOM_TG_2480_SE, "Custom TG 2480 (TG 2460 SE)", "italic alignJustify retractTimeout",
         "72/640/80 mm", "10x24 1.26x3 S 10x24; 10x24 1.26x3 S 10x24; 14x24 1.72x3 S 13x24; 14x24 1.72x3 S 13x24"},
        {Id::MODEL_CITIZEN_PPU_700, "Citizen PPU-700", "italic alignJustify customImages ejection", "72/576/80 mm",
         "8x16 1x2 S 8x16; 9x17 1.13x2.13 S 9x17; 9x17 1.13x2.13 S 9x17; 12x24 1.5x3 S 12x24"},
        {Id::MODEL_CITIZEN_CBM_1000, "Citizen CBM-1000",
         "italic alignJustify customImages retraction ejection retractTimeout", "72/625/80 mm; 50/422/58 mm",
         "9x24 1.13x3 S 9x24; 9x24 1.13x3 S 9x24; 12x24 1.53x3 S 12x24; 12x24 1.53x3 S 12x24"},
        {Id::MODEL_CITIZEN_CTS_2000, "Citizen CT-S2000", "italic alignJustify customImages ejection",
         "72/625/80 mm; 66/558/72 mm; 50/422/54.5 mm; 48/406/54 mm",
         "8x16 1x2 S 8x16; 9x24 1.125x3 S 9x24; 9x24 1.125x3 S 9x24; 12x24 1.5x3 S 12x24"},
        {Id::MODEL_AV_268, "AV-268",
         "italic alignCenter alignRight alignLeft alignJustify customImages retraction ejection retractTimeout",
         "48/384/60 mm", "8x16 1x1 S 8x16; 8x16 1x1 S 8x16; 16x32 2x2 - 16x32; 16x32 2x2 - 16x32"},
        {Id::MODEL_GENERAL_EPSON,
         "\u041f\u0440\u0438\u043d\u0442\u0435\u0440 \u0063 EPSON "
         "\u043f\u0440\u043e\u0442\u043e\u043a\u043e\u043b\u043e\u043c",
         "italic inversion alignCenter alignRight alignLeft alignJustify customSymbols customImages retraction "
         "ejection "
         "retractTimeout",
         "48/384/60 mm; 72/625/80 mm",
         "12x24 1.4x3 - 8x16; 12x24 1.4x3 - 8x16; 12x24 1.4x3 - 8x16; 12x24 1.4x3 - 8x16"},
        {Id::MODEL_TSP_TUP, "Star TSP 600/700/800, TUP 900",
         "italic alignJustify customImages retraction ejection retractTimeout", "72/640/80 mm",
         "12x24 1.5x3 S 12x24; 12x24 1.5x3 S 12x24; 12x24 1.5x3 S 12x24; 12x24 1.5x3 S 12x24"},
        {Id::MODEL_CITIZEN_PPU_231, "Citizen PPU-231", "italic alignJustify customImages ejection", "72/576/80 mm",
         "9x24 1.125x3 S 9x24; 9x24 1.125x3 S 9x24; 12x24 1.5x3 S 12x24; 12x24 1.5x3 S 12x24"},
        {Id::MODEL_EPSON_EU_4XX, "EPSON EU-4XX", "italic alignJustify customImages ejection",
         "80/640/82.5 mm; 72/576/79.5 mm; 56/448/60 mm; 54/432/58 mm",
         "9x17 1.13x2.13 S 9x17; 9x17 1.13x2.13 S 9x17; 12x24 1.5x3 S 12x24; 12x24 1.5x3 S 12x24"},
        {Id::MODEL_SWECOIN_TM_20XX, "Swecoin TM 20xx",
         "alignJustify customSymbols customImages lineSpacing retractTimeout", "72/640/80 mm",
         "18x24 1.32x3 - 18x24; 18x24 1.32x3 - 18x24; 18x24 1.32x3 - 18x24; 18x24 1.32x3 - 18x24"},
        {Id::MODEL_CITIZEN_CPP_8001, "CPP-8001", "italic alignJustify customImages ejection", "72/576/80 mm",
         "9x24 1.274x3 S 9x24; 9x24 1.28x3 S 9x24; 12x24 1.68x3 S 12x24; 12x24 1.68x3 S 12x24"},
        {Id::MODEL_WPK833, "WinPos WPK 833", "italic alignJustify ejection", "72/576/80 mm",
         "9x24 1.274x3 S 9x24; 9x24 1.28x3 S 9x24; 12x24 1.68x3 S 12x24; 12x24 1.68x3 S 12x24"},
    };
}

const QVector<const char *> Capabilities{
    "doubleWidth", "doubleHeight", "bold",      "italic",         "underline",     "inversion",
    "alignCenter", "alignRight",   "alignLeft", "alignJustify",   "customSymbols", "customImages",
    "lineSpacing", "retraction",   "ejection",  "retractTimeout",
};

QString lacking(const QJsonObject &model)
{
    QStringList keys;
    for (const char *key : Capabilities) {
        if (!model.value(QLatin1String(key)).isBool()) {
            keys.append(QStringLiteral("no ") + QLatin1String(key));
        } else if (!model.value(QLatin1String(key)).toBool()) {
            keys.append(QLatin1String(key));
        }
    }
    return keys.join(QLatin1Char(' '));
}

QString paperText(const QJsonObject &paper)
{
    return QStringLiteral("%1/%2/%3")
        .arg(paper.value(QLatin1String("width")).toInt())
        .arg(paper.value(QLatin1String("pointsToLine")).toInt())
        .arg(paper.value(QLatin1String("caption")).toString());
}

QString fontText(const QJsonObject &font)
{
    const auto number = [&](const char *key) {
        return font.value(QLatin1String(key)).toDouble(-1);
    };
    return QStringLiteral("%1x%2 %3x%4 %5 %6x%7")
        .arg(number("width"))
        .arg(number("height"))
        .arg(number("mwidth"))
        .arg(number("mheight"))
        .arg(font.value(QLatin1String("customSymbols")).toBool() ? QLatin1Char('S') : QLatin1Char('-'))
        .arg(number("customWidth"))
        .arg(number("customHeight"));
}

// The entries "0", "1", … of a model's collection; anything else in it shows as a missing entry.
QString collectionText(const QJsonObject &entries, QString (*text)(const QJsonObject &))
{
    QStringList texts;
    for (int id = 0; id < entries.size(); ++id) {
        texts.append(text(entries.value(QString::number(id)).toObject()));
    }
    return texts.join(QStringLiteral("; "));
}

QJsonArray fileModels()
{
    QFile file(PrinterInfo::RC_INFO_FILENAME);
    return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).array() : QJsonArray();
}

} // namespace

class TestCatalogue : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void file_data();
    void file();
    void loaded_data();
    void loaded();
    void holdsNothingElse();
};

void TestCatalogue::file_data()
{
    QTest::addColumn<int>("index");
    for (int index = 0; index < models().size(); ++index) {
        QTest::newRow(qPrintable(models().at(index).id)) << index;
    }
}

void TestCatalogue::file()
{
    QFETCH(int, index);
    const Model model = models().at(index);
    const QJsonObject entry = fileModels().at(index).toObject();
    QCOMPARE(entry.value(QLatin1String("id")).toString(), model.id);
    QCOMPARE(entry.value(QLatin1String("name")).toString(), QString::fromUtf8(model.name));
    QCOMPARE(entry.value(QLatin1String("interface")).toString(), QStringLiteral("COM"));
    QCOMPARE(entry.value(QLatin1String("resolution")).toInt(), 203);
    QCOMPARE(lacking(entry), QString::fromUtf8(model.lacks));
    QCOMPARE(collectionText(entry.value(QLatin1String("paperTypes")).toObject(), paperText),
             QString::fromUtf8(model.papers));
    QCOMPARE(collectionText(entry.value(QLatin1String("fontTypes")).toObject(), fontText),
             QString::fromUtf8(model.fonts));
    const int extraKeys = index == 0 ? 2 : 0;
    QCOMPARE(entry.size(), 4 + Capabilities.size() + 2 + extraKeys);
}

void TestCatalogue::loaded_data()
{
    file_data();
}

void TestCatalogue::loaded()
{
    QFETCH(int, index);
    const PrinterInfo model = PrinterInfo::fromResources().value(index);
    const QString lacks = QString::fromUtf8(models().at(index).lacks);
    const QStringList withImages{TextPrinterModels::MODEL_CUSTOM_VKP_80, TextPrinterModels::MODEL_CUSTOM_TG_2480_H,
                                 TextPrinterModels::MODEL_CUSTOM_TG_2480_SE, TextPrinterModels::MODEL_WPK833};

    QCOMPARE(model.id(), models().at(index).id);
    QCOMPARE(model.name(), QString::fromUtf8(models().at(index).name));
    QVERIFY(!model.ejection());
    QCOMPARE(model.customImages(), withImages.contains(model.id()));
    QCOMPARE(model.customSymbols(), model.customImages());
    QCOMPARE(model.italic(), !lacks.contains(QStringLiteral("italic")));
    QCOMPARE(model.retraction(), !lacks.contains(QStringLiteral("retraction")));
    QCOMPARE(model.paperLoopSupported(), index == 0);
    QCOMPARE(model.checkMoveSettingsSupported(), index == 0);
    QCOMPARE(model.paperTypes().size(), QString::fromUtf8(models().at(index).papers).count(QLatin1Char(';')) + 1);
    for (const PaperInfo &paper : model.paperTypes()) {
        QCOMPARE(int(paper.height()), -1);
    }
    QCOMPARE(model.fontTypes().size(), 4);
    for (const FontInfo &font : model.fontTypes()) {
        QVERIFY(font.monospace());
        QCOMPARE(font.customWidth() > 0, font.customSymbols());
        QCOMPARE(font.customHeight() > 0, font.customSymbols());
    }
}

void TestCatalogue::holdsNothingElse()
{
    QCOMPARE(fileModels().size(), 14);
    QCOMPARE(PrinterInfo::fromResources().size(), 14);
    QCOMPARE(PrinterInfo::fromResources().at(4).paperType(5).caption(), QStringLiteral("58 mm"));
}

QTEST_GUILESS_MAIN(TestCatalogue)

#include "tst_catalogue.moc"
