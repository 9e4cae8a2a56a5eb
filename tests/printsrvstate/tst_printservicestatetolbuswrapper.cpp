// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "testfixture.h"

#include <printservicestatetolbuswrapper.h>
#include <txtprintererror.h>

#include <QTimeZone>

using tolbus::ClientState;
using Wrapper = PrintServiceStateTolbusWrapper;

namespace {

const QDateTime Noon(QDate(2024, 3, 5), QTime(12, 0), QTimeZone(2 * 3600));

PrintServiceState stateOf(int service, int device)
{
    PrintServiceState state;
    state.setServiceState(static_cast<PrintServiceState::EServiceState>(service));
    state.setDeviceState(static_cast<PrintServiceState::EDeviceState>(device));
    return state;
}

ClientState clientState(ClientState::EStateType type, const QString &text)
{
    ClientState client;
    client.setStateType(type);
    client.setState(text);
    client.setDescription(QStringLiteral("new"));
    client.setDt(Noon);
    return client;
}

QString jsonOf(int service, int device)
{
    return QStringLiteral("{\"serviceState\":%1,\"deviceState\":%2}").arg(service).arg(device);
}

Wrapper filledWrapper()
{
    return Wrapper(
        clientState(ClientState::WARNING,
                    QStringLiteral("{\"serviceState\":1,\"deviceState\":2,\"deviceErrorCode\":5,"
                                   "\"deviceNativeCode\":6,\"deviceErrorMsg\":\"low\",\"tapeAvailable\":false}")));
}

} // namespace

class TestWrapper : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void computesTypes_data();
    void computesTypes();
    void writesCompactJson();
    void stampsTheMoment();
    void readsItsOwnText();
    void readsParts_data();
    void readsParts();
    void refusesBrokenJson_data();
    void refusesBrokenJson();
    void judges_data();
    void judges();
    void showsUtc();
    void namesTypes_data();
    void namesTypes();
    void comparesEveryField();
    void logsKeepTheStream();
};

void TestWrapper::computesTypes_data()
{
    QTest::addColumn<int>("service");
    QTest::addColumn<QVector<int>>("types"); // for the device states 0, 1, 2, 3, 4, 5, 0xFF, 0xFFFF

    const QVector<int> byDevice{0, 0, 1, 2, 3, -1, -1, -1};
    const QVector<int> critical(8, 2);
    for (int service = 0; service <= 3; ++service) {
        QTest::addRow("%d", service) << service << byDevice;
    }
    for (const int service : {4, 5, 7, 0xFE, 0x100, 0xFFFF}) {
        QTest::addRow("%d", service) << service << critical;
    }
    QTest::newRow("invalid") << 0xFF << QVector<int>(8, -1);
}

void TestWrapper::computesTypes()
{
    QFETCH(int, service);
    QVector<int> types;
    for (const int device : {0, 1, 2, 3, 4, 5, 0xFF, 0xFFFF}) {
        types.append(Wrapper(stateOf(service, device)).toClientState().stateType());
    }
    QTEST(types, "types");
}

void TestWrapper::writesCompactJson()
{
    const ClientState client = Wrapper().toClientState();
    QCOMPARE(client.state(),
             QStringLiteral("{\"deviceErrorCode\":0,\"deviceErrorMsg\":\"\",\"deviceNativeCode\":0,\"deviceState\":255,"
                            "\"serviceState\":255,\"tapeAvailable\":true}"));
    QCOMPARE(client.description(), QString());
    QVERIFY(!client.isValid());
}

void TestWrapper::stampsTheMoment()
{
    const QDateTime before = QDateTime::currentDateTime();
    const QDateTime stamp = filledWrapper().toClientState().dt(); // not the time that the wrapper holds
    QVERIFY(stamp >= before);
    QVERIFY(stamp <= QDateTime::currentDateTime());
}

void TestWrapper::readsItsOwnText()
{
    PrintServiceState state = stateOf(3, 4);
    state.setDeviceErrorCode(0xFFFFFFFF);
    state.setDeviceNativeCode(0x80000000);
    state.setDeviceErorMsg(QStringLiteral(u"крышка \"открыта\"\n\\"));
    state.setTapeAvailable(false);
    Wrapper wrapper;
    QVERIFY(wrapper.setClientState(Wrapper(state).toClientState()));
    QVERIFY(state == wrapper.state());
    QCOMPARE(wrapper.stateType(), ClientState::FATAL);
}

void TestWrapper::readsParts_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QVariantMap>("expected");
    const QVariantMap before = filledWrapper().state().toMap();
    QVariantMap changed = before;
    changed[QStringLiteral("deviceErrorMsg")] = QStringLiteral("x");
    QTest::newRow("one key") << "{\"deviceErrorMsg\":\"x\",\"other\":1}" << changed;
    QTest::newRow("no key") << "{}" << before;
    QTest::newRow("no object") << "[1,2]" << before;
    QTest::newRow("the display's key") << "{\"tapeAvailablle\":true}" << before;
}

void TestWrapper::readsParts()
{
    QFETCH(QString, text);
    Wrapper wrapper = filledWrapper();
    QVERIFY(wrapper.setClientState(clientState(ClientState::NORMAL, text)));
    QTEST(wrapper.state().toMap(), "expected");
    QCOMPARE(wrapper.stateType(), ClientState::NORMAL);
    QCOMPARE(wrapper.stateDescription(), QStringLiteral("new"));
    QCOMPARE(wrapper.stateDt(), Noon);
}

