// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "commandrunner.h"
#include "testfixture.h"

#include <specialcharacters.h>

#include <QImage>

namespace {

QStringList words(const char *text)
{
    return QString::fromUtf8(text).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

// Runs the command on a small receipt with a character that cp866 lacks.
CommandRunner::Result render(const CommandRunner &runner, const char *options)
{
    runner.write(QStringLiteral("t.cpt"), "<C><B>Ж «<NAME>»\n");
    runner.write(QStringLiteral("data.json"), "{\"attributes\": {\"NAME\": \"x\"}}");
    return runner.run(words("render t.cpt --data data.json") + words(options));
}

QImage pictureOf(const CommandRunner &runner, const char *options)
{
    const QString name = QStringLiteral("p.png");
    const auto result = render(runner, (QByteArray(options) + " -o p.png").constData());
    return result.exitCode == 0 ? QImage::fromData(runner.read(name), "PNG") : QImage();
}

} // namespace

/** Pictures of receipts, previews and symbol files. */
class TestPrintsrvPicture : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void hasThePapersWidth_data();
    void hasThePapersWidth();
    void codecIsThePrinters();
    void endLines();
    void otherFormats();
    void previewIsThePicture();
    void wrongOptions_data();
    void wrongOptions();
    void formatWinsOverTheSuffix();
    void fileInTheWayIsLeftAlone();
    void currencyIsMade();
    void symbolsOfPictures();
    void symbolsShown();
    void wrongSymbols_data();
    void wrongSymbols();
};

void TestPrintsrvPicture::hasThePapersWidth_data()
{
    QTest::addColumn<QByteArray>("options");
    QTest::addColumn<QSize>("size");

    // One line and five empty ones in the cell of font 0, and the empty line that every document begins with.
    QTest::newRow("no model") << QByteArray() << QSize(576, 7 * 24);
    QTest::newRow("wide paper") << QByteArray("--model CUSTOM_VKP_80") << QSize(512, 7 * 24);
    QTest::newRow("narrow paper") << QByteArray("--model custom_vkp_80 --paper 1") << QSize(400, 7 * 24);
    QTest::newRow("low cells") << QByteArray("--model AV_268") << QSize(384, 7 * 16);
}

void TestPrintsrvPicture::hasThePapersWidth()
{
    QFETCH(QByteArray, options);
    QTEST(pictureOf(CommandRunner(), options.constData()).size(), "size");
}

void TestPrintsrvPicture::codecIsThePrinters()
{
    const CommandRunner runner;
    const QImage all = pictureOf(runner, "");
    const QImage some = pictureOf(runner, "--codec cp866");
    QVERIFY(!some.isNull());
    QVERIFY(all != some);
    QCOMPARE(pictureOf(runner, "--codec windows-1251"), all);
    runner.write(QStringLiteral("old.cpt"), "<C><B>\xC6 \xAB<NAME>\xBB\n");
    const auto result
        = runner.run(words("render old.cpt --data data.json --template-codec windows-1251 --codec cp866 -o old.png"));
    QCOMPARE(result.errors, QByteArray());
    QCOMPARE(QImage::fromData(runner.read(QStringLiteral("old.png"))), some);
}

void TestPrintsrvPicture::endLines()
{
    QCOMPARE(pictureOf(CommandRunner(), "--end-lines 0").height(), 2 * 24);
    QCOMPARE(pictureOf(CommandRunner(), "--end-lines 1000").height(), 1002 * 24);
}

void TestPrintsrvPicture::otherFormats()
{
    const CommandRunner runner;
    QCOMPARE(render(runner, "-o p.pdf --model CUSTOM_VKP_80").exitCode, 0);
    // 512 dots of 203 dots an inch.
    QVERIFY(runner.read(QStringLiteral("p.pdf")).contains("/MediaBox [0 0 181.59"));
    QCOMPARE(render(runner, "-o p.SVG --model CUSTOM_VKP_80").exitCode, 0);
    QVERIFY(runner.read(QStringLiteral("p.SVG")).contains("viewBox=\"0 0 512 168\""));
}

