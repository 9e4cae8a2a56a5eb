// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_RECEIPTSTREAM_H
#define PRINTSRV_RECEIPTSTREAM_H

#include "linereader.h"
#include "outputwriter.h"
#include "progress.h"
#include "receiptrenderer.h"

namespace printsrv {

/**
 * Receipts as lines of JSON from standard input to standard output: one object a line in, one object a line out.
 *
 * A receipt that cannot be made gives {"error": …, "line": N} and the run goes on. Blank lines are passed over. Answers
 * are handed on before the stream waits for further input, and after each 64 KiB, so that a partner who asks one by one
 * is answered at once and bulk goes through in large pieces.
 */
class ReceiptStream
{
public:
    explicit ReceiptStream(const ReceiptRenderer &renderer);

    /**
     * Runs until the input ends.
     *
     * @return ExitDone when every receipt was made, or the reader went away; ExitWrongInput when any failed, or the
     * input or the output did
     */
    ExitCode run();

private:
    void take(LineReader::EResult result, const QByteArray &line);
    void answer(const QByteArray &line);
    void answerFailure(const QString &text);
    void append(const QJsonObject &answer);
    void flush();

    const ReceiptRenderer &m_renderer;
    Progress m_progress;
    QByteArray m_pending;
    EWriteResult m_written = EWriteResult::Written;
    qint64 m_line = 0;
    bool m_hasFailures = false;
};

} // namespace printsrv

#endif
