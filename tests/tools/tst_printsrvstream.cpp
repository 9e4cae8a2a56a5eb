// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "commandrunner.h"
#include "testfixture.h"

#include <unistd.h>

namespace {

constexpr int TimeoutMs = 20000;

QStringList streamArguments(const CommandRunner &runner)
{
    return {QStringLiteral("render"), runner.write(QStringLiteral("t.cpt"), "<NAME>\n"), QStringLiteral("--stream")};
}

QByteArray receipt(const QByteArray &name)
{
    return "{\"attributes\":{\"NAME\":\"" + name + "\"}}";
}

// Peak memory of a running process in KiB.
int peakMemory(qint64 processId)
{
    QFile status(QStringLiteral("/proc/%1/status").arg(processId));
    const QByteArray text = status.open(QIODevice::ReadOnly) ? status.readAll() : QByteArray();
    const int start = text.indexOf("VmHWM:");
    return start < 0 ? -1 : text.mid(start + 6).simplified().split(' ').first().toInt();
}

} // namespace

class TestPrintsrvStream : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void answers_data();
    void answers();
    void isTheSameAsAlone_data();
    void isTheSameAsAlone();
    void answersBeforeMoreIsAsked();
    void endsWithItsReader();
    void failsOnFullOutput();
    void staysSmall();
};

void TestPrintsrvStream::answers_data()
{
    QTest::addColumn<QByteArray>("input");
    QTest::addColumn<QByteArray>("output");
    QTest::addColumn<int>("exitCode");

    const QByteArray tooLong = receipt(QByteArray(17 * 1024 * 1024, 'x'));
    QTest::newRow("nothing") << QByteArray() << QByteArray() << 0;
    QTest::newRow("two") << receipt("a") + '\n' + receipt("b") + '\n'
                         << QByteArray("{\"text\":\"a\"}\n{\"text\":\"b\"}\n") << 0;
    QTest::newRow("last line without an end") << receipt("a") << QByteArray("{\"text\":\"a\"}\n") << 0;
    QTest::newRow("blank lines and carriage returns") << "\n \r\n" + receipt("a") + "\r\n\n"
                                                      << QByteArray("{\"text\":\"a\"}\n") << 0;
    QTest::newRow("the run goes on")
        << "\n{\"attributes\":[]}\n" + receipt("b") + '\n'
        << QByteArray("{\"error\":\"attributes: give an object of names and values\",\"line\":2}\n{\"text\":\"b\"}\n")
        << 1;
    QTest::newRow("line that is too long")
        << tooLong + '\n' + receipt("b") + '\n'
        << QByteArray("{\"error\":\"the line is longer than 16 MiB\",\"line\":1}\n{\"text\":\"b\"}\n") << 1;
    QTest::newRow("last line too long without an end")
        << tooLong << QByteArray("{\"error\":\"the line is longer than 16 MiB\",\"line\":1}\n") << 1;
}

void TestPrintsrvStream::answers()
{
    QFETCH(QByteArray, input);
    const CommandRunner runner;
    const auto result = runner.run(streamArguments(runner), input);
    QCOMPARE(result.errors, QByteArray());
    QTEST(result.output, "output");
    QTEST(result.exitCode, "exitCode");
}

void TestPrintsrvStream::isTheSameAsAlone_data()
{
    QTest::addColumn<QString>("example");
    QTest::addColumn<QString>("format");

    for (const char *example : {"payment", "shop", "service"}) {
        for (const char *format : {"text", "page", "document"}) {
            QTest::addRow("%s %s", example, format) << QString::fromLatin1(example) << QString::fromLatin1(format);
        }
    }
}

