// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include <paperfile.h>
#include <paperrenderer.h>

#include <benchmark/benchmark.h>

#include <iterator>

// What a picture of a receipt of 60 lines costs at 203 dots an inch; it shall take less than 10 ms after the first.

namespace {

// Lines, fonts and formats differ, so that nothing drawn once serves for all of them.
constexpr int ReceiptBlocks = 12;
constexpr int LinesOfBlock = 5;
const char *const Goods[] = {"Молоко 2.5% Ферма", "Хлеб ржаной", "Bread Rye 0.7", "Чай чёрный, 80 шт.", "Сахар-песок"};
constexpr uchar Formats[] = {0, CharFormatBold, CharFormatUnderline, CharFormatDoubleHeight};

TextPrinterDocument receipt()
{
    TextPrinterDocument document;
    for (int block = 0; block < ReceiptBlocks; ++block) {
        QStringList text;
        for (int line = 0; line < LinesOfBlock; ++line) {
            const int pieces = block * LinesOfBlock + line;
            text.append(QStringLiteral("%1\t%2 x 64.90 = %3")
                            .arg(QString::fromUtf8(Goods[line]))
                            .arg(pieces)
                            .arg(pieces * 64.9, 0, 'f', 2));
        }
        const uchar font = block % 2 == 0 ? 0 : 1;
        document.appendBlock(DocumentBlock::createSimpleBlock(text, TextAlignFullWidth, font,
                                                              Formats[block % std::size(Formats)], 0, 0));
    }
    return document;
}

TextPrinterDocument receiptWithCode()
{
    TextPrinterDocument document = receipt();
    DocumentBlock code;
    code.setQrCode("t=20240305T1407&s=1000.00&fn=9960440300012345&i=8117&fp=0318274401&n=1");
    document.appendBlock(code);
    return document;
}

PaperRenderer renderer()
{
    PaperRenderer result(PrinterInfo::fromResources().first());
    (void)result.setCodec(QStringLiteral("cp866"));
    result.setEmptyLinesAtEnd(5);
    return result;
}

void drawReceipt(benchmark::State &state)
{
    const TextPrinterDocument document = receipt();
    const PaperRenderer paper = renderer();
    benchmark::DoNotOptimize(paper.render(document));
    for (auto _ : state) {
        benchmark::DoNotOptimize(paper.render(document));
    }
}
BENCHMARK(drawReceipt)->Unit(benchmark::kMillisecond);

void drawReceiptWithCode(benchmark::State &state)
{
    const TextPrinterDocument document = receiptWithCode();
    const PaperRenderer paper = renderer();
    benchmark::DoNotOptimize(paper.render(document));
    for (auto _ : state) {
        benchmark::DoNotOptimize(paper.render(document));
    }
}
BENCHMARK(drawReceiptWithCode)->Unit(benchmark::kMillisecond);

void writeFile(benchmark::State &state, QByteArray (*writer)(const QImage &))
{
    const QImage picture = renderer().render(receipt());
    for (auto _ : state) {
        benchmark::DoNotOptimize(writer(picture));
    }
}
BENCHMARK_CAPTURE(writeFile, png, PaperFile::toPng)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(writeFile, pdf, PaperFile::toPdf)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(writeFile, svg, PaperFile::toSvg)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
