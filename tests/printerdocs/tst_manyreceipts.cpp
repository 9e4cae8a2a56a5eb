// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "shopreceipt.h"
#include "testfixture.h"

#include <printerdocumentformatter.h>
#include <textprinterdocument.h>

#include <malloc.h>
#include <unistd.h>

// Formats, saves and loads receipts, one after the other in one process, as a terminal does for years: neither the
// memory nor the descriptors in use grow. PRINTSRV_RECEIPTS sets how many.

namespace {

constexpr int UsualReceipts = 200;
constexpr int Samples = 10;
constexpr qint64 MostGrownBytes = 4096; // over nine tenths of the receipts

struct Sample
{
    qint64 heapBytes;
    qint64 residentKiB;
    int descriptors;
};

Sample sample()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    const qint64 pages = file.open(QIODevice::ReadOnly) ? file.readAll().split(' ').at(1).toLongLong() : 0;
    file.close();
    const struct mallinfo2 heap = mallinfo2();
    return {qint64(heap.uordblks + heap.hblkhd), pages * sysconf(_SC_PAGESIZE) / 1024,
            int(QDir(QStringLiteral("/proc/self/fd")).entryList(QDir::Files | QDir::System).size())};
}

int wantedReceipts()
{
    const int wanted = qEnvironmentVariableIntValue("PRINTSRV_RECEIPTS");
    return qMax(wanted > 0 ? wanted : UsualReceipts, Samples);
}

} // namespace

class ManyReceiptsTest : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void flatMemoryAndDescriptors();
};

void ManyReceiptsTest::flatMemoryAndDescriptors()
{
    const QTemporaryDir folder;
    QVERIFY(QFile::link(QStringLiteral("/bin/true"), folder.filePath(QStringLiteral("sync")))); // no power cut here
    qputenv("PATH", QFile::encodeName(folder.path()) + ':' + qgetenv("PATH"));
    const QString path = folder.filePath(QStringLiteral("receipt.json"));
    const int receipts = wantedReceipts();
    QVector<Sample> samples;
    samples.reserve(Samples);
    for (int number = 1; number <= receipts; ++number) {
        PrinterDocumentFormatter formatter;
        formatter.setTemplate(shop::receiptTemplate());
        const PrinterDocument document = shop::receipt(number);
        QVERIFY(!formatter.toPlainText(document, 42).isEmpty() && !formatter.toHtml(document, true).isEmpty());
        const TextPrinterDocument saved = formatter.toTextPrinterDocument(document);
        QVERIFY(saved.saveToFile(path));
        TextPrinterDocument loaded;
        QVERIFY(loaded.loadFromFile(path));
        QCOMPARE(loaded, saved);
        if (number % (receipts / Samples) == 0 && samples.size() < Samples) {
            samples.append(sample());
            qInfo("%8d receipts: %lld bytes of heap, %lld KiB resident, %d descriptors", number,
                  samples.last().heapBytes, samples.last().residentKiB, samples.last().descriptors);
        }
    }
    QVERIFY(samples.last().heapBytes - samples.first().heapBytes <= MostGrownBytes);
    QCOMPARE(samples.last().descriptors, samples.first().descriptors);
}

QTEST_GUILESS_MAIN(ManyReceiptsTest)
#include "tst_manyreceipts.moc"
