// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "dotart.h"
#include "testfixture.h"

#include <paperrenderer.h>

#include <QTemporaryFile>

#include <climits>

namespace {

constexpr int PaperWidth = 20;

// The symbol of code 1 in a cell of 4 x 3 dots, so that the expected dots come from no font.
const QStringList Symbol = {QStringLiteral("#..."), QStringLiteral("#..."), QStringLiteral("##..")};

struct LineCase
{
    const char *name;
    const char *text;
    QByteArray format;
    ETextAlignment alignment;
    int spacing;
    /** Rows from the top, parted by "/"; missing dots at the right are white. */
    const char *expected;
};

QVector<LineCase> lineCases()
{
    const QByteArray none;
    return {
        {"left", "\1", none, TextAlignLeft, 0, "#/#/##"},
        {"right", "\1", none, TextAlignRight, 0, "................#/................#/................##"},
        {"centre", "\1", none, TextAlignCenter, 0, "........#/........#/........##"},
        {"alignment without a name", "\1", none, static_cast<ETextAlignment>(9), 0, "#/#/##"},
        {"bold", "\1", "\x01", TextAlignLeft, 0, "##/##/###"},
        {"underline", "\1", "\x08", TextAlignLeft, 0, "#/#/####"},
        {"inverse", "\1", "\x04", TextAlignLeft, 0, ".###/.###/..##"},
        {"underline under inverse", "\1", "\x0C", TextAlignLeft, 0, ".###/.###/...."},
        {"double width", "\1", "\x10", TextAlignLeft, 0, "##/##/####"},
        {"double height", "\1", "\x20", TextAlignLeft, 0, "#/#/#/#/##/##"},
        {"both", "\1", "\x30", TextAlignLeft, 0, "##/##/##/##/####/####"},
        {"small beside large stands at the bottom", "\1\1", QByteArray("\x20\0", 2), TextAlignLeft, 0,
         "#/#/#/#...#/##..#/##..##"},
        {"control character by its number", "\1\1", QByteArray("\x40\0", 2), TextAlignLeft, 0, "....#/....#/....##"},
        {"missing format bytes", "\1\1", "\x01", TextAlignLeft, 0, "##..#/##..#/###.##"},
        {"full width", "\1\t\1", none, TextAlignFullWidth, 0, "#...............#/#...............#/##..............##"},
        {"underline over a wide TAB", "\1\t\1", QByteArray("\0\x08\0", 3), TextAlignFullWidth, 0,
         "#...............#/#...............#/##..##############"},
        {"the first of two TABs is wide", "\1\t\t", QByteArray("\0\0\x08", 3), TextAlignFullWidth, 0,
         "#/#/##..............####"},
        {"full width without room", "\1\1\t\1\1", none, TextAlignFullWidth, 0,
         "#...#.......#...#/#...#.......#...#/##..##......##..##"},
        {"full width without a TAB", "\1", none, TextAlignFullWidth, 0, "#/#/##"},
        {"TAB of another line is a blank", "\t\1", none, TextAlignLeft, 0, "....#/....#/....##"},
        {"cut at the edge, from the left", "\1\1\1\1\1\1", none, TextAlignRight, 0,
         "#...#...#...#...#/#...#...#...#...#/##..##..##..##..##"},
        {"character over the edge is cut", "\1\1\1\1\1\1", QByteArray("\x10\x10\0\x10", 4), TextAlignLeft, 0,
         "##......##......#.../##......##......#.../####....####....##.."},
        {"line spacing", "\1", none, TextAlignLeft, 1, "#/#/##////"},
        {"negative line spacing", "\1", none, TextAlignLeft, INT_MIN, "#/#/##"},
        {"empty line", "", none, TextAlignRight, 0, "//"},
    };
}

QStringList expectedArt(const QString &rows)
{
    QStringList art;
    for (const QString &row : rows.split(QLatin1Char('/'))) {
        art.append(row.leftJustified(PaperWidth, QLatin1Char('.')));
    }
    return art;
}

TextPrinterDocument documentOf(const QString &text, const QByteArray &format = {},
                               ETextAlignment alignment = TextAlignLeft, int spacing = 0)
{
    DocumentBlock block = DocumentBlock::createSimpleBlock({text}, alignment, 0, 0, spacing, 0);
    block.setFormat(QList<QByteArray>{format});
    TextPrinterDocument document;
    document.appendBlock(block);
    return document;
}

TextPrinterDocument documentOf(const DocumentBlock &block)
{
    TextPrinterDocument document;
    document.appendBlock(block);
    return document;
}

DocumentBlock imageBlock(int width, int height, int bytes)
{
    MonochromeImage image;
    image.setWidth(width);
    image.setHeight(height);
    image.setImage(QByteArray(bytes, '\xFF'));
    DocumentBlock block;
    block.setImg(image);
    return block;
}

} // namespace

