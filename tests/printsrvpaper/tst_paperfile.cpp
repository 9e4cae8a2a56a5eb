// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "dotart.h"
#include "testfixture.h"

#include <paperfile.h>

#include <QXmlStreamReader>

namespace {

const QStringList Art = {QStringLiteral("#..#######"), QStringLiteral(".........#"), QStringLiteral("##........")};

// 10 x 3 dots of 1 mm.
QImage picture()
{
    QImage image = pictureOf(Art);
    image.setDotsPerMeterX(1000);
    image.setDotsPerMeterY(1000);
    return image;
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

/** Pictures as files. */
class TestPaperFile : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void pngKeepsDotsAndResolution();
    void pdfHasTheSizeAndTheDots();
    void pdfOfALongRollCountsInLargerUnits();
    void svgHasTheSizeAndTheDots();
    void coloursBecomeBlackAndWhite();
    void saves();
    void refuses_data();
    void refuses();
    void savesTheOutputOfTheService();
};

void TestPaperFile::pngKeepsDotsAndResolution()
{
    const QImage read = QImage::fromData(PaperFile::toPng(picture()));
    QCOMPARE(dotArt(read), Art);
    QCOMPARE(read.depth(), 1);
    QCOMPARE(read.dotsPerMeterX(), 1000);
}

void TestPaperFile::pdfHasTheSizeAndTheDots()
{
    const QByteArray pdf = PaperFile::toPdf(picture());
    // 10 mm and 3 mm in points.
    QVERIFY(pdf.contains("/MediaBox [0 0 28.3465 8.5039]"));
    QVERIFY(pdf.contains("/Width 10 /Height 3"));
    const int begin = pdf.indexOf("stream\n") + 7;
    const QByteArray packed = pdf.mid(begin, pdf.indexOf("\nendstream") - begin);
    QCOMPARE(qUncompress(QByteArray("\0\0\0\x06", 4) + packed), QByteArray("\x9F\xC0\x00\x40\xC0\x00", 6));
    // Each cross reference points at its object.
    const QList<QByteArray> lines = pdf.mid(pdf.indexOf("xref\n")).split('\n');
    QCOMPARE(lines.at(1), QByteArray("0 6"));
    for (int number = 1; number <= 5; ++number) {
        const int offset = lines.at(number + 2).left(10).toInt();
        QVERIFY(pdf.mid(offset).startsWith(QByteArray::number(number) + " 0 obj\n"));
    }
    QCOMPARE(PaperFile::toPdf(picture()), pdf);
}

void TestPaperFile::pdfOfALongRollCountsInLargerUnits()
{
    QImage roll(8, 60000, QImage::Format_Mono);
    roll.fill(0);
    roll.setDotsPerMeterX(7992);
    roll.setDotsPerMeterY(7992);
    const QByteArray pdf = PaperFile::toPdf(roll);
    // 60,000 dots of 203 dots an inch are 21,281 points: two units of 10,640.
    QVERIFY2(pdf.contains("/UserUnit 2.0000") && pdf.contains(" 10640."), pdf.left(400).constData());
}

void TestPaperFile::svgHasTheSizeAndTheDots()
{
    const QByteArray svg = PaperFile::toSvg(picture());
    QXmlStreamReader xml(svg);
    QString path;
    while (!xml.atEnd()) {
        if (xml.readNext() == QXmlStreamReader::StartElement && xml.name() == QLatin1String("path")) {
            path = xml.attributes().value(QLatin1String("d")).toString();
        }
    }
    QVERIFY2(!xml.hasError(), qPrintable(xml.errorString()));
    QCOMPARE(path, QStringLiteral("M0 0h1v1h-1zM3 0h7v1h-7zM9 1h1v1h-1zM0 2h2v1h-2z"));
    QVERIFY(svg.contains("width=\"10.0000mm\" height=\"3.0000mm\" viewBox=\"0 0 10 3\""));
}

void TestPaperFile::coloursBecomeBlackAndWhite()
{
    QImage colours(3, 1, QImage::Format_RGB32);
    colours.setPixel(0, 0, qRgb(90, 90, 90));
    colours.setPixel(1, 0, qRgb(170, 170, 170));
    colours.setPixel(2, 0, qRgb(0, 0, 120));
    QCOMPARE(dotArt(QImage::fromData(PaperFile::toPng(colours))), QStringList(QStringLiteral("#.#")));
}

void TestPaperFile::saves()
{
    const QTemporaryDir folder;
    for (const char *name : {"a.png", "a.PDF", "a.svg"}) {
        const QString path = folder.filePath(QLatin1String(name));
        QVERIFY(PaperFile::save(picture(), path));
        QCOMPARE(contentOf(path), PaperFile::toBytes(picture(), path));
        QVERIFY(!contentOf(path).isEmpty());
    }
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files).size(), 3);
}

void TestPaperFile::refuses_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QImage>("image");
    QTest::addColumn<QString>("warning");

    QTest::newRow("suffix") << "a.jpg" << picture() << "a.jpg\" is not written: its suffix";
    QTest::newRow("no picture") << "a.png" << QImage() << "a.png\" is not written: there is no picture";
    QTest::newRow("no folder") << "none/a.png" << picture() << "none/a.png\" is not written: .+";
}

void TestPaperFile::refuses()
{
    QFETCH(QString, name);
    QFETCH(QImage, image);
    QFETCH(QString, warning);
    const QTemporaryDir folder;
    expectWarning(warning);
    QVERIFY(!PaperFile::save(image, folder.filePath(name)));
    QVERIFY(QDir(folder.path()).isEmpty());
}

void TestPaperFile::savesTheOutputOfTheService()
{
    PrintSrvSettings settings;
    QVERIFY(PaperFile::saveOutput(picture(), settings, 17));
    QCOMPARE(dotArt(QImage(settings.pngOutputFile(17))), Art);
}

QTEST_GUILESS_MAIN(TestPaperFile)

#include "tst_paperfile.moc"
