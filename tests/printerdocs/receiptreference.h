// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_RECEIPTREFERENCE_H
#define PRINTSRV_RECEIPTREFERENCE_H

#include "printerdocument.h"

#include <QStringList>

/**
 * The rules of receipt formatting a second time, to compare the library with: one rule after the other on a whole
 * line, slow, and plain enough to be read beside the description of the template language. It shares no code with the
 * library but the fixed-point number.
 */
namespace reference {

/** Lines filled from a document, and how many warnings about limits belong to them. */
struct PreparedLines
{
    QStringList lines;
    int warnings = 0;
};

/** One formatted line: a font and a format byte for each character. Alignment: 0 left, 1 right, 2 centre, 3 full. */
struct FormattedLine
{
    QString text;
    QByteArray font;
    QByteArray format;
    int alignment = 0;
    int lineSpacing = 0;
};

/** What one line hands on to the next. */
struct LineState
{
    unsigned char format = 0;
    unsigned char font = 0;
    int alignment = 0;
};

/** Characters mode: as they are, upper case, lower case. */
enum class LetterCase { Kept = 0, Upper = 1, Lower = 2 };

QString intToString(const QString &format, qint64 value);
QString floatToString(const QString &format, double value);
/** The text of one attribute, a sum included, in @p format. */
QString valueText(const QString &name, const QString &format, const QVariantMap &attributes);

/** One line with its attributes filled in; counts the characters of all values so far, which are limited, too, and a
 * warning when a limit is reached. */
QString substitute(QString line, const QVariantMap &attributes, int &valueLength, int &warnings);
PreparedLines prepare(const QStringList &templateLines, const PrinterDocument &document);

FormattedLine formatLine(const QString &line, LineState &state, int lineSpacing);
QList<FormattedLine> formatLines(const QStringList &lines, LetterCase letterCase);

QString plainText(const QStringList &lines, int width, LetterCase letterCase);
/** The rows of the HTML table without its wrapper; cells have no width, blanks are blanks. */
QString htmlRows(const QStringList &lines, LetterCase letterCase);

/** One line of text for each line of the blocks, and one for the head of each block; see describe(). */
QStringList documentBlocks(const QStringList &lines, LetterCase letterCase);
QString describeHead(int alignment);
QString describeLine(const QString &text, const QByteArray &font, const QByteArray &format, int lineSpacing);

} // namespace reference

#endif
