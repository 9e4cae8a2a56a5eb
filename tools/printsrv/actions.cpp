// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "actions.h"

#include "outputwriter.h"
#include "report.h"

namespace printsrv {

namespace {

QString usage(const ActionGroup &group)
{
    QString text = QStringLiteral("Usage: printsrv %1 ACTION [options] [arguments]\n\n%2\n\nActions:\n")
                       .arg(QLatin1String(group.name), QLatin1String(group.description));
    for (const Subcommand &action : group.actions) {
        text += QStringLiteral("  %1  %2\n").arg(QLatin1String(action.name), -7).arg(QLatin1String(action.summary));
    }
    return text + QStringLiteral("\nExamples:\n  ") + group.examples.join(QStringLiteral("\n  ")) + QLatin1Char('\n');
}

} // namespace

ExitCode runAction(const ActionGroup &group, const QStringList &arguments)
{
    const QString name = arguments.value(0);
    for (const Subcommand &action : group.actions) {
        if (name == QLatin1String(action.name)) {
            return action.run(arguments.mid(1));
        }
    }
    if (name == QLatin1String("--help") || name == QLatin1String("-h")) {
        return writeOutput({}, usage(group).toUtf8());
    }
    complain((name.isEmpty() ? QStringLiteral("an action is missing") : QStringLiteral("no action '%1'").arg(name))
             + QStringLiteral("; 'printsrv %1 --help' lists the actions").arg(QLatin1String(group.name)));
    return ExitUsage;
}

} // namespace printsrv
