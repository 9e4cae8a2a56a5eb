// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include <printerdocumentformatter.h>
#include <textprintersettings.h>

#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

// What an object costs that a program makes again and again, after the first one.

namespace {

/** A configuration of the terminal whose folders are in @p folder. */
void configureIn(const QTemporaryDir &folder)
{
    QFile file(folder.filePath(QStringLiteral("orbek.conf")));
    file.open(QIODevice::WriteOnly);
    file.write("[paths]\nworkDir=" + QFile::encodeName(folder.path()) + '\n');
    qputenv("ORBEK_CONFIG", QFile::encodeName(file.fileName()));
}

void makeTextPrinterSettings(benchmark::State &state)
{
    const TextPrinterSettings first;
    for (auto _ : state) {
        const TextPrinterSettings settings;
        benchmark::DoNotOptimize(&settings);
    }
}
BENCHMARK(makeTextPrinterSettings)->Unit(benchmark::kMicrosecond);

void makeFormatter(benchmark::State &state)
{
    const QTemporaryDir folder;
    configureIn(folder);
    for (auto _ : state) {
        const PrinterDocumentFormatter formatter(0, nullptr);
        benchmark::DoNotOptimize(&formatter);
    }
}
BENCHMARK(makeFormatter)->Unit(benchmark::kMicrosecond);

} // namespace
