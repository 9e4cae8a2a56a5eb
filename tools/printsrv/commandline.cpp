// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "commandline.h"

#include "outputwriter.h"
#include "report.h"

#include <algorithm>

namespace printsrv {

CommandLine::CommandLine(const QString &name, const QString &description, const QStringList &examples)
    : m_name(QStringLiteral("printsrv ") + name)
    , m_examples(examples)
{
    m_parser.setApplicationDescription(description);
    m_parser.setOptionsAfterPositionalArgumentsMode(QCommandLineParser::ParseAsOptions);
    m_parser.addOption({{QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Shows this text.")});
}

void CommandLine::setPlace(const QString &path)
{
    m_place = path + QStringLiteral(": ");
}

void CommandLine::addOption(const QStringList &names, const QString &description, const QString &valueName,
                            const QString &defaultValue)
{
    m_parser.addOption({names, description, valueName, defaultValue});
}

void CommandLine::addArgument(const QString &name, const QString &description, EPresence presence)
{
    const bool isRequired = presence == EPresence::Required || presence == EPresence::MayBeEmpty;
    m_mayBeEmpty = presence == EPresence::MayBeEmpty ? m_argumentNames.size() : m_mayBeEmpty;
    m_requiredArguments += isRequired ? 1 : 0;
    m_names.append(name);
    m_isLastRepeated = presence == EPresence::Repeated;
    const QString shown = m_isLastRepeated ? name + QStringLiteral("...") : name;
    m_argumentNames.append(isRequired ? shown : QLatin1Char('[') + shown + QLatin1Char(']'));
    m_parser.addPositionalArgument(name, description, m_argumentNames.last());
}

std::optional<ExitCode> CommandLine::parse(const QStringList &arguments)
{
    const bool isUnderstood = m_parser.parse(QStringList{m_name} + arguments);
    if (m_parser.isSet(QStringLiteral("help"))) {
        return writeStandardOutput(helpText().toUtf8()) == EWriteResult::Failed ? ExitWrongInput : ExitDone;
    }
    if (!isUnderstood) {
        return usageError(m_parser.errorText() + dashHint(arguments));
    }
    const QStringList given = m_parser.positionalArguments();
    if (given.size() < m_requiredArguments) {
        return usageError(m_argumentNames.value(given.size()) + QStringLiteral(" is missing."));
    }
    if (given.size() > m_argumentNames.size() && !m_isLastRepeated) {
        return usageError(QStringLiteral("'%1' is one argument too many.").arg(given.value(m_argumentNames.size())));
    }
    return emptyArgument();
}

/** What a value that was taken for an option needs; empty when there is none. */
QString CommandLine::dashHint(const QStringList &arguments)
{
    const bool isNumber = std::any_of(arguments.begin(), arguments.end(), [](const QString &argument) {
        return argument.size() > 1 && argument.at(0) == QLatin1Char('-') && argument.at(1).isDigit();
    });
    return isNumber ? QStringLiteral(" A value that begins with '-' goes behind '--'.") : QString();
}

/** Refuses names that are empty, as a script gives them whose variable is not set. */
std::optional<ExitCode> CommandLine::emptyArgument() const
{
    const QStringList given = m_parser.positionalArguments();
    for (int index = 0; index < given.size(); ++index) {
        if (given.at(index).isEmpty() && index != m_mayBeEmpty) {
            return usageError(m_names.value(qMin(index, m_names.size() - 1)) + QStringLiteral(" is empty."));
        }
    }
    const QStringList options = m_parser.optionNames();
    if (options.contains(QStringLiteral("o")) || options.contains(QStringLiteral("output"))) {
        return value(QStringLiteral("output")).isEmpty()
            ? std::optional<ExitCode>(usageError(QStringLiteral("--output needs the name of a file.")))
            : std::nullopt;
    }
    return {};
}

ExitCode CommandLine::usageError(const QString &text) const
{
    complain(m_place + QStringLiteral("%1 '%2 --help' shows what is understood.").arg(text, m_name));
    return ExitUsage;
}

bool CommandLine::isSet(const QString &option) const
{
    return m_parser.isSet(option);
}

QString CommandLine::value(const QString &option) const
{
    return m_parser.value(option);
}

std::optional<int> CommandLine::number(const QString &option, int smallest, int largest) const
{
    bool isNumber = false;
    const int number = value(option).toInt(&isNumber);
    if (isNumber && number >= smallest && number <= largest) {
        return number;
    }
    usageError(QStringLiteral("--%1 takes a whole number from %2 to %3, not '%4'.")
                   .arg(option)
                   .arg(smallest)
                   .arg(largest)
                   .arg(value(option)));
    return {};
}

std::optional<int> CommandLine::choice(const QString &option, const QStringList &choices,
                                       Qt::CaseSensitivity sensitivity) const
{
    const QString given = value(option);
    for (int index = 0; index < choices.size(); ++index) {
        if (choices.at(index).compare(given, sensitivity) == 0) {
            return index;
        }
    }
    usageError(QStringLiteral("--%1 takes one of %2, not '%3'.")
                   .arg(option, choices.join(QStringLiteral(", ")), value(option)));
    return {};
}

QString CommandLine::argument(int index) const
{
    return m_parser.positionalArguments().value(index);
}

QStringList CommandLine::arguments() const
{
    return m_parser.positionalArguments();
}

QStringList CommandLine::values(const QString &option) const
{
    return m_parser.values(option);
}

QString CommandLine::helpText() const
{
    QStringList usage{m_name, QStringLiteral("[options]")};
    // Qt's first line names the program by its path and without the subcommand.
    const QString rest = m_parser.helpText().section(QLatin1Char('\n'), 1);
    QString text = QStringLiteral("Usage: %1\n%2").arg((usage + m_argumentNames).join(QLatin1Char(' ')), rest);
    if (!m_examples.isEmpty()) {
        text += QStringLiteral("\nExamples:\n  ") + m_examples.join(QStringLiteral("\n  ")) + QLatin1Char('\n');
    }
    return text;
}

} // namespace printsrv
