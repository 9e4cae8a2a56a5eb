// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "commandline.h"
#include "stage.h"
#include "standardstreams.h"

#include <QCoreApplication>

#include <csignal>
#include <cstdio>

namespace {

int complain(const QString &message, int exitCode)
{
    std::fprintf(stderr, "printersim: %s\n", qPrintable(message));
    return exitCode;
}

} // namespace

int main(int argc, char **argv)
{
    printsrv::occupyClosedStandardStreams();
    std::signal(SIGPIPE, SIG_IGN); // whoever read the ports may go: the printers stay
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("printersim"));
    QString message;
    const auto play = printersim::parseCommandLine(QCoreApplication::arguments(), &message);
    if (!play.has_value()) {
        return complain(message, 2);
    }
    if (play->cast.isEmpty()) {
        std::printf("%s\n", qPrintable(message));
        return std::fflush(stdout) == 0 ? 0 : complain(printersim::outputFailure(), 1);
    }
    printersim::Stage stage(*play);
    if (!stage.open()) {
        return complain(stage.errorString(), 1);
    }
    QCoreApplication::exec();
    return stage.errorString().isEmpty() ? 0 : complain(stage.errorString(), 1);
}
