// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "paperloopflag.h"
#include "printerinfo.h"
#include "testfixture.h"

#include <QTemporaryDir>

static_assert(std::is_same_v<std::underlying_type_t<EPaperLoopFlag>, int>);
static_assert(std::is_nothrow_move_constructible_v<FontInfo> && std::is_nothrow_move_assignable_v<FontInfo>);

namespace {

const QStringList Capabilities{
    QStringLiteral("doubleWidth"),    QStringLiteral("doubleHeight"),  QStringLiteral("bold"),
    QStringLiteral("italic"),         QStringLiteral("underline"),     QStringLiteral("inversion"),
    QStringLiteral("alignCenter"),    QStringLiteral("alignRight"),    QStringLiteral("alignLeft"),
    QStringLiteral("alignJustify"),   QStringLiteral("customSymbols"), QStringLiteral("customImages"),
    QStringLiteral("lineSpacing"),    QStringLiteral("retraction"),    QStringLiteral("ejection"),
    QStringLiteral("retractTimeout"),
};

// The capability keys that are false.
QString lacking(const QVariantMap &map)
{
    QStringList keys;
    for (const QString &key : Capabilities) {
        if (!map.value(key).toBool()) {
            keys.append(key);
        }
    }
    return keys.join(QLatin1Char(' '));
}

FontInfo fullFont()
{
    return FontInfo({{QStringLiteral("id"), 2},
                     {QStringLiteral("width"), 12},
                     {QStringLiteral("height"), 24},
                     {QStringLiteral("mwidth"), 1.5},
                     {QStringLiteral("mheight"), 3.0},
                     {QStringLiteral("monospace"), true},
                     {QStringLiteral("customSymbols"), true},
                     {QStringLiteral("customWidth"), 11},
                     {QStringLiteral("customHeight"), 24}});
}

QVariantMap fullModel()
{
    QVariantMap map{
        {QStringLiteral("id"), QStringLiteral("M")},          {QStringLiteral("name"), QStringLiteral("Model")},
        {QStringLiteral("interface"), QStringLiteral("COM")}, {QStringLiteral("resolution"), 203},
        {QStringLiteral("paperLoopSupported"), true},         {QStringLiteral("checkMoveSettings"), true}};
    for (const QString &key : Capabilities) {
        map.insert(key, true);
    }
    return map;
}

// One entry of a catalogue that holds a paper with this key and this id in its body.
QVariantMap paperMap(const QString &key, int bodyId)
{
    return {{key, QVariantMap{{QStringLiteral("id"), bodyId}, {QStringLiteral("width"), 72}}}};
}

} // namespace

class TestPrinterInfo : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void defaults();
    void emptyMapIsNotDefault();
    void fontReadsNumbers_data();
    void fontReadsNumbers();
    void fontAssignmentKeepsCustomHeight();
    void fontEquality_data();
    void fontEquality();
    void customSizesOnlyWithSymbols();
    void paperKeepsRollHeight();
    void modelKeys_data();
    void modelKeys();
    void modelEquality_data();
    void modelEquality();
    void paperType_data();
    void paperType();
    void collectionKeys_data();
    void collectionKeys();
    void fontsKeepKeyOrder();
    void roundTrip();
    void malformed_data();
    void malformed();
    void unreadableFile_data();
    void unreadableFile();
    void describesItself();
};

void TestPrinterInfo::defaults()
{
    QCOMPARE(FontInfo().idAsString(), QStringLiteral("-1"));
    QVERIFY(FontInfo().monospace());
    QCOMPARE(PaperInfo().idAsString(), QStringLiteral("-1"));
    QCOMPARE(PrinterInfo().interface(), QStringLiteral("serial"));
    QCOMPARE(QFlags<EPaperLoopFlag>(), QFlags<EPaperLoopFlag>(PaperLoopAsConfigured));
    QCOMPARE(int(PaperLoopOn | PaperLoopOff), 3);
}

void TestPrinterInfo::emptyMapIsNotDefault()
{
    const FontInfo font((QVariantMap()));
    QCOMPARE(int(font.id()), 0);
    QVERIFY(!font.monospace());
    QCOMPARE(int(PaperInfo(QVariantMap()).id()), 0);
    QCOMPARE(PrinterInfo(QVariantMap()).interface(), QString());
}

