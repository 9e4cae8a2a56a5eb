// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "testfixture.h"

#include <simulatorthread.h>

#include <QProcess>
#include <QTemporaryFile>

using namespace printersim;

namespace {

constexpr int Patience = 60'000;

constexpr char UsbPorts[] = R"(P: /devices/platform/usb1/1-1/1-1:1.0/ttyUSB0/tty/ttyUSB0
N: ttyUSB0
E: DEVNAME=/dev/ttyUSB0
E: SUBSYSTEM=tty
E: ID_BUS=usb
E: ID_VENDOR=Prolific
E: ID_VENDOR_ID=067b
E: ID_MODEL=USB-Serial_Controller
E: ID_MODEL_ID=2303

P: /devices/platform/usb1/1-1/1-1:1.0/ttyUSB0
E: SUBSYSTEM=usb-serial
E: DRIVER=pl2303

P: /devices/platform/usb1/1-2/1-2:1.0/ttyUSB1/tty/ttyUSB1
N: ttyUSB1
E: DEVNAME=/dev/ttyUSB1
E: SUBSYSTEM=tty
E: ID_BUS=usb
E: ID_VENDOR=Sierra
E: ID_VENDOR_ID=1199
E: ID_MODEL=MC7710
E: ID_MODEL_ID=68a2

P: /devices/platform/usb1/1-2/1-2:1.0/ttyUSB1
E: SUBSYSTEM=usb-serial
E: DRIVER=qcserial
)";

// A console is a terminal, but no serial port.
constexpr char NoPorts[] = R"(P: /devices/virtual/tty/tty0
N: tty0
E: DEVNAME=/dev/tty0
E: SUBSYSTEM=tty
)";

QString text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

/** What a shell command prints on a machine with these devices alone. */
QByteArray runOn(const char *machine, const QString &command)
{
    QTemporaryFile description;
    if (!description.open() || description.write(machine) < 0 || !description.flush()) {
        return "no file for the machine";
    }
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    // The made-up machine is preloaded in front of a sanitizer.
    environment.insert(text("ASAN_OPTIONS"), text("verify_asan_link_order=0:detect_leaks=0"));
    environment.insert(text("QT_LOGGING_RULES"), text("*.debug=false"));
    process.setProcessEnvironment(environment);
    process.start(text(UMOCKDEV_RUN),
                  {text("-d"), description.fileName(), text("--"), text("sh"), text("-c"), command});
    process.waitForFinished(Patience);
    return process.readAllStandardOutput();
}

} // namespace

class TestAllPorts : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void searchesEveryPortOfTheMachine();
    void tellsOfAMachineWithoutPorts();
};

void TestAllPorts::searchesEveryPortOfTheMachine()
{
    SimulatorThread simulator;
    const SimulatedPrinter *printer = simulator.add(*personality(text("CUSTOM_VKP_80")));
    const SimulatedPrinter *silent = simulator.add(*personality(text("AV_268")), {EFault::Silent, {}, 1});
    const QString plug = text("ln -sf %1 $UMOCKDEV_DIR/dev/ttyUSB1; ln -sf %2 $UMOCKDEV_DIR/dev/ttyUSB0; exec ")
                             .arg(printer->portName(), silent->portName());
    QCOMPARE(runOn(UsbPorts, plug + text(STARTALL)), QByteArray("CUSTOM_VKP_80 at ttyUSB1\n"));
    QVERIFY(!silent->received().isEmpty());
}

void TestAllPorts::tellsOfAMachineWithoutPorts()
{
    QCOMPARE(runOn(NoPorts, text(STARTALL)), QByteArray("There are no available ports\n"));
}

QTEST_GUILESS_MAIN(TestAllPorts)

#include "tst_allports.moc"
