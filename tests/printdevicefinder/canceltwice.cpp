// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

// A process whose first act is to cancel two searches: "canceltwice MILLISECONDS PORT…". The test starts it many times,
// because a race at the first cancel shows in a fresh process only.

#include <printdevicefinder.h>

#include <QCoreApplication>
#include <QThread>

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    PrintDeviceFinder finder;
    for (int i = 0; i < 2; ++i) {
        finder.start(arguments.mid(2));
        QThread::msleep(arguments.value(1).toULong());
        finder.cancel();
    }
    return 0;
}
