// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "commandline.h"

#include "transcript.h"

#include <QCommandLineParser>
#include <QFile>

#include <limits>

namespace printersim {

namespace {

constexpr int LargestTranscriptBytes = 64 * 1024 * 1024;
constexpr int ChunkBytes = 64 * 1024;

// Cut off soon behind the limit: a device may offer bytes without an end.
QByteArray readBounded(QFile *file)
{
    QByteArray bytes;
    QByteArray chunk;
    do {
        chunk = file->read(ChunkBytes);
        bytes += chunk;
    } while (!chunk.isEmpty() && bytes.size() <= LargestTranscriptBytes);
    return bytes;
}

QString option(const char *name)
{
    return QString::fromLatin1(name);
}

void addOptions(QCommandLineParser *parser)
{
    parser->setApplicationDescription(QStringLiteral(
        "Plays serial receipt printers on pseudo-terminals, one for each MODEL, until it is interrupted."));
    parser->addPositionalArgument(option("MODEL"), QStringLiteral("What to play; --list names them."),
                                  option("MODEL..."));
    parser->addOptions({
        {option("baud"), QStringLiteral("Answer at N baud only."), option("N")},
        {option("flow"), QStringLiteral("Answer with this flow control only: none, hardware, software."),
         option("KIND")},
        {option("link"), QStringLiteral("Make a link to each port in DIR, named like its model."), option("DIR")},
        {option("fault"), QStringLiteral("Misbehave: %1.").arg(faultNames().join(QLatin1String(", "))), option("KIND")},
        {option("byte"), QStringLiteral("The byte of --fault constant, as 81 or 0x51; 0 without."), option("N")},
        {option("delay"), QStringLiteral("Answer MS milliseconds later."), option("MS")},
        {option("unplug-after"), QStringLiteral("Go away MS milliseconds after the first byte came."), option("MS")},
        {option("seed"), QStringLiteral("Start of the random bytes; 1 without."), option("N")},
        {option("log"), QStringLiteral("Write the conversation to FILE, not to the standard output."), option("FILE")},
        {option("replay"), QStringLiteral("Play the conversation that 'printsrv find --record' wrote."),
         option("FILE")},
        {option("list"), QStringLiteral("Print the models and end.")},
        {{option("h"), option("help")}, QStringLiteral("Print this help and end.")},
        {option("version"), QStringLiteral("Print the version and end.")},
    });
}

/** One reading of the options; the first thing that is wrong stays in `message`. */
class Director
{
public:
    Director(const QCommandLineParser &parser, QString *message)
        : m_parser(parser)
        , m_message(message)
    {
    }

    bool direct(Play *play)
    {
        play->linkFolder = m_parser.value(option("link"));
        play->logFile = m_parser.value(option("log"));
        return readMisbehaviour(&play->misbehaviour) && readCast(play) && applyLine(play);
    }

private:
    bool fail(const QString &message)
    {
        *m_message = message;
        return false;
    }

    bool readNumber(const char *name, int minimum, int *number, int maximum = std::numeric_limits<int>::max())
    {
        if (!m_parser.isSet(option(name))) {
            return true;
        }
        bool isNumber = false;
        const QString given = m_parser.value(option(name));
        const bool isHexadecimal = given.startsWith(option("0x"));
        *number = given.toInt(&isNumber, isHexadecimal ? 16 : 10);
        if (isNumber && *number >= minimum && *number <= maximum) {
            return true;
        }
        return fail(QStringLiteral("--%1 needs a number from %2 to %3, not \"%4\"")
                        .arg(option(name))
                        .arg(minimum)
                        .arg(maximum)
                        .arg(given));
    }

