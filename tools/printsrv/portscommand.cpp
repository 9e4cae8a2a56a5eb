// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "commandline.h"
#include "outputwriter.h"
#include "portfacts.h"
#include "porttext.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace printsrv {

namespace {

constexpr char Description[]
    = "Shows the serial ports of the system with what is known of them: driver, USB ids, who uses "
      "them and whether this user may.";

QString row(const PortFacts &port)
{
    QStringList facts{port.description, port.driver, port.usbId, port.otherDevice, accessText(port)};
    facts.append(port.users.isEmpty() ? QString()
                                      : QStringLiteral("in use by ") + port.users.join(QStringLiteral(", ")));
    facts.removeAll(QString());
    return QStringLiteral("%1  %2\n").arg(port.name, -12).arg(facts.join(QStringLiteral("; "))).trimmed()
        + QLatin1Char('\n');
}

} // namespace

ExitCode runPorts(const QStringList &arguments)
{
    CommandLine line(
        QStringLiteral("ports"), QLatin1String(Description),
        {QStringLiteral("printsrv ports"), QStringLiteral("printsrv ports --json | jq -r '.[].location'")});
    line.addArgument(QStringLiteral("PORT"), QStringLiteral("Ports to show; without one those that the system lists."),
                     CommandLine::EPresence::Repeated);
    line.addOption({QStringLiteral("json")}, QStringLiteral("Writes a JSON array."));
    if (const auto code = line.parse(arguments)) {
        return *code;
    }
    QVector<PortFacts> ports;
    ExitCode code = ExitDone;
    const QStringList names = line.arguments();
    for (const QString &name : names) {
        ports.append(portFacts(name));
        code = ports.last().access == EAccess::Missing ? ExitWrongInput : code;
    }
    ports = ports.isEmpty() ? systemPorts() : ports;
    QString text = ports.isEmpty() ? QStringLiteral("The system lists no serial ports.\n") : QString();
    QJsonArray array;
    for (const PortFacts &port : qAsConst(ports)) {
        text += row(port);
        array.append(toJson(port));
    }
    const ExitCode written
        = writeOutput({}, line.isSet(QStringLiteral("json")) ? QJsonDocument(array).toJson() : text.toUtf8());
    return written == ExitDone ? code : written;
}

} // namespace printsrv
