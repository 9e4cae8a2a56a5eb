// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "commandrunner.h"

#include <QDir>

namespace {

constexpr int TimeoutMs = 60000;

} // namespace

CommandRunner::CommandRunner()
    : m_environment(QProcessEnvironment::systemEnvironment())
{
    m_environment.insert(QStringLiteral("TMPDIR"), m_folder.path());
}

QString CommandRunner::write(const QString &name, const QByteArray &content) const
{
    QFile file(path(name));
    const bool isWritten = file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
    return isWritten ? name : QString();
}

QByteArray CommandRunner::read(const QString &name) const
{
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList CommandRunner::files() const
{
    return QDir(m_folder.path()).entryList(QDir::Files, QDir::Name);
}

QString CommandRunner::path(const QString &name) const
{
    return m_folder.filePath(name);
}

void CommandRunner::setEnvironment(const QString &name, const QString &value)
{
    m_environment.insert(name, value);
}

CommandRunner::Result CommandRunner::run(const QStringList &arguments, const QByteArray &input) const
{
    QProcess process;
    process.setWorkingDirectory(m_folder.path());
    process.setProcessEnvironment(m_environment);
    process.start(command(), arguments);
    process.write(input);
    process.closeWriteChannel();
    const bool isEnded = process.waitForFinished(TimeoutMs) && process.exitStatus() == QProcess::NormalExit;
    return {isEnded ? process.exitCode() : -1, process.readAllStandardOutput(), process.readAllStandardError()};
}

QString CommandRunner::command()
{
    return QStringLiteral(PRINTSRV_COMMAND);
}
