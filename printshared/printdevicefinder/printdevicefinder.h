// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_PRINTDEVICEFINDER_H
#define PRINTSRV_PRINTDEVICEFINDER_H

#include <portsettings.h>

#include <QFutureWatcher>
#include <QList>
#include <QMap>
#include <QMetaType>
#include <QObject>
#include <QPointer>
#include <QSharedPointer>
#include <QStringList>

#include <atomic>

/**
 * A found or configured device: what it is, which model, and at which port and serial parameters.
 *
 * A plain value, registered with the meta-type system as "PrintDeviceInfo". Reentrant.
 */
class Q_DECL_EXPORT PrintDeviceInfo
{
public:
    /** Kind of device: 1 for a text printer, 0 (the default) for none. */
    unsigned int deviceType() const;
    void setDeviceType(const unsigned int &deviceType);

    /** Model identifier, one of TextPrinterModels; empty by default and when nothing was found. */
    QString deviceId() const;
    void setDeviceId(const QString &deviceId);

    /** The port, named as the caller of the search named it, and the parameters with which the device answered. */
    PortSettings settings() const;
    void setSettings(const PortSettings &settings);

    /** True when the device type is not 0 and the device id is not empty. */
    bool isValid() const;

    /** True when all three fields are equal, the settings by their own equality. */
    bool operator==(const PrintDeviceInfo &other) const;
    bool operator!=(const PrintDeviceInfo &other) const;

private:
    unsigned int m_deviceType = 0;
    QString m_deviceId;
    PortSettings m_settings;
};

Q_DECLARE_METATYPE(PrintDeviceInfo)

/**
 * Searches serial ports for a text printer, all ports at the same time, and reports the first one found.
 *
 * Every operation and signal belongs to the finder's thread, which needs a running event loop; the ports are opened,
 * used and closed by tasks on the global thread pool. A search that is under way when start() or test() is called is
 * cancelled first, with its finished(). Both may be called from slots of finished() and deviceFinded(). Port names are
 * kept as they are given, as "ttyS0" or "/dev/ttyS0".
 *
 * A port without an answer takes over 143 s to search; cancelling takes at most 100 ms, whatever the devices do.
 */
class Q_DECL_EXPORT PrintDeviceFinder : public QObject
{
    Q_OBJECT

public:
    /**
     * Raises the maximum of the process-wide thread pool to 100 threads, so that 100 ports are searched at the same
     * time, and writes the pool's figures before and after as plain debug lines. The change stays when the finder goes.
     */
    explicit PrintDeviceFinder(QObject *parent = nullptr);

    /** Cancels a search and waits until its ports are closed; signals nothing. */
    ~PrintDeviceFinder() override;

Q_SIGNALS:
    /** A printer was found; comes after the finished() of its search, whose other results are dropped. */
    void deviceFinded(PrintDeviceInfo device);

    /**
     * Nothing was or can be found, with the translated reason: "There are no available ports", "There are no available
     * configs" (neither followed by finished()) or "There no devices finded" (followed by finished()).
     */
    void noDevices(QString reason);

    /** A search has ended, by a result, without one, or because it was cancelled. */
    void finished();

    /** Tells the running tasks to end; connected directly, may come several times, and tasks end only later. */
    void needCancel();

public Q_SLOTS:
    /** Searches every serial port that the system lists, in any kind of use; pseudo-terminals are not listed. */
    void start();

    /** Searches these ports, each name once; an empty list is answered with noDevices() alone. */
    void start(QStringList ports);

    /**
     * Verifies configured devices, each at its own port with its own model and parameters; several of one port one
     * after the other. A device with an empty id is searched for on its port. A device of type 0 can not be found. A
     * failed verification carries no id. An empty list is answered with noDevices() alone. The list is not changed.
     */
    void test(QList<PrintDeviceInfo> &configs);

    /**
     * Ends the search: every port is closed by its task, within 100 ms, before this returns with finished(), which
     * comes also when nothing was under way. Results that are pending are dropped, and nothing more is signalled
     * afterwards. Called inside itself (from a slot of needCancel() or of its finished()) it returns at once.
     */
    void cancel();

private Q_SLOTS:
    void watcherFinished();

private:
    using Watcher = QFutureWatcher<PrintDeviceInfo>;

    void beginSearch();
    void stopTasks();
    void watch(const QString &portName, const QFuture<PrintDeviceInfo> &future);
    void endEmptySearch();

    QList<PrintDeviceInfo> m_foundDevices;
    QMap<QString, QPointer<Watcher>> m_watchers;
    QSharedPointer<std::atomic_bool> m_stopFlag;
    quint64 m_searchNumber = 0;
    bool m_isCancelling = false;
};

#endif
