// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "papercode.h"

#include "paperlog.h"

#include <zint.h>

#include <cmath>
#include <memory>

namespace printsrv {

namespace {

using Symbol = std::unique_ptr<zint_symbol, decltype(&ZBarcode_Delete)>;

// No symbology takes more; it also bounds the time.
constexpr int LargestContent = 8192;
constexpr int LinearHeight = 80;
constexpr int LargestModule = 3;
constexpr int LargestQrModule = 6;
constexpr int QuietModules = 10;
constexpr int QuietQrModules = 4;

// MaxiCode is made of hexagons and Ultracode of colours.
bool isBlackAndWhiteModules(int symbology)
{
    return symbology != BARCODE_MAXICODE && symbology != BARCODE_ULTRA;
}

bool refuse(int symbology, const QString &reason)
{
    qCWarning(paperLog).noquote() << QStringLiteral("No code of type %1: %2").arg(symbology).arg(reason);
    return false;
}

bool encode(zint_symbol &symbol, const QByteArray &data, int symbology)
{
    symbol.symbology = symbology;
    symbol.input_mode = DATA_MODE;
    if (ZBarcode_ValidID(symbology) == 0 || !isBlackAndWhiteModules(symbology)) {
        return refuse(symbology, QStringLiteral("it is no symbology that can be drawn"));
    }
    if (data.isEmpty() || data.size() > LargestContent) {
        return refuse(symbology, QStringLiteral("it has %1 bytes").arg(data.size()));
    }
    const auto *bytes = reinterpret_cast<const unsigned char *>(data.constData());
    if (ZBarcode_Encode(&symbol, bytes, static_cast<int>(data.size())) >= ZINT_ERROR) {
        // The number is enough: zint's text can quote the data.
        const QString text = QString::fromLatin1(symbol.errtxt);
        return refuse(symbology,
                      QStringLiteral("libzint refuses the data (%1)").arg(text.section(QLatin1Char(':'), 0, 0)));
    }
    return true;
}

// Height of a row in dots; a linear code has one row, a row without a height shares what is usual.
int rowHeight(const zint_symbol &symbol, int row, int module)
{
    if (symbol.rows == 1) {
        return LinearHeight;
    }
    const float height = symbol.row_height[row];
    return module * qBound(1, static_cast<int>(std::lround(height)), LinearHeight);
}

bool isBlack(const zint_symbol &symbol, int row, int module)
{
    return ((symbol.encoded_data[row][module / 8] >> (module % 8)) & 1) != 0;
}

void drawRow(Raster &raster, const zint_symbol &symbol, int row, QRect place)
{
    for (int module = 0; module < symbol.width; ++module) {
        if (isBlack(symbol, row, module)) {
            raster.fill(place.x() + module * place.width(), place.y(), place.width(), place.height());
        }
    }
}

Raster drawCode(const zint_symbol &symbol, int module, int quietModules)
{
    const int quiet = quietModules * module;
    // A linear code needs its quiet zone at the sides only.
    const int above = symbol.rows == 1 ? 0 : quiet;
    int height = 2 * above;
    for (int row = 0; row < symbol.rows; ++row) {
        height += rowHeight(symbol, row, module);
    }
    Raster raster(symbol.width * module + 2 * quiet, height);
    int y = above;
    for (int row = 0; row < symbol.rows; ++row) {
        const int rows = rowHeight(symbol, row, module);
        drawRow(raster, symbol, row, {quiet, y, module, rows});
        y += rows;
    }
    return raster;
}

} // namespace

Raster codeRaster(const DocumentBlock &block, int largestWidth)
{
    const bool isQr = block.isQrCode();
    const int symbology = isQr ? BARCODE_QRCODE : static_cast<int>(block.barCodeType());
    const Symbol symbol(ZBarcode_Create(), &ZBarcode_Delete);
    if (symbol == nullptr || !encode(*symbol, block.barcode(), symbology)) {
        return {};
    }
    const bool isMatrix = isQr || (symbol->rows > 1 && symbol->row_height[0] <= 1.0F);
    const int quiet = isMatrix ? QuietQrModules : QuietModules;
    const int module = qMin(isMatrix ? LargestQrModule : LargestModule, largestWidth / (symbol->width + 2 * quiet));
    if (module < 1) {
        refuse(symbology, QStringLiteral("it is wider than the paper"));
        return {};
    }
    return drawCode(*symbol, module, quiet);
}

} // namespace printsrv
