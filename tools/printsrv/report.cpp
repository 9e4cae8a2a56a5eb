// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "report.h"

#include <QLoggingCategory>

#include <cstdio>

namespace printsrv {

namespace {

QString &messagePlace()
{
    static QString place;
    return place;
}

QString severity(QtMsgType type)
{
    switch (type) {
    case QtDebugMsg:
        return QStringLiteral("debug");
    case QtInfoMsg:
        return QStringLiteral("info");
    case QtWarningMsg:
        return QStringLiteral("warning");
    default:
        return QStringLiteral("error");
    }
}

struct LibraryState
{
    int silences = 0;
    bool hasMemoryFailed = false;
};

LibraryState &libraryState()
{
    static LibraryState state;
    return state;
}

void handleMessage(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    // The one line of the library's that says that a result is missing.
    const bool isMemory = type == QtCriticalMsg && text.startsWith(QLatin1String("The memory does not suffice"));
    libraryState().hasMemoryFailed = libraryState().hasMemoryFailed || isMemory;
    if (libraryState().silences > 0 && !isMemory) {
        return;
    }
    const QString place = messagePlace().isEmpty() ? QString() : messagePlace() + QStringLiteral(": ");
    complain(place + severity(type) + QStringLiteral(": ") + text);
}

} // namespace

void complain(const QString &text)
{
    const QByteArray line = QByteArrayLiteral("printsrv: ") + text.toLocal8Bit() + '\n';
    // Nobody is left to tell when standard error fails.
    (void)std::fwrite(line.constData(), 1, static_cast<size_t>(line.size()), stderr);
}

ExitCode complainAt(const Failure &failure, const QString &path)
{
    complain(failure.at(path == QLatin1String("-") ? QStringLiteral("standard input") : path));
    return ExitWrongInput;
}

void reportLibraryMessages()
{
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false\n*.info=false"));
    qInstallMessageHandler(handleMessage);
}

void setMessagePlace(const QString &place)
{
    messagePlace() = place;
}

LibrarySilence::LibrarySilence()
{
    ++libraryState().silences;
}

LibrarySilence::~LibrarySilence()
{
    --libraryState().silences;
}

bool hasMemoryFailed()
{
    return libraryState().hasMemoryFailed;
}

} // namespace printsrv
