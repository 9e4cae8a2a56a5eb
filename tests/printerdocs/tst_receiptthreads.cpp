// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "crew.h"
#include "shopreceipt.h"
#include "testfixture.h"

#include <textprinterdocument.h>
#include <textprintermodels.h>
#include <textprintersettings.h>

#include <atomic>

// Threads that share receipts, templates, documents and the catalogue, each with objects of its own.

namespace {

constexpr int Threads = 8;
constexpr int ReceiptsPerThread = 200;
constexpr int Receipts = 20;
constexpr int Width = 42;

struct Printed
{
    QString text;
    QString html;
    TextPrinterDocument document;

    bool operator==(const Printed &other) const
    {
        return text == other.text && html == other.html && document == other.document;
    }
};

Printed print(const PrinterDocumentFormatter &formatter, const PrinterDocument &receipt)
{
    return {formatter.toPlainText(receipt, Width), formatter.toHtml(receipt, true),
            formatter.toTextPrinterDocument(receipt)};
}

QString differenceFrom(const TextPrinterDocument &document, const QString &path)
{
    TextPrinterDocument loaded;
    if (!document.saveToFile(path) || !loaded.loadFromFile(path)) {
        return QStringLiteral("not saved");
    }
    return loaded == document ? QString() : QStringLiteral("another document");
}

} // namespace

class ReceiptThreadsTest : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void formatsWhatOneThreadFormats();
    void savesAndLoads();
    void readsTheCatalogueAtOnce();
};

void ReceiptThreadsTest::formatsWhatOneThreadFormats()
{
    PrinterDocumentFormatter shared;
    shared.setTemplate(shop::receiptTemplate());
    QVector<PrinterDocument> receipts;
    QVector<Printed> expected;
    for (int number = 0; number < Receipts; ++number) {
        receipts.append(shop::receipt(number));
        expected.append(print(shared, receipts.last()));
    }
    std::atomic_int wrong{0};
    runTogether(Threads, [&](int thread) {
        PrinterDocumentFormatter own;
        own.setTemplate(shop::receiptTemplate());
        for (int i = 0; i < ReceiptsPerThread; ++i) {
            const int number = (i + thread) % Receipts;
            PrinterDocument receipt = receipts.at(number);
            receipt.setAttributes(receipt.attributes()); // a copy that is changed while others read
            const bool isSame = print(i % 2 == 0 ? own : shared, receipt) == expected.at(number);
            wrong += isSame ? 0 : 1;
        }
    });
    QCOMPARE(wrong.load(), 0);
}

void ReceiptThreadsTest::savesAndLoads()
{
    const QTemporaryDir folder;
    PrinterDocumentFormatter formatter;
    formatter.setTemplate(shop::receiptTemplate());
    const TextPrinterDocument document = formatter.toTextPrinterDocument(shop::receipt(1));
    QVector<QString> differences(Threads);
    QString *found = differences.data();
    runTogether(Threads, [&](int thread) {
        found[thread] = differenceFrom(document, folder.filePath(QStringLiteral("%1.json").arg(thread)));
    });
    QCOMPARE(differences, QVector<QString>(Threads));
}

void ReceiptThreadsTest::readsTheCatalogueAtOnce()
{
    std::atomic_int printers{0};
    runTogether(Threads, [&](int) {
        printers += PrinterInfo::fromResources().size();
        printers += TextPrinterSettings().availablePrinters().size();
    });
    QCOMPARE(printers.load(), Threads * 2 * PrinterInfo::fromResources().size());
}

QTEST_GUILESS_MAIN(ReceiptThreadsTest)
#include "tst_receiptthreads.moc"