void TestPrintsrvStream::isTheSameAsAlone()
{
    QFETCH(QString, example);
    QFETCH(QString, format);
    const CommandRunner runner;
    const QString path = QStringLiteral(PRINTSRV_EXAMPLES "/%1/%2");
    QFile data(path.arg(example, QStringLiteral("receipt.json")));
    QVERIFY(data.open(QIODevice::ReadOnly));
    const QStringList common{QStringLiteral("render"), path.arg(example, QStringLiteral("template.cpt")),
                             QStringLiteral("--format"), format};
    const auto alone = runner.run(common + QStringList{QStringLiteral("--data"), data.fileName()});
    const auto streamed
        = runner.run(common + QStringList{QStringLiteral("--stream")}, data.readAll().replace('\n', ' '));
    QCOMPARE(streamed.exitCode, 0);
    const QJsonValue value = QJsonDocument::fromJson(streamed.output).object().value(format);
    if (format == QStringLiteral("document")) {
        QCOMPARE(value.toObject(), QJsonDocument::fromJson(alone.output).object());
    } else {
        QCOMPARE(value.toString().toUtf8() + '\n', alone.output);
    }
}

void TestPrintsrvStream::answersBeforeMoreIsAsked()
{
    const CommandRunner runner;
    QProcess process;
    process.setWorkingDirectory(runner.path());
    process.start(CommandRunner::command(), streamArguments(runner));
    for (const QByteArray &name : {QByteArray("a"), QByteArray("b")}) {
        process.write(receipt(name) + '\n');
        QVERIFY(process.waitForReadyRead(TimeoutMs));
        QCOMPARE(process.readAllStandardOutput(), "{\"text\":\"" + name + "\"}\n");
    }
    process.closeWriteChannel();
    QVERIFY(process.waitForFinished(TimeoutMs));
    QCOMPARE(process.exitCode(), 0);
}

void TestPrintsrvStream::endsWithItsReader()
{
    const CommandRunner runner;
    QProcess shell;
    shell.setWorkingDirectory(runner.path());
    const QString line = QStringLiteral("{ yes '%1' | '%2' %3; echo $? >&2; } | head -n 1")
                             .arg(QString::fromUtf8(receipt("a")), CommandRunner::command(),
                                  streamArguments(runner).join(QLatin1Char(' ')));
    shell.start(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), line});
    QVERIFY(shell.waitForFinished(TimeoutMs));
    QCOMPARE(shell.readAllStandardOutput(), QByteArray("{\"text\":\"a\"}\n"));
    QCOMPARE(shell.readAllStandardError(), QByteArray("0\n"));
}

void TestPrintsrvStream::failsOnFullOutput()
{
    const CommandRunner runner;
    QProcess process;
    process.setWorkingDirectory(runner.path());
    process.setStandardOutputFile(QStringLiteral("/dev/full"));
    process.start(CommandRunner::command(), streamArguments(runner));
    process.write(receipt("a"));
    process.closeWriteChannel();
    QVERIFY(process.waitForFinished(TimeoutMs));
    QCOMPARE(process.exitCode(), 1);
    QVERIFY(process.readAllStandardError().contains("standard output: not written: No space left on device"));
}

void TestPrintsrvStream::staysSmall()
{
    const CommandRunner runner;
    QProcess process;
    process.setWorkingDirectory(runner.path());
    // Under AddressSanitizer freed memory would be kept back for a while, and count.
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("ASAN_OPTIONS"),
                       environment.value(QStringLiteral("ASAN_OPTIONS")) + QStringLiteral(":quarantine_size_mb=0"));
    process.setProcessEnvironment(environment);
    process.setStandardOutputFile(QProcess::nullDevice());
    process.start(CommandRunner::command(), streamArguments(runner));
    QVERIFY(process.waitForStarted(TimeoutMs));
    const auto feed = [&](const QByteArray &line, int count) {
        process.write((line + '\n').repeated(count));
        while (process.bytesToWrite() > 0 && process.waitForBytesWritten(TimeoutMs)) { }
        return peakMemory(process.processId());
    };
    const QByteArray line = receipt(QByteArray(1000, 'x'));
    const int early = feed(line, 2000);
    const int late = feed(line, 20000);
    process.closeWriteChannel();
    QVERIFY(process.waitForFinished(TimeoutMs));
    QVERIFY(early > 0);
    QVERIFY2(late - early < 2048, qPrintable(QStringLiteral("%1 KiB, then %2 KiB").arg(early).arg(late)));
}

QTEST_GUILESS_MAIN(TestPrintsrvStream)

#include "tst_printsrvstream.moc"
