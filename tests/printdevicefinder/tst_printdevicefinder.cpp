// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "discoverysupport.h"
#include "testfixture.h"

#include <printdevicefinder.h>
#include <simulatorthread.h>
#include <textprintermodels.h>

#include <QLoggingCategory>
#include <QProcess>
#include <QThreadPool>

#include <algorithm>
#include <memory>
#include <random>

using namespace printersim;
using Models = TextPrinterModels;

namespace {

constexpr int Patience = 30'000;
constexpr int MedianCancelMs = 100;
// What a machine whose processors are all taken may add to the worst one.
constexpr int WorstCancelMs = 1000;

QString text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

QStringList silentPorts(SimulatorThread *simulator, int count)
{
    QStringList names;
    for (int i = 0; i < count; ++i) {
        names.append(simulator->add(scripted({}), {EFault::Silent, {}, 1})->portName());
    }
    return names;
}

qint64 cancelMs(PrintDeviceFinder *finder)
{
    QElapsedTimer clock;
    clock.start();
    finder->cancel();
    return clock.elapsed();
}

void handEventsOutFor(int milliseconds)
{
    QTest::qWait(milliseconds);
}

} // namespace

class TestPrintDeviceFinder : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void comparesDevices();
    void travelsInQueuedSignals();
    void raisesThePoolsLimit();
    void tellsThatThereIsNothingToSearch();
    void signalsInOrder();
    void searchesARepeatedNameOnce();
    void reportsOneOfSeveralPrinters();
    void verifiesSeveralConfigsOfOnePort();
    void findsNothingForType0();
    void startsAgainFromItsSignals();
    void cancelsARunningSearchToStartAnother();
    void signalsNothingMoreAfterCancel();
    void survivesItsDeletionInASlot();
    void survivesItsDeletionInACall_data();
    void survivesItsDeletionInACall();
    void stopsItsTasksBeforeSlotsAreCalled();
    void dropsAResultThatArrivesWhileCancelling();
    void endsASearchWhenDestroyed();
    void cancelsFortyPortsInTime();
    void survivesCancelsAtAnyMoment();
    void survivesCancelsInFreshProcesses();
};

void TestPrintDeviceFinder::initTestCase()
{
    // Ten thousand lines of conversation help nobody.
    QLoggingCategory::setFilterRules(text("printers.debug=false"));
}

void TestPrintDeviceFinder::comparesDevices()
{
    const PrintDeviceInfo none;
    QCOMPARE(none.deviceType(), 0U);
    QVERIFY(!none.isValid());
    const PrintDeviceInfo device = config(text("A"), portSettings(text("p"), 9600));
    QVERIFY(device.isValid());
    QVERIFY(!config({}, portSettings(text("p"), 9600)).isValid());
    QVERIFY(device == config(text("A"), portSettings(text("p"), 9600)));
    QVERIFY(device != config(text("B"), portSettings(text("p"), 9600)));
    QVERIFY(device != config(text("A"), portSettings(text("q"), 9600)));
    PrintDeviceInfo other = device;
    other.setDeviceType(2);
    QVERIFY(device != other);
    other.setDeviceType(0);
    QVERIFY(!other.isValid());
}

void TestPrintDeviceFinder::travelsInQueuedSignals()
{
    QCOMPARE(QMetaType::type("PrintDeviceInfo"), qMetaTypeId<PrintDeviceInfo>());
}

void TestPrintDeviceFinder::raisesThePoolsLimit()
{
    QThreadPool::globalInstance()->setMaxThreadCount(3);
    const PrintDeviceFinder finder;
    QCOMPARE(QThreadPool::globalInstance()->maxThreadCount(), 100);
}

void TestPrintDeviceFinder::tellsThatThereIsNothingToSearch()
{
    PrintDeviceFinder finder;
    const SignalLog log(&finder);
    QList<PrintDeviceInfo> configs;
    finder.start(QStringList());
    finder.test(configs);
    QCOMPARE(log.signalsSeen,
             (QStringList{text("noDevices There are no available ports"),
                          text("noDevices There are no available configs")}));
}

void TestPrintDeviceFinder::signalsInOrder()
{
    SimulatorThread simulator;
    Search found(simulator.add(known(text("CITIZEN_PPU_700"))));
    found.finder->start({found.printer->portName()});
    QTRY_VERIFY_WITH_TIMEOUT(!found.log->found.isEmpty(), Patience);
    // Contract: the end comes before the result; cancelling is asked for once and once more for each task.
    QCOMPARE(
        found.log->signalsSeen,
        (QStringList{text("needCancel"), text("needCancel"), text("finished"), text("deviceFinded CITIZEN_PPU_700")}));
    Search nothing(nullptr);
    nothing.finder->start({text("/dev/null"), text("/nowhere")});
    QTRY_VERIFY_WITH_TIMEOUT(nothing.isOver(), Patience);
    QCOMPARE(nothing.log->signalsSeen, (QStringList{text("noDevices There no devices finded"), text("finished")}));
    nothing.finder->cancel();
    QCOMPARE(nothing.log->signalsSeen.mid(2), (QStringList{text("needCancel"), text("finished")}));
}