void TestPrinterInfo::fontReadsNumbers_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("id");
    QTest::addColumn<int>("width");

    QTest::newRow("in range") << QVariant(7) << 7 << 7;
    QTest::newRow("largest unsigned byte") << QVariant(255) << -1 << 255;
    QTest::newRow("cut to eight bits") << QVariant(300) << 44 << 44;
    QTest::newRow("negative") << QVariant(-2) << -2 << 254;
    QTest::newRow("text") << QVariant(QStringLiteral("12")) << 12 << 12;
    QTest::newRow("no number") << QVariant(QStringLiteral("wide")) << 0 << 0;
    QTest::newRow("list") << QVariant(QVariantList{1}) << 0 << 0;
}

void TestPrinterInfo::fontReadsNumbers()
{
    QFETCH(QVariant, value);
    const FontInfo font({{QStringLiteral("id"), value}, {QStringLiteral("width"), value}});
    QTEST(int(font.id()), "id");
    QTEST(int(font.width()), "width");
}

void TestPrinterInfo::fontAssignmentKeepsCustomHeight()
{
    FontInfo source = fullFont();
    FontInfo target;
    target.setCustomHeight(16);
    target = source;
    QCOMPARE(int(target.customHeight()), 16);
    target.setCustomHeight(24);
    QCOMPARE(target, source);
    target = FontInfo();
    target.setCustomHeight(17);
    target = std::move(source);
    QCOMPARE(int(target.customHeight()), 17);
    QCOMPARE(FontInfo(fullFont()), fullFont());
}

void TestPrinterInfo::fontEquality_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QVariant>("value");
    QTest::newRow("id") << QStringLiteral("id") << QVariant(3);
    QTest::newRow("width") << QStringLiteral("width") << QVariant(13);
    QTest::newRow("height") << QStringLiteral("height") << QVariant(25);
    QTest::newRow("mwidth") << QStringLiteral("mwidth") << QVariant(1.5000001);
    QTest::newRow("mheight, NaN") << QStringLiteral("mheight") << QVariant(qQNaN());
    QTest::newRow("monospace") << QStringLiteral("monospace") << QVariant(false);
    QTest::newRow("customSymbols") << QStringLiteral("customSymbols") << QVariant(false);
    QTest::newRow("customWidth") << QStringLiteral("customWidth") << QVariant(12);
    QTest::newRow("customHeight") << QStringLiteral("customHeight") << QVariant(25);
}

void TestPrinterInfo::fontEquality()
{
    QFETCH(QString, key);
    QFETCH(QVariant, value);
    QVariantMap map = fullFont().toMap();
    map.insert(QStringLiteral("id"), 2);
    QCOMPARE(FontInfo(map), fullFont());
    map.insert(key, value);
    QVERIFY(FontInfo(map) != fullFont());
}

void TestPrinterInfo::customSizesOnlyWithSymbols()
{
    QVariantMap map = fullFont().toMap();
    QCOMPARE(map.size(), 8);
    QVERIFY(!map.contains(QStringLiteral("id")));
    map.insert(QStringLiteral("customSymbols"), false);
    const FontInfo font(map);
    QCOMPARE(int(font.customWidth()), 0);
    QCOMPARE(int(font.customHeight()), 0);
    QCOMPARE(font.toMap().size(), 6);
}

void TestPrinterInfo::paperKeepsRollHeight()
{
    const QVariantMap map{{QStringLiteral("width"), 72},
                          {QStringLiteral("height"), -1},
                          {QStringLiteral("pointsToLine"), 576},
                          {QStringLiteral("caption"), QStringLiteral("80 mm")}};
    const PaperInfo paper(map);
    QCOMPARE(int(paper.height()), -1);
    QCOMPARE(paper.toMap(), map);
    PaperInfo other = paper;
    other.setCaption(QStringLiteral("76 mm"));
    QVERIFY(other != paper);
}

