// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_COMMANDRUNNER_H
#define PRINTSRV_COMMANDRUNNER_H

#include <QProcess>
#include <QTemporaryDir>

/** Runs the command printsrv in a folder of its own, with what it needs from its surroundings. */
class CommandRunner
{
public:
    /** How a run ended. */
    struct Result
    {
        int exitCode = -1; /**< -1 when the command crashed or did not end within a minute. */
        QByteArray output;
        QByteArray errors;
    };

    CommandRunner();

    /** Makes a file in the folder and returns its name. */
    QString write(const QString &name, const QByteArray &content) const;

    /** The content of a file in the folder; empty when there is none. */
    QByteArray read(const QString &name) const;

    /** The names of the files in the folder, sorted. */
    QStringList files() const;

    /** The folder's path with @p name. */
    QString path(const QString &name = {}) const;

    /** Sets a variable of the command's environment. */
    void setEnvironment(const QString &name, const QString &value);

    /** Runs the command with these arguments and @p input on its standard input. */
    Result run(const QStringList &arguments, const QByteArray &input = {}) const;

    /** The command's path. */
    static QString command();

private:
    QTemporaryDir m_folder;
    QProcessEnvironment m_environment;
};

#endif
