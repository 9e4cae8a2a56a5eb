// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "commandrunner.h"
#include "testfixture.h"

#ifdef PRINTSRV_DBUS_DAEMON
#include <QDBusConnection>
#include <QDBusInterface>
#include <QDBusReply>

#include <unistd.h>
#endif

namespace {

const QByteArray ReadyText = "{\"deviceErrorCode\":0,\"deviceErrorMsg\":\"\",\"deviceNativeCode\":0,\"deviceState\":0,"
                             "\"serviceState\":1,\"tapeAvailable\":true}";

QStringList state(const QString &words)
{
    return QStringList{QStringLiteral("state")} + words.split(QLatin1Char(' '));
}

} // namespace

class TestPrintsrvState : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void encodes_data();
    void encodes();
    void decodes_data();
    void decodes();
#ifdef PRINTSRV_DBUS_DAEMON
    void publishesAndWatches();
    void refusesAnEndlessLine();
    void needsABus();
    void obeysTheSystemBus_data();
    void obeysTheSystemBus();

private:
    static bool startBus(QProcess &daemon, QProcessEnvironment &environment, const QString &configuration);
#endif
};

void TestPrintsrvState::encodes_data()
{
    QTest::addColumn<QString>("words");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QByteArray>("output");
    QTest::newRow("names") << "encode --service ready --device READY" << 0 << ReadyText + '\n';
    QTest::newRow("numbers") << "encode --service 1 --device 0" << 0 << ReadyText + '\n';
    QTest::newRow("all fields")
        << "encode --service 65535 --device 4 --error 0x20 --native 4294967295 --message m --no-tape" << 0
        << QByteArray("{\"deviceErrorCode\":32,\"deviceErrorMsg\":\"m\",\"deviceNativeCode\":"
                      "4294967295,\"deviceState\":4,\"serviceState\":65535,"
                      "\"tapeAvailable\":false}\n");
    QTest::newRow("no state") << "encode --service asleep" << 2 << QByteArray();
    QTest::newRow("too large") << "encode --device 65536" << 2 << QByteArray();
    QTest::newRow("no name on a bus") << "watch --name bad" << 2 << QByteArray();
    QTest::newRow("no code") << "encode --error -1" << 2 << QByteArray();
}

void TestPrintsrvState::encodes()
{
    QFETCH(QString, words);
    const auto result = CommandRunner().run(state(words));
    QTEST(result.exitCode, "exitCode");
    QTEST(result.output, "output");
    QCOMPARE(result.errors.isEmpty(), result.exitCode == 0);
}

void TestPrintsrvState::decodes_data()
{
    QTest::addColumn<QString>("options");
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QByteArray>("output");

    const QByteArray time = "time     2024-03-05T10:00:00.000Z\n";
    QTest::newRow("ready") << "" << ReadyText << 0
                           << "type     NORMAL (0)\n" + time
            + "service  ready (1)\ndevice   ready (0)\nerror    0x0\nnative   0\nmessage  \npaper    yes\n"
              "valid    yes\nworkable yes\n";
    QTest::newRow("sent otherwise") << " --type fatal" << QByteArray("{\"serviceState\":9,\"deviceState\":2}\n") << 0
                                    << "type     FATAL (3)\n" + time
            + "service  9 (9)\ndevice   attention (2)\nerror    0x0\nnative   0\nmessage  \npaper    yes\n"
              "valid    yes\nworkable no\n";
    QTest::newRow("nothing in it") << "" << QByteArray("{}") << 0
                                   << "type     INVALID (-1)\n" + time
            + "service  invalid (255)\ndevice   invalid (255)\nerror    0x0\nnative   0\nmessage  \npaper    yes\n"
              "valid    no\nworkable no\n";
    QTest::newRow("broken") << "" << QByteArray("{") << 1 << QByteArray();
    QTest::newRow("no type") << " --type worse" << ReadyText << 2 << QByteArray();
}