void TestPrintDeviceFinder::searchesARepeatedNameOnce()
{
    const WireLog log;
    SimulatorThread simulator;
    const QString name = simulator.add(known(text("CITIZEN_PPU_700")))->portName();
    PrintDeviceFinder finder;
    const SignalLog signalLog(&finder);
    finder.start({name, name, name});
    QTRY_COMPARE_WITH_TIMEOUT(signalLog.found.size(), 1, Patience);
    QCOMPARE(WireLog::events(text("opened")).size(), 1);
    QCOMPARE(WireLog::events(text("refused")).size(), 0);
    QCOMPARE(WireLog::events(text("closed")).size(), 1);
}

void TestPrintDeviceFinder::reportsOneOfSeveralPrinters()
{
    SimulatorThread simulator;
    QStringList ports = silentPorts(&simulator, 38);
    for (const char *name : {"CUSTOM_VKP_80", "CITIZEN_PPU_700"}) {
        ports.append(simulator.add(known(text(name)))->portName());
    }
    PrintDeviceFinder finder;
    const SignalLog log(&finder);
    finder.start(ports);
    QTRY_COMPARE_WITH_TIMEOUT(log.found.size(), 1, Patience);
    handEventsOutFor(50);
    QCOMPARE(log.found.size(), 1);
    QCOMPARE(log.signalsSeen.count(text("finished")), 1);
    QVERIFY(ports.mid(38).contains(log.found.first().settings().portName()));
}

void TestPrintDeviceFinder::verifiesSeveralConfigsOfOnePort()
{
    SimulatorThread simulator;
    Search search(simulator.add(known(text("CITIZEN_PPU_700"))));
    const QString name = search.printer->portName();
    QList<PrintDeviceInfo> configs{config(Models::MODEL_CITIZEN_CPP_8001, portSettings(name, 19200)),
                                   config(Models::MODEL_CITIZEN_PPU_700, portSettings(name, 38400)),
                                   config(Models::MODEL_CITIZEN_PPU_700, portSettings(name, 19200))};
    configs.last().setDeviceType(7);
    search.finder->test(configs);
    QTRY_VERIFY_WITH_TIMEOUT(search.isOver(), Patience);
    QCOMPARE(search.log->withoutNeedCancel(), (QStringList{text("finished"), text("deviceFinded CITIZEN_PPU_700")}));
    QCOMPARE(search.log->found.first().deviceType(), 7U);
    QCOMPARE(search.log->found.first().settings(), portSettings(name, 19200));
    QCOMPARE(configs.size(), 3);
}

void TestPrintDeviceFinder::findsNothingForType0()
{
    SimulatorThread simulator;
    Search search(simulator.add(known(text("CITIZEN_PPU_700"))));
    QList<PrintDeviceInfo> configs{
        config(Models::MODEL_CITIZEN_PPU_700, ownSettings(search.printer->portName(), search.printer->personality()))};
    configs.first().setDeviceType(0);
    search.finder->test(configs);
    QTRY_VERIFY_WITH_TIMEOUT(search.isOver(), Patience);
    QCOMPARE(search.log->signalsSeen, (QStringList{text("noDevices There no devices finded"), text("finished")}));
    // An empty id searches, with whatever settings.
    configs = {config({}, portSettings(search.printer->portName(), 4800))};
    search.finder->test(configs);
    QTRY_COMPARE_WITH_TIMEOUT(search.log->found.size(), 1, Patience);
    QCOMPARE(search.log->found.first().deviceId(), Models::MODEL_CITIZEN_PPU_700);
}

