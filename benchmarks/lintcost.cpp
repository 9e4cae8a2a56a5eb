// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "receiptworkload.h"

#include <benchmark/benchmark.h>
#include <templatelint.h>

#include <QTextCodec>

// What checking the template of a receipt of about 60 lines costs; it shall take less than 5 ms.

namespace {

void lint(benchmark::State &state, bool isHostile)
{
    const workload::Texts texts = workload::textsOf(QStringLiteral("ru"));
    const QStringList lines = workload::templateOf(texts).split(QLatin1Char('\n'));
    printsrv::LintOptions options;
    options.receipts = {workload::receiptsOf(texts, 1).first().document};
    options.model = PrinterInfo::fromResources().first();
    options.codec = QTextCodec::codecForName("cp866");
    options.isHostile = isHostile;
    for (auto _ : state) {
        benchmark::DoNotOptimize(printsrv::lintTemplate(lines, options));
    }
}
void lintWithReceipt(benchmark::State &state)
{
    lint(state, false);
}
BENCHMARK(lintWithReceipt)->Unit(benchmark::kMillisecond);

void lintHostile(benchmark::State &state)
{
    lint(state, true);
}
BENCHMARK(lintHostile)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
