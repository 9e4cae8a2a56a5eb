// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "printdevicefinder.h"

#include "searchtask.h"

#include <QDebug>
#include <QSerialPortInfo>
#include <QSet>
#include <QThreadPool>
#include <QtConcurrent>

#include <utility>

namespace {

constexpr int MaximumTasks = 100;

const int MetaType = qRegisterMetaType<PrintDeviceInfo>("PrintDeviceInfo");

void logThreadCounts(const QThreadPool &pool)
{
    qDebug() << "Thread pool: active" << pool.activeThreadCount() << "of" << pool.maxThreadCount();
}

} // namespace

unsigned int PrintDeviceInfo::deviceType() const
{
    return m_deviceType;
}

void PrintDeviceInfo::setDeviceType(const unsigned int &deviceType)
{
    m_deviceType = deviceType;
}

QString PrintDeviceInfo::deviceId() const
{
    return m_deviceId;
}

void PrintDeviceInfo::setDeviceId(const QString &deviceId)
{
    m_deviceId = deviceId;
}

PortSettings PrintDeviceInfo::settings() const
{
    return m_settings;
}

void PrintDeviceInfo::setSettings(const PortSettings &settings)
{
    m_settings = settings;
}

bool PrintDeviceInfo::isValid() const
{
    return m_deviceType != 0 && !m_deviceId.isEmpty();
}

bool PrintDeviceInfo::operator==(const PrintDeviceInfo &other) const
{
    return m_deviceType == other.m_deviceType && m_deviceId == other.m_deviceId && m_settings == other.m_settings;
}

bool PrintDeviceInfo::operator!=(const PrintDeviceInfo &other) const
{
    return !(*this == other);
}

PrintDeviceFinder::PrintDeviceFinder(QObject *parent)
    : QObject(parent)
    , m_stopFlag(printsrv::StopFlag::create(false))
{
    QThreadPool *pool = QThreadPool::globalInstance();
    logThreadCounts(*pool);
    pool->setMaxThreadCount(MaximumTasks);
    logThreadCounts(*pool);
    connect(
        this, &PrintDeviceFinder::needCancel, this, [this] { *m_stopFlag = true; }, Qt::DirectConnection);
}

PrintDeviceFinder::~PrintDeviceFinder()
{
    stopTasks();
}

void PrintDeviceFinder::start()
{
    QStringList names;
    const auto available = QSerialPortInfo::availablePorts();
    for (const QSerialPortInfo &port : available) {
        names.append(port.portName());
    }
    start(names);
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the contract takes the list by value
void PrintDeviceFinder::start(QStringList ports)
{
    const QPointer<PrintDeviceFinder> guard(this);
    beginSearch();
    if (guard.isNull()) {
        return;
    }
    if (ports.isEmpty()) {
        Q_EMIT noDevices(tr("There are no available ports"));
        return;
    }
    const QSet<QString> portNames(ports.cbegin(), ports.cend());
    for (const QString &portName : portNames) {
        watch(portName, QtConcurrent::run(printsrv::searchPort, portName, m_stopFlag));
    }
}

void PrintDeviceFinder::test(QList<PrintDeviceInfo> &configs)
{
    QMap<QString, QVector<PrintDeviceInfo>> configsOfPort;
    for (const PrintDeviceInfo &config : qAsConst(configs)) {
        configsOfPort[config.settings().portName()].append(config);
    }
    const QPointer<PrintDeviceFinder> guard(this);
    beginSearch();
    if (guard.isNull()) {
        return;
    }
    if (configsOfPort.isEmpty()) {
        Q_EMIT noDevices(tr("There are no available configs"));
        return;
    }
    for (auto entry = configsOfPort.cbegin(); entry != configsOfPort.cend(); ++entry) {
        watch(entry.key(), QtConcurrent::run(printsrv::verifyDevices, entry.value(), m_stopFlag));
    }
}

void PrintDeviceFinder::beginSearch()
{
    const QPointer<PrintDeviceFinder> guard(this);
    if (!m_watchers.isEmpty()) {
        cancel();
    }
    // A slot of the cancelled search's finished() may have deleted the finder.
    if (guard.isNull()) {
        return;
    }
    // Inside a cancel() the one above did nothing.
    stopTasks();
    m_isCancelling = false;
    ++m_searchNumber;
    m_foundDevices.clear();
    m_stopFlag = printsrv::StopFlag::create(false);
}

void PrintDeviceFinder::watch(const QString &portName, const QFuture<PrintDeviceInfo> &future)
{
    auto *watcher = new Watcher(this);
    m_watchers.insert(portName, watcher);
    connect(watcher, &Watcher::finished, this, &PrintDeviceFinder::watcherFinished);
    watcher->setFuture(future);
}

void PrintDeviceFinder::watcherFinished()
{
    // An event loop in a slot of needCancel() hands results out that are to be dropped.
    if (m_isCancelling) {
        return;
    }
    auto *watcher = static_cast<Watcher *>(sender());
    const PrintDeviceInfo result = watcher->result();
    if (result.isValid()) {
        const QPointer<PrintDeviceFinder> guard(this);
        m_foundDevices.append(result);
        cancel();
        // Contract: finished() comes first. A slot of it may have deleted the finder.
        if (!guard.isNull()) {
            Q_EMIT deviceFinded(result);
        }
        return;
    }
    watcher->deleteLater();
    m_watchers.remove(result.settings().portName());
    if (m_watchers.isEmpty()) {
        endEmptySearch();
    }
}

void PrintDeviceFinder::endEmptySearch()
{
    const QPointer<PrintDeviceFinder> guard(this);
    const quint64 number = m_searchNumber;
    if (m_foundDevices.isEmpty()) {
        Q_EMIT noDevices(tr("There no devices finded"));
    }
    // A slot may have deleted the finder, cancelled or begun another search; that one ends by itself.
    if (!guard.isNull() && m_searchNumber == number) {
        Q_EMIT finished();
    }
}

void PrintDeviceFinder::stopTasks()
{
    *m_stopFlag = true;
    const auto watchers = std::exchange(m_watchers, {});
    for (const QPointer<Watcher> &watcher : watchers) {
        watcher->disconnect(this);
        // Cancelled first: waiting would otherwise run a task that no thread has begun yet.
        watcher->cancel();
    }
    for (const QPointer<Watcher> &watcher : watchers) {
        watcher->waitForFinished();
        // Perhaps called from this watcher's own signal.
        watcher->deleteLater();
    }
}

void PrintDeviceFinder::cancel()
{
    if (m_isCancelling) {
        return;
    }
    const QPointer<PrintDeviceFinder> guard(this);
    m_isCancelling = true;
    ++m_searchNumber;
    // Contract: once, and once more for each task.
    for (int tasks = m_watchers.size(); tasks >= 0 && !guard.isNull(); --tasks) {
        Q_EMIT needCancel();
    }
    if (guard.isNull()) {
        return;
    }
    stopTasks();
    Q_EMIT finished();
    if (!guard.isNull()) {
        m_isCancelling = false;
    }
}