void TestPrintDeviceFinder::startsAgainFromItsSignals()
{
    SimulatorThread simulator;
    Search search(simulator.add(known(text("CITIZEN_PPU_700"))));
    const QString name = search.printer->portName();
    int starts = 1;
    const auto startOnceMore = [&] {
        if (++starts <= 4) {
            search.finder->start({name});
        }
    };
    connect(search.finder.get(), &PrintDeviceFinder::deviceFinded, this, startOnceMore);
    search.finder->start({name});
    QTRY_COMPARE_WITH_TIMEOUT(search.log->found.size(), 4, Patience);
    QCOMPARE(search.log->signalsSeen.count(text("finished")), 4);
    disconnect(search.finder.get(), &PrintDeviceFinder::deviceFinded, this, nullptr);

    bool isFirst = true;
    connect(search.finder.get(), &PrintDeviceFinder::finished, this, [&] {
        // Inside a cancel(): cancelling once more is nothing, starting is a search.
        search.finder->cancel();
        if (std::exchange(isFirst, false)) {
            search.finder->start({name});
        }
    });
    search.finder->start({name});
    search.finder->cancel();
    QTRY_COMPARE_WITH_TIMEOUT(search.log->found.size(), 5, Patience);
    QCOMPARE(search.log->signalsSeen.count(text("finished")), 6);
}

void TestPrintDeviceFinder::cancelsARunningSearchToStartAnother()
{
    SimulatorThread simulator;
    const QStringList silent = silentPorts(&simulator, 3);
    Search search(simulator.add(known(text("CITIZEN_PPU_700"))));
    search.finder->start(silent);
    search.finder->start(silent);
    search.finder->start({search.printer->portName()});
    QTRY_COMPARE_WITH_TIMEOUT(search.log->found.size(), 1, Patience);
    QCOMPARE(search.log->withoutNeedCancel(),
             (QStringList{text("finished"), text("finished"), text("finished"), text("deviceFinded CITIZEN_PPU_700")}));
}

void TestPrintDeviceFinder::signalsNothingMoreAfterCancel()
{
    SimulatorThread simulator;
    Search search(simulator.add(known(text("CITIZEN_PPU_700"))));
    search.finder->start({search.printer->portName()});
    // The result is there, but nobody has handed it out yet.
    QTRY_VERIFY_WITH_TIMEOUT(QThreadPool::globalInstance()->waitForDone(0), Patience);
    search.log->signalsSeen.clear();
    search.finder->start({search.printer->portName()});
    QVERIFY(QThreadPool::globalInstance()->waitForDone(Patience));
    search.log->signalsSeen.clear();
    search.log->found.clear();
    search.finder->cancel();
    QCOMPARE(search.log->withoutNeedCancel(), QStringList{text("finished")});
    handEventsOutFor(50);
    QCOMPARE(search.log->withoutNeedCancel(), QStringList{text("finished")});
}

void TestPrintDeviceFinder::survivesItsDeletionInASlot()
{
    SimulatorThread simulator;
    const QString name = simulator.add(known(text("CITIZEN_PPU_700")))->portName();
    for (const QStringList &ports : {QStringList{name}, QStringList{text("/nowhere")}}) {
        QPointer<PrintDeviceFinder> finder = new PrintDeviceFinder;
        const auto deleteFinder = [&] {
            delete finder.data();
        };
        connect(finder.data(), &PrintDeviceFinder::noDevices, this, deleteFinder);
        connect(finder.data(), &PrintDeviceFinder::finished, this, deleteFinder);
        finder->start(ports);
        QTRY_VERIFY_WITH_TIMEOUT(finder.isNull(), Patience);
    }
}

void TestPrintDeviceFinder::survivesItsDeletionInACall_data()
{
    QTest::addColumn<QString>("call");
    QTest::addColumn<QString>("signal");

    for (const char *call : {"start", "test", "cancel"}) {
        for (const char *signal : {"needCancel", "finished"}) {
            QTest::addRow("%s, %s", call, signal) << text(call) << text(signal);
        }
    }
}

// The slot runs inside of the call, which cancels the search under way.
void TestPrintDeviceFinder::survivesItsDeletionInACall()
{
    QFETCH(QString, call);
    QFETCH(QString, signal);
    SimulatorThread simulator;
    const QStringList ports = silentPorts(&simulator, 1);
    QList<PrintDeviceInfo> configs{config(Models::MODEL_CITIZEN_PPU_700, portSettings(ports.first(), 19200))};
    QPointer<PrintDeviceFinder> finder = new PrintDeviceFinder;
    finder->start(ports);
    connect(finder.data(), signal == text("needCancel") ? &PrintDeviceFinder::needCancel : &PrintDeviceFinder::finished,
            this, [&] { delete finder.data(); });
    if (call == text("start")) {
        finder->start(ports);
    } else if (call == text("test")) {
        finder->test(configs);
    } else {
        finder->cancel();
    }
    QVERIFY(finder.isNull());
}

void TestPrintDeviceFinder::stopsItsTasksBeforeSlotsAreCalled()
{
    SimulatorThread simulator;
    PrintDeviceFinder finder;
    bool isDone = false;
    connect(&finder, &PrintDeviceFinder::needCancel, this,
            [&] { isDone = QThreadPool::globalInstance()->waitForDone(WorstCancelMs); });
    finder.start(silentPorts(&simulator, 1));
    finder.cancel();
    QVERIFY(isDone);
}

