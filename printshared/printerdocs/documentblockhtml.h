// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_DOCUMENTBLOCKHTML_H
#define PRINTSRV_DOCUMENTBLOCKHTML_H

#include "documentblock.h"

#include <QByteArray>
#include <QString>

namespace printsrv {

class SymbolPictures;

/** What a line of text becomes. */
enum class EHtmlForm {
    TableRow, /**< A row of a table with two columns. */
    Preformatted, /**< An aligned part inside "<pre>". */
};

/** How lines are rendered; one of these serves all lines of a page. */
struct HtmlStyle
{
    EHtmlForm form;
    int leftCellPercent; /**< Width of the left cell of full-width rows, 1 to 99; otherwise the browser chooses. */
    SymbolPictures *symbols; /**< Not owned. */
};

/** One line of a block: its characters with their font and format bytes, of any length. Nothing is owned. */
struct HtmlLine
{
    const QString &text;
    const QByteArray &font;
    const QByteArray &format;
};

/** Appends one line of a text block to @p out, "<pre>" and "</pre>" around it included, without a newline at its end.
 */
void appendLineHtml(QString &out, const HtmlLine &line, ETextAlignment alignment, const HtmlStyle &style);

/** Appends what DocumentBlock::toHtml() returns to @p out. */
void appendBlockHtml(QString &out, const DocumentBlock &block, const HtmlStyle &style);

/** DocumentBlock::toHtml() of one block. */
QString blockHtml(const DocumentBlock &block, const SpecialCharacters &symbols, EHtmlForm form, int leftCellPercent);

} // namespace printsrv

#endif