void TestWrapper::refusesBrokenJson_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("brace") << "{";
    QTest::newRow("nothing") << QString();
    QTest::newRow("number") << "12";
    QTest::newRow("rest") << "{} x";
    QTest::newRow("too deep") << QString(5000, QLatin1Char('['));
}

void TestWrapper::refusesBrokenJson()
{
    QFETCH(QString, text);
    Wrapper wrapper = filledWrapper();
    expectWarning(QStringLiteral("^.*JSON PARSING ERROR: .*\"%1\"").arg(QRegularExpression::escape(text)));
    ClientState client = clientState(ClientState::NORMAL, text);
    client.setDescription(QStringLiteral("unread"));
    QVERIFY(!wrapper.setClientState(client));
    QVERIFY(!wrapper.isValid());
    QCOMPARE(wrapper.stateType(), ClientState::INVALID);
    QVERIFY(wrapper.stateDt().isNull());
    QCOMPARE(wrapper.stateDescription(), QStringLiteral("new")); // as it was
    QVariantMap expected = PrintServiceState().toMap();
    expected[QStringLiteral("tapeAvailable")] = false; // as it was
    QCOMPARE(wrapper.state().toMap(), expected);
}

void TestWrapper::judges_data()
{
    QTest::addColumn<int>("service");
    QTest::addColumn<int>("device");
    QTest::addColumn<bool>("isValid");
    QTest::addColumn<bool>("isWorkable");
    QTest::newRow("ready") << 1 << 0 << true << true;
    QTest::newRow("last of both") << 3 << 2 << true << true;
    QTest::newRow("starting") << 0 << 0 << true << false;
    QTest::newRow("failed") << 4 << 0 << true << false;
    QTest::newRow("critical device") << 1 << 3 << true << false;
    QTest::newRow("no device") << 1 << 0xFF << false << false;
    QTest::newRow("no service") << 0xFF << 0 << false << false;
}

void TestWrapper::judges()
{
    QFETCH(int, service);
    QFETCH(int, device);
    const Wrapper wrapper(clientState(ClientState::NORMAL, jsonOf(service, device)));
    QTEST(wrapper.isValid(), "isValid");
    QTEST(wrapper.isWorkable(), "isWorkable");
    const Wrapper invalid(clientState(ClientState::INVALID, jsonOf(service, device)));
    QVERIFY(!invalid.isValid());
    ClientState timeless = clientState(ClientState::NORMAL, jsonOf(service, device));
    timeless.setDt(QDateTime());
    QVERIFY(!Wrapper(timeless).isWorkable());
}

void TestWrapper::showsUtc()
{
    const QVariantMap expected{{QStringLiteral("stateType"), 1},
                               {QStringLiteral("stateDt"), QStringLiteral("2024-03-05T10:00:00Z")},
                               {QStringLiteral("stateDescription"), QStringLiteral("WARNING")},
                               {QStringLiteral("serviceState"), 1},
                               {QStringLiteral("deviceState"), 2},
                               {QStringLiteral("deviceErrorCode"), 5U},
                               {QStringLiteral("deviceNativeCode"), 6U},
                               {QStringLiteral("deviceErrorMsg"), QStringLiteral("low")},
                               {QStringLiteral("tapeAvailablle"), false}};
    const QVariantMap map = filledWrapper().toMap();
    QCOMPARE(map, expected);
    for (auto entry = expected.begin(); entry != expected.end(); ++entry) {
        QCOMPARE(map.value(entry.key()).userType(), entry->userType());
    }
}

void TestWrapper::namesTypes_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("name");
    QTest::newRow("-1") << -1 << "INVALID";
    QTest::newRow("0") << 0 << "NORMAL";
    QTest::newRow("1") << 1 << "WARNING";
    QTest::newRow("2") << 2 << "CRITICAL";
    QTest::newRow("3") << 3 << "FATAL";
    QTest::newRow("other") << 9 << QString();
}

void TestWrapper::namesTypes()
{
    QFETCH(int, type);
    const auto map = Wrapper(clientState(static_cast<ClientState::EStateType>(type), QStringLiteral("{}"))).toMap();
    QCOMPARE(map.value(QStringLiteral("stateType")).toInt(), type);
    QTEST(map.value(QStringLiteral("stateDescription")).toString(), "name");
}

void TestWrapper::comparesEveryField()
{
    const ClientState client = clientState(ClientState::NORMAL, jsonOf(1, 0));
    QVector<ClientState> others(4, client);
    others[0].setStateType(ClientState::WARNING);
    others[1].setDescription(QStringLiteral("old"));
    others[2].setDt(Noon.addMSecs(1));
    others[3].setState(jsonOf(1, 1));
    for (const ClientState &other : qAsConst(others)) {
        QVERIFY(other != client);
        QVERIFY(Wrapper(other) != Wrapper(client));
    }
    QVERIFY(Wrapper(client) == Wrapper(client));
}

// What follows a record in a line of the log is written as ever: decimal and behind a blank.
void TestWrapper::logsKeepTheStream()
{
    QString log;
    TxtPrinterError error;
    error.setErrorCode(QFlags<TxtPrinterError::EError>(QFlag(0xABC)));
    QDebug(&log) << error << 255 << filledWrapper().state() << 255 << filledWrapper() << 255;
    QCOMPARE(log.count(QStringLiteral(") 255")), 3);
    QVERIFY2(log.contains(QStringLiteral("0xabc")) && log.contains(QStringLiteral("low")), qPrintable(log));
}

QTEST_GUILESS_MAIN(TestWrapper)
#include "tst_printservicestatetolbuswrapper.moc"