    bool readMisbehaviour(Misbehaviour *misbehaviour)
    {
        int delayMs = 0;
        int seed = 1;
        int byte = 0;
        int unplugAfterMs = 0;
        if (!readNumber("delay", 0, &delayMs) || !readNumber("seed", 1, &seed) || !readNumber("byte", 0, &byte, 0xFF)
            || !readNumber("unplug-after", 1, &unplugAfterMs)) {
            return false;
        }
        misbehaviour->delay = std::chrono::milliseconds(delayMs);
        misbehaviour->seed = quint32(seed);
        misbehaviour->constant = char(byte);
        misbehaviour->unplugAfter = std::chrono::milliseconds(unplugAfterMs);
        const QString name = m_parser.value(option("fault"));
        const auto fault = faultFromName(name.isEmpty() ? option("none") : name);
        misbehaviour->fault = fault.value_or(EFault::None);
        if (!fault.has_value()) {
            return fail(
                QStringLiteral("unknown fault \"%1\"; known are %2").arg(name, faultNames().join(QLatin1String(", "))));
        }
        return fault == EFault::Constant || !m_parser.isSet(option("byte"))
            || fail(QStringLiteral("--byte is the answer of --fault constant, which is not set"));
    }

    bool readCast(Play *play)
    {
        const QStringList names = m_parser.positionalArguments();
        for (const QString &name : names) {
            const auto known = personality(name);
            if (!known.has_value()) {
                return fail(QStringLiteral("unknown model \"%1\"; 'printersim --list' names them all").arg(name));
            }
            play->cast.append(*known);
        }
        const QStringList fileNames = m_parser.values(option("replay"));
        for (const QString &fileName : fileNames) {
            if (!addReplay(fileName, play)) {
                return false;
            }
        }
        return !play->cast.isEmpty() || fail(QStringLiteral("name a MODEL or --replay a file; --help tells more"));
    }

    bool addReplay(const QString &fileName, Play *play)
    {
        QFile file(fileName);
        if (!file.open(QIODevice::ReadOnly)) {
            return fail(QStringLiteral("cannot read \"%1\": %2").arg(fileName, file.errorString()));
        }
        const QByteArray transcript = readBounded(&file);
        if (transcript.size() > LargestTranscriptBytes) {
            return fail(QStringLiteral("\"%1\" is larger than 64 MiB").arg(fileName));
        }
        QString reason;
        const auto recorded = personalityFromTranscript(transcript, &reason);
        if (!recorded.has_value()) {
            return fail(QStringLiteral("\"%1\", %2").arg(fileName, reason));
        }
        play->cast.append(*recorded);
        return true;
    }

    bool applyLine(Play *play)
    {
        int baudRate = 0;
        const QString flowName = m_parser.value(option("flow"));
        const auto flow = flowFromName(flowName);
        if (!flowName.isEmpty() && !flow.has_value()) {
            return fail(QStringLiteral("--flow is none, hardware or software, not \"%1\"").arg(flowName));
        }
        if (!readNumber("baud", 1, &baudRate)) {
            return false;
        }
        for (Personality &player : play->cast) {
            LineSettings &line = player.voices.last().line;
            line.baudRate = baudRate > 0 ? baudRate : line.baudRate;
            line.flow = flow.value_or(line.flow);
        }
        return true;
    }

    const QCommandLineParser &m_parser;
    QString *m_message;
};

} // namespace

std::optional<Play> parseCommandLine(const QStringList &arguments, QString *message)
{
    QCommandLineParser parser;
    addOptions(&parser);
    Play play;
    if (!parser.parse(arguments)) {
        *message = parser.errorText();
        return std::nullopt;
    }
    if (parser.isSet(option("help"))) {
        *message = parser.helpText();
        return play;
    }
    if (parser.isSet(option("version"))) {
        *message = QStringLiteral("printersim %1").arg(QStringLiteral(PRINTSRV_VERSION));
        return play;
    }
    if (parser.isSet(option("list"))) {
        *message = personalityNames().join(QLatin1Char('\n'));
        return play;
    }
    return Director(parser, message).direct(&play) ? std::optional(play) : std::nullopt;
}

} // namespace printersim
