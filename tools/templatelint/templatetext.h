// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_TEMPLATETEXT_H
#define PRINTSRV_TEMPLATETEXT_H

#include <receipttrace.h>

#include <QStringList>

namespace printsrv {

/** Which part of a template with "<FISCAL_INFO>" is wanted. */
enum class EPart {
    All, /**< Both, one after the other. */
    Main, /**< What stands before the tag. */
    Fiscal, /**< What stands behind the tag. */
};

/**
 * A template as it prints, parted at "<FISCAL_INFO>" as PrinterDocumentFormatter::splitByFiscalInfo() does, which keeps
 * the places in the file.
 */
class TemplateText
{
public:
    explicit TemplateText(const QStringList &fileLines, EPart part = EPart::All);

    /** True without any line. */
    bool isEmpty() const;

    /** The lines that print, joined with "\n". */
    QString text() const;

    /** The place in the file of a place in text(). */
    ReceiptTrace::Place inFile(ReceiptTrace::Place place) const;

private:
    void append(const QString &text, int line, int firstColumn);
    void appendTrimmed(const QString &line, int begin, int end, int number);

    QStringList m_lines;
    QVector<ReceiptTrace::Place> m_begins; // in the file, of each line
};

} // namespace printsrv

#endif