void TestPrintDeviceFinder::dropsAResultThatArrivesWhileCancelling()
{
    SimulatorThread simulator;
    Search search(simulator.add(known(text("CITIZEN_PPU_700"))));
    bool isFirst = true;
    connect(search.finder.get(), &PrintDeviceFinder::needCancel, this, [&] {
        if (std::exchange(isFirst, false)) {
            handEventsOutFor(50);
        }
    });
    search.finder->start({search.printer->portName()});
    // The result is there, but nobody has handed it out yet.
    QVERIFY(QThreadPool::globalInstance()->waitForDone(Patience));
    search.finder->cancel();
    QCOMPARE(search.log->withoutNeedCancel(), QStringList{text("finished")});
}

void TestPrintDeviceFinder::endsASearchWhenDestroyed()
{
    SimulatorThread simulator;
    const QStringList ports = silentPorts(&simulator, 10);
    Search search(nullptr);
    search.finder->start(ports);
    handEventsOutFor(20);
    QElapsedTimer clock;
    clock.start();
    search.finder.reset();
    QVERIFY(clock.elapsed() < WorstCancelMs);
    QCOMPARE(search.log->signalsSeen, QStringList());
    QSerialPort port(ports.first());
    QVERIFY2(port.open(QIODevice::ReadWrite), "the port was not closed");
}

void TestPrintDeviceFinder::cancelsFortyPortsInTime()
{
    SimulatorThread simulator;
    const QStringList ports = silentPorts(&simulator, 40);
    PrintDeviceFinder finder;
    QVector<qint64> times;
    for (int i = 0; i < 11; ++i) {
        finder.start(ports);
        // All are under way: opening a port writes its lock file to the disk, however long that takes.
        handEventsOutFor(100);
        times.append(cancelMs(&finder));
    }
    std::sort(times.begin(), times.end());
    qInfo() << "cancel with 40 ports: median" << times.at(5) << "ms, worst" << times.last() << "ms";
    QVERIFY(times.at(5) <= MedianCancelMs);
    QVERIFY(times.last() <= WorstCancelMs);
}

void TestPrintDeviceFinder::survivesCancelsAtAnyMoment()
{
    // Short waits bring a search further in the same time.
    const ShortWaits shortWaits(10);
    SimulatorThread simulator;
    QStringList ports = silentPorts(&simulator, 2);
    for (const EFault fault : {EFault::Echo, EFault::Garbage, EFault::None}) {
        ports.append(simulator.add(known(text("CITIZEN_PPU_231")), {fault, {}, 1})->portName());
    }
    PrintDeviceFinder finder;
    const SignalLog log(&finder);
    std::minstd_rand random(1);
    for (int i = 0; i < 500; ++i) {
        finder.start(ports);
        QThread::usleep(random() % 5000);
        if (i % 3 == 0) {
            QCoreApplication::processEvents();
        }
        finder.cancel();
    }
    // A thread may still be on its way back to the pool.
    QVERIFY(QThreadPool::globalInstance()->waitForDone(WorstCancelMs));
    QVERIFY(log.signalsSeen.count(text("finished")) >= 500);
    // All ports are free again.
    for (const QString &name : qAsConst(ports)) {
        QVERIFY2(QSerialPort(name).open(QIODevice::ReadWrite), qPrintable(name));
    }
}

void TestPrintDeviceFinder::survivesCancelsInFreshProcesses()
{
    constexpr int AtATime = 10;
    // A sanitizer's search for leaks would take most of the time; only crashes are looked for here.
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(text("ASAN_OPTIONS"), text("detect_leaks=0"));
    SimulatorThread simulator;
    const QStringList ports = silentPorts(&simulator, AtATime);
    for (int round = 0; round < 200 / AtATime; ++round) {
        std::vector<std::unique_ptr<QProcess>> processes;
        for (const QString &port : ports) {
            processes.push_back(std::make_unique<QProcess>());
            processes.back()->setProcessEnvironment(environment);
            processes.back()->start(text(CANCELTWICE), {QString::number(round % 5), port});
        }
        for (const auto &process : processes) {
            QVERIFY2(process->waitForFinished(Patience), qPrintable(process->errorString()));
            QCOMPARE(process->exitStatus(), QProcess::NormalExit);
            QCOMPARE(process->exitCode(), 0);
        }
    }
}

QTEST_GUILESS_MAIN(TestPrintDeviceFinder)

#include "tst_printdevicefinder.moc"
