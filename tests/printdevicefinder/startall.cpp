// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

// Searches all ports of the machine, prints the result and ends: run by the test on a machine made up by umockdev.

#include <printdevicefinder.h>

#include <QCoreApplication>

#include <cstdio>

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    PrintDeviceFinder finder;
    const auto print = [](const QString &text) {
        std::printf("%s\n", qPrintable(text));
    };
    QObject::connect(&finder, &PrintDeviceFinder::noDevices, &finder, [=](const QString &reason) {
        print(reason);
        QCoreApplication::quit();
    });
    QObject::connect(&finder, &PrintDeviceFinder::deviceFinded, &finder, [=](const PrintDeviceInfo &device) {
        print(device.deviceId() + QStringLiteral(" at ") + device.settings().portName());
        QCoreApplication::quit();
    });
    // From the event loop: a machine without ports is told of before start() returns.
    QMetaObject::invokeMethod(
        &finder, [&finder] { finder.start(); }, Qt::QueuedConnection);
    return QCoreApplication::exec();
}
