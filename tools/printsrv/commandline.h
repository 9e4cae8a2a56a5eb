// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_COMMANDLINE_H
#define PRINTSRV_COMMANDLINE_H

#include "subcommand.h"

#include <QCommandLineParser>

#include <optional>

namespace printsrv {

/** The options, arguments and help of one subcommand. */
class CommandLine
{
public:
    /** How often an argument may be given. */
    enum class EPresence {
        Required, /**< Exactly once. */
        MayBeEmpty, /**< Exactly once, and it may be an empty text; for one argument only. */
        Optional, /**< Once or not at all. */
        Repeated, /**< Any number of times; for the last argument only. */
    };

    /**
     * @param name the words before the arguments, "render" or "document verify"
     * @param description what it does, in a few sentences
     * @param examples lines that a shell takes as they stand
     */
    CommandLine(const QString &name, const QString &description, const QStringList &examples);

    /** Names the file that the arguments come from, in front of what is said about wrong ones. */
    void setPlace(const QString &path);

    /** Adds an option with a value; @p names are without dashes, @p valueName is empty for a switch. */
    void addOption(const QStringList &names, const QString &description, const QString &valueName = {},
                   const QString &defaultValue = {});

    /** Adds the next argument. */
    void addArgument(const QString &name, const QString &description, EPresence presence = EPresence::Required);

    /**
     * Reads the arguments.
     *
     * @return nothing when the subcommand shall run. Otherwise the help was asked for and written, or the arguments are
     * wrong and standard error says so, and the subcommand returns this code.
     */
    [[nodiscard]] std::optional<ExitCode> parse(const QStringList &arguments);

    /** Tells that the value of an option is wrong, and how the help is reached; returns ExitUsage. */
    ExitCode usageError(const QString &text) const;

    /** True when the option or switch was given. */
    bool isSet(const QString &option) const;

    /** The value given last, or the option's default. */
    QString value(const QString &option) const;

    /** The value as a whole number within the limits; otherwise nothing, and standard error says so. */
    std::optional<int> number(const QString &option, int smallest, int largest) const;

    /** The place of the value in @p choices; otherwise nothing, and standard error says so. */
    std::optional<int> choice(const QString &option, const QStringList &choices,
                              Qt::CaseSensitivity sensitivity = Qt::CaseSensitive) const;

    /** The argument at @p index, empty when it was not given. */
    QString argument(int index) const;

    /** All arguments, in their order. */
    QStringList arguments() const;

    /** The values of an option that may be given several times, in their order. */
    QStringList values(const QString &option) const;

private:
    QString helpText() const;
    static QString dashHint(const QStringList &arguments);
    std::optional<ExitCode> emptyArgument() const;

    QString m_name;
    QStringList m_names;
    QString m_place;
    QStringList m_examples;
    QCommandLineParser m_parser;
    QStringList m_argumentNames;
    int m_requiredArguments = 0;
    int m_mayBeEmpty = -1;
    bool m_isLastRepeated = false;
};

} // namespace printsrv

#endif
