// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "commandline.h"
#include "outputwriter.h"
#include "report.h"
#include "standardstreams.h"

#include <QCoreApplication>
#include <QTextCodec>

#include <clocale>
#include <csignal>
#include <langinfo.h>
#include <new>

namespace printsrv {

namespace {

// A further subcommand is one row here, its declaration in subcommand.h and a file of its own.
constexpr Subcommand Subcommands[] = {
    {"render", "a template and a receipt's data become a receipt", runRender},
    {"document", "document files: verify, show, restore", runDocument},
    {"models", "the printer models that the library knows", runModels},
    {"symbols", "special-symbol files: show one, make one", runSymbols},
    {"find", "searches the serial ports for a printer", runFind},
    {"lint", "finds what is wrong with a receipt template", runLint},
    {"test", "tests the receipts of a folder, or verifies a configured printer", runTest},
    {"ports", "the serial ports of the system", runPorts},
    {"settings", "the terminal's printing settings: list, get, set, export, import", runSettings},
    {"state", "the print service's state: encode, decode, publish, watch", runState},
};

QString usage()
{
    QString text = QStringLiteral("Usage: printsrv COMMAND [options] [arguments]\n\n"
                                  "Receipts on text printers, from the template to the printer.\n\nCommands:\n");
    for (const Subcommand &subcommand : Subcommands) {
        text += QStringLiteral("  %1  %2\n")
                    .arg(QLatin1String(subcommand.name), -9)
                    .arg(QLatin1String(subcommand.summary));
    }
    return text
        + QStringLiteral("\nOptions:\n  -h, --help     Shows this text; 'printsrv COMMAND --help' that of a command.\n"
                         "  -v, --version  Shows the version.\n\n"
                         "Exit codes: 0 done, 1 the input is wrong, 2 the command line is wrong.\n\n"
                         "Examples:\n"
                         "  printsrv render payment.cpt --data payment.json --width 42\n"
                         "  printsrv document verify last.doc\n"
                         "  printsrv models CUSTOM_VKP_80\n");
}

ExitCode run(const QStringList &arguments)
{
    const QString name = arguments.value(0);
    for (const Subcommand &subcommand : Subcommands) {
        if (name == QLatin1String(subcommand.name)) {
            return subcommand.run(arguments.mid(1));
        }
    }
    if (name == QLatin1String("--help") || name == QLatin1String("-h")) {
        return writeOutput({}, usage().toUtf8());
    }
    if (name == QLatin1String("--version") || name == QLatin1String("-v")) {
        return writeOutput({}, QByteArrayLiteral("printsrv " PRINTSRV_VERSION "\n"));
    }
    complain((name.isEmpty() ? QStringLiteral("a command is missing") : QStringLiteral("no command '%1'").arg(name))
             + QStringLiteral("; 'printsrv --help' lists the commands"));
    return ExitUsage;
}

// What the memory does not suffice for is missing in the output, whatever else went well.
ExitCode runGuarded(const QStringList &arguments)
{
    try {
        const ExitCode code = run(arguments);
        return code == ExitDone && hasMemoryFailed() ? ExitWrongInput : code;
    } catch (const std::bad_alloc &) {
        complain(QStringLiteral("the memory does not suffice"));
        return ExitWrongInput;
    }
}

// In the C locale Qt would turn every letter beyond ASCII in an argument or a file name into "?".
void readArgumentsAsUtf8InPlainLocale()
{
    std::setlocale(LC_ALL, "");
    if (qstrcmp(nl_langinfo(CODESET), "ANSI_X3.4-1968") == 0) {
        QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    }
}

} // namespace

} // namespace printsrv

int main(int argc, char *argv[])
{
    printsrv::occupyClosedStandardStreams();
    std::signal(SIGPIPE, SIG_IGN);
    printsrv::readArgumentsAsUtf8InPlainLocale();
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("printsrv"));
    printsrv::reportLibraryMessages();
    return printsrv::runGuarded(QCoreApplication::arguments().mid(1));
}
