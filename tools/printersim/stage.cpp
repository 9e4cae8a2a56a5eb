// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "stage.h"

#include <QCoreApplication>
#include <QDir>

#include <cerrno>
#include <csignal>
#include <cstdio>

#include <sys/signalfd.h>
#include <unistd.h>

namespace printersim {

namespace {

constexpr int BytesShown = 32;

QString shown(const QByteArray &bytes)
{
    const QString text = QString::fromLatin1(bytes.left(BytesShown).toHex(' ').toUpper());
    return bytes.size() > BytesShown ? text + QStringLiteral(" ... %1 bytes").arg(bytes.size()) : text;
}

QString notWritten(const QString &fileName, const QString &reason)
{
    return QStringLiteral("cannot write \"%1\": %2").arg(fileName, reason);
}

} // namespace

QString outputFailure()
{
    return notWritten(QStringLiteral("standard output"), qt_error_string(errno));
}

Stage::Stage(const Play &play)
    : m_play(play)
{
}

Stage::~Stage()
{
    for (const QString &name : qAsConst(m_links)) {
        QFile::remove(name);
    }
    if (m_signalDescriptor >= 0) {
        ::close(m_signalDescriptor);
    }
}

bool Stage::open()
{
    watchInterrupts();
    if (!openLog()) {
        return false;
    }
    for (const Personality &personality : qAsConst(m_play.cast)) {
        if (!openPrinter(personality)) {
            return false;
        }
    }
    return true;
}

QString Stage::errorString() const
{
    return m_errorString;
}

bool Stage::openLog()
{
    if (m_play.logFile.isEmpty()) {
        return m_log.open(stdout, QIODevice::WriteOnly);
    }
    m_log.setFileName(m_play.logFile);
    if (m_log.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        return true;
    }
    m_errorString = notWritten(m_play.logFile, m_log.errorString());
    return false;
}

bool Stage::openPrinter(const Personality &personality)
{
    m_printers.push_back(std::make_unique<SimulatedPrinter>(personality, m_play.misbehaviour));
    SimulatedPrinter *printer = m_printers.back().get();
    if (!printer->open()) {
        m_errorString = printer->errorString();
        return false;
    }
    connect(printer, &SimulatedPrinter::talked, this, [=](const Exchange &exchange) { show(*printer, exchange); });
    connect(printer, &SimulatedPrinter::unplugged, this,
            [=] { print(QStringLiteral("%1 unplugged").arg(printer->personality().name)); });
    return printPort(*printer) && link(*printer);
}

// To the standard output always: that is where a script reads it. One that has gone may have taken it from the links.
bool Stage::printPort(const SimulatedPrinter &printer)
{
    std::printf("%s %s\n", qPrintable(printer.personality().name), qPrintable(printer.portName()));
    if (std::fflush(stdout) == 0 || errno == EPIPE) {
        return true;
    }
    m_errorString = outputFailure();
    return false;
}

bool Stage::link(const SimulatedPrinter &printer)
{
    if (m_play.linkFolder.isEmpty()) {
        return true;
    }
    QDir().mkpath(m_play.linkFolder);
    const QString wanted = QDir(m_play.linkFolder).filePath(printer.personality().name);
    QString name = wanted;
    for (int number = 2; m_links.contains(name); ++number) {
        name = QStringLiteral("%1-%2").arg(wanted).arg(number);
    }
    if (QFileInfo(name).isSymLink()) {
        QFile::remove(name);
    }
    QFile port(printer.portName());
    if (!port.link(name)) {
        m_errorString = QStringLiteral("cannot make the link \"%1\": %2").arg(name, port.errorString());
        return false;
    }
    m_links.append(name);
    return true;
}

void Stage::watchInterrupts()
{
    sigset_t interrupts = {};
    sigemptyset(&interrupts);
    sigaddset(&interrupts, SIGINT);
    sigaddset(&interrupts, SIGTERM);
    sigaddset(&interrupts, SIGHUP);
    sigprocmask(SIG_BLOCK, &interrupts, nullptr);
    m_signalDescriptor = signalfd(-1, &interrupts, SFD_CLOEXEC);
    m_interrupts = std::make_unique<QSocketNotifier>(m_signalDescriptor, QSocketNotifier::Read);
    connect(m_interrupts.get(), &QSocketNotifier::activated, this, [] { QCoreApplication::quit(); });
}

void Stage::print(const QString &line)
{
    const bool isWritten = m_log.write(line.toUtf8() + '\n') >= 0 && m_log.flush();
    const QString reason = isWritten ? QString() : m_log.errorString();
    if (!isWritten && m_errorString.isEmpty() && reason != qt_error_string(EPIPE)) {
        m_errorString
            = notWritten(m_play.logFile.isEmpty() ? QStringLiteral("standard output") : m_play.logFile, reason);
    }
}

void Stage::show(const SimulatedPrinter &printer, const Exchange &exchange)
{
    const char *arrow = exchange.direction == Exchange::ToPrinter ? ">" : "<";
    print(QStringLiteral("%1 %2 %3 %4  %5")
              .arg(double(exchange.timeMs) / 1000.0, 9, 'f', 3)
              .arg(printer.personality().name, QLatin1String(arrow), shown(exchange.bytes), exchange.meaning)
              .trimmed());
}

} // namespace printersim
