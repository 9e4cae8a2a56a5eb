// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "statebus.h"

#include "commandline.h"
#include "report.h"
#include "stateobject.h"
#include "statetext.h"
#include "statewatcher.h"

#include <printservicestatetolbuswrapper.h>

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusError>
#include <QRegularExpression>
#include <QSocketNotifier>

#include <array>
#include <cerrno>
#include <unistd.h>

namespace printsrv {

namespace {

constexpr int LargestLineBytes = 1024 * 1024;

void addBusOptions(CommandLine &line)
{
    line.addOption({QStringLiteral("bus")}, QStringLiteral("The bus: session or system."),
                   QStringLiteral("session|system"), QStringLiteral("session"));
    line.addOption({QStringLiteral("name")}, QStringLiteral("The publisher's name on the bus."), QStringLiteral("NAME"),
                   statebus::ServiceName);
}

// As the bus has it, "org.printsrv.State": two parts at least.
bool isBusName(const QString &name)
{
    constexpr int LongestName = 255;
    static const QRegularExpression form(
        QStringLiteral("\\A[A-Za-z_-][A-Za-z0-9_-]*(\\.[A-Za-z_-][A-Za-z0-9_-]*)+\\z"));
    return name.size() <= LongestName && form.match(name).hasMatch();
}

// The bus that the options name; nothing when they are wrong or it cannot be reached, and standard error says so.
std::optional<QDBusConnection> busOf(const CommandLine &line, ExitCode &code)
{
    const QString name = line.value(QStringLiteral("name"));
    if (!isBusName(name)) {
        code = line.usageError(
            QStringLiteral("--name takes a name like %1, not '%2'.").arg(statebus::ServiceName, name));
        return {};
    }
    const auto choice = line.choice(QStringLiteral("bus"), {QStringLiteral("session"), QStringLiteral("system")});
    if (!choice) {
        code = ExitUsage;
        return {};
    }
    const QDBusConnection bus = *choice == 0 ? QDBusConnection::sessionBus() : QDBusConnection::systemBus();
    if (!bus.isConnected()) {
        complain(QStringLiteral("no %1 bus: %2").arg(line.value(QStringLiteral("bus")), bus.lastError().message()));
        code = ExitWrongInput;
        return {};
    }
    return bus;
}

// Bus texts as lines from standard input, each of which becomes the state that is offered.
class StateReader : public QObject
{
public:
    explicit StateReader(StateObject &object)
        : m_object(object)
        , m_notifier(STDIN_FILENO, QSocketNotifier::Read)
    {
        connect(&m_notifier, &QSocketNotifier::activated, this, [this] { read(); });
    }

    ExitCode exitCode() const
    {
        return m_exitCode;
    }

private:
    void read()
    {
        std::array<char, 4096> chunk;
        const ssize_t count = ::read(STDIN_FILENO, chunk.data(), chunk.size());
        if (count < 0 && (errno == EINTR || errno == EAGAIN)) {
            return;
        }
        m_buffer.append(chunk.data(), static_cast<int>(qMax<ssize_t>(count, 0)));
        takeLines();
        if (count <= 0) {
            takeLine(m_buffer);
            m_notifier.setEnabled(false);
            QCoreApplication::quit();
        }
    }

    void takeLines()
    {
        for (int end = m_buffer.indexOf('\n'); end >= 0; end = m_buffer.indexOf('\n')) {
            takeLine(m_buffer.left(end));
            m_buffer.remove(0, end + 1);
        }
        if (m_buffer.size() > LargestLineBytes) {
            complain(QStringLiteral("line %1 is longer than 1 MiB").arg(m_lines + 1));
            m_exitCode = ExitWrongInput;
            m_notifier.setEnabled(false);
            QCoreApplication::quit();
        }
    }

    void takeLine(const QByteArray &line)
    {
        m_lines += 1;
        if (line.trimmed().isEmpty()) {
            return;
        }
        const auto state = readRecord(line);
        if (state) {
            m_object.setState(PrintServiceStateTolbusWrapper(*state).toClientState());
        } else {
            const Failure failure{state.failure().text, m_lines, state.failure().column};
            m_exitCode = complainAt(failure, QStringLiteral("-"));
        }
    }

    StateObject &m_object;
    QSocketNotifier m_notifier;
    QByteArray m_buffer;
    int m_lines = 0;
    ExitCode m_exitCode = ExitDone;
};

ExitCode publishOn(QDBusConnection bus, const QString &name)
{
    StateObject object;
    object.setState(PrintServiceStateTolbusWrapper().toClientState());
    const bool isOffered
        = bus.registerObject(statebus::ObjectPath, &object,
                             QDBusConnection::ExportScriptableContents | QDBusConnection::ExportAllProperties)
        && bus.registerService(name);
    if (!isOffered) {
        const QString reason = bus.lastError().message();
        complain(
            QStringLiteral("the name %1 cannot be had on the bus: %2")
                .arg(name,
                     reason.isEmpty() ? QStringLiteral("another program offers it; give another --name") : reason));
        return ExitWrongInput;
    }
    const StateReader reader(object);
    QCoreApplication::exec();
    bus.unregisterService(name);
    return reader.exitCode();
}

} // namespace

ExitCode publishState(const QStringList &arguments)
{
    CommandLine line(
        QStringLiteral("state publish"),
        QStringLiteral("Offers a state on D-Bus until standard input ends: each line of it is a bus text,\n"
                       "as 'state encode' writes it, and becomes the current state."),
        {QStringLiteral("mkfifo /run/state && printsrv state publish --bus system <> /run/state"),
         QStringLiteral("printsrv state encode --service ready --device ready > /run/state")});
    addBusOptions(line);
    if (const auto code = line.parse(arguments)) {
        return *code;
    }
    ExitCode code = ExitDone;
    const auto bus = busOf(line, code);
    return bus ? publishOn(*bus, line.value(QStringLiteral("name"))) : code;
}

ExitCode watchState(const QStringList &arguments)
{
    CommandLine line(
        QStringLiteral("state watch"),
        QStringLiteral("Follows a state on D-Bus: one line for the current state and for each new one, with\n"
                       "time, type and text. Waits when nobody offers one."),
        {QStringLiteral("printsrv state watch"), QStringLiteral("printsrv state watch --bus system --count 1")});
    addBusOptions(line);
    line.addOption({QStringLiteral("count")}, QStringLiteral("Ends after this many states; 0 never ends."),
                   QStringLiteral("N"), QStringLiteral("0"));
    if (const auto code = line.parse(arguments)) {
        return *code;
    }
    const auto count = line.number(QStringLiteral("count"), 0, 1000000000);
    if (!count) {
        return ExitUsage;
    }
    ExitCode code = ExitDone;
    const auto bus = busOf(line, code);
    if (!bus) {
        return code;
    }
    StateWatcher watcher(*bus, line.value(QStringLiteral("name")), *count);
    watcher.start();
    QCoreApplication::exec();
    return watcher.exitCode();
}

} // namespace printsrv
