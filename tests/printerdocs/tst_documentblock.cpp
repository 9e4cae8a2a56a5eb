// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "testfixture.h"

#include <documentblock.h>

#include <limits>
#include <type_traits>

static_assert(std::is_nothrow_move_constructible_v<DocumentBlock>);
static_assert(std::is_nothrow_move_assignable_v<DocumentBlock>);

namespace {

constexpr int Largest = std::numeric_limits<int>::max();
constexpr int Smallest = std::numeric_limits<int>::min();
constexpr int WidestLine = 4096;
constexpr int LargestTabPadding = 65536;

QString blanks(int count)
{
    return QString(count, QLatin1Char(' '));
}

DocumentBlock textBlock(const QStringList &lines, ETextAlignment alignment = TextAlignLeft)
{
    return DocumentBlock::createSimpleBlock(lines, alignment, 1, 2, 3, 0);
}

MonochromeImage picture()
{
    MonochromeImage image;
    image.setWidth(8);
    image.setHeight(1);
    image.setImage("\x80");
    return image;
}

DocumentBlock imageBlock()
{
    DocumentBlock block;
    block.setImg(picture());
    return block;
}

DocumentBlock barcodeBlock(int type)
{
    DocumentBlock block;
    block.setBarCode("4006381333931", static_cast<DocumentBlock::EBarcodeType>(type));
    return block;
}

DocumentBlock qrCodeBlock()
{
    DocumentBlock block;
    block.setQrCode("https://example.org/?a=1");
    return block;
}

// A text block one of whose lists does not fit.
DocumentBlock brokenBlock()
{
    DocumentBlock block = textBlock({QStringLiteral("a"), QStringLiteral("b")});
    block.setFont(QList<QByteArray>());
    return block;
}

} // namespace

Q_DECLARE_METATYPE(QList<QByteArray>)
Q_DECLARE_METATYPE(QList<int>)

class DocumentBlockTest : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void kinds_data();
    void kinds();
    void layOut_data();
    void layOut();
    void layOutOfNoText();
    void spacesBefore_data();
    void spacesBefore();
    void simpleBlock();
    void emptyBlock();
    void append_data();
    void append();
    void appendToItself();
    void codes();
    void attributesOfLines();
    void letterCase();
    void mapRoundTrip_data();
    void mapRoundTrip();
    void strangeMap_data();
    void strangeMap();
    void equality();
};

void DocumentBlockTest::kinds_data()
{
    QTest::addColumn<DocumentBlock>("block");
    QTest::addColumn<QString>("kinds"); // text, image, barcode, QR code, valid
    QTest::addColumn<int>("symbols");

    DocumentBlock emptyPicture;
    emptyPicture.setImg(MonochromeImage());
    DocumentBlock noSymbology = barcodeBlock(DocumentBlock::NoBarcode);
    DocumentBlock unknown = textBlock({QStringLiteral("abc")});
    unknown.setType(static_cast<DocumentBlock::EBlockType>(77));
    QTest::newRow("default") << DocumentBlock() << QString() << 0;
    QTest::newRow("text") << textBlock({QStringLiteral("abc"), QString()}) << QStringLiteral("tv") << 3;
    QTest::newRow("text with lists that do not fit") << brokenBlock() << QString() << 2;
    QTest::newRow("image") << imageBlock() << QStringLiteral("iv") << 0;
    QTest::newRow("image without dots") << emptyPicture << QString() << 0;
    QTest::newRow("Contract: a barcode is not valid") << barcodeBlock(5) << QStringLiteral("b") << 0;
    QTest::newRow("barcode without symbology") << noSymbology << QString() << 0;
    QTest::newRow("Contract: a QR code is not valid") << qrCodeBlock() << QStringLiteral("q") << 0;
    QTest::newRow("unknown type") << unknown << QString() << 0;
}

void DocumentBlockTest::kinds()
{
    QFETCH(DocumentBlock, block);
    QString kinds;
    kinds += block.isText() ? QStringLiteral("t") : QString();
    kinds += block.isImage() ? QStringLiteral("i") : QString();
    kinds += block.isBarcode() ? QStringLiteral("b") : QString();
    kinds += block.isQrCode() ? QStringLiteral("q") : QString();
    kinds += block.isValid() ? QStringLiteral("v") : QString();
    QTEST(kinds, "kinds");
    QTEST(block.symbolsCount(), "symbols");
}

