// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "testfixture.h"

#include <monochromeimage.h>

#include <limits>
#include <type_traits>

static_assert(std::is_nothrow_move_constructible_v<MonochromeImage>);
static_assert(std::is_nothrow_move_assignable_v<MonochromeImage>);

namespace {

constexpr int Largest = std::numeric_limits<int>::max();
constexpr int Smallest = std::numeric_limits<int>::min();

MonochromeImage imageOf(int width, int height, const QByteArray &data)
{
    MonochromeImage image;
    image.setWidth(width);
    image.setHeight(height);
    image.setImage(data);
    return image;
}

} // namespace

class MonochromeImageTest : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void validity_data();
    void validity();
    void pixel_data();
    void pixel();
    void emptyImage_data();
    void emptyImage();
    void map_data();
    void map();
    void equality();
};

void MonochromeImageTest::validity_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("bytes");
    QTest::addColumn<bool>("isValid");

    QTest::newRow("default") << 0 << 0 << 0 << false;
    QTest::newRow("no rows") << 8 << 0 << 8 << false;
    QTest::newRow("negative sides") << -8 << -8 << 64 << false;
    QTest::newRow("exact") << 8 << 2 << 2 << true;
    QTest::newRow("a byte short") << 8 << 2 << 1 << false;
    QTest::newRow("Contract: less than a byte of dots needs no data") << 7 << 1 << 0 << true;
    QTest::newRow("Contract: padding of the rows does not count") << 12 << 2 << 3 << true;
    QTest::newRow("product is 0 in 32 bits") << 65536 << 65536 << 16 << false;
    QTest::newRow("product is negative in 32 bits") << 46341 << 46341 << 16 << false;
    QTest::newRow("largest sides") << Largest << Largest << 16 << false;
}

void MonochromeImageTest::validity()
{
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(int, bytes);
    QTEST(imageOf(width, height, QByteArray(bytes, '\0')).isValid(), "isValid");
}

void MonochromeImageTest::pixel_data()
{
    QTest::addColumn<MonochromeImage>("image");
    QTest::addColumn<int>("x");
    QTest::addColumn<int>("y");
    QTest::addColumn<int>("align");
    QTest::addColumn<bool>("isBlack");

    const MonochromeImage dot = imageOf(8, 1, QByteArray("\x80", 1));
    const MonochromeImage rows = imageOf(8, 2, QByteArray("\x01\x00\x80", 3));
    const MonochromeImage wide = imageOf(12, 2, QByteArray("\x00\x10\x08\x00", 4));
    const MonochromeImage white = imageOf(Largest, Largest, QByteArray("\xff", 1));
    QTest::newRow("empty image") << MonochromeImage() << 0 << 0 << 8 << false;
    QTest::newRow("most significant bit is the leftmost dot") << dot << 0 << 0 << 8 << true;
    QTest::newRow("second dot") << dot << 1 << 0 << 8 << false;
    QTest::newRow("least significant bit is the eighth dot") << rows << 7 << 0 << 8 << true;
    QTest::newRow("second row, 8 bits a row") << rows << 0 << 1 << 8 << false;
    QTest::newRow("second row, 16 bits a row") << rows << 0 << 1 << 16 << true;
    QTest::newRow("second byte of a padded row") << wide << 11 << 0 << 8 << true;
    QTest::newRow("second padded row") << wide << 4 << 1 << 8 << true;
    QTest::newRow("left of the image") << dot << -1 << 0 << 8 << false;
    QTest::newRow("above the image") << dot << 0 << -1 << 8 << false;
    QTest::newRow("right of the image") << dot << 8 << 0 << 8 << false;
    QTest::newRow("below the image") << dot << 0 << 1 << 8 << false;
    QTest::newRow("just behind the data") << imageOf(16, 1, "\xff") << 8 << 0 << 8 << false;
    QTest::newRow("no alignment") << dot << 0 << 0 << 0 << false;
    QTest::newRow("negative alignment") << rows << 0 << 1 << Smallest << false;
    QTest::newRow("far behind the data") << white << Largest - 1 << Largest - 1 << 8 << false;
    QTest::newRow("widest alignment") << white << Largest - 1 << Largest - 1 << Largest << false;
}

