// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "receiptstream.h"

#include "receiptdata.h"
#include "report.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <cerrno>
#include <unistd.h>

namespace printsrv {

namespace {

constexpr int LargestLineBytes = 16 * 1024 * 1024;
constexpr int LargestPendingBytes = 64 * 1024;

} // namespace

ReceiptStream::ReceiptStream(const ReceiptRenderer &renderer)
    : m_renderer(renderer)
{
}

ExitCode ReceiptStream::run()
{
    LineReader reader(STDIN_FILENO, LargestLineBytes, [this] { flush(); });
    QByteArray line;
    LineReader::EResult result = LineReader::EResult::End;
    while (m_written == EWriteResult::Written && (result = reader.next(line)) <= LineReader::EResult::TooLong) {
        ++m_line;
        take(result, line);
    }
    if (result == LineReader::EResult::Failed) {
        complain(QStringLiteral("standard input: not read: %1").arg(qt_error_string(errno)));
        m_hasFailures = true;
    }
    flush();
    if (m_written == EWriteResult::ReaderGone) {
        return ExitDone;
    }
    return m_hasFailures || m_written == EWriteResult::Failed ? ExitWrongInput : ExitDone;
}

void ReceiptStream::take(LineReader::EResult result, const QByteArray &line)
{
    setMessagePlace(QStringLiteral("line %1").arg(m_line));
    if (result == LineReader::EResult::TooLong) {
        answerFailure(QStringLiteral("the line is longer than 16 MiB"));
    } else if (!line.trimmed().isEmpty()) {
        answer(line);
    }
}

void ReceiptStream::answer(const QByteArray &line)
{
    const Outcome<PrinterDocument> receipt = readReceipt(line);
    if (!receipt) {
        const Failure &failure = receipt.failure();
        const QString place = failure.column > 0 ? QStringLiteral("column %1: ").arg(failure.column) : QString();
        answerFailure(place + failure.text);
        return;
    }
    append({{m_renderer.formatName(), m_renderer.toJson(*receipt)}});
    m_progress.count(true);
}

void ReceiptStream::answerFailure(const QString &text)
{
    m_hasFailures = true;
    append({{QStringLiteral("error"), text}, {QStringLiteral("line"), m_line}});
    m_progress.count(false);
}

void ReceiptStream::append(const QJsonObject &answer)
{
    m_pending += QJsonDocument(answer).toJson(QJsonDocument::Compact) + '\n';
    if (m_pending.size() >= LargestPendingBytes) {
        flush();
    }
}

void ReceiptStream::flush()
{
    if (m_written == EWriteResult::Written && !m_pending.isEmpty()) {
        m_written = writeStandardOutput(m_pending);
    }
    m_pending.clear();
}

} // namespace printsrv