void DocumentBlockTest::layOut_data()
{
    QTest::addColumn<int>("alignment");
    QTest::addColumn<int>("width");
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("expected");

    const auto row = [](const char *name, int alignment, int width, const QString &line, const QString &expected) {
        QTest::newRow(name) << alignment << width << line << expected;
    };
    const QString word = QStringLiteral("abc");
    const QString tabbed = QStringLiteral("a\tb");
    row("right", TextAlignRight, 10, word, blanks(7) + word);
    row("right keeps its TAB", TextAlignRight, 5, tabbed, blanks(2) + tabbed);
    row("centre", TextAlignCenter, 10, word, blanks(3) + word);
    row("left keeps its TAB", TextAlignLeft, 10, tabbed, tabbed);
    row("full width", TextAlignFullWidth, 10, tabbed, QStringLiteral("a        b"));
    row("full width without TAB", TextAlignFullWidth, 10, word, word);
    row("full width, each TAB grows", TextAlignFullWidth, 5, QStringLiteral("\ta\t"), QStringLiteral("   a   "));
    row("full width, one short", TextAlignFullWidth, 4, tabbed, QStringLiteral("a  b"));
    row("exact width", TextAlignLeft, 3, tabbed, QStringLiteral("a b"));
    row("longer than the width", TextAlignCenter, 2, tabbed, QStringLiteral("a b"));
    row("empty line, right", TextAlignRight, 4, QString(), blanks(4));
    row("empty line, left", TextAlignLeft, 4, QString(), QString());
    row("unknown alignment is left", 42, 10, tabbed, tabbed);
    row("width 0", TextAlignRight, 0, tabbed, QStringLiteral("a b"));
    row("negative width", TextAlignRight, Smallest, word, word);
    row("largest width", TextAlignRight, Largest, word, blanks(WidestLine - 3) + word);
    row("line longer than the widest", TextAlignFullWidth, Largest, QString(WidestLine, QLatin1Char('\t')),
        blanks(WidestLine));
    row("as many TABs as hurt most", TextAlignFullWidth, Largest, QString(WidestLine / 2, QLatin1Char('\t')),
        blanks(WidestLine / 2 + LargestTabPadding));
}

void DocumentBlockTest::layOut()
{
    QFETCH(int, alignment);
    QFETCH(int, width);
    QFETCH(QString, line);
    DocumentBlock block = textBlock({line, line}, static_cast<ETextAlignment>(alignment));
    const DocumentBlock before = block;
    QFETCH(QString, expected);
    QCOMPARE(block.toStringList(width), QStringList({expected, expected}));
    QCOMPARE(block, before);
}

void DocumentBlockTest::layOutOfNoText()
{
    for (DocumentBlock block : {DocumentBlock(), brokenBlock(), imageBlock(), barcodeBlock(1), qrCodeBlock()}) {
        QCOMPARE(block.toStringList(10), QStringList());
    }
}

void DocumentBlockTest::spacesBefore_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("added");

    QTest::newRow("none") << 0 << 0;
    QTest::newRow("one") << 1 << 1;
    QTest::newRow("most") << 16 << 16;
    QTest::newRow("too many") << 17 << 0;
    QTest::newRow("negative") << Smallest << 0;
}

void DocumentBlockTest::spacesBefore()
{
    QFETCH(int, count);
    QFETCH(int, added);
    DocumentBlock block = textBlock({QStringLiteral("a"), QStringLiteral("bc")});
    block.setFormat(QList<QByteArray>{"x"}); // the second line has no format bytes
    block.setSpacesBefore(count);
    const QByteArray zeros(added, '\0');
    QCOMPARE(block.text(), QStringList({blanks(added) + QStringLiteral("a"), blanks(added) + QStringLiteral("bc")}));
    QCOMPARE(block.font(), QList<QByteArray>({zeros + "\1", zeros + "\1\1"}));
    QCOMPARE(block.format(), QList<QByteArray>({zeros + "x"}));
}

void DocumentBlockTest::simpleBlock()
{
    const QStringList lines{QStringLiteral("ab"), QString()};
    const DocumentBlock block = DocumentBlock::createSimpleBlock(lines, TextAlignCenter, 3, 0x21, 7, 2);
    QCOMPARE(block.type(), DocumentBlock::TextBlock);
    QCOMPARE(block.text(), QStringList({QStringLiteral("  ab"), QStringLiteral("  ")}));
    QCOMPARE(block.font(), QList<QByteArray>({QByteArray("\0\0\3\3", 4), QByteArray("\0\0", 2)}));
    QCOMPARE(block.format(), QList<QByteArray>({QByteArray("\0\0\x21\x21", 4), QByteArray("\0\0", 2)}));
    QCOMPARE(block.lineSpacing(), QList<int>({7, 7}));
    QCOMPARE(block.alignment(), TextAlignCenter);
}

