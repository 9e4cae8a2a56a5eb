// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "lintreport.h"

#include "outcome.h"
#include "report.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace printsrv {

namespace {

bool isError(const Finding &finding)
{
    return lintSeverity(finding.code) == ESeverity::Error;
}

QString lineOf(const Finding &finding, const QString &path)
{
    const QString what = lintCodeName(finding.code) + QStringLiteral(": ") + finding.text;
    return Failure{what, finding.line, finding.column}.at(path);
}

} // namespace

std::optional<QVector<Finding>> findingsOf(const QStringList &lines, const LintOptions &options)
{
    const LibrarySilence silence;
    return lintTemplate(lines, options);
}

QByteArray lintText(const QVector<Finding> &findings, const QString &path)
{
    QString text;
    for (const Finding &finding : findings) {
        text += lineOf(finding, path) + QLatin1Char('\n');
    }
    return text.toUtf8();
}

void complainOf(const QVector<Finding> &findings, const QString &path)
{
    for (const Finding &finding : findings) {
        complain(lineOf(finding, path));
    }
}

QByteArray lintJson(const QVector<Finding> &findings, const QString &path)
{
    QJsonArray array;
    for (const Finding &finding : findings) {
        array.append(QJsonObject{
            {QStringLiteral("file"), path},
            {QStringLiteral("line"), finding.line},
            {QStringLiteral("column"), finding.column},
            {QStringLiteral("code"), lintCodeName(finding.code)},
            {QStringLiteral("severity"), isError(finding) ? QStringLiteral("error") : QStringLiteral("warning")},
            {QStringLiteral("text"), finding.text}});
    }
    return QJsonDocument(array).toJson();
}

bool hasError(const QVector<Finding> &findings)
{
    return std::any_of(findings.cbegin(), findings.cend(), isError);
}

QVector<Finding> errorsOf(const QVector<Finding> &findings)
{
    QVector<Finding> errors;
    std::copy_if(findings.cbegin(), findings.cend(), std::back_inserter(errors), isError);
    return errors;
}

QByteArray lintPage(ELintCode code)
{
    QFile page(QStringLiteral(":/lint/") + lintCodeName(code) + QStringLiteral(".md"));
    const QByteArray text = page.open(QIODevice::ReadOnly) ? page.readAll() : QByteArray();
    return text.mid(text.indexOf("# ")); // behind the licence
}

} // namespace printsrv
