// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_PAPERLINE_H
#define PRINTSRV_PAPERLINE_H

#include "templatelint.h"

#include <receipttrace.h>

namespace printsrv {

/** How much of the paper a line takes. */
struct LineWidth
{
    qint64 text = 0; /**< Without the TAB between its sides. */
    int blank = 0; /**< The blank that parts the sides at least; 0 for a line with one side. */
    int edge = -1; /**< Index of the first character that does not fit; -1 when all do. */

    qint64 all() const
    {
        return text + blank;
    }
};

/** What the paper has room for: in dots, or in characters when the model is not known. */
class PaperLine
{
public:
    explicit PaperLine(const LintOptions &options);

    /** 0 when there is room for anything. */
    int width() const;

    /** How much @p width is of the paper's, "720 of 512 dots". */
    QString share(qint64 width) const;

    LineWidth measured(const ReceiptTrace::Line &line) const;

private:
    int cellWidth(const ReceiptTrace::Line &line, int index) const;

    int m_width = 0;
    bool m_isDots = false;
    bool m_hasDoubleWidth = true;
    QVector<int> m_cells = {1, 1, 1, 1}; // of the fonts 0 to 3
};

/** A font or format byte; 0 behind the last one. */
uchar byteAt(const QByteArray &bytes, int index);

/** True for the second half of a character beyond 65535. */
bool isSecondOfPair(const QString &text, int index);

} // namespace printsrv

#endif
