// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "commandline.h"
#include "outputwriter.h"
#include "report.h"
#include "searchrun.h"

#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>

namespace printsrv {

namespace {

constexpr char Description[] = "Searches serial ports for a receipt printer, all at the same time, and tells what it "
                               "found out about each. Without "
                               "a PORT all those that the system lists are searched, but not the ones known to be "
                               "something else. A port that keeps "
                               "silent takes about two and a half minutes; the search ends at the first printer found.";

/** What a search was asked for. */
struct Plan
{
    QVector<PortFacts> ports;
    QVector<Verdict> skipped;
    EExtent extent = EExtent::FirstPrinter;
    EReportForm form = EReportForm::Text;
    QString recording;
};

bool isExcluded(const PortFacts &port, const QStringList &patterns)
{
    return std::any_of(patterns.cbegin(), patterns.cend(), [&](const QString &pattern) {
        const QRegularExpression expression(QRegularExpression::wildcardToRegularExpression(pattern));
        const QString fileName = QFileInfo(port.location).fileName();
        return expression.match(port.name).hasMatch() || expression.match(port.location).hasMatch()
            || expression.match(fileName).hasMatch();
    });
}

/** The ports named, each device once under its first name; without names the system's, known other devices set apart.
 */
void choosePorts(const CommandLine &line, Plan *plan)
{
    QVector<PortFacts> candidates;
    const QStringList names = line.arguments();
    for (const QString &name : names) {
        candidates.append(portFacts(name));
    }
    const bool isNamed = !candidates.isEmpty();
    candidates = isNamed ? candidates : systemPorts();
    QVector<quint64> numbers;
    for (const PortFacts &port : qAsConst(candidates)) {
        const bool isRepeated = port.number != 0 && numbers.contains(port.number);
        numbers.append(port.number);
        if (isRepeated || isExcluded(port, line.values(QStringLiteral("exclude")))) {
            continue;
        }
        if (!isNamed && !port.otherDevice.isEmpty()) {
            Verdict verdict;
            verdict.kind = EVerdict::Skipped;
            verdict.port = port;
            plan->skipped.append(verdict);
            continue;
        }
        plan->ports.append(port);
    }
}

bool has(const QVector<Verdict> &verdicts, EVerdict kind)
{
    return std::any_of(verdicts.cbegin(), verdicts.cend(),
                       [kind](const Verdict &verdict) { return verdict.kind == kind; });
}

ExitCode writePlan(const Plan &plan)
{
    QVector<Verdict> verdicts;
    std::transform(plan.ports.cbegin(), plan.ports.cend(), std::back_inserter(verdicts), forecast);
    const ExitCode code = writeReport(verdicts + plan.skipped, plan.form);
    return code == ExitDone && !has(verdicts, EVerdict::Planned) ? ExitWrongInput : code;
}

/** What is wrong with the arguments, in words; empty when nothing is. */
QString mistake(const CommandLine &line)
{
    if (line.isSet(QStringLiteral("record")) && line.value(QStringLiteral("record")).isEmpty()) {
        return QStringLiteral("--record takes the name of a file.");
    }
    const QStringList patterns = line.values(QStringLiteral("exclude"));
    for (const QString &pattern : patterns) {
        if (!QRegularExpression(QRegularExpression::wildcardToRegularExpression(pattern)).isValid()) {
            return QStringLiteral("--exclude takes a pattern as 'ttyUSB*', not '%1'.").arg(pattern);
        }
    }
    return {};
}

ExitCode search(const Plan &plan)
{
    WireListener listener;
    if (!plan.recording.isEmpty() && !listener.record(plan.recording)) {
        complain(QStringLiteral("'%1' cannot be written: %2").arg(plan.recording, listener.errorString()));
        return ExitWrongInput;
    }
    const QVector<Verdict> verdicts
        = runSearch(listener, plan.ports, [&plan](Search &run) { run.start(plan.ports, plan.extent); });
    if (!listener.isRecordComplete()) {
        complain(QStringLiteral("the recording '%1' is not complete: %2").arg(plan.recording, listener.errorString()));
    }
    const ExitCode code = writeReport(verdicts + plan.skipped, plan.form);
    return code == ExitDone && !has(verdicts, EVerdict::Found) ? ExitWrongInput : code;
}

void addOptions(CommandLine *line)
{
    line->addArgument(QStringLiteral("PORT"), QStringLiteral("Port to search, \"ttyS0\" or \"/dev/ttyS0\"."),
                      CommandLine::EPresence::Repeated);
    line->addOption({QStringLiteral("all")},
                    QStringLiteral("Searches every port to its end, also when one has a printer."));
    line->addOption({QStringLiteral("record")},
                    QStringLiteral("Writes every setting, byte and time to FILE, for 'printersim --replay'."),
                    QStringLiteral("FILE"));
    line->addOption({QStringLiteral("exclude")},
                    QStringLiteral("Leaves ports out whose name matches, as \"ttyUSB*\"; may be repeated."),
                    QStringLiteral("PATTERN"));
    line->addOption({QStringLiteral("dry-run")},
                    QStringLiteral("Tells which ports would be searched, and why not the others; opens none."));
    line->addOption({QStringLiteral("json")}, QStringLiteral("Writes a JSON array with one object for each port."));
}

} // namespace

ExitCode runFind(const QStringList &arguments)
{
    CommandLine line(QStringLiteral("find"), QLatin1String(Description),
                     {QStringLiteral("printsrv find"),
                      QStringLiteral("printsrv find ttyS0 ttyS1 --record search.jsonl"),
                      QStringLiteral("printsrv find --exclude 'ttyUSB*' --json")});
    addOptions(&line);
    if (const auto code = line.parse(arguments)) {
        return *code;
    }
    const QString wrong = mistake(line);
    if (!wrong.isEmpty()) {
        return line.usageError(wrong);
    }
    Plan plan;
    plan.extent = line.isSet(QStringLiteral("all")) ? EExtent::EveryPort : EExtent::FirstPrinter;
    plan.form = line.isSet(QStringLiteral("json")) ? EReportForm::Json : EReportForm::Text;
    plan.recording = line.value(QStringLiteral("record"));
    choosePorts(line, &plan);
    if (plan.ports.isEmpty()) {
        complain(QStringLiteral("there is no serial port to search; 'printsrv ports' shows what the system lists"));
        const ExitCode code = writeReport(plan.skipped, plan.form);
        return code == ExitDone ? ExitWrongInput : code;
    }
    return line.isSet(QStringLiteral("dry-run")) ? writePlan(plan) : search(plan);
}

} // namespace printsrv
