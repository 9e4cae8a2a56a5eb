// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

// Formats generated receipts of any size a number of times, for a profiler around it:
//
//     growthcost lines|tags SCALE COUNT
//
// "lines" is a receipt of 60 × SCALE lines with an attribute each, "tags" one line of 10,000 × SCALE characters with
// 500 × SCALE tags.

#include <printerdocument.h>
#include <printerdocumentformatter.h>
#include <textprinterdocument.h>

#include <QTextStream>

namespace {

constexpr int BaseLines = 60;
constexpr int BaseTags = 500;

QString attributeName(int i)
{
    return QStringLiteral("AMOUNT%1").arg(i, 5, 10, QLatin1Char('0'));
}

QVariantMap attributes(int count)
{
    QVariantMap attributes;
    for (int i = 0; i < count; ++i) {
        attributes[attributeName(i)] = 1.25 * (i % BaseLines);
    }
    return attributes;
}

QString manyLines(int count)
{
    QStringList lines;
    for (int i = 0; i < count; ++i) {
        lines.append(QStringLiteral("<B>[Amount of goods<S><%1,0.00>]").arg(attributeName(i)));
    }
    return lines.join(QLatin1Char('\n'));
}

/** Twenty characters for each tag; one tag in four is an attribute. */
QString oneLine(int tags)
{
    const QString tag[]
        = {QStringLiteral("<B:>"), QStringLiteral("<AMOUNT00001>"), QStringLiteral("<:B>"), QStringLiteral("<#65>")};
    QString line;
    for (int i = 0; i < tags; ++i) {
        line += tag[i % 4].rightJustified(20, QLatin1Char('x'));
    }
    return line;
}

} // namespace

int main(int argc, char **argv)
{
    const QString kind = QString::fromLocal8Bit(argc == 4 ? argv[1] : "");
    if (kind != QLatin1String("lines") && kind != QLatin1String("tags")) {
        QTextStream(stderr) << "usage: growthcost lines|tags SCALE COUNT\n";
        return 2;
    }
    const bool isLines = kind == QLatin1String("lines");
    const int scale = atoi(argv[2]);
    PrinterDocument document;
    document.setAttributes(attributes(isLines ? BaseLines * scale : 2));
    PrinterDocumentFormatter formatter(0, nullptr);
    formatter.setTemplate(isLines ? manyLines(BaseLines * scale) : oneLine(BaseTags * scale));
    qint64 blocks = 0;
    for (int i = 0; i < atoi(argv[3]); ++i) {
        blocks += formatter.toTextPrinterDocument(document).blocks().size();
    }
    QTextStream(stdout) << blocks << '\n';
    return 0;
}
