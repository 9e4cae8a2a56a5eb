// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "paperrenderer.h"

#include "paperpage.h"

#include <textprintermodels.h>

#include <cmath>
#include <new>

namespace {

constexpr int LargestWidth = 8192;
constexpr int LargestEmptyLineCount = 1000;
constexpr int UsualResolution = 203;
constexpr double MillimetresAnInch = 25.4;

FontInfo pictureFont(int id, uchar width, uchar height)
{
    FontInfo font;
    font.setId(static_cast<signed char>(id));
    font.setWidth(width);
    font.setHeight(height);
    font.setMwidth(width * MillimetresAnInch / UsualResolution);
    font.setMheight(height * MillimetresAnInch / UsualResolution);
    font.setCustomSymbols(true);
    font.setCustomWidth(width);
    font.setCustomHeight(height);
    return font;
}

PaperInfo picturePaper()
{
    PaperInfo paper;
    paper.setId(0);
    paper.setWidth(72);
    paper.setHeight(-1);
    paper.setPointsToLine(576);
    paper.setCaption(QStringLiteral("80 mm"));
    return paper;
}

// The document's own images first; those of the symbols for codes that it has none of.
QMultiMap<signed char, MonochromeImage> allImages(const TextPrinterDocument &document, const SpecialCharacters &symbols)
{
    const auto own = document.charImages();
    auto images = own;
    const auto others = symbols.images();
    for (auto image = others.begin(); image != others.end(); ++image) {
        if (!own.contains(image.key())) {
            images.insert(image.key(), *image);
        }
    }
    return images;
}

QImage withResolution(QImage picture, int resolution)
{
    const int dotsAMetre = static_cast<int>(std::lround(resolution * 1000 / MillimetresAnInch));
    picture.setDotsPerMeterX(dotsAMetre);
    picture.setDotsPerMeterY(dotsAMetre);
    return picture;
}

QImage draw(printsrv::PaperPage &page, const TextPrinterDocument &document, int emptyLines, EPaperError &error)
{
    const auto blocks = document.blocks();
    for (const DocumentBlock &block : blocks) {
        page.print(block);
    }
    page.feed(emptyLines);
    error = page.error();
    if (error != PaperNoError) {
        return {};
    }
    printsrv::Raster raster = page.raster();
    raster.grow(raster.height() == 0 ? 1 : 0);
    const QImage picture = raster.toImage();
    error = picture.isNull() ? PaperNoMemory : PaperNoError;
    return picture;
}

} // namespace

PaperRenderer::PaperRenderer()
    : PaperRenderer(pictureModel())
{
}

PaperRenderer::PaperRenderer(const PrinterInfo &model, int paperId)
    : m_model(model)
    , m_paperId(paperId)
{
}

PrinterInfo PaperRenderer::pictureModel()
{
    PrinterInfo model;
    model.setId(TextPrinterModels::MODEL_PNG);
    model.setName(TextPrinterModels::MODEL_PNG);
    model.setDoubleWidth(true);
    model.setDoubleHeight(true);
    model.setBold(true);
    model.setItalic(true);
    model.setUnderline(true);
    model.setInversion(true);
    model.setCustomSymbols(true);
    model.setLineSpacing(true);
    model.setResolution(UsualResolution);
    model.addPaperType(picturePaper());
    model.setFontTypes(
        {pictureFont(0, 12, 24), pictureFont(1, 12, 24), pictureFont(2, 16, 32), pictureFont(3, 16, 32)});
    return model;
}

PrinterInfo PaperRenderer::model() const
{
    return m_model;
}

void PaperRenderer::setModel(const PrinterInfo &model)
{
    m_model = model;
}

int PaperRenderer::paperId() const
{
    return m_paperId;
}

void PaperRenderer::setPaperId(int paperId)
{
    m_paperId = paperId;
}

QString PaperRenderer::codec() const
{
    return m_codec;
}

bool PaperRenderer::setCodec(const QString &name)
{
    if (!name.isEmpty() && QTextCodec::codecForName(name.toLatin1()) == nullptr) {
        return false;
    }
    m_codec = name;
    return true;
}

int PaperRenderer::emptyLinesAtEnd() const
{
    return m_emptyLinesAtEnd;
}

void PaperRenderer::setEmptyLinesAtEnd(int count)
{
    m_emptyLinesAtEnd = qBound(0, count, LargestEmptyLineCount);
}

QImage PaperRenderer::render(const TextPrinterDocument &document, const SpecialCharacters &symbols,
                             EPaperError *error) const
{
    EPaperError unused = PaperNoError;
    EPaperError &result = error == nullptr ? unused : *error;
    result = PaperUnknown;
    PrinterInfo model = m_model;
    const int width = model.paperType(m_paperId).pointsToLine();
    if (width < 1 || width > LargestWidth) {
        return {};
    }
    try {
        const QTextCodec *codec = m_codec.isEmpty() ? nullptr : QTextCodec::codecForName(m_codec.toLatin1());
        printsrv::PaperPage page(width, model, printsrv::CellMaker(model, codec, allImages(document, symbols)));
        const QImage picture = draw(page, document, m_emptyLinesAtEnd, result);
        return withResolution(picture, model.resolution() > 0 ? model.resolution() : UsualResolution);
    } catch (const std::bad_alloc &) {
        result = PaperNoMemory;
        return {};
    }
}