void TestPrinterInfo::modelKeys_data()
{
    QTest::addColumn<QString>("readKey");
    QTest::addColumn<QStringList>("written");

    const QStringList odd{QStringLiteral("customSymbols"), QStringLiteral("customImages"), QStringLiteral("ejection")};
    for (const QString &key : Capabilities) {
        if (!odd.contains(key)) {
            QTest::newRow(qPrintable(key)) << key << QStringList{key};
        }
    }
    QTest::newRow("checkMoveSettings") << QStringLiteral("checkMoveSettings")
                                       << QStringList{QStringLiteral("checkMoveSettings")};
    QTest::newRow("paperLoopSupported") << QStringLiteral("paperLoopSupported")
                                        << QStringList{QStringLiteral("paperLoopSupported")};
    QTest::newRow("images are symbols too")
        << QStringLiteral("customImages")
        << QStringList{QStringLiteral("customImages"), QStringLiteral("customSymbols")};
    QTest::newRow("symbols are not read") << QStringLiteral("customSymbols") << QStringList();
    QTest::newRow("ejection is not read") << QStringLiteral("ejection") << QStringList();
    QTest::newRow("ejection_ is read") << QStringLiteral("ejection_") << QStringList{QStringLiteral("ejection")};
}

void TestPrinterInfo::modelKeys()
{
    QFETCH(QString, readKey);
    const QVariantMap map = PrinterInfo({{readKey, true}}).toMap();
    QStringList written;
    for (auto entry = map.cbegin(); entry != map.cend(); ++entry) {
        if (entry.value().type() == QVariant::Bool && entry.value().toBool()) {
            written.append(entry.key());
        }
    }
    QTEST(written, "written");
}

void TestPrinterInfo::modelEquality_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<bool>("differs");
    for (const QString &key : fullModel().keys()) {
        const bool isRead = key != QStringLiteral("customSymbols") && key != QStringLiteral("ejection");
        QTest::newRow(qPrintable(key)) << key << isRead;
    }
    QTest::newRow("papers do not count") << QStringLiteral("paperTypes") << false;
    QTest::newRow("fonts do not count") << QStringLiteral("fontTypes") << false;
}

void TestPrinterInfo::modelEquality()
{
    QFETCH(QString, key);
    QVariantMap map = fullModel();
    map.remove(key);
    if (key.endsWith(QStringLiteral("Types"))) {
        map.insert(key, paperMap(QStringLiteral("0"), 0));
    }
    QTEST(PrinterInfo(map) != PrinterInfo(fullModel()), "differs");
}

void TestPrinterInfo::paperType_data()
{
    QTest::addColumn<QVector<int>>("ids");
    QTest::addColumn<int>("asked");
    QTest::addColumn<int>("found");
    QTest::newRow("none") << QVector<int>() << 0 << -1;
    QTest::newRow("exact") << QVector<int>{0, 1, 2, 3} << 2 << 2;
    QTest::newRow("above") << QVector<int>{0, 1, 2, 3} << 99 << 3;
    QTest::newRow("below") << QVector<int>{0, 1, 2, 3} << -5 << 0;
    QTest::newRow("gap") << QVector<int>{0, 2} << 1 << -1;
    QTest::newRow("negative keys") << QVector<int>{-3, -2} << 0 << -2;
}

void TestPrinterInfo::paperType()
{
    QFETCH(QVector<int>, ids);
    QFETCH(int, asked);
    PrinterInfo model;
    for (int id : ids) {
        PaperInfo paper;
        paper.setId(static_cast<qint8>(id));
        model.addPaperType(paper);
    }
    QTEST(int(model.paperType(asked).id()), "found");
}

void TestPrinterInfo::collectionKeys_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<int>("id");
    QTest::newRow("key wins over body") << QStringLiteral("7") << 7;
    QTest::newRow("no number") << QStringLiteral("first") << 0;
    QTest::newRow("negative") << QStringLiteral("-1") << 0;
    QTest::newRow("cut to eight bits") << QStringLiteral("258") << 2;
    QTest::newRow("beyond 32 bits") << QStringLiteral("4294967296") << 0;
}

void TestPrinterInfo::collectionKeys()
{
    QFETCH(QString, key);
    QFETCH(int, id);
    PrinterInfo model;
    model.paperFromMap(paperMap(QStringLiteral("99"), 0));
    model.paperFromMap(paperMap(key, 3));
    QCOMPARE(model.paperTypes().keys(), QList<int>{id});
    QCOMPARE(int(model.paperType(id).width()), 72);
    model.fontFromMap(paperMap(key, 3));
    QCOMPARE(model.fontTypes().size(), 1);
    QCOMPARE(int(model.fontTypes().first().id()), id);
}

