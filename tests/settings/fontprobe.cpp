// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include <systemprintersettings.h>

#include <QGuiApplication>

#include <cstdio>
#include <cstring>

// Writes family and size of the default font, asked for with the application that the argument names.
int main(int argc, char *argv[])
{
    const char *application = argc > 1 ? argv[1] : "";
    QScopedPointer<QCoreApplication> core;
    if (std::strcmp(application, "gui") == 0) {
        core.reset(new QGuiApplication(argc, argv));
    } else if (std::strcmp(application, "core") == 0) {
        core.reset(new QCoreApplication(argc, argv));
    }
    SystemPrinterSettings settings;
    if (argc > 2) {
        settings.setValue({{QStringLiteral("group"), QString()},
                           {QStringLiteral("key"), SystemPrinterSettings::DEFAULT_FONT},
                           {QStringLiteral("value"), QString::fromUtf8(argv[2])}});
    }
    const QFont font = settings.defaultFont(QString());
    std::printf("%s %d %d %d\n", qPrintable(font.family()), font.pointSize(), font.weight(), int(font.style()));
    return 0;
}
