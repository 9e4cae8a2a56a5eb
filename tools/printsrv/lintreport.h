// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_LINTREPORT_H
#define PRINTSRV_LINTREPORT_H

#include <templatelint.h>

#include <QByteArray>

namespace printsrv {

/** lintTemplate() without the lines of the library's log: a finding tells of a broken file. */
[[nodiscard]] std::optional<QVector<Finding>> findingsOf(const QStringList &lines, const LintOptions &options);

/** One finding a line, "path:line:column: code: text". */
QByteArray lintText(const QVector<Finding> &findings, const QString &path);

/** A JSON array of objects with file, line, column, code, severity and text. */
QByteArray lintJson(const QVector<Finding> &findings, const QString &path);

/** Tells each of them on standard error. */
void complainOf(const QVector<Finding> &findings, const QString &path);

/** True when one of them is an error. */
bool hasError(const QVector<Finding> &findings);

/** Those that are errors. */
QVector<Finding> errorsOf(const QVector<Finding> &findings);

/** The page of a code: what it finds, why, how to mend it, with an example. */
QByteArray lintPage(ELintCode code);

} // namespace printsrv

#endif
