// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "dotart.h"

#include <paperrenderer.h>

QStringList dotArt(const QImage &picture)
{
    QStringList art;
    for (int y = 0; y < picture.height(); ++y) {
        QString line;
        for (int x = 0; x < picture.width(); ++x) {
            line += QLatin1Char(picture.pixel(x, y) == qRgb(0, 0, 0) ? '#' : '.');
        }
        art.append(line);
    }
    return art;
}

QStringList dotArt(const MonochromeImage &image)
{
    QStringList art;
    for (int y = 0; y < image.height(); ++y) {
        QString line;
        for (int x = 0; x < image.width(); ++x) {
            line += QLatin1Char(image.pixel(x, y, 8) ? '#' : '.');
        }
        art.append(line);
    }
    return art;
}

QImage pictureOf(const QStringList &art)
{
    QImage picture(art.first().size(), art.size(), QImage::Format_Mono);
    picture.setColorTable({qRgb(255, 255, 255), qRgb(0, 0, 0)});
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            picture.setPixel(x, y, art.at(y).at(x) == QLatin1Char('#') ? 1 : 0);
        }
    }
    return picture;
}

MonochromeImage imageOf(const QStringList &art)
{
    const QImage picture = pictureOf(art);
    QByteArray rows;
    for (int y = 0; y < picture.height(); ++y) {
        rows.append(reinterpret_cast<const char *>(picture.constScanLine(y)), (picture.width() + 7) / 8);
    }
    MonochromeImage image;
    image.setWidth(picture.width());
    image.setHeight(picture.height());
    image.setImage(rows);
    return image;
}

PrinterInfo smallModel(int width, int fontWidth, int fontHeight)
{
    PrinterInfo model = PaperRenderer::pictureModel();
    PaperInfo paper;
    paper.setId(0);
    paper.setPointsToLine(width);
    model.setPaperTypes({{0, paper}});
    FontInfo font;
    font.setId(0);
    font.setWidth(static_cast<uchar>(fontWidth));
    font.setHeight(static_cast<uchar>(fontHeight));
    font.setCustomSymbols(true);
    font.setCustomWidth(static_cast<uchar>(fontWidth));
    font.setCustomHeight(static_cast<uchar>(fontHeight));
    model.setFontTypes({font});
    return model;
}