Q_DECLARE_METATYPE(LineCase)

/** Documents dot by dot. */
class TestPaperRenderer : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void line_data();
    void line();
    void leavesOutWhatTheModelLacks();
    void italicLeansAroundTheMiddle();
    void fontsHaveTheirCells();
    void character_data();
    void character();
    void choosesTheLargestSymbolThatFits();
    void takesAnotherPaper();
    void imagesAreCutAtTheEdge();
    void endsWithEmptyLines();
    void carriesTheResolution();
    void hostile_data();
    void hostile();
    void paper_data();
    void paper();
};

void TestPaperRenderer::line_data()
{
    QTest::addColumn<LineCase>("line");
    for (const LineCase &line : lineCases()) {
        QTest::newRow(line.name) << line;
    }
}

void TestPaperRenderer::line()
{
    QFETCH(LineCase, line);
    TextPrinterDocument document
        = documentOf(QString::fromLatin1(line.text), line.format, line.alignment, line.spacing);
    document.setCharImages({{1, imageOf(Symbol)}});
    const QImage picture = PaperRenderer(smallModel(PaperWidth, 4, 3)).render(document);
    QCOMPARE(dotArt(picture), expectedArt(QString::fromLatin1(line.expected)));
}

void TestPaperRenderer::leavesOutWhatTheModelLacks()
{
    PrinterInfo model = smallModel(PaperWidth, 4, 3);
    model.setBold(false);
    model.setItalic(false);
    model.setUnderline(false);
    model.setInversion(false);
    model.setDoubleWidth(false);
    model.setDoubleHeight(false);
    model.setLineSpacing(false);
    TextPrinterDocument document = documentOf(QStringLiteral("\1"), "\x3F", TextAlignLeft, 7);
    document.setCharImages({{1, imageOf(Symbol)}});
    QCOMPARE(dotArt(PaperRenderer(model).render(document)), expectedArt(QStringLiteral("#/#/##")));
}

void TestPaperRenderer::italicLeansAroundTheMiddle()
{
    TextPrinterDocument document = documentOf(QStringLiteral("\1"), "\x02");
    document.setCharImages({{1, imageOf(QStringList(QVector<QString>(12, QStringLiteral(".#..")).toList()))}});
    const QStringList art = dotArt(PaperRenderer(smallModel(PaperWidth, 4, 12)).render(document));
    QCOMPARE(art.size(), 12);
    QCOMPARE(art.first().left(4), QStringLiteral("..#."));
    QCOMPARE(art.at(6).left(4), QStringLiteral(".#.."));
    QCOMPARE(art.last().left(4), QStringLiteral("#..."));
}

void TestPaperRenderer::fontsHaveTheirCells()
{
    const QList<PrinterInfo> models = PrinterInfo::fromResources();
    for (const PrinterInfo &model : models) {
        for (const FontInfo &font : model.fontTypes()) {
            const DocumentBlock block = DocumentBlock::createSimpleBlock({QStringLiteral("T")}, TextAlignRight,
                                                                         static_cast<uchar>(font.id()), 0x04, 0, 0);
            const QImage picture = PaperRenderer(model).render(documentOf(block));
            QCOMPARE(picture.height(), int(font.height()));
            QCOMPARE(picture.width(), PrinterInfo(model).paperType(0).pointsToLine());
            // Inverse, the cell shows as far as it reaches.
            const QString bottom = dotArt(picture).last();
            QCOMPARE(bottom.count(QLatin1Char('#')), model.inversion() ? int(font.width()) : 0);
        }
    }
}

