// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "dotart.h"
#include "testfixture.h"

#include <paperfont.h>

/** The bundled font in cells of any size. */
class TestPaperFont : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void takesTheFaceAsItIs();
    void standsInTheMiddleOfALargerCell();
    void boxDrawingReachesTheEdges();
    void coversWhatReceiptsNeed();
    void refuses_data();
    void refuses();
};

void TestPaperFont::takesTheFaceAsItIs()
{
    const QString blank = QStringLiteral("........");
    const QString stem = QStringLiteral("...#....");
    const QStringList letter
        = {blank, blank, QStringLiteral("#######."), stem, stem, stem, stem, stem, stem, stem, stem, stem, blank, blank,
           blank, blank};
    QCOMPARE(dotArt(PaperFont::glyph('T', 8, 16)), letter);
}

void TestPaperFont::standsInTheMiddleOfALargerCell()
{
    const QStringList small = dotArt(PaperFont::glyph('T', 8, 16));
    const QStringList large = dotArt(PaperFont::glyph('T', 9, 19));
    QCOMPARE(large.size(), 19);
    QCOMPARE(large.mid(1, 16),
             QStringList(small).replaceInStrings(QRegularExpression(QStringLiteral("$")), QStringLiteral(".")));
    QVERIFY(!large.first().contains(QLatin1Char('#')) && !large.last().contains(QLatin1Char('#')));
    // 32 x 64 holds the face of 16 x 32 with each dot as a square.
    QStringList squares;
    for (const QString &line : dotArt(PaperFont::glyph('T', 16, 32))) {
        const QString wide = QString(line)
                                 .replace(QLatin1Char('#'), QStringLiteral("##"))
                                 .replace(QLatin1Char('.'), QStringLiteral(".."));
        squares << wide << wide;
    }
    QCOMPARE(dotArt(PaperFont::glyph('T', 32, 64)), squares);
}

void TestPaperFont::boxDrawingReachesTheEdges()
{
    for (const QSize &cell : {QSize(9, 24), QSize(10, 24), QSize(14, 24), QSize(18, 24), QSize(9, 17)}) {
        const QStringList horizontal = dotArt(PaperFont::glyph(0x2500, cell.width(), cell.height()));
        QVERIFY(horizontal.contains(QString(cell.width(), QLatin1Char('#'))));
        const QStringList vertical = dotArt(PaperFont::glyph(0x2502, cell.width(), cell.height()));
        QCOMPARE(vertical.filter(QStringLiteral("#")).size(), cell.height());
    }
}

void TestPaperFont::coversWhatReceiptsNeed()
{
    QString missing;
    const QString needed = QStringLiteral("AZaz09~!") + QStringLiteral("«»—–…№°±§©")
        + QStringLiteral("ЁёАЯаяІіЇїЄєҐґЎўӘәҒғҚқҢңӨөҰұҮүҺһ") + QStringLiteral("€₽₴₸₼₾")
        + QStringLiteral("─│┌┐└┘├┤┬┴┼═║╔╗█▀▄░");
    for (const QChar character : needed) {
        const auto image = PaperFont::glyph(character.unicode(), 12, 24);
        if (!image.isValid() || dotArt(image).filter(QStringLiteral("#")).isEmpty()) {
            missing += character;
        }
    }
    QCOMPARE(missing, QString());
}

void TestPaperFont::refuses_data()
{
    QTest::addColumn<uint>("character");
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<bool>("isValid");

    QTest::newRow("no width") << uint('T') << 0 << 16 << false;
    QTest::newRow("negative height") << uint('T') << 8 << -1 << false;
    QTest::newRow("too wide") << uint('T') << 256 << 16 << false;
    QTest::newRow("largest cell") << uint('T') << 255 << 255 << true;
    QTest::newRow("one dot") << uint('T') << 1 << 1 << true;
    QTest::newRow("no such character") << 0x1F600U << 8 << 16 << false;
    QTest::newRow("no character at all") << 0xFFFFFFFFU << 8 << 16 << false;
}

void TestPaperFont::refuses()
{
    QFETCH(uint, character);
    QFETCH(int, width);
    QFETCH(int, height);
    QTEST(PaperFont::glyph(character, width, height).isValid(), "isValid");
}

QTEST_GUILESS_MAIN(TestPaperFont)

#include "tst_paperfont.moc"
