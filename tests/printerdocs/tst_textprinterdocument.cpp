// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "testfixture.h"

#include <specialcharacters.h>
#include <textprinterdocument.h>

#include <limits>
#include <type_traits>

static_assert(std::is_nothrow_move_constructible_v<TextPrinterDocument>);
static_assert(std::is_nothrow_move_assignable_v<TextPrinterDocument>);

namespace {

MonochromeImage imageOf(char dots)
{
    MonochromeImage image;
    image.setWidth(8);
    image.setHeight(1);
    image.setImage(QByteArray(1, dots));
    return image;
}

DocumentBlock blockOf(const QStringList &lines, ETextAlignment alignment = TextAlignLeft)
{
    return DocumentBlock::createSimpleBlock(lines, alignment, 0, 0, 0, 0);
}

// A document in which no field has its default.
TextPrinterDocument fullDocument()
{
    DocumentBlock code;
    code.setQrCode("t=20261122");
    TextPrinterDocument document;
    document.setBlocks({blockOf({QStringLiteral("Итого\t1.00")}, TextAlignFullWidth), code});
    document.setCharImages({{65, imageOf('\x80')}, {127, imageOf('\1')}});
    document.setPrevTicketAction(TicketEject);
    document.setCurrentTicketAction(QFlags<EPrinterTicketAction>(QFlag(-1)));
    document.setRetractionTimeout(-30);
    document.setLoopPolicy(QFlags<EPaperLoopFlag>(QFlag(-2)));
    document.setDoInit(false);
    document.setSymbolsPerLine(42);
    return document;
}

} // namespace

class TextPrinterDocumentTest : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void map();
    void mapOfCharImages_data();
    void mapOfCharImages();
    void strangeMap();
    void equality();
    void symbolsCount_data();
    void symbolsCount();
    void blocksInOrder();
    void html_data();
    void html();
    void logsNoText();
};

void TextPrinterDocumentTest::map()
{
    const TextPrinterDocument document = fullDocument();
    const QVariantMap map = document.toMap();
    QCOMPARE(map.keys().join(QLatin1Char(' ')), QStringLiteral("blocks cis cta init loop pta rtout spl"));
    QCOMPARE(map.value(QStringLiteral("loop")), QVariant(4294967294U));
    TextPrinterDocument again;
    again.setMap(map);
    QCOMPARE(again, document);
    QCOMPARE(TextPrinterDocument(map), document);

    again.setMap(QVariantMap());
    TextPrinterDocument reset;
    reset.setDoInit(false); // Contract: though the default is true
    QCOMPARE(again, reset);
}

void TextPrinterDocumentTest::mapOfCharImages_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("key");
    QTest::addColumn<int>("codeAfterwards");

    QTest::newRow("positive") << 65 << QStringLiteral("ci_65") << 65;
    QTest::newRow("Contract: negative codes come back as 0") << -3 << QStringLiteral("ci_-3") << 0;
    QTest::newRow("lowest") << -128 << QStringLiteral("ci_-128") << 0;
}

void TextPrinterDocumentTest::mapOfCharImages()
{
    QFETCH(int, code);
    QFETCH(int, codeAfterwards);
    QMultiMap<signed char, MonochromeImage> images;
    images.insert(static_cast<signed char>(code), imageOf('\1'));
    images.insert(static_cast<signed char>(code), imageOf('\2'));
    TextPrinterDocument document;
    document.setCharImages(images);
    QTEST(document.toMap().value(QStringLiteral("cis")).toMap().keys().join(QLatin1Char(' ')), "key");

    document.setMap(document.toMap());
    // Contract: one image of a code survives, the one visited last.
    QCOMPARE(document.charImages().size(), 1);
    QCOMPARE(document.charImages().value(static_cast<signed char>(codeAfterwards)), imageOf('\1'));
}

void TextPrinterDocumentTest::strangeMap()
{
    const QVariantMap images{{QString(), 1},
                             {QStringLiteral("c"), 1},
                             {QStringLiteral("ci_200"), 1},
                             {QStringLiteral("ci_99999999999"), 1},
                             {QStringLiteral("ci_x"), QVariantMap()}};
    TextPrinterDocument document = fullDocument();
    document.setMap({{QStringLiteral("blocks"), QVariantList{7, QVariantMap(), QStringLiteral("text")}},
                     {QStringLiteral("cis"), images},
                     {QStringLiteral("pta"), QStringLiteral("none")},
                     {QStringLiteral("spl"), 1e300}});
    QCOMPARE(document.blocks(), QList<DocumentBlock>({DocumentBlock(), DocumentBlock(), DocumentBlock()}));
    QCOMPARE(document.charImages().keys(), QList<signed char>({-56, 0, 0, 0, 0}));
    QCOMPARE(int(document.prevTicketAction()), 0);
}