void TestPaperRenderer::character_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("format");
    QTest::addColumn<QString>("codec");
    QTest::addColumn<QString>("shown");

    const QByteArray none;
    const QByteArray byNumber("\x40");
    addRow("codec has it", "Ж№", none, "cp866", "Ж№");
    addRow("codec lacks it", "«₽і", none, "cp866", "???");
    addRow("another code page has it", "«і", none, "windows-1251", "«і");
    addRow("no codec", "«₽і", none, "", "«₽і");
    addRow("font lacks it", "漢", none, "", "?");
    addRow("beyond 16 bits", QString::fromUtf8("\xF0\x9F\x98\x80x"), none, "", "?x");
    addRow("half a pair", QString(QChar(0xD83D)), none, "", "?");
    addRow("byte of the code page", QString(QChar(0x80)), byNumber, "cp866", "А");
    addRow("byte without a codec", QString(QChar(0xC4)), byNumber, "", "Ä");
    addRow("control character", QStringLiteral("a\x1b\x08"), none, "cp866", "a  ");
    addRow("symbol without an image", QStringLiteral("\2"), none, "", "?");
}

void TestPaperRenderer::character()
{
    QFETCH(QString, text);
    QFETCH(QByteArray, format);
    QFETCH(QString, codec);
    QFETCH(QString, shown);
    PaperRenderer renderer(smallModel(100, 12, 24));
    const QStringList expected = dotArt(renderer.render(documentOf(shown)));
    QVERIFY(renderer.setCodec(codec));
    QCOMPARE(dotArt(renderer.render(documentOf(text, format))), expected);
}

void TestPaperRenderer::choosesTheLargestSymbolThatFits()
{
    const MonochromeImage fitting = imageOf(Symbol);
    const MonochromeImage smaller = imageOf({QStringLiteral("#")});
    const MonochromeImage larger = imageOf({QStringLiteral("#####")});
    TextPrinterDocument document = documentOf(QStringLiteral("\1"));
    document.setCharImages({{1, smaller}, {1, fitting}, {1, larger}});
    const PaperRenderer renderer(smallModel(PaperWidth, 4, 3));
    QCOMPARE(dotArt(renderer.render(document)), expectedArt(QStringLiteral("#/#/##")));

    document.setCharImages({{1, smaller}});
    QCOMPARE(dotArt(renderer.render(document)), expectedArt(QStringLiteral("/.#/")));

    SpecialCharacters symbols; // for the codes that the document has no image of
    QTemporaryFile file;
    QVERIFY(file.open());
    file.write("<SpecialSymbolImages><Font Height=\"3\" Width=\"4\"><Symbol Code=\"1\"><Line>1000</Line>"
               "<Line>1000</Line><Line>1100</Line></Symbol></Font></SpecialSymbolImages>");
    file.close();
    QVERIFY(symbols.load(file.fileName()));
    QCOMPARE(dotArt(renderer.render(document, symbols)), expectedArt(QStringLiteral("/.#/")));
    document.setCharImages({});
    QCOMPARE(dotArt(renderer.render(document, symbols)), expectedArt(QStringLiteral("#/#/##")));
}

void TestPaperRenderer::takesAnotherPaper()
{
    PrinterInfo model = smallModel(PaperWidth, 4, 3);
    PaperInfo narrow = model.paperType(0);
    narrow.setPointsToLine(9);
    narrow.setId(7);
    model.addPaperType(narrow);
    PaperRenderer renderer;
    renderer.setModel(model);
    QCOMPARE(renderer.render({}).width(), PaperWidth);
    renderer.setPaperId(7);
    QCOMPARE(renderer.render({}).width(), 9);
    QVERIFY(renderer.setCodec(QStringLiteral("cp866")));
    QVERIFY(!renderer.setCodec(QStringLiteral("no such codec")));
    QCOMPARE(renderer.codec(), QStringLiteral("cp866"));
}

void TestPaperRenderer::imagesAreCutAtTheEdge()
{
    DocumentBlock block = imageBlock(24, 1, 3);
    TextPrinterDocument document = documentOf(block);
    block = imageBlock(3, 2, 1);
    block.setAlignment(TextAlignRight);
    document.appendBlock(block);
    QCOMPARE(dotArt(PaperRenderer(smallModel(PaperWidth, 4, 3)).render(document)),
             expectedArt(QStringLiteral("####################/.................###/")));
}

void TestPaperRenderer::endsWithEmptyLines()
{
    PaperRenderer renderer(smallModel(PaperWidth, 4, 3));
    QCOMPARE(renderer.render({}).size(), QSize(PaperWidth, 1));
    renderer.setEmptyLinesAtEnd(2);
    QCOMPARE(renderer.render(documentOf(QStringLiteral(" "))).size(), QSize(PaperWidth, 9));
    renderer.setEmptyLinesAtEnd(INT_MAX);
    QCOMPARE(renderer.emptyLinesAtEnd(), 1000);
}