void TestPrintsrvState::decodes()
{
    QFETCH(QString, options);
    QFETCH(QByteArray, text);
    const QString words = QStringLiteral("decode - --time 2024-03-05T12:00:00+02:00") + options;
    const auto result = CommandRunner().run(state(words), text);
    QTEST(result.exitCode, "exitCode");
    QTEST(result.output, "output");
}

#ifdef PRINTSRV_DBUS_DAEMON

bool TestPrintsrvState::startBus(QProcess &daemon, QProcessEnvironment &environment, const QString &configuration)
{
    daemon.start(QStringLiteral(PRINTSRV_DBUS_DAEMON),
                 {configuration, QStringLiteral("--nofork"), QStringLiteral("--print-address")});
    if (!daemon.waitForReadyRead()) {
        return false;
    }
    environment = QProcessEnvironment::systemEnvironment();
    const QString address = QString::fromLatin1(daemon.readLine().trimmed());
    environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), address);
    environment.insert(QStringLiteral("DBUS_SYSTEM_BUS_ADDRESS"), address);
    return true;
}

void TestPrintsrvState::publishesAndWatches()
{
    QProcess daemon;
    QProcessEnvironment environment;
    QVERIFY(startBus(daemon, environment, QStringLiteral("--session")));
    QProcess watcher;
    watcher.setProcessEnvironment(environment);
    watcher.start(CommandRunner::command(), state(QStringLiteral("watch --count 2")));
    watcher.setReadChannel(QProcess::StandardError);
    QVERIFY(watcher.waitForReadyRead()); // nobody offers the state yet
    QVERIFY(watcher.readLine().contains("waiting"));

    QProcess publisher;
    publisher.setProcessEnvironment(environment);
    publisher.start(CommandRunner::command(), state(QStringLiteral("publish")));
    publisher.write(ReadyText + "\n\n{broken\n{\"serviceState\":1,\"deviceState\":4}\n");
    QVERIFY(publisher.waitForBytesWritten());
    QVERIFY(watcher.waitForFinished());
    QCOMPARE(watcher.exitCode(), 0);
    const QByteArrayList lines = watcher.readAllStandardOutput().split('\n');
    QCOMPARE(lines.size(), 3);
    QVERIFY2(lines.at(0).endsWith("Z NORMAL " + ReadyText), lines.at(0).constData());
    QVERIFY2(lines.at(1).contains("Z FATAL {"), lines.at(1).constData());

    const QString name = QStringLiteral("org.printsrv.State");
    {
        const QString address = environment.value(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"));
        const QDBusConnection bus = QDBusConnection::connectToBus(address, QStringLiteral("test"));
        QDBusInterface object(name, QStringLiteral("/org/printsrv/State"), QStringLiteral("org.printsrv.ClientState1"),
                              bus);
        QCOMPARE(object.property("Type").toInt(), 3);
        QVERIFY(object.property("Text").toString().contains(QStringLiteral("\"deviceState\":4")));
        QVERIFY(QDateTime::fromString(object.property("Time").toString(), Qt::ISODate).isValid());
    }
    QDBusConnection::disconnectFromBus(QStringLiteral("test"));

    QProcess second; // the name is taken
    second.setProcessEnvironment(environment);
    second.start(CommandRunner::command(), state(QStringLiteral("publish")));
    QVERIFY(second.waitForFinished());
    QCOMPARE(second.exitCode(), 1);
    QVERIFY(second.readAllStandardError().contains("another program offers it"));
    publisher.closeWriteChannel();
    QVERIFY(publisher.waitForFinished());
    QCOMPARE(publisher.exitCode(), 1); // one text was broken
    QVERIFY(publisher.readAllStandardError().contains("standard input:3:2: no JSON"));
    daemon.terminate();
    QVERIFY(daemon.waitForFinished());
}

// The end of the line never comes, nor does that of the input.
void TestPrintsrvState::refusesAnEndlessLine()
{
    constexpr int LargestLineBytes = 1024 * 1024;
    QProcess daemon;
    QProcessEnvironment environment;
    QVERIFY(startBus(daemon, environment, QStringLiteral("--session")));
    QProcess publisher;
    publisher.setProcessEnvironment(environment);
    publisher.start(CommandRunner::command(), state(QStringLiteral("publish")));
    publisher.write('\n' + QByteArray(LargestLineBytes + 1, ' '));
    QVERIFY(publisher.waitForFinished());
    QCOMPARE(publisher.exitCode(), 1);
    QCOMPARE(publisher.readAllStandardError(), QByteArray("printsrv: line 2 is longer than 1 MiB\n"));
    daemon.terminate();
    QVERIFY(daemon.waitForFinished());
}

void TestPrintsrvState::needsABus()
{
    CommandRunner runner;
    runner.setEnvironment(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QStringLiteral("unix:path=/nonexistent"));
    for (const char *words : {"watch --count 1", "publish"}) {
        const auto result = runner.run(state(QString::fromLatin1(words)));
        QCOMPARE(result.exitCode, 1);
        QVERIFY2(result.errors.startsWith("printsrv: no session bus: "), result.errors.constData());
    }
}

void TestPrintsrvState::obeysTheSystemBus_data()
{
    QTest::addColumn<QByteArray>("policy");
    QTest::addColumn<bool>("isOffered");
    QFile file(QStringLiteral(PRINTSRV_BUS_POLICY));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray mayOffer
        = "user=\"" + QByteArray::number(geteuid()) + '"'; // root's rights for whoever runs the test
    QTest::newRow("no policy") << QByteArray("<busconfig/>") << false;
    QTest::newRow("installed policy") << file.readAll().replace("user=\"root\"", mayOffer) << true;
}

// A bus that forbids what the system's forbids: to own a name and to call a method.
void TestPrintsrvState::obeysTheSystemBus()
{
    QFETCH(QByteArray, policy);
    QFETCH(bool, isOffered);
    CommandRunner runner;
    const QByteArray socket = "unix:path=" + QFile::encodeName(runner.path(QStringLiteral("bus")));
    runner.write(QStringLiteral("policy.conf"), policy);
    runner.write(QStringLiteral("bus.conf"),
                 "<busconfig><listen>" + socket
                     + "</listen><policy context=\"default\"><allow user=\"*\"/><deny own=\"*\"/>"
                       "<deny send_type=\"method_call\"/><allow send_type=\"signal\"/>"
                       "<allow send_requested_reply=\"true\" send_type=\"method_return\"/>"
                       "<allow send_requested_reply=\"true\" send_type=\"error\"/>"
                       "<allow receive_type=\"method_call\"/><allow receive_type=\"method_return\"/>"
                       "<allow receive_type=\"error\"/><allow receive_type=\"signal\"/>"
                       "<allow send_destination=\"org.freedesktop.DBus\"/></policy>"
                       "<include>policy.conf</include></busconfig>");
    QProcess daemon;
    QProcessEnvironment environment;
    QVERIFY(startBus(daemon, environment, QStringLiteral("--config-file=") + runner.path(QStringLiteral("bus.conf"))));

    QProcess publisher;
    publisher.setProcessEnvironment(environment);
    publisher.start(CommandRunner::command(), state(QStringLiteral("publish --bus system")));
    if (isOffered) {
        publisher.write(ReadyText + '\n');
        QVERIFY(publisher.waitForBytesWritten());
        runner.setEnvironment(QStringLiteral("DBUS_SYSTEM_BUS_ADDRESS"), QString::fromLocal8Bit(socket));
        const auto seen = runner.run(state(QStringLiteral("watch --bus system --count 1")));
        QVERIFY2(seen.output.contains("\"deviceState\":"), seen.errors.constData()); // asked for or signalled
    }
    publisher.closeWriteChannel();
    QVERIFY(publisher.waitForFinished());
    QCOMPARE(publisher.exitCode(), isOffered ? 0 : 1);
    QCOMPARE(publisher.readAllStandardError().contains("not allowed to own"), !isOffered);
    daemon.terminate();
    QVERIFY(daemon.waitForFinished());
}

#endif

QTEST_GUILESS_MAIN(TestPrintsrvState)
#include "tst_printsrvstate.moc"