void TextPrinterDocumentTest::equality()
{
    const TextPrinterDocument document = fullDocument();
    const auto differs = [&document](auto change) {
        TextPrinterDocument other = document;
        change(other);
        return other != document && !(other == document);
    };
    QCOMPARE(document, fullDocument());
    QVERIFY(differs([](auto &other) { other.appendBlock(DocumentBlock()); }));
    QVERIFY(differs([](auto &other) { other.setCharImages({{65, imageOf('\x80')}}); }));
    QVERIFY(differs([](auto &other) { other.setPrevTicketAction(TicketCut); }));
    QVERIFY(differs([](auto &other) { other.setCurrentTicketAction(TicketCut); }));
    QVERIFY(differs([](auto &other) { other.setRetractionTimeout(30); }));
    QVERIFY(differs([](auto &other) { other.setLoopPolicy(PaperLoopOn); }));
    QVERIFY(differs([](auto &other) { other.setDoInit(true); }));
    QVERIFY(differs([](auto &other) { other.setSymbolsPerLine(0); }));
}

void TextPrinterDocumentTest::symbolsCount_data()
{
    QTest::addColumn<int>("characters");
    QTest::addColumn<int>("count");

    QTest::newRow("none") << 0 << 0;
    QTest::newRow("4") << 4 << 4;
    QTest::newRow("5, where a double is a hair short") << 5 << 6;
    QTest::newRow("10") << 10 << 12;
    QTest::newRow("a million") << 1000000 << 1200000;
}

void TextPrinterDocumentTest::symbolsCount()
{
    QFETCH(int, characters);
    TextPrinterDocument document;
    document.appendBlock(blockOf({QString(characters / 2, QLatin1Char('x'))}));
    document.appendBlock(blockOf({QString(), QString(characters - characters / 2, QLatin1Char('x'))}));
    document.appendBlock(fullDocument().blocks().last());
    QTEST(document.symbolsCount(), "count");
}

void TextPrinterDocumentTest::blocksInOrder()
{
    TextPrinterDocument document = fullDocument();
    document.prependBlock(blockOf({QStringLiteral("first")}));
    document.appendBlock(blockOf({QStringLiteral("last")}, TextAlignRight));
    document.setSymbolsPerLine(20); // Contract: not the width of the lines
    const QStringList lines{QStringLiteral("first"),
                            QStringLiteral("Итого") + QString(71, QLatin1Char(' ')) + QStringLiteral("1.00"),
                            QString(76, QLatin1Char(' ')) + QStringLiteral("last")};
    QCOMPARE(document.toStringList(), lines);
    document.toUpper();
    QCOMPARE(document.blocks().last().text(), QStringList(QStringLiteral("LAST")));
    document.toLower();
    QCOMPARE(document.toStringList().first(), QStringLiteral("first"));
}

void TextPrinterDocumentTest::html_data()
{
    QTest::addColumn<bool>("table");
    QTest::addColumn<QString>("expected");

    const QString head = QStringLiteral("<html><head>\n<meta http-equiv=\"Content-Type\" content=\"text/html; "
                                        "charset=UTF-8\">\n</head><body>\n");
    QTest::newRow("table") << true
                           << head
            + QStringLiteral("<p><table width=\"100%\"cellspacing=0 cellpadding=0>\n"
                             "<tr><td colspan=\"2\" align = \"left\"> <font size = 1>a</font> </td></tr>\n<br>\n\n"
                             "</table></p>\n</body></html>");
    QTest::newRow("preformatted") << false
                                  << head
            + QStringLiteral("<pre>\n<div align=\"left\"><font size = 1>a</font></div>\n</pre>\n<pre>\n<br>\n</pre>\n\n"
                             "</body></html>");
}

void TextPrinterDocumentTest::html()
{
    QFETCH(bool, table);
    TextPrinterDocument document;
    document.setBlocks({blockOf({QStringLiteral("a"), QString()}), fullDocument().blocks().last()});
    QTEST(document.toHtml(table, SpecialCharacters()), "expected");
}

// What a log says of a receipt is how much there is of it; what stands on it is the customer's.
void TextPrinterDocumentTest::logsNoText()
{
    const TextPrinterDocument document = fullDocument();
    QString log;
    QDebug(&log) << document << 255 << document.blocks().first() << 255 << imageOf('A') << 255 << SpecialCharacters();
    QCOMPARE(log.count(QStringLiteral(") 255 ")), 3); // the stream sets blanks again
    QVERIFY(log.startsWith(QStringLiteral("TextPrinterDocument(2 blocks, 2 images")));
    for (const QString &secret : {QStringLiteral("Итого"), QStringLiteral("1.00"), QStringLiteral("t=2026")}) {
        QVERIFY2(!log.contains(secret), qPrintable(log));
    }
    const QVector<int> numbers{document.retractionTimeout(), int(document.loopPolicy()), document.doInit()};
    QCOMPARE(numbers, (QVector<int>{-30, -2, 0}));
}

QTEST_GUILESS_MAIN(TextPrinterDocumentTest)
#include "tst_textprinterdocument.moc"
