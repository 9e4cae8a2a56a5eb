// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "commandrunner.h"
#include "testfixture.h"

#include <simulatorthread.h>
#include <transcript.h>

#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSerialPort>

#include <csignal>

#include <grp.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace printersim;

namespace {

constexpr int Patience = 30'000;
constexpr int InterruptionMs = 1000;

QString text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

} // namespace

class TestPrintsrvFind : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void refusesAWrongCommandLine_data();
    void refusesAWrongCommandLine();
    void tellsAVerdict_data();
    void tellsAVerdict();
    void tellsWhoUsesAPort();
    void tellsWhoLockedALinkedPort();
    void tellsWhoMayUseAPort_data();
    void tellsWhoMayUseAPort();
    void writesJson();
    void replaysWhatItRecorded();
    void recordsWithoutStandardStreams();
    void leavesPortsOut();
    void searchesEveryPortToItsEnd();
    void endsAtCtrlC();
};

void TestPrintsrvFind::refusesAWrongCommandLine_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QByteArray>("complaint");
    QTest::newRow("option") << text("find --bogus") << QByteArray("bogus");
    QTest::newRow("no port") << text("test --model AV_268") << QByteArray("--port is missing");
    QTest::newRow("no model") << text("test --port ttyS0") << QByteArray("--model is missing");
    QTest::newRow("model without a conversation") << text("test --port p --model WPK_833") << QByteArray("'WPK_833'");
    QTest::newRow("speed") << text("test --port p --model AV_268 --baud fast") << QByteArray("'fast'");
    QTest::newRow("parity") << text("test --port p --model AV_268 --parity mark") << QByteArray("'mark'");
    QTest::newRow("empty port") << text("find ") << QByteArray("PORT is empty");
    QTest::newRow("empty port to show") << text("ports ") << QByteArray("PORT is empty");
    QTest::newRow("recording without a name") << text("find --record=") << QByteArray("--record takes");
    QTest::newRow("pattern") << text("find --exclude [ ttyS0") << QByteArray("'['");
    QTest::newRow("flow control") << text("test --port p --model AV_268 --flow up") << QByteArray("'up'");
}

void TestPrintsrvFind::refusesAWrongCommandLine()
{
    QFETCH(QString, line);
    QFETCH(QByteArray, complaint);
    const auto result = CommandRunner().run(line.split(QLatin1Char(' ')));
    QCOMPARE(result.exitCode, 2);
    QVERIFY2(result.errors.contains(complaint), result.errors.constData());
}

void TestPrintsrvFind::tellsAVerdict_data()
{
    QTest::addColumn<QString>("personality");
    QTest::addColumn<QString>("fault");
    QTest::addColumn<QString>("command");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QByteArray>("verdict");
    QTest::newRow("found") << text("CUSTOM_VKP_80") << text("none") << text("find") << 0
                           << QByteArray(
                                  ": found: CUSTOM_VKP_80, 19200 baud, 8 data bits, no parity, one stop bit, no flow "
                                  "control\n");
    QTest::newRow("echo") << text("AV_268") << text("echo") << text("find") << 1 << QByteArray(": echo: ");
    QTest::newRow("verified") << text("TSP-TUP") << text("none") << text("test --model TSP-TUP") << 0
                              << QByteArray(": found: TSP-TUP, 9600 baud");
    QTest::newRow("another model") << text("CUSTOM_VKP_80") << text("none")
                                   << text("test --model CITIZEN_PPU_700 --baud 19200") << 1
                                   << QByteArray(": found: CUSTOM_VKP_80");
    QTest::newRow("settings of its own") << text("AV_268") << text("none") << text("test --model av_268 --baud 9600")
                                         << 1 << QByteArray(": found: AV_268, 115200 baud");
    QTest::newRow("silent") << text("TSP-TUP") << text("silent") << text("test --model TSP-TUP") << 1
                            << QByteArray(": silent: nothing answers\n");
    QTest::newRow("foreign") << text("UNKNOWN_EE") << text("none") << text("test --model CUSTOM_VKP_80 --baud 19200")
                             << 1
                             << QByteArray(
                                    ": talks, but is none of our printers: asked 1D 49 01 1D 49 01 it says EE EE at "
                                    "19200 baud\n");
    QTest::newRow("vanished") << text("CUSTOM_VKP_80") << text("unplugs")
                              << text("test --model CUSTOM_VKP_80 --baud 19200") << 1 << QByteArray(": vanished");
}

void TestPrintsrvFind::tellsAVerdict()
{
    QFETCH(QString, personality);
    QFETCH(QString, fault);
    QFETCH(QString, command);
    QFETCH(int, exitCode);
    QFETCH(QByteArray, verdict);
    SimulatorThread simulator;
    const QString port
        = simulator.add(*printersim::personality(personality), {*faultFromName(fault), {}, 1})->portName();
    const QString portArgument = command == text("find") ? port : text("--port=") + port;
    const auto result = CommandRunner().run(command.split(QLatin1Char(' ')) << portArgument);
    QCOMPARE(result.exitCode, exitCode);
    QVERIFY2(result.output.startsWith(port.toLatin1() + verdict), result.output.constData());
}

