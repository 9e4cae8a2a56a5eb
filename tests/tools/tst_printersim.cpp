// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "testfixture.h"

#include <personality.h>
#include <simulatorthread.h>
#include <transcript.h>

#include <QProcess>
#include <QTemporaryDir>

#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

using namespace printersim;

namespace {

constexpr int Patience = 30'000;

QString text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

/** Says something at the port and waits for an answer, of whatever kind; false when none comes. */
bool talkTo(const QString &portName)
{
    const int port = ::open(qPrintable(portName), O_RDWR | O_NOCTTY | O_CLOEXEC);
    termios line = {};
    ::tcgetattr(port, &line);
    ::cfmakeraw(&line);
    ::tcsetattr(port, TCSANOW, &line);
    pollfd waited{port, POLLIN, 0};
    const bool isAnswered = ::write(port, "\x1Bv", 2) == 2 && ::poll(&waited, 1, Patience) == 1;
    ::close(port);
    return isAnswered;
}

} // namespace

class TestPrintersim : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void cutsInputIntoRequests_data();
    void cutsInputIntoRequests();
    void refusesABrokenTranscript_data();
    void refusesABrokenTranscript();
    void answersFromATranscriptInOrder();
    void refusesAWrongCommandLine_data();
    void refusesAWrongCommandLine();
    void echoesByteByByteUntilItIsUnplugged();
    void tellsThatItsLogIsFull();
    void linksItsPortsUntilItIsInterrupted_data();
    void linksItsPortsUntilItIsInterrupted();
};

void TestPrintersim::cutsInputIntoRequests_data()
{
    QTest::addColumn<QByteArray>("input");
    QTest::addColumn<QStringList>("requests");
    QTest::addColumn<QByteArray>("rest");
    // Rules: 0 is 1B 06, 1 is 1B 06 11, 2 is 05. Each request: rule and bytes.
    QTest::newRow("nothing") << QByteArray() << QStringList() << QByteArray();
    QTest::newRow("one") << QByteArray("05") << QStringList{text("2:05")} << QByteArray();
    QTest::newRow("could go on") << QByteArray("1b06") << QStringList() << QByteArray("1b06");
    QTest::newRow("the longest") << QByteArray("1b0611") << QStringList{text("1:1b0611")} << QByteArray();
    QTest::newRow("the shorter") << QByteArray("1b0605") << QStringList{text("0:1b06"), text("2:05")} << QByteArray();
    QTest::newRow("unknown command") << QByteArray("1b0505") << QStringList{text("-1:1b05"), text("2:05")}
                                     << QByteArray();
    QTest::newRow("unknown bytes") << QByteArray("0102051d")
                                   << QStringList{text("-1:01"), text("-1:02"), text("2:05"), text("-1:1d")}
                                   << QByteArray();
}

void TestPrintersim::cutsInputIntoRequests()
{
    QFETCH(QByteArray, input);
    QFETCH(QStringList, requests);
    QFETCH(QByteArray, rest);
    const QVector<Rule> rules{{QByteArray::fromHex("1b06"), {}, {}},
                              {QByteArray::fromHex("1b0611"), {}, {}},
                              {QByteArray::fromHex("05"), {}, {}}};
    QByteArray bytes = QByteArray::fromHex(input);
    QStringList taken;
    for (const Request &request : takeRequests(&bytes, rules)) {
        taken.append(text("%1:%2").arg(request.rule).arg(text(request.bytes.toHex().constData())));
    }
    QCOMPARE(taken, requests);
    QCOMPARE(bytes.toHex(), rest);
}

void TestPrintersim::refusesABrokenTranscript_data()
{
    QTest::addColumn<QByteArray>("transcript");
    QTest::addColumn<QString>("error");
    const QByteArray settings = R"({"port":"p","event":"settings","baudRate":9600,"flowControl":"none"})";
    QTest::newRow("nothing") << QByteArray() << text("nothing was ever written to the port");
    QTest::newRow("no write") << settings << text("nothing was ever written to the port");
    QTest::newRow("no JSON") << settings + "\nhello" << text("line 2: no JSON object: illegal value");
    QTest::newRow("no speed") << QByteArray(R"({"port":"p","event":"settings","flowControl":"none"})")
                              << text("line 1: settings without a baud rate or flow control");
    QTest::newRow("no settings") << QByteArray(R"({"port":"p","event":"write","bytes":"05"})")
                                 << text("line 1: a write before any settings, or without bytes");
}

void TestPrintersim::refusesABrokenTranscript()
{
    QFETCH(QByteArray, transcript);
    QFETCH(QString, error);
    QString errorString;
    QVERIFY(!personalityFromTranscript(transcript, &errorString).has_value());
    QCOMPARE(errorString, error);
}

void TestPrintersim::answersFromATranscriptInOrder()
{
    QString error;
    const auto recorded = personalityFromTranscript(R"({"port":"p","event":"opened","ms":1}
{"port":"p","event":"settings","baudRate":9600,"flowControl":"software","ms":2}
{"port":"p","event":"write","bytes":"1d4901","ms":10}
{"port":"q","event":"read","bytes":"ff","ms":11}
{"port":"p","event":"write","bytes":"1d4931","ms":310}
{"port":"p","event":"read","bytes":"5d","ms":330}
{"port":"p","event":"discard","bytes":"00","ms":340}
{"port":"p","event":"write","bytes":"1d4901","ms":350}
{"port":"p","event":"read","bytes":"5e","ms":350}
)",
                                                    &error);
    QVERIFY2(recorded.has_value(), qPrintable(error));
    QCOMPARE(recorded->voices.size(), 1);
    QVERIFY(recorded->voices.first().line.flow == EFlow::Software);
    const QVector<Rule> rules = recorded->voices.first().rules;
    QCOMPARE(rules.size(), 2);
    // Not answered the first time, answered the second.
    QCOMPARE(rules.at(0).answers.at(0).bytes, QByteArray());
    QCOMPARE(rules.at(0).answers.at(1).bytes, QByteArray("\x5e"));
    QCOMPARE(rules.at(1).answers.at(0).bytes, QByteArray("\x5d\0", 2));
    QCOMPARE(int(rules.at(1).answers.at(0).delay.count()), 20);
}