void TestPrintsrvPicture::previewIsThePicture()
{
    const CommandRunner runner;
    const QImage picture = pictureOf(runner, "");
    const auto result = render(runner, "--preview --columns 1000");
    QCOMPARE(result.exitCode, 0);
    const QStringList lines = QString::fromUtf8(result.output).split(QLatin1Char('\n'));
    QCOMPARE(lines.size(), picture.height() / 2 + 1);
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const QString line = lines.at(y / 2);
            const QString black = y % 2 == 0 ? QStringLiteral("█▀") : QStringLiteral("█▄");
            QCOMPARE(x < line.size() && black.contains(line.at(x)), picture.pixel(x, y) == qRgb(0, 0, 0));
        }
    }
    for (const QString &line : QString::fromUtf8(render(runner, "--preview").output).split(QLatin1Char('\n'))) {
        QVERIFY(line.size() <= 80);
    }
}

void TestPrintsrvPicture::wrongOptions_data()
{
    QTest::addColumn<QByteArray>("options");
    QTest::addColumn<QString>("error");

    QTest::newRow("model") << QByteArray("-o p.png --model NONE") << "No model 'NONE': 'printsrv models'";
    QTest::newRow("paper") << QByteArray("-o p.png --model CITIZEN_CBM_1000 --paper 2")
                           << "CITIZEN_CBM_1000 has no paper 2, only 0 \\(80 mm\\), 1 \\(58 mm\\)";
    QTest::newRow("code page") << QByteArray("-o p.png --codec none") << "No code page is called 'none'";
    QTest::newRow("end lines") << QByteArray("-o p.png --end-lines 1001") << "end-lines";
    QTest::newRow("columns") << QByteArray("--preview --columns 9") << "columns";
    QTest::newRow("preview of text") << QByteArray("--preview --format text") << "--preview shows a picture";
}

void TestPrintsrvPicture::wrongOptions()
{
    QFETCH(QByteArray, options);
    QFETCH(QString, error);
    const CommandRunner runner;
    const auto result = render(runner, options.constData());
    QCOMPARE(result.exitCode, 2);
    QVERIFY2(QString::fromUtf8(result.errors).contains(QRegularExpression(error)), result.errors.constData());
    QVERIFY(!runner.files().contains(QStringLiteral("p.png")));
}

void TestPrintsrvPicture::formatWinsOverTheSuffix()
{
    const CommandRunner runner;
    QCOMPARE(render(runner, "--format text --width 7 -o p.png").exitCode, 0);
    QCOMPARE(runner.read(QStringLiteral("p.png")), QByteArray(" Ж «x»\n"));
}

void TestPrintsrvPicture::fileInTheWayIsLeftAlone()
{
    const CommandRunner runner;
    const QString folder = runner.write(QStringLiteral("plain"), "x");
    const auto result = render(runner, "-o plain/p.png");
    QCOMPARE(result.exitCode, 1);
    QVERIFY(result.errors.contains("plain/p.png: not written"));
    QCOMPARE(runner.read(folder), QByteArray("x"));
}

void TestPrintsrvPicture::currencyIsMade()
{
    const CommandRunner runner;
    const auto result = runner.run(words("symbols make --text ₽₴₸₼₾€"));
    QFile reference(QStringLiteral(PRINTSRV_EXAMPLES "/symbols/currency.ssi"));
    QVERIFY(reference.open(QIODevice::ReadOnly));
    QCOMPARE(result.output, reference.readAll());

    SpecialCharacters symbols;
    QVERIFY(symbols.load(reference.fileName()));
    // Six signs in each cell of own symbols: 8x16, 9x17, 9x24, 10x24, 12x24, 13x24, 16x24.
    QCOMPARE(symbols.images().size(), 6 * 7);
    for (int code = 1; code <= 6; ++code) {
        QCOMPARE(symbols.getImage(code, 13, 24).width(), 13);
        QVERIFY(symbols.getImage(code, 13, 24).image().count('\0') < 2 * 24);
    }
}