void TestPrintsrvFind::tellsWhoUsesAPort()
{
    SimulatorThread simulator;
    const QString name = simulator.add(*personality(text("CUSTOM_VKP_80")))->portName();
    QSerialPort port(name);
    QVERIFY(port.open(QIODevice::ReadWrite));
    const QByteArray user = "(pid " + QByteArray::number(getpid()) + ')';
    const auto result = CommandRunner().run({text("find"), name});
    QCOMPARE(result.exitCode, 1);
    QVERIFY2(result.output.startsWith(name.toLatin1() + ": busy: used by tst_"), result.output.constData());
    QVERIFY2(result.output.contains(user), result.output.constData());
    QVERIFY(CommandRunner().run({text("ports"), name}).output.contains("in use by tst_"));
    QCOMPARE(CommandRunner().run({text("find"), text("/nowhere")}).output,
             QByteArray("/nowhere: there is no /nowhere\n"));
    QCOMPARE(CommandRunner().run({text("ports"), text("/nowhere")}).exitCode, 1);
    // Used by many, and busy for none of them.
    QCOMPARE(CommandRunner().run({text("find"), text("/dev/null")}).output, QByteArray("/dev/null: no serial port\n"));
}

// Somebody else's process tells nothing but its lock file, which is named after the device, not after a link to it.
void TestPrintsrvFind::tellsWhoLockedALinkedPort()
{
    SimulatorThread simulator;
    const QString name = simulator.add(*personality(text("CUSTOM_VKP_80")))->portName();
    const CommandRunner runner;
    QVERIFY(QFile::link(name, runner.path(text("printer"))));
    QProcess other;
    other.start(text("sleep"), {text("60")});
    QVERIFY(other.waitForStarted());
    QFile lock(
        name.section(QLatin1Char('/'), 2).replace(QLatin1Char('/'), QLatin1Char('_')).prepend(text("/var/lock/LCK..")));
    QVERIFY(lock.open(QIODevice::WriteOnly));
    // As QSerialPort writes it; it removes the lock of a program that does not run.
    const QByteArray pid = QByteArray::number(other.processId());
    lock.write(pid + "\nsleep\n");
    lock.close();
    const auto result = runner.run({text("ports"), runner.path(text("printer"))});
    QVERIFY(lock.remove());
    other.kill();
    QVERIFY(other.waitForFinished());
    QVERIFY2(result.output.contains("(pid " + pid + ')'), result.output.constData());
}

void TestPrintsrvFind::tellsWhoMayUseAPort_data()
{
    QTest::addColumn<int>("rights");
    QTest::addColumn<QByteArray>("advice");
    QTest::newRow("group") << 0060 << QByteArray(": no permission: add the user to the group tty and ");
    QTest::newRow("owner") << 0 << QByteArray(" may use it; a udev rule can ");
}

void TestPrintsrvFind::tellsWhoMayUseAPort()
{
    QFETCH(int, rights);
    QFETCH(QByteArray, advice);
    SimulatorThread simulator;
    const QString name = simulator.add(*personality(text("CUSTOM_VKP_80")))->portName();
    QCOMPARE(chmod(name.toLatin1().constData(), mode_t(rights)), 0);
    // Root may open anything, unless it gives that right away, and its terminals need not be of the group tty.
    QStringList line{CommandRunner::command(), text("find"), name};
    if (geteuid() == 0) {
        const group *tty = getgrnam("tty");
        QVERIFY(tty != nullptr);
        QCOMPARE(chown(name.toLatin1().constData(), uid_t(-1), tty->gr_gid), 0);
        line = QStringList{text("setpriv"), text("--bounding-set=-dac_override,-dac_read_search")} + line;
    }
    QProcess process;
    process.start(line.takeFirst(), line);
    QVERIFY2(process.waitForFinished(Patience), qPrintable(process.errorString()));
    const QByteArray output = process.readAllStandardOutput();
    QVERIFY2(output.contains(advice), output.constData());
    QCOMPARE(process.exitCode(), 1);
}

void TestPrintsrvFind::writesJson()
{
    SimulatorThread simulator;
    const QString name = simulator.add(*personality(text("CITIZEN_PPU_700")))->portName();
    const auto result = CommandRunner().run({text("find"), text("--json"), name});
    const QJsonArray ports = QJsonDocument::fromJson(result.output).array();
    QCOMPARE(ports.size(), 1);
    const QJsonObject port = ports.first().toObject();
    QCOMPARE(port.value(text("port")).toString(), name);
    QCOMPARE(port.value(text("verdict")).toString(), text("found"));
    QCOMPARE(port.value(text("model")).toString(), text("CITIZEN_PPU_700"));
    QCOMPARE(port.value(text("settings")).toObject().value(text("baudRate")).toInt(), 19200);
}

