// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "support.h"

#include <QJsonDocument>

#include <cstdio>
#include <cstdlib>

namespace {

int logLines = 0;

void countLine(QtMsgType type, const QMessageLogContext &, const QString &)
{
    logLines += type == QtDebugMsg || type == QtInfoMsg ? 0 : 1;
}

} // namespace

void fuzz::require(bool holds, const char *law)
{
    if (!holds) {
        std::fprintf(stderr, "Broken: %s\n", law);
        std::abort();
    }
}

void fuzz::requireEqual(const QString &expected, const QString &found, const char *law)
{
    if (expected != found) {
        std::fprintf(stderr, "expected: %s\nfound:    %s\n", qUtf8Printable(expected), qUtf8Printable(found));
    }
    require(expected == found, law);
}

fuzz::LogCount::LogCount()
    : m_previous(qInstallMessageHandler(countLine))
{
    logLines = 0;
}

fuzz::LogCount::~LogCount()
{
    qInstallMessageHandler(m_previous);
}

int fuzz::LogCount::lines() const
{
    return logLines;
}

QVariant fuzz::jsonVariant(const QByteArray &input)
{
    return QJsonDocument::fromJson(input).toVariant();
}