void TestPrintsrvPicture::symbolsOfPictures()
{
    const CommandRunner runner;
    QImage picture(9, 2, QImage::Format_ARGB32);
    picture.fill(Qt::transparent);
    picture.setPixel(8, 0, qRgb(0, 0, 0));
    picture.setPixel(0, 1, qRgb(127, 127, 127));
    picture.setPixel(1, 1, qRgb(200, 200, 200));
    QVERIFY(picture.save(runner.path(QStringLiteral("a=b.png"))));
    const auto result = runner.run(words("symbols make 3=a=b.png -o s.ssi"));
    QCOMPARE(result.errors, QByteArray());
    SpecialCharacters symbols;
    QVERIFY(symbols.load(runner.path(QStringLiteral("s.ssi"))));
    QCOMPARE(symbols.images().size(), 1);
    QCOMPARE(symbols.images().value(3).image(), QByteArray("\x00\x80\x80\x00", 4));
}

void TestPrintsrvPicture::symbolsShown()
{
    const CommandRunner runner;
    QCOMPARE(runner.run(words("symbols make --text АБ --size 8x16 --size 12x24 -o s.ssi")).exitCode, 0);
    QCOMPARE(runner.run(words("symbols show s.ssi -o s.png")).exitCode, 0);
    const QImage picture = QImage::fromData(runner.read(QStringLiteral("s.png")));
    QCOMPARE(picture.size(), QSize(4 + 2 * (12 + 4), 4 + (16 + 4) + (24 + 4)));
    // The second sign of the first size, found again in its place.
    SpecialCharacters symbols;
    QVERIFY(symbols.load(runner.path(QStringLiteral("s.ssi"))));
    const MonochromeImage sign = symbols.getImage(2, 8, 16);
    for (int y = 0; y < 16; ++y) {
        for (int x = 0; x < 8; ++x) {
            QCOMPARE(picture.pixel(16 + x, 4 + y) == qRgb(0, 0, 0), sign.pixel(x, y, 8));
        }
    }
    QVERIFY(QString::fromUtf8(runner.run(words("symbols show s.ssi")).output).contains(QChar(0x2588)));
}

void TestPrintsrvPicture::wrongSymbols_data()
{
    QTest::addColumn<QByteArray>("arguments");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("error");

    QTest::newRow("nothing") << QByteArray("symbols make") << 2 << "either --text";
    QTest::newRow("both") << QByteArray("symbols make 1=a.png --text a") << 2 << "either --text";
    QTest::newRow("size of a picture") << QByteArray("symbols make 1=a.png --size 8x16") << 2 << "either --text";
    QTest::newRow("size") << QByteArray("symbols make --text a --size 8x") << 2 << "'8x' is no size";
    QTest::newRow("large size") << QByteArray("symbols make --text a --size 256x1") << 2 << "'256x1' is no size";
    QTest::newRow("too many") << QByteArray("symbols make --text abcdefgh") << 1 << "has 8 characters";
    QTest::newRow("not in the font") << QByteArray("symbols make --text 漢") << 1 << "the bundled font has no '漢'";
    QTest::newRow("code") << QByteArray("symbols make 8=a.png") << 1 << "8=a.png: is not CODE=FILE";
    QTest::newRow("no code") << QByteArray("symbols make a.png") << 1 << "a.png: is not CODE=FILE";
    QTest::newRow("no file") << QByteArray("symbols make 1=none.png") << 1 << "none.png: .+";
    QTest::newRow("no picture") << QByteArray("symbols make 1=text.png") << 1 << "is no PNG picture";
    QTest::newRow("nothing to show") << QByteArray("symbols show none.ssi") << 1 << "none.ssi: is no symbol file";
    QTest::newRow("shown as text") << QByteArray("symbols show none.ssi -o s.txt") << 2 << "'s.txt' is no name";
}

void TestPrintsrvPicture::wrongSymbols()
{
    QFETCH(QByteArray, arguments);
    QFETCH(QString, error);
    const CommandRunner runner;
    runner.write(QStringLiteral("text.png"), "no picture");
    const auto result = runner.run(words(arguments.constData()));
    QTEST(result.exitCode, "exitCode");
    QCOMPARE(result.output, QByteArray());
    QVERIFY2(QString::fromUtf8(result.errors).contains(QRegularExpression(error)), result.errors.constData());
    QCOMPARE(runner.files(), QStringList(QStringLiteral("text.png")));
}

QTEST_GUILESS_MAIN(TestPrintsrvPicture)

#include "tst_printsrvpicture.moc"
