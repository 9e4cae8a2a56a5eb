// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "commandline.h"
#include "stage.h"

#include <QCoreApplication>

#include <cstdio>

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("printersim"));
    QString message;
    const auto play = printersim::parseCommandLine(QCoreApplication::arguments(), &message);
    if (!play.has_value()) {
        std::fprintf(stderr, "printersim: %s\n", qPrintable(message));
        return 2;
    }
    if (play->cast.isEmpty()) {
        std::printf("%s\n", qPrintable(message));
        return 0;
    }
    printersim::Stage stage(*play);
    if (!stage.open()) {
        std::fprintf(stderr, "printersim: %s\n", qPrintable(stage.errorString()));
        return 1;
    }
    return QCoreApplication::exec();
}