void TestPrintsrvFind::replaysWhatItRecorded()
{
    const CommandRunner runner;
    SimulatorThread simulator;
    for (const char *name : {"CUSTOM_VKP_80", "CITIZEN_PPU_231"}) {
        const Personality player = *personality(text(name));
        const QStringList verification{text("test"),
                                       text("--model"),
                                       text(name),
                                       text("--baud"),
                                       QString::number(player.voices.first().line.baudRate),
                                       text("--port")};
        const auto recorded
            = runner.run(verification + QStringList{simulator.add(player)->portName(), text("--record=search.jsonl")});
        QCOMPARE(recorded.exitCode, 0);
        QString error;
        const auto replayed = personalityFromTranscript(runner.read(text("search.jsonl")), &error);
        QVERIFY2(replayed.has_value(), qPrintable(error));
        const auto result = runner.run(verification + QStringList{simulator.add(*replayed)->portName()});
        QCOMPARE(result.exitCode, 0);
        QVERIFY2(result.output.contains(name), result.output.constData());
    }
    const auto refused = runner.run({text("find"), text("/nowhere"), text("--record"), text("/nowhere/search.jsonl")});
    QCOMPARE(refused.exitCode, 1);
    QVERIFY2(refused.errors.contains("'/nowhere/search.jsonl' cannot be written"), refused.errors.constData());
}

// The first file that is opened gets the lowest number that is free, also that of standard output.
void TestPrintsrvFind::recordsWithoutStandardStreams()
{
    const CommandRunner runner;
    SimulatorThread simulator;
    const QString port = simulator.add(*personality(text("CUSTOM_VKP_80")))->portName();
    const QString line = text("exec %1 find %2 --record %3 <&- >&- 2>&-");
    const QString recording = text("search.jsonl");
    QProcess shell;
    shell.start(text("sh"), {text("-c"), line.arg(CommandRunner::command(), port, runner.path(recording))});
    QVERIFY(shell.waitForFinished(Patience));
    QCOMPARE(shell.exitCode(), 1); // what was found could not be written
    QString error;
    QVERIFY2(personalityFromTranscript(runner.read(recording), &error).has_value(), qPrintable(error));
}

void TestPrintsrvFind::leavesPortsOut()
{
    SimulatorThread simulator;
    SimulatedPrinter *printer = simulator.add(*personality(text("CUSTOM_VKP_80")));
    const QString name = printer->portName();
    const QByteArray planned = name.toLatin1() + ": would be searched\n";
    QCOMPARE(CommandRunner().run({text("find"), text("--dry-run"), name, name}).output, planned);
    QCOMPARE(CommandRunner().run({text("find"), text("--dry-run"), text("--exclude=ttyX*"), name}).output, planned);
    const QByteArray json = CommandRunner().run({text("find"), text("--dry-run"), text("--json"), name}).output;
    QCOMPARE(QJsonDocument::fromJson(json).array().first().toObject().value(text("verdict")).toString(),
             text("planned"));
    const auto missing = CommandRunner().run({text("find"), text("--dry-run"), text("ttyNone")});
    QCOMPARE(missing.exitCode, 1);
    QCOMPARE(missing.output, QByteArray("ttyNone: there is no /dev/ttyNone\n"));
    const auto result = CommandRunner().run({text("find"), text("--exclude=/dev/pts/*"), name});
    QCOMPARE(result.exitCode, 1);
    QVERIFY2(result.errors.contains("no serial port to search"), result.errors.constData());
    QCOMPARE(printer->received(), QByteArray());
}

void TestPrintsrvFind::searchesEveryPortToItsEnd()
{
    SimulatorThread simulator;
    const QString first = simulator.add(*personality(text("CUSTOM_VKP_80")))->portName();
    const QString second = simulator.add(*personality(text("CITIZEN_PPU_700")))->portName();
    const auto result = CommandRunner().run({text("find"), text("--all"), second, first});
    QCOMPARE(result.exitCode, 0);
    const QList<QByteArray> lines = result.output.split('\n');
    QVERIFY(lines.at(0).startsWith(second.toLatin1() + ": found: CITIZEN_PPU_700"));
    QVERIFY(lines.at(1).startsWith(first.toLatin1() + ": found: CUSTOM_VKP_80"));
}

void TestPrintsrvFind::endsAtCtrlC()
{
    SimulatorThread simulator;
    SimulatedPrinter *printer = simulator.add(*personality(text("AV_268")), {EFault::Silent, {}, 1});
    QProcess process;
    process.start(CommandRunner::command(), {text("find"), printer->portName()});
    QTRY_VERIFY_WITH_TIMEOUT(!printer->received().isEmpty(), Patience);
    QElapsedTimer clock;
    clock.start();
    kill(pid_t(process.processId()), SIGINT);
    QVERIFY(process.waitForFinished(Patience));
    QVERIFY2(clock.elapsed() < InterruptionMs, qPrintable(QString::number(clock.elapsed())));
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 1);
    QCOMPARE(process.readAllStandardOutput(), printer->portName().toLatin1() + ": not searched to the end\n");
    QVERIFY(QSerialPort(printer->portName()).open(QIODevice::ReadWrite));
}

QTEST_GUILESS_MAIN(TestPrintsrvFind)

#include "tst_printsrvfind.moc"