void MonochromeImageTest::pixel()
{
    QFETCH(MonochromeImage, image);
    QFETCH(int, x);
    QFETCH(int, y);
    QFETCH(int, align);
    QTEST(image.pixel(x, y, align), "isBlack");
}

void MonochromeImageTest::emptyImage_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("bytes");

    QTest::newRow("Contract: whole bytes get one more") << 8 << 2 << 4;
    QTest::newRow("Contract: 16 dots take three bytes") << 16 << 1 << 3;
    QTest::newRow("Contract: broken bytes are cut") << 9 << 2 << 2;
    QTest::newRow("Contract: width 0 has a byte a row") << 0 << 5 << 5;
    QTest::newRow("less than a byte") << 4 << 4 << 0;
    QTest::newRow("negative width") << -16 << 4 << 0;
    QTest::newRow("negative height") << 16 << -4 << 0;
    QTest::newRow("64 MiB") << 1023 * 8 + 1 << 65536 << 1023 * 65536;
    QTest::newRow("one row over 64 MiB") << 1023 * 8 << 65537 << 0;
    QTest::newRow("largest") << Largest << Largest << 0;
    QTest::newRow("smallest") << Smallest << Smallest << 0;
}

void MonochromeImageTest::emptyImage()
{
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(int, bytes);
    const MonochromeImage image = MonochromeImage::createEmpty(width, height);
    QCOMPARE(image.width(), width);
    QCOMPARE(image.height(), height);
    QCOMPARE(image.image().size(), bytes);
    QCOMPARE(image.image().count('\0'), bytes);
}

void MonochromeImageTest::map_data()
{
    QTest::addColumn<QVariantMap>("map");
    QTest::addColumn<MonochromeImage>("image");

    const auto row = [](const char *name, const QVariant &width, const QVariant &data, const MonochromeImage &image) {
        QTest::newRow(name) << QVariantMap{{QStringLiteral("w"), width},
                                           {QStringLiteral("h"), 2},
                                           {QStringLiteral("data"), data}}
                            << image;
    };
    QTest::newRow("empty map") << QVariantMap() << MonochromeImage();
    row("bytes", 16, QStringLiteral("AP+A/w=="), imageOf(16, 2, QByteArray("\x00\xff\x80\xff", 4)));
    row("text numbers", QStringLiteral("16"), QStringLiteral("AA=="), imageOf(16, 2, QByteArray(1, '\0')));
    row("numbers of JSON", 16.0, QStringLiteral("AA=="), imageOf(16, 2, QByteArray(1, '\0')));
    row("no numbers", QVariantMap(), QVariantList(), imageOf(0, 2, QByteArray()));
    row("sizes that fit nothing", -1, QStringLiteral("AA=="), imageOf(-1, 2, QByteArray(1, '\0')));
}

void MonochromeImageTest::map()
{
    QFETCH(QVariantMap, map);
    QFETCH(MonochromeImage, image);
    QCOMPARE(MonochromeImage(map), image);

    MonochromeImage again = imageOf(99, 99, "left over");
    again.setMap(image.toMap());
    QCOMPARE(again, image);
    QCOMPARE(image.toMap().keys(), QStringList({QStringLiteral("data"), QStringLiteral("h"), QStringLiteral("w")}));
}

void MonochromeImageTest::equality()
{
    const MonochromeImage image = imageOf(8, 2, "ab");
    QCOMPARE(imageOf(8, 2, "ab"), image);
    QVERIFY(imageOf(9, 2, "ab") != image);
    QVERIFY(imageOf(8, 3, "ab") != image);
    QVERIFY(imageOf(8, 2, "ac") != image);
    QVERIFY(imageOf(8, 2, QByteArray("ab\0", 3)) != image);
}

QTEST_GUILESS_MAIN(MonochromeImageTest)
#include "tst_monochromeimage.moc"