void TestPaperRenderer::carriesTheResolution()
{
    const QImage picture = PaperRenderer(PrinterInfo::fromResources().first()).render({});
    QCOMPARE(picture.dotsPerMeterX(), 7992);
    QCOMPARE(picture.format(), QImage::Format_Mono);
}

void TestPaperRenderer::hostile_data()
{
    QTest::addColumn<TextPrinterDocument>("document");
    QTest::addColumn<int>("error");

    const QString allCharacters = [] {
        QString text;
        for (int code = 0; code <= 0xFFFF; ++code) {
            text += QChar(code);
        }
        return text;
    }();
    const int longest = PaperRenderer::LargestHeight;
    DocumentBlock endless = DocumentBlock::emptyBlock(100000, TextAlignLeft, INT_MAX);
    addRow("lines without an end", documentOf(endless), int(PaperTooLong));
    addRow("a line of a million characters",
           documentOf(QString(1000000, QLatin1Char('W')), QByteArray(3, '\x7F'), TextAlignCenter), int(PaperNoError));
    addRow("all characters", documentOf(allCharacters), int(PaperNoError));
    addRow("a million TABs", documentOf(QString(1000000, QLatin1Char('\t')), {}, TextAlignFullWidth),
           int(PaperNoError));
    addRow("longest image", documentOf(imageBlock(8, longest, longest)), int(PaperNoError));
    addRow("image too long", documentOf(imageBlock(8, longest + 1, longest + 1)), int(PaperTooLong));
    addRow("image of one column", documentOf(imageBlock(1, 100000000, 12500000)), int(PaperTooLong));
    addRow("image of more than 64 MiB", documentOf(imageBlock(8192, 65537, 65537 * 1024)), int(PaperTooLong));
    addRow("image of one row", documentOf(imageBlock(INT_MAX / 64, 1, INT_MAX / 512)), int(PaperNoError));
    addRow("image that is not valid", documentOf(imageBlock(INT_MAX, INT_MAX, 10)), int(PaperNoError));
    addRow("image without its last byte", documentOf(imageBlock(9, 2, 2)), int(PaperNoError));
    DocumentBlock mismatch;
    mismatch.setText({QStringLiteral("a"), QStringLiteral("b")});
    addRow("lists that do not fit", documentOf(mismatch), int(PaperNoError));
    DocumentBlock unknown;
    unknown.setType(static_cast<DocumentBlock::EBlockType>(99));
    addRow("block of no type", documentOf(unknown), int(PaperNoError));
}

void TestPaperRenderer::hostile()
{
    QFETCH(TextPrinterDocument, document);
    QFETCH(int, error);
    EPaperError actual = PaperUnknown;
    const QImage picture = PaperRenderer().render(document, {}, &actual);
    QCOMPARE(int(actual), error);
    QCOMPARE(picture.isNull(), actual != PaperNoError);
    QVERIFY(picture.height() <= PaperRenderer::LargestHeight);
}

void TestPaperRenderer::paper_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<QSize>("font");
    QTest::addColumn<QSize>("size");

    QTest::newRow("no dots") << 0 << QSize(8, 16) << QSize();
    QTest::newRow("negative") << INT_MIN << QSize(8, 16) << QSize();
    QTest::newRow("too wide") << 8193 << QSize(8, 16) << QSize();
    QTest::newRow("widest") << 8192 << QSize(8, 16) << QSize(8192, 16);
    QTest::newRow("narrower than a character") << 3 << QSize(8, 16) << QSize(3, 16);
    QTest::newRow("font without a size") << 20 << QSize(0, 0) << QSize(20, 1);
    QTest::newRow("largest font") << 20 << QSize(255, 255) << QSize(20, 255);
}

void TestPaperRenderer::paper()
{
    QFETCH(int, width);
    QFETCH(QSize, font);
    QFETCH(QSize, size);
    EPaperError error = PaperNoError;
    const QImage picture = PaperRenderer(smallModel(width, font.width(), font.height()))
                               .render(documentOf(QStringLiteral("Ж")), {}, &error);
    QCOMPARE(error, size.isValid() ? PaperNoError : PaperUnknown);
    QCOMPARE(picture.isNull() ? QSize() : picture.size(), size);
}

QTEST_GUILESS_MAIN(TestPaperRenderer)

#include "tst_paperrenderer.moc"
