// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "discoverysupport.h"
#include "testfixture.h"

#include <printershelper.h>
#include <simulatorthread.h>
#include <textprintermodels.h>

#include <QThreadPool>
#include <QtConcurrent>

using namespace printersim;
using Models = TextPrinterModels;

namespace {

using Port = QSharedPointer<QSerialPort>;

QString text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

Port openPort(const SimulatedPrinter *printer)
{
    const auto port = Port::create(printer->portName());
    return port->open(QIODevice::ReadWrite) ? port : Port();
}

/** What one search of a simulated printer came to. */
struct Outcome
{
    bool isFound = false;
    QString model;
    PortSettings settings;
    QByteArray received;
    qint64 elapsedMs = 0;
};

/** What the printer got, when it has got @p count bytes and nothing more follows; after 5 s, however many those are. */
QByteArray receivedBy(const SimulatedPrinter *printer, int count)
{
    constexpr unsigned long PauseMs = 20;
    const QDeadlineTimer deadline(5'000);
    QByteArray before;
    do {
        before = printer->received();
        QThread::msleep(PauseMs);
    } while (printer->received() != before || (before.size() < count && !deadline.hasExpired()));
    return before;
}

Outcome verify(SimulatorThread *simulator, const Personality &personality, const QString &model,
               const Misbehaviour &misbehaviour = {}, int expectedBytes = 0)
{
    SimulatedPrinter *printer = simulator->add(personality, misbehaviour);
    const Port port = openPort(printer);
    PrintersHelper helper(port);
    Outcome outcome{false, model, ownSettings({}, personality), {}, 0};
    QElapsedTimer clock;
    clock.start();
    outcome.isFound = helper.scan(outcome.model, outcome.settings);
    outcome.elapsedMs = clock.elapsed();
    outcome.received = receivedBy(printer, expectedBytes);
    return outcome;
}

} // namespace

class TestPrintersHelper : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void findsNothingWithoutAPort();
    void findsNothingOnAPortThatDoesNotOpen();
    void verifiesByOneConversation_data();
    void verifiesByOneConversation();
    void judgesAnswers();
    void writesNothingForModelsWithoutAConversation_data();
    void writesNothingForModelsWithoutAConversation();
    void waitsAsLongAsItSays();
    void returnsBufferedInputAtOnce();
    void walksASilentPortInOrder();
    void listsTheStarSettings();
    void triesItsOwnSettingsAfterStar();
    void leavesTheAv268ParametersInTheSettings();
    void stopsWhenToldTo_data();
    void stopsWhenToldTo();
    void closesAPortWhoseDeviceVanished();
    void leadsLogLinesByProbeAndName();
};

void TestPrintersHelper::initTestCase()
{
    QThreadPool::globalInstance()->setMaxThreadCount(32);
}