void TestPrinterInfo::fontsKeepKeyOrder()
{
    PrinterInfo model;
    QVariantMap fonts;
    for (int id : {2, 10, 0, 1}) {
        fonts.insert(QString::number(id), QVariantMap{{QStringLiteral("width"), id + 8}});
    }
    model.fontFromMap(fonts);
    QStringList order;
    for (const FontInfo &font : model.fontTypes()) {
        order.append(font.idAsString());
    }
    QCOMPARE(order.join(QLatin1Char(' ')), QStringLiteral("0 1 10 2"));
    FontInfo twin;
    twin.setId(10);
    twin.setWidth(99);
    model.addFontType(twin);
    QCOMPARE(model.fontToMap().size(), 4);
    QCOMPARE(model.fontToMap().value(QStringLiteral("10")).toMap().value(QStringLiteral("width")).toInt(), 99);
}

void TestPrinterInfo::roundTrip()
{
    const QList<PrinterInfo> models = PrinterInfo::fromResources();
    QCOMPARE(models.size(), 14);
    for (const PrinterInfo &model : models) {
        const PrinterInfo copy(model.toMap());
        QCOMPARE(copy, model);
        QCOMPARE(copy.paperTypes(), model.paperTypes());
        QCOMPARE(copy.fontTypes(), model.fontTypes());
    }
    const PrinterInfo full(fullModel());
    QCOMPARE(lacking(full.toMap()), QStringLiteral("ejection"));
}

void TestPrinterInfo::malformed_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<int>("count");
    QTest::addColumn<QString>("line");
    QTest::newRow("object") << QByteArrayLiteral("{}") << 0 << QString();
    QTest::newRow("no models") << QByteArrayLiteral("[]") << 0 << QString();
    QTest::newRow("elements of other types are empty models") << QByteArrayLiteral("[1, {}]") << 2 << QString();
    QTest::newRow("cut off") << QByteArrayLiteral("[") << 0 << QStringLiteral("^\".+\"$");
    QTest::newRow("nothing") << QByteArray() << 0 << QStringLiteral("^\".+\"$");
}

void TestPrinterInfo::malformed()
{
    QFETCH(QByteArray, json);
    QFETCH(QString, line);
    if (!line.isEmpty()) {
        expectCritical(line);
    }
    QTEST(PrinterInfo::fromJson(json).size(), "count");
}

void TestPrinterInfo::unreadableFile_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<qint64>("size");
    QTest::addColumn<QString>("line");
    QTest::newRow("missing") << QStringLiteral("missing") << qint64(-1)
                             << QStringLiteral("^\"No such file or directory\"$");
    QTest::newRow("a folder") << QStringLiteral(".") << qint64(-1) << QStringLiteral("^\".+\"$");
    QTest::newRow("too large") << QStringLiteral("large") << qint64(17 << 20) << QStringLiteral("larger than 16 MiB");
}

void TestPrinterInfo::unreadableFile()
{
    QFETCH(QString, name);
    QFETCH(qint64, size);
    QFETCH(QString, line);
    const QTemporaryDir folder;
    QFile file(folder.filePath(name));
    if (size >= 0) {
        QVERIFY(file.open(QIODevice::WriteOnly) && file.resize(size));
        file.close();
    }
    expectCritical(line);
    QCOMPARE(PrinterInfo::fromFile(file.fileName()).size(), 0);
}

void TestPrinterInfo::describesItself()
{
    QString text;
    QDebug(&text) << PrinterInfo::fromResources().value(0) << PaperInfo() << FontInfo();
    QVERIFY2(text.contains(QStringLiteral("\"CUSTOM_VKP_80\", \"Custom VKP-80\", 4 paper types, 4 font types")),
             qPrintable(text));
    QVERIFY2(text.contains(QStringLiteral("PaperInfo(-1, 0x0 mm")), qPrintable(text));
    QVERIFY2(text.contains(QStringLiteral("FontInfo(-1, 0x0 dots")), qPrintable(text));
}

QTEST_GUILESS_MAIN(TestPrinterInfo)

#include "tst_printerinfo.moc"
