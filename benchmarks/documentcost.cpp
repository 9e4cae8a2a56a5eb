// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include <documentblock.h>
#include <printerinfo.h>
#include <specialcharacters.h>
#include <textprinterdocument.h>

#include <QDebug>
#include <QJsonDocument>
#include <QProcess>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <cstdlib>

// What a document costs beside the formatter: its file, its HTML, its lines, and the catalogue that is read once.

namespace {

constexpr int ReceiptLines = 60;
constexpr int PrinterWidth = 44;
const char ReceiptLine[] = "Молоко 2.5% \"Ферма\"\t2 x 64.90 = 129.80";

DocumentBlock receiptBlock(int lines)
{
    QStringList text;
    for (int i = 0; i < lines; ++i) {
        text.append(QString::fromUtf8(ReceiptLine));
    }
    return DocumentBlock::createSimpleBlock(text, TextAlignFullWidth, 0, 0, 0, 0);
}

TextPrinterDocument receipt(int lines)
{
    TextPrinterDocument document;
    document.appendBlock(receiptBlock(lines));
    return document;
}

// The row of one line as somebody would write it who knows what is in it.
void appendRowByHand(QString &html, const QString &left, const QString &right)
{
    html += QLatin1String("<tr><td align = \"left\"> <font size = 1>");
    html += left;
    html += QLatin1String("</font> </td><td align = \"right\"> <font size = 1>");
    html += right;
    html += QLatin1String("</font> </td></tr>");
}

QString htmlByHand(const QString &left, const QString &right, int lines)
{
    QString html;
    for (int i = 0; i < lines; ++i) {
        if (i > 0) {
            html += QLatin1Char('\n');
        }
        appendRowByHand(html, left, right);
    }
    return html;
}

void saveDocument(benchmark::State &state)
{
    const QTemporaryDir folder;
    const TextPrinterDocument document = receipt(ReceiptLines);
    for (auto _ : state) {
        if (!document.saveToFile(folder.filePath(QStringLiteral("receipt.json")))) {
            state.SkipWithError("not saved");
            break;
        }
    }
}
BENCHMARK(saveDocument)->UseRealTime()->Unit(benchmark::kMillisecond);

bool writeSummedFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush()) {
        return false;
    }
    QProcess process;
    process.setStandardOutputFile(path + QLatin1String(".sha1"));
    process.start(QStringLiteral("sha1sum"), {path});
    return process.waitForFinished() && std::system("sync") == 0;
}

// The steps that make a document and its backup outlive a power cut, and nothing else.
void saveByHand(benchmark::State &state)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("receipt.json"));
    const QByteArray bytes = QJsonDocument::fromVariant(receipt(ReceiptLines).toMap()).toJson(QJsonDocument::Compact);
    for (auto _ : state) {
        if (!writeSummedFile(path, bytes) || !writeSummedFile(path + QLatin1String(".bak"), bytes)) {
            state.SkipWithError("not saved");
            break;
        }
    }
}
BENCHMARK(saveByHand)->UseRealTime()->Unit(benchmark::kMillisecond);

void loadDocument(benchmark::State &state)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("receipt.json"));
    const auto lines = static_cast<int>(state.range(0));
    if (!receipt(lines).saveToFile(path)) {
        state.SkipWithError("not saved");
    }
    for (auto _ : state) {
        TextPrinterDocument document;
        benchmark::DoNotOptimize(document.loadFromFile(path));
    }
}
BENCHMARK(loadDocument)->Arg(ReceiptLines)->Arg(100 * ReceiptLines)->Unit(benchmark::kMicrosecond);

void loadCatalogue(benchmark::State &state)
{
    for (auto _ : state) {
        benchmark::DoNotOptimize(PrinterInfo::fromResources());
    }
}
BENCHMARK(loadCatalogue)->Unit(benchmark::kMicrosecond);

void blockHtml(benchmark::State &state)
{
    const DocumentBlock block = receiptBlock(ReceiptLines);
    const SpecialCharacters symbols;
    for (auto _ : state) {
        benchmark::DoNotOptimize(block.toHtml(false, symbols, true, 0));
    }
}
BENCHMARK(blockHtml)->Unit(benchmark::kMicrosecond);

void blockHtmlByHand(benchmark::State &state)
{
    const QString line = QString::fromUtf8(ReceiptLine).toHtmlEscaped();
    const QString left = line.section(QLatin1Char('\t'), 0, 0);
    const QString right = line.section(QLatin1Char('\t'), 1);
    if (htmlByHand(left, right, ReceiptLines)
        != receiptBlock(ReceiptLines).toHtml(false, SpecialCharacters(), true, 0)) {
        state.SkipWithError("not the same text");
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(htmlByHand(left, right, ReceiptLines));
    }
}
BENCHMARK(blockHtmlByHand)->Unit(benchmark::kMicrosecond);

void blockLines(benchmark::State &state)
{
    DocumentBlock block = receiptBlock(ReceiptLines);
    for (auto _ : state) {
        benchmark::DoNotOptimize(block.toStringList(PrinterWidth));
    }
}
BENCHMARK(blockLines)->Unit(benchmark::kMicrosecond);

void appendBlocks(benchmark::State &state)
{
    const DocumentBlock line = receiptBlock(1);
    for (auto _ : state) {
        DocumentBlock block = line;
        for (int i = 1; i < ReceiptLines; ++i) {
            block.append(line);
        }
        benchmark::DoNotOptimize(block);
    }
}
BENCHMARK(appendBlocks)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
