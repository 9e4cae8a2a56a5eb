// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

// Formats the receipts of the workload a number of times in one way, for a profiler or a clock around it:
//
//     receiptcost check
//     receiptcost first en|ru
//     receiptcost library|append text|html|document en|ru COUNT
//
// "check" compares the bytes of both ways. "first" prints the CPU time of the process's first receipt, from the
// setting of its template on, the others that of COUNT receipts, in microseconds, and the peak of memory in KiB.

#include "receiptappend.h"
#include "receiptworkload.h"

#include <printerdocumentformatter.h>
#include <textprinterdocument.h>

#include <QFile>
#include <QTextStream>

#include <ctime>

namespace {

constexpr int ReceiptCount = 16;

using workload::Receipt;
using workload::Texts;

/** One way of making one kind of output; the result's size keeps the work from being left out. */
class Maker
{
public:
    Maker(const Texts &texts, bool isLibrary, const QString &kind)
        : m_texts(texts)
        , m_isLibrary(isLibrary)
        , m_kind(kind)
    {
        m_formatter.setTemplate(workload::templateOf(texts));
    }

    int make(const Receipt &receipt) const
    {
        if (m_kind == QLatin1String("document")) {
            return m_isLibrary ? m_formatter.toTextPrinterDocument(receipt.document).blocks().size()
                               : workload::appendedLines(m_texts, receipt).size();
        }
        return text(receipt).size();
    }

    QString text(const Receipt &receipt) const
    {
        if (m_kind == QLatin1String("text")) {
            return m_isLibrary ? m_formatter.toPlainText(receipt.document, workload::Width)
                               : workload::appendedText(m_texts, receipt);
        }
        return m_isLibrary ? m_formatter.toHtml(receipt.document, false) : workload::appendedHtml(m_texts, receipt);
    }

    /** The blocks of a document, from the lists of lines where it is made by hand. */
    QList<DocumentBlock> blocks(const Receipt &receipt) const
    {
        if (m_isLibrary) {
            return m_formatter.toTextPrinterDocument(receipt.document).blocks();
        }
        QList<DocumentBlock> blocks;
        const auto runs = workload::appendedLines(m_texts, receipt);
        for (const workload::AppendedLines &run : runs) {
            DocumentBlock block;
            block.setText(run.text);
            block.setFont(run.font);
            block.setFormat(run.format);
            block.setLineSpacing(run.lineSpacing);
            block.setAlignment(run.alignment);
            blocks.append(block);
        }
        return blocks;
    }

private:
    const Texts &m_texts;
    bool m_isLibrary;
    QString m_kind;
    PrinterDocumentFormatter m_formatter;
};

bool giveTheSame(const QString &language)
{
    const Texts texts = workload::textsOf(language);
    const auto receipts = workload::receiptsOf(texts, ReceiptCount);
    bool same = true;
    for (const Receipt &receipt : receipts) {
        for (const char *kind : {"text", "html"}) {
            const QString library = Maker(texts, true, QLatin1String(kind)).text(receipt);
            const QString appended = Maker(texts, false, QLatin1String(kind)).text(receipt);
            same = same && library == appended;
            if (library != appended) {
                QTextStream(stdout) << language << ' ' << kind << " differs:\n"
                                    << library << "\n---\n"
                                    << appended << '\n';
            }
        }
        same = same
            && Maker(texts, true, QStringLiteral("document")).blocks(receipt)
                == Maker(texts, false, QStringLiteral("document")).blocks(receipt);
    }
    return same;
}

int check()
{
    const bool same = giveTheSame(QStringLiteral("en")) && giveTheSame(QStringLiteral("ru"));
    QTextStream(stdout) << (same ? "both ways give the same\n" : "the two ways differ\n");
    return same ? 0 : 1;
}

double microsecondsSince(std::clock_t begin)
{
    return 1e6 * double(std::clock() - begin) / CLOCKS_PER_SEC;
}

int measureFirst(const QString &language)
{
    const Texts texts = workload::textsOf(language);
    const auto receipts = workload::receiptsOf(texts, 1);
    PrinterDocumentFormatter formatter(0, nullptr);
    const std::clock_t begin = std::clock();
    formatter.setTemplate(workload::templateOf(texts));
    const int size = formatter.toTextPrinterDocument(receipts.first().document).blocks().size();
    QTextStream(stdout) << QString::number(microsecondsSince(begin), 'f', 0) << ' ' << size << '\n';
    return 0;
}

/** Of this process alone, unlike getrusage(), which counts its parent too. */
QByteArray peakMemory()
{
    QFile status(QStringLiteral("/proc/self/status"));
    status.open(QIODevice::ReadOnly);
    const QByteArray text = status.readAll();
    const int begin = text.indexOf("VmHWM:") + 6;
    return text.mid(begin, text.indexOf("kB", begin) - begin).trimmed();
}

int measure(const QStringList &arguments)
{
    const Texts texts = workload::textsOf(arguments.at(2));
    const auto receipts = workload::receiptsOf(texts, ReceiptCount);
    const Maker maker(texts, arguments.at(0) == QLatin1String("library"), arguments.at(1));
    const int count = arguments.at(3).toInt();
    const std::clock_t begin = std::clock();
    qint64 size = 0;
    for (int i = 0; i < count; ++i) {
        size += maker.make(receipts.at(i % ReceiptCount));
    }
    QTextStream(stdout) << QString::number(microsecondsSince(begin), 'f', 0) << ' ' << peakMemory() << ' ' << size
                        << '\n';
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i) {
        arguments.append(QString::fromLocal8Bit(argv[i]));
    }
    if (arguments == QStringList{QStringLiteral("check")}) {
        return check();
    }
    if (arguments.size() == 2 && arguments.at(0) == QLatin1String("first")) {
        return measureFirst(arguments.at(1));
    }
    if (arguments.size() != 4) {
        QTextStream(stderr)
            << "usage: receiptcost check | first en|ru | library|append text|html|document en|ru COUNT\n";
        return 2;
    }
    return measure(arguments);
}