void DocumentBlockTest::emptyBlock()
{
    const DocumentBlock block = DocumentBlock::emptyBlock(2, TextAlignRight, 5);
    QVERIFY(block.isText());
    QCOMPARE(block, DocumentBlock::createSimpleBlock({QString(), QString()}, TextAlignRight, 0, 0, 5, 0));
    for (const int count : {0, -1, Smallest, Largest}) {
        QCOMPARE(DocumentBlock::emptyBlock(count, TextAlignRight, 5), DocumentBlock());
    }
}

void DocumentBlockTest::append_data()
{
    QTest::addColumn<DocumentBlock>("first");
    QTest::addColumn<DocumentBlock>("second");
    QTest::addColumn<bool>("isAppended");

    const DocumentBlock left = textBlock({QStringLiteral("a")});
    const DocumentBlock right = textBlock({QStringLiteral("b")}, TextAlignRight);
    QTest::newRow("same alignment") << left << textBlock({QStringLiteral("b"), QString()}) << true;
    QTest::newRow("other alignment") << right << left << false;
    QTest::newRow("nothing to append") << left << DocumentBlock() << false;
    QTest::newRow("to an empty block") << DocumentBlock() << left << false;
    QTest::newRow("lists that do not fit") << left << brokenBlock() << false;
    QTest::newRow("image") << left << imageBlock() << false;
}

void DocumentBlockTest::append()
{
    QFETCH(DocumentBlock, first);
    QFETCH(DocumentBlock, second);
    QFETCH(bool, isAppended);
    const DocumentBlock before = first;
    QCOMPARE(first.append(second), isAppended);
    QCOMPARE(first.text(), before.text() + (isAppended ? second.text() : QStringList()));
    QCOMPARE(first.font(), before.font() + (isAppended ? second.font() : QList<QByteArray>()));
    QCOMPARE(first.format(), before.format() + (isAppended ? second.format() : QList<QByteArray>()));
    QCOMPARE(first.lineSpacing(), before.lineSpacing() + (isAppended ? second.lineSpacing() : QList<int>()));
}

void DocumentBlockTest::appendToItself()
{
    DocumentBlock block = textBlock({QStringLiteral("a"), QStringLiteral("bc")});
    const DocumentBlock copy = block;
    QVERIFY(block.append(block));
    QCOMPARE(block.text(), copy.text() + copy.text());
    QCOMPARE(block.font(), copy.font() + copy.font());
    QVERIFY(block.isText());
    QCOMPARE(copy.text().size(), 2);
}

void DocumentBlockTest::codes()
{
    const QByteArray data("\0\xff code", 7);
    DocumentBlock block = textBlock({QStringLiteral("old"), QStringLiteral("text")});
    QCOMPARE(DocumentBlock().barcode(), QByteArray());
    block.setBarCode(data, static_cast<DocumentBlock::EBarcodeType>(9));
    QCOMPARE(block.text(), QStringList(QStringLiteral("AP8gY29kZQ==")));
    QCOMPARE(block.barcode(), data);
    block.setBarCode("new");
    QCOMPARE(int(block.barCodeType()), 9);
    QCOMPARE(block.qrCode(), QByteArray("new")); // neither looks at the type
    block.setQrCode(data);
    QVERIFY(block.isQrCode());
    block.setBarCodeType(DocumentBlock::NoBarcode);
    QCOMPARE(block.type(), DocumentBlock::QrCodeBlock);
    block.setBarCodeType(static_cast<DocumentBlock::EBarcodeType>(1));
    QVERIFY(block.isBarcode());
}

void DocumentBlockTest::attributesOfLines()
{
    DocumentBlock block;
    block.setText({QStringLiteral("ab"), QString(), QStringLiteral("c")});
    block.setFont(uchar(0xff));
    block.setFormat(uchar(0x80));
    block.setLineSpacing(-4);
    QCOMPARE(block.font(), QList<QByteArray>({"\xff\xff", "", "\xff"}));
    QCOMPARE(block.format(), QList<QByteArray>({"\x80\x80", "", "\x80"}));
    QCOMPARE(block.lineSpacing(), QList<int>({-4, -4, -4}));
    QCOMPARE(block.prepareFont(0x10, 1), 2);
    QCOMPARE(block.prepareFont(0x30, 1), 4);
    QCOMPARE(block.prepareFont('\xff', '\xff'), 512);
}