void TestPrintersim::refusesAWrongCommandLine_data()
{
    QTest::addColumn<QString>("line");
    QTest::newRow("nothing") << text("--fault=none");
    QTest::newRow("model") << text("TELETYPE");
    QTest::newRow("fault") << text("AV_268 --fault=moody");
    QTest::newRow("speed") << text("AV_268 --baud=0");
    QTest::newRow("flow control") << text("AV_268 --flow=up");
    QTest::newRow("delay") << text("AV_268 --delay=-1");
    QTest::newRow("byte") << text("AV_268 --fault=constant --byte=0x100");
    QTest::newRow("unplugged at once") << text("AV_268 --unplug-after=0");
    QTest::newRow("recording") << text("--replay=/nowhere");
    QTest::newRow("endless recording") << text("--replay=/dev/zero");
}

void TestPrintersim::refusesAWrongCommandLine()
{
    QFETCH(QString, line);
    QProcess process;
    process.start(text(PRINTERSIM_COMMAND), line.split(QLatin1Char(' ')));
    QVERIFY(process.waitForFinished(Patience));
    QCOMPARE(process.exitCode(), 2);
    QVERIFY(process.readAllStandardError().startsWith("printersim: "));
}

void TestPrintersim::echoesByteByByteUntilItIsUnplugged()
{
    SimulatorThread simulator;
    Misbehaviour misbehaviour;
    misbehaviour.fault = EFault::SlowEcho;
    misbehaviour.unplugAfter = std::chrono::milliseconds(300);
    const SimulatedPrinter *printer = simulator.add(*personality(text("AV_268")), misbehaviour);
    const int port = ::open(qPrintable(printer->portName()), O_RDWR | O_NOCTTY | O_CLOEXEC);
    QElapsedTimer clock;
    clock.start();
    QCOMPARE(::write(port, "abc", 3), ssize_t(3));
    QTRY_VERIFY_WITH_TIMEOUT(!QFileInfo::exists(printer->portName()), Patience);
    QVERIFY(clock.elapsed() >= 300);
    ::close(port);
    // Whoever still searches there does not find the next printer.
    QVERIFY(simulator.add(*personality(text("AV_268")))->portName() != printer->portName());
    const QVector<Exchange> exchanges = printer->exchanges();
    QCOMPARE(exchanges.size(), 4);
    for (int i = 1; i < exchanges.size(); ++i) {
        QCOMPARE(exchanges.at(i).bytes, QByteArray("abc").mid(i - 1, 1));
        QVERIFY(exchanges.at(i).timeMs - exchanges.at(0).timeMs >= 20 * i - 1);
    }
}

void TestPrintersim::tellsThatItsLogIsFull()
{
    QProcess process;
    process.start(text(PRINTERSIM_COMMAND), {text("AV_268"), text("--log"), text("/dev/full")});
    QVERIFY(process.waitForReadyRead(Patience));
    QVERIFY(talkTo(QString::fromLatin1(process.readLine().trimmed().mid(7))));
    process.terminate();
    QVERIFY(process.waitForFinished(Patience));
    QCOMPARE(process.exitCode(), 1);
    QCOMPARE(process.readAllStandardError(), "printersim: cannot write \"/dev/full\": No space left on device\n");
}

void TestPrintersim::linksItsPortsUntilItIsInterrupted_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("ended") << SIGTERM;
    QTest::newRow("terminal closed") << SIGHUP;
}

void TestPrintersim::linksItsPortsUntilItIsInterrupted()
{
    QFETCH(int, signal);
    const QTemporaryDir folder;
    QProcess process;
    process.start(text(PRINTERSIM_COMMAND),
                  {text("AV_268"), text("tsp-tup"), text("av_268"), text("--link"), folder.path()});
    QByteArray ports;
    QTRY_VERIFY_WITH_TIMEOUT((ports += process.readAllStandardOutput()).count('\n') == 3, Patience);
    // Of two of one model each has a link.
    const QString second = folder.filePath(text("AV_268-2"));
    QTRY_VERIFY_WITH_TIMEOUT(QFileInfo::exists(second), Patience);
    const QString port = QFile::symLinkTarget(folder.filePath(text("AV_268")));
    QVERIFY2(ports.startsWith("AV_268 " + port.toLatin1() + '\n'), ports.constData());
    QVERIFY2(ports.endsWith("AV_268 " + QFile::symLinkTarget(second).toLatin1() + '\n'), ports.constData());
    // Whoever read the ports may go.
    process.closeReadChannel(QProcess::StandardOutput);
    QVERIFY(talkTo(port));
    ::kill(pid_t(process.processId()), signal);
    QVERIFY(process.waitForFinished(Patience));
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 0);
    QVERIFY(!QFileInfo(folder.filePath(text("AV_268"))).isSymLink());
    QVERIFY(!QFileInfo(folder.filePath(text("TSP-TUP"))).isSymLink());
    QVERIFY(!QFileInfo(second).isSymLink());
}

QTEST_GUILESS_MAIN(TestPrintersim)

#include "tst_printersim.moc"