void TestPrintersHelper::findsNothingWithoutAPort()
{
    PrintersHelper helper{Port()};
    QCOMPARE(helper.objectName(), text("printersHelper[]"));
    QVERIFY(!helper.portIsValid());
    QVERIFY(!helper.waitForReadyRead(10'000));
    helper.setPortSettings({});
    expectCritical(text("There are no port objects"));
    QString model = Models::MODEL_AV_268;
    PortSettings settings = portSettings(text("kept"), 4800);
    QVERIFY(!helper.scan(model, settings));
    QCOMPARE(settings, portSettings(text("kept"), 4800));
    QCOMPARE(model, Models::MODEL_AV_268);
    // A probe alone begins its walk all the same, unless it was stopped before.
    const auto flag = QSharedPointer<std::atomic_bool>::create(true);
    helper.setStopFlag(flag);
    QVERIFY(!helper.scanSwecoin(model, settings));
    QCOMPARE(settings, portSettings(text("kept"), 4800));
    *flag = false;
    QVERIFY(!helper.scanSwecoin(model, settings));
    QCOMPARE(settings, portSettings({}, 115200));
    QVERIFY(!helper.scanSimple(model, settings));
    QCOMPARE(settings, portSettings({}, 19200));
}

void TestPrintersHelper::findsNothingOnAPortThatDoesNotOpen()
{
    const auto port = Port::create(text("/dev/null/nothing"));
    PrintersHelper helper(port);
    expectCritical(text("Open port error \\(.*null/nothing\\)"));
    QString model;
    PortSettings settings;
    QVERIFY(!helper.scan(model, settings));
    QVERIFY(!port->isOpen());
}

// The exact bytes of each family's conversation, at the settings that are right from the start.
void TestPrintersHelper::verifiesByOneConversation_data()
{
    QTest::addColumn<QString>("personality");
    QTest::addColumn<QString>("configured");
    QTest::addColumn<QString>("found");
    QTest::addColumn<QByteArray>("bytes");
    const QByteArray twice = "1D4901 1D4901";
    const QByteArray empties = "200A200A200A200A200A200A200A";
    const auto row
        = [](const char *personality, const QString &configured, const QString &found, const QByteArray &bytes) {
              QTest::newRow(personality) << text(personality) << configured << found << QByteArray::fromHex(bytes);
          };
    const QString vkp = Models::MODEL_CUSTOM_VKP_80;
    const QString swecoin = Models::MODEL_SWECOIN_TM_20XX;
    row("CITIZEN_CPP_8001", vkp, Models::MODEL_CITIZEN_CPP_8001, twice + "1B33FF0A 1B69");
    row("EPSON_EU_4XX", Models::MODEL_EPSON_EU_4XX, Models::MODEL_EPSON_EU_4XX, twice + "1D5666A0");
    row("CITIZEN_CBM_1000", Models::MODEL_CITIZEN_CBM_1000, Models::MODEL_CITIZEN_CBM_1000, twice + "1B33FF0A 1B69");
    // Contract: found, not named and not told anything.
    row("UNNAMED_3D", vkp, vkp, twice);
    row("CITIZEN_CTS_2000", Models::MODEL_CITIZEN_CTS_2000, Models::MODEL_CITIZEN_CTS_2000, twice + "200A200A1B69200A");
    row("CUSTOM_VKP_80", vkp, vkp, twice + "1B69" + empties + "1D6502");
    row("CUSTOM_VKP_80:5E", vkp, vkp, twice + "1B69" + empties + "1D6502");
    row("CUSTOM_VKP_80:CHAR", vkp, vkp, "1D4901 1D4931 1D4901 1D4931 1B69" + empties + "1D6502");
    row("CITIZEN_PPU_700", Models::MODEL_CITIZEN_PPU_700, Models::MODEL_CITIZEN_PPU_700, twice + "1B33FF0A 1B69");
    row("CUSTOM_TG_2480_SE", Models::MODEL_CUSTOM_TG_2480_SE, Models::MODEL_CUSTOM_TG_2480_SE,
        twice + "1CC0AA0FEE0B34");
    row("CUSTOM_TG_2480_H", Models::MODEL_CUSTOM_TG_2480_H, Models::MODEL_CUSTOM_TG_2480_H, twice + "1CC0AA0FEE0B34");
    row("CUSTOM_TG_2480_H:A8", Models::MODEL_CUSTOM_TG_2480_H, Models::MODEL_CUSTOM_TG_2480_H,
        twice + "1CC0AA0FEE0B34");
    row("UNKNOWN_EE", vkp, {}, twice);
    row("SWECOIN_TM_20XX", swecoin, swecoin, "1B0507 1B0501 1B0611 1B0612");
    row("SWECOIN_TM_20XX:NAK", swecoin, swecoin, "1B0507 1B0501 1B0611 1B0612");
    row("TSP-TUP", Models::MODEL_TSP_TUP, Models::MODEL_TSP_TUP, "1B1E60021B0601 05 04 535441 010203 1B6432");
    row("AV_268", Models::MODEL_AV_268, Models::MODEL_AV_268, "1B76 1B76 1B76 01020304 1B69");
    row("CITIZEN_PPU_231", Models::MODEL_CITIZEN_PPU_231, Models::MODEL_CITIZEN_PPU_231, "1B76 1B76 010203 1B69");
}

void TestPrintersHelper::verifiesByOneConversation()
{
    QFETCH(QString, personality);
    QFETCH(QString, configured);
    QFETCH(QString, found);
    QFETCH(QByteArray, bytes);
    SimulatorThread simulator;
    const Outcome outcome = verify(&simulator, known(personality), configured, {}, bytes.size());
    QCOMPARE(outcome.received.toHex(), bytes.toHex());
    QCOMPARE(outcome.isFound, !found.isEmpty());
    QCOMPARE(outcome.model, found.isEmpty() ? configured : found);
    QCOMPARE(outcome.settings, ownSettings({}, known(personality)));
}

// Printers that are right in all but one answer, all at the same time.
void TestPrintersHelper::judgesAnswers()
{
    struct Case
    {
        const char *name;
        QString model;
        QVector<QPair<QByteArray, QByteArray>> script;
        bool isFound;
    };
    const QString swecoin = Models::MODEL_SWECOIN_TM_20XX;
    const QString star = Models::MODEL_TSP_TUP;
    const QString simple = Models::MODEL_CITIZEN_PPU_231;
    const QString reporting = Models::MODEL_CITIZEN_PPU_700;
    const QVector<Case> cases{
        {"swecoin, signed firmware",
         swecoin,
         {{"1B0507", "FF80"}, {"1B0501", "06"}, {"1B0611", "11"}, {"1B0612", "12"}},
         true},
        {"swecoin, NAK and a rest",
         swecoin,
         {{"1B0507", "0102"}, {"1B0501", "15AAAA"}, {"1B0611", "11"}, {"1B0612", "12"}},
         true},
        {"swecoin, neither ACK nor NAK",
         swecoin,
         {{"1B0507", "0102"}, {"1B0501", "07"}, {"1B0611", "11"}, {"1B0612", "12"}},
         false},
        {"swecoin, wrong first echo",
         swecoin,
         {{"1B0507", "0102"}, {"1B0501", "06"}, {"1B0611", "12"}, {"1B0612", "12"}},
         false},
        {"swecoin, wrong second echo",
         swecoin,
         {{"1B0507", "0102"}, {"1B0501", "06"}, {"1B0611", "11"}, {"1B0612", "11"}},
         false},
        {"swecoin, short firmware",
         swecoin,
         {{"1B0507", "01"}, {"1B0501", "06"}, {"1B0611", "11"}, {"1B0612", "12"}},
         false},
        {"star, one byte each", star, {{"1B1E60021B0601", "00"}, {"05", "00"}, {"04", "00"}}, true},
        {"star, sixteen bytes",
         star,
         {{"1B1E60021B0601", "000102030405060708090A0B0C0D0E0F"}, {"05", "0000"}, {"04", "000000"}},
         true},
        {"star, begins like an echo", star, {{"1B1E60021B0601", "1B060100"}, {"05", "00"}, {"04", "00"}}, false},
        {"star, repeats the request",
         star,
         {{"1B1E60021B0601", "1B1E60021B060123"}, {"05", "00"}, {"04", "00"}},
         false},
        {"star, no paper status", star, {{"1B1E60021B0601", "00"}, {"05", "00"}}, false},
        {"star, no real-time status", star, {{"1B1E60021B0601", "00"}, {"04", "00"}}, false},
        {"star, answers text", star, {{"1B1E60021B0601", "00"}, {"05", "00"}, {"04", "00"}, {"535441", "00"}}, false},
        {"star, answers control characters",
         star,
         {{"1B1E60021B0601", "00"}, {"05", "00"}, {"04", "00"}, {"010203", "00"}},
         false},
        {"ESC v, all other bits", simple, {{"1B76", "EF"}}, true},
        {"ESC v, busy", simple, {{"1B76", "10"}}, false},
        {"ESC v, two bytes", simple, {{"1B76", "0000"}}, false},
        {"ESC v, answers control characters", simple, {{"1B76", "00"}, {"010203", "00"}}, false},
        {"model byte and a rest that differs", reporting, {{"1D4901", "7500"}}, false},
        {"model byte twice", reporting, {{"1D4901", "7575"}}, true},
    };
    SimulatorThread simulator;
    QVector<QFuture<Outcome>> outcomes;
    for (const Case &each : cases) {
        outcomes.append(QtConcurrent::run([&] { return verify(&simulator, scripted(each.script), each.model); }));
    }
    for (int i = 0; i < cases.size(); ++i) {
        QVERIFY2(outcomes[i].result().isFound == cases.at(i).isFound, cases.at(i).name);
        QCOMPARE(outcomes[i].result().model, cases.at(i).model);
    }
}

void TestPrintersHelper::writesNothingForModelsWithoutAConversation_data()
{
    QTest::addColumn<QString>("model");
    // Contract: found by a search, but not verified.
    for (const QString &model : {Models::MODEL_CITIZEN_CPP_8001, Models::MODEL_GENERAL_EPSON, Models::MODEL_WPK833,
                                 Models::MODEL_PNG, text("custom_vkp_80")}) {
        QTest::newRow(qPrintable(model)) << model;
    }
}

void TestPrintersHelper::writesNothingForModelsWithoutAConversation()
{
    QFETCH(QString, model);
    SimulatorThread simulator;
    const Outcome outcome = verify(&simulator, known(text("CITIZEN_CPP_8001")), model);
    QVERIFY(!outcome.isFound);
    QCOMPARE(outcome.received, QByteArray());
}

// The one place where the real timeouts pass. The upper bound has room for a busy machine.
void TestPrintersHelper::waitsAsLongAsItSays()
{
    const QMap<QString, int> silenceMs{{Models::MODEL_CUSTOM_VKP_80, 600},
                                       {Models::MODEL_SWECOIN_TM_20XX, 1400},
                                       {Models::MODEL_TSP_TUP, 300},
                                       {Models::MODEL_AV_268, 1000},
                                       {Models::MODEL_CITIZEN_PPU_231, 1000}};
    SimulatorThread simulator;
    QMap<QString, QFuture<Outcome>> outcomes;
    for (const QString &model : silenceMs.keys()) {
        outcomes.insert(model, QtConcurrent::run([&simulator, model] {
                            return verify(&simulator, known(model), model, {EFault::Silent, {}, 1});
                        }));
    }
    for (const QString &model : silenceMs.keys()) {
        const Outcome outcome = outcomes.value(model).result();
        QVERIFY(!outcome.isFound);
        QVERIFY2(outcome.elapsedMs >= silenceMs.value(model) - 2 && outcome.elapsedMs < silenceMs.value(model) + 500,
                 qPrintable(text("%1: %2 ms").arg(model).arg(outcome.elapsedMs)));
    }
}

void TestPrintersHelper::returnsBufferedInputAtOnce()
{
    SimulatorThread simulator;
    SimulatedPrinter *printer = simulator.add(scripted({{"1B76", "0000"}}));
    const Port port = openPort(printer);
    PrintersHelper helper(port);
    helper.setPortSettings(portSettings({}, 9600));
    port->write(QByteArray::fromHex("1B76"));
    QVERIFY(helper.waitForReadyRead(10'000));
    QVERIFY(port->bytesAvailable() > 0);
    QElapsedTimer clock;
    clock.start();
    QVERIFY(helper.waitForReadyRead(0));
    QVERIFY(helper.waitForReadyRead(60'000));
    QVERIFY(clock.elapsed() < 30'000);
    port->readAll();
    QVERIFY(!helper.waitForReadyRead(0));
}

// 54 settings for GS I and Swecoin, 24 for Star, 27 for ESC v: which probe, in which order, with which parameters.
void TestPrintersHelper::walksASilentPortInOrder()
{
    const ShortWaits shortWaits(200);
    const WireLog log;
    SimulatorThread simulator;
    const Port port = openPort(simulator.add(scripted({}), {EFault::Silent, {}, 1}));
    PrintersHelper helper(port);
    QString model;
    PortSettings settings;
    QVERIFY(!helper.scan(model, settings));
    QCOMPARE(model, QString());
    QCOMPARE(settings, portSettings({}, 4800, QSerialPort::SoftwareControl, QSerialPort::OddParity));

    QStringList expected;
    const auto add = [&](const char *probe, const QVector<int> &baudRates, const QStringList &flowControls) {
        for (const int baudRate : baudRates) {
            for (const char *parity : {"none", "even", "odd"}) {
                for (const QString &flowControl : flowControls) {
                    expected.append(text("%1 %2 %3 %4").arg(text(probe)).arg(baudRate).arg(text(parity), flowControl));
                }
            }
        }
    };
    const QStringList all{text("none"), text("hardware"), text("software")};
    add("scan1D491", {115200, 57600, 38400, 19200, 9600, 4800}, all);
    add("scanSwecoin", {115200, 57600, 38400, 19200, 9600, 4800}, all);
    add("scanStar", {38400, 19200, 9600, 4800}, all.mid(0, 2));
    expected.append(text("scanAV268 115200 none software"));
    add("scanSimple", {19200, 9600, 4800}, all);
    QStringList tried;
    for (const QJsonObject &event : WireLog::events(text("settings"))) {
        QCOMPARE(event.value(text("dataBits")).toInt(), 8);
        QCOMPARE(event.value(text("stopBits")).toInt(), 1);
        tried.append(text("%1 %2 %3 %4")
                         .arg(event.value(text("probe")).toString())
                         .arg(event.value(text("baudRate")).toInt())
                         .arg(event.value(text("parity")).toString(), event.value(text("flowControl")).toString()));
    }
    QCOMPARE(tried, expected);
}

void TestPrintersHelper::listsTheStarSettings()
{
    PrintersHelper helper{Port()};
    const QVector<PortSettings> settings = helper.prepareStarSettings();
    QCOMPARE(settings.size(), 24);
    QCOMPARE(settings.at(0), portSettings({}, 38400));
    QCOMPARE(settings.at(1), portSettings({}, 38400, QSerialPort::HardwareControl));
    QCOMPARE(settings.at(2), portSettings({}, 38400, QSerialPort::NoFlowControl, QSerialPort::EvenParity));
    QCOMPARE(settings.at(6), portSettings({}, 19200));
    QCOMPARE(settings.at(23), portSettings({}, 4800, QSerialPort::HardwareControl, QSerialPort::OddParity));
}

void TestPrintersHelper::triesItsOwnSettingsAfterStar()
{
    const ShortWaits shortWaits(200);
    const WireLog log;
    SimulatorThread simulator;
    const Port port = openPort(simulator.add(scripted({}), {EFault::Silent, {}, 1}));
    PrintersHelper helper(port);
    QString model;
    PortSettings settings;
    QVERIFY(!helper.scanStar(model, settings));
    QCOMPARE(WireLog::events(text("settings")).size(), 24);
    QVERIFY(!helper.scan1D491(model, settings));
    QCOMPARE(WireLog::events(text("settings")).size(), 24 + 54);
    model = Models::MODEL_TSP_TUP;
    settings = portSettings({}, 4800);
    QVERIFY(!helper.scan(model, settings));
    QVERIFY(!helper.scan1D491(model, settings));
    QCOMPARE(WireLog::events(text("settings")).size(), 24 + 54 + 1 + 1);
}

void TestPrintersHelper::leavesTheAv268ParametersInTheSettings()
{
    PrintersHelper helper{Port()};
    QString model;
    PortSettings settings = portSettings(text("kept"), 4800, QSerialPort::HardwareControl, QSerialPort::OddParity);
    QVERIFY(!helper.scanAV268(model, settings));
    QCOMPARE(settings, portSettings(text("kept"), 115200, QSerialPort::SoftwareControl));
}

// The silence at the end of a conversation is the trap: a stopped wait is none.
void TestPrintersHelper::stopsWhenToldTo_data()
{
    QTest::addColumn<QString>("personality");
    QTest::addColumn<QByteArray>("lastRequest");
    QTest::newRow("before anything") << text("AV_268") << QByteArray();
    QTest::newRow("AV-268") << text("AV_268") << QByteArray::fromHex("01020304");
    QTest::newRow("Star, text") << text("TSP-TUP") << QByteArray::fromHex("535441");
    QTest::newRow("ESC v") << text("CITIZEN_PPU_231") << QByteArray::fromHex("010203");
}

void TestPrintersHelper::stopsWhenToldTo()
{
    QFETCH(QString, personality);
    QFETCH(QByteArray, lastRequest);
    SimulatorThread simulator;
    SimulatedPrinter *printer = simulator.add(known(personality));
    const Port port = openPort(printer);
    PrintersHelper helper(port);
    const auto flag = QSharedPointer<std::atomic_bool>::create(lastRequest.isEmpty());
    helper.setStopFlag(flag);
    // In the printer's thread, while the helper waits for the silence that ends the conversation.
    connect(printer, &SimulatedPrinter::talked, printer, [=] { *flag = printer->received().endsWith(lastRequest); });
    QString model = printer->personality().modelId;
    PortSettings settings = ownSettings({}, printer->personality());
    QVERIFY(!helper.scan(model, settings));
    QVERIFY(*flag);
    QVERIFY(port->isOpen());
    QThread::msleep(50);
    QVERIFY(printer->received().endsWith(lastRequest));
    QCOMPARE(printer->received().isEmpty(), lastRequest.isEmpty());
}

void TestPrintersHelper::closesAPortWhoseDeviceVanished()
{
    SimulatorThread simulator;
    SimulatedPrinter *printer = simulator.add(known(text("AV_268")), {EFault::Unplugs, {}, 1});
    const Port port = openPort(printer);
    PrintersHelper helper(port);
    QString model;
    PortSettings settings;
    QVERIFY(!helper.scanAV268(model, settings));
    QVERIFY(!helper.portIsValid());
    // No further probe may wait for a device that is gone: all others over all settings take no time.
    QElapsedTimer clock;
    clock.start();
    QVERIFY(!helper.scan1D491(model, settings) && !helper.scanSwecoin(model, settings));
    QVERIFY(clock.elapsed() < 600);
}

void TestPrintersHelper::leadsLogLinesByProbeAndName()
{
    const WireLog log;
    SimulatorThread simulator;
    const Outcome outcome
        = verify(&simulator, scripted({{"1B0507", "FF80"}, {"1B0501", "07"}}), Models::MODEL_SWECOIN_TM_20XX);
    QVERIFY(!outcome.isFound);
    const QStringList lines = WireLog::lines();
    QVERIFY(lines.first().startsWith(text("\"Start search on ")));
    QVERIFY(lines.last().startsWith(text("\"Stop search on ")));
    QVERIFY(lines.last().endsWith(text("\"SWECOIN_TM_20XX\"")));
    for (const QString &line : lines.mid(1, lines.size() - 2)) {
        QVERIFY2(line.startsWith(text("scanSwecoin from ")), qPrintable(line));
    }
    const QString all = lines.join(QLatin1Char('\n'));
    for (const char *part : {"9600", "write: 1B 05 07", "read: FF 80", "FIRMWARE: -1.-128", "printersHelper[pts/"}) {
        QVERIFY2(all.contains(text(part)), part);
    }
    // What comes where silence is wanted is an answer, too.
    verify(&simulator, scripted({{"1B76", "00"}, {"010203", "A5"}}), Models::MODEL_CITIZEN_PPU_231);
    const QStringList protest = WireLog::lines().mid(lines.size());
    QCOMPARE(protest.filter(text("read: A5")).size(), 1);
    QCOMPARE(protest.filter(text("incorrect data")).size(), 1);
}

QTEST_GUILESS_MAIN(TestPrintersHelper)

#include "tst_printershelper.moc"