void DocumentBlockTest::letterCase()
{
    DocumentBlock block = textBlock({QStringLiteral("aZ Яя"), QStringLiteral("Straße")});
    block.toUpper();
    QCOMPARE(block.text(), QStringList({QStringLiteral("AZ ЯЯ"), QStringLiteral("STRASSE")}));
    QCOMPARE(block.font().last().size(), 6); // the line is longer than its bytes now
    block.toLower();
    QCOMPARE(block.text(), QStringList({QStringLiteral("az яя"), QStringLiteral("strasse")}));

    DocumentBlock code = qrCodeBlock();
    const QString base64 = code.text().first();
    code.toUpper();
    QCOMPARE(code.text().first(), base64.toUpper()); // Contract: Base64 is no exception
}

void DocumentBlockTest::mapRoundTrip_data()
{
    QTest::addColumn<DocumentBlock>("block");
    QTest::addColumn<QString>("keys");

    QTest::newRow("text") << textBlock({QStringLiteral("a\tЯ"), QString()}, TextAlignFullWidth)
                          << QStringLiteral("align fmt fnt ls txt type");
    QTest::newRow("image") << imageBlock() << QStringLiteral("img type");
    QTest::newRow("barcode") << barcodeBlock(73) << QStringLiteral("bar bt type");
    QTest::newRow("QR code") << qrCodeBlock() << QStringLiteral("qr type");
    QTest::newRow("nothing") << DocumentBlock() << QStringLiteral("type");
}

void DocumentBlockTest::mapRoundTrip()
{
    QFETCH(DocumentBlock, block);
    QFETCH(QString, keys);
    QCOMPARE(block.toMap().keys().join(QLatin1Char(' ')), keys);
    QCOMPARE(DocumentBlock(block.toMap()), block);
}

void DocumentBlockTest::strangeMap_data()
{
    QTest::addColumn<QVariantMap>("map");
    QTest::addColumn<QStringList>("text");
    QTest::addColumn<QList<QByteArray>>("font");
    QTest::addColumn<QList<int>>("lineSpacing");

    const QString type = QStringLiteral("type");
    const QString text = QStringLiteral("txt");
    const QString font = QStringLiteral("fnt");
    const QString spacing = QStringLiteral("ls");
    const QStringList lines{QStringLiteral("a"), QStringLiteral("b")};
    QTest::newRow("empty map") << QVariantMap() << QStringList() << QList<QByteArray>() << QList<int>();
    QTest::newRow("lists of many lengths")
        << QVariantMap{{text, lines}, {font, QStringList(QStringLiteral("AQID"))}, {spacing, QVariantList{1, 2, 3}}}
        << lines << QList<QByteArray>{"\1\2\3"} << QList<int>{1, 2, 3};
    QTest::newRow("things that are no lists") << QVariantMap{{text, QVariantMap()}, {font, 7}, {spacing, 7}}
                                              << QStringList() << QList<QByteArray>() << QList<int>();
    QTest::newRow("text of a type that has none")
        << QVariantMap{{type, -5}, {text, lines}} << QStringList() << QList<QByteArray>{"\1"} << QList<int>{3};
    QTest::newRow("barcode without its key")
        << QVariantMap{{type, 2}} << QStringList(QString()) << QList<QByteArray>{"\1"} << QList<int>{3};
}

void DocumentBlockTest::strangeMap()
{
    QFETCH(QVariantMap, map);
    DocumentBlock block = textBlock({QStringLiteral("x")});
    block.setImg(picture());
    block.setMap(map);
    QTEST(block.text(), "text");
    QTEST(block.font(), "font");
    QTEST(block.lineSpacing(), "lineSpacing");
    QCOMPARE(block.img(), MonochromeImage());
}

void DocumentBlockTest::equality()
{
    const DocumentBlock block = textBlock({QStringLiteral("a")});
    const auto differs = [&block](auto change) {
        DocumentBlock other = block;
        change(other);
        other.setType(DocumentBlock::TextBlock); // some setters change the type as well
        return other != block && !(other == block);
    };
    QCOMPARE(block, textBlock({QStringLiteral("a")}));
    DocumentBlock untyped = block;
    untyped.setType(DocumentBlock::QrCodeBlock);
    QVERIFY(block != untyped);
    QVERIFY(differs([](auto &other) { other.setBarCodeType(static_cast<DocumentBlock::EBarcodeType>(1)); }));
    QVERIFY(differs([](auto &other) { other.setText({QStringLiteral("b")}); }));
    QVERIFY(differs([](auto &other) { other.setFont(uchar(9)); }));
    QVERIFY(differs([](auto &other) { other.setFormat(uchar(9)); }));
    QVERIFY(differs([](auto &other) { other.setAlignment(TextAlignRight); }));
    QVERIFY(differs([](auto &other) { other.setLineSpacing(9); }));
    QVERIFY(differs([](auto &other) { other.setImg(picture()); }));
}

QTEST_GUILESS_MAIN(DocumentBlockTest)
#include "tst_documentblock.moc"
