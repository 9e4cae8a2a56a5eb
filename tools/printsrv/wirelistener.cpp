// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "wirelistener.h"

#include <QJsonDocument>
#include <QLoggingCategory>

namespace printsrv {

namespace {

constexpr char Category[] = "printers.wire";

WireListener *currentListener = nullptr;
QtMessageHandler previousHandler = nullptr;
QLoggingCategory::CategoryFilter previousFilter = nullptr;

void enableWire(QLoggingCategory *category)
{
    previousFilter(category);
    if (qstrcmp(category->categoryName(), Category) == 0) {
        category->setEnabled(QtDebugMsg, true);
    }
}

/** The name under which the port's own events come: QSerialPort leaves "/dev/" away. */
QString eventName(const QString &portName)
{
    return portName.startsWith(QLatin1String("/dev/")) ? portName.mid(5) : portName;
}

} // namespace

WireListener::WireListener()
{
    currentListener = this;
    previousHandler = qInstallMessageHandler(handle);
    previousFilter = QLoggingCategory::installFilter(nullptr);
    QLoggingCategory::installFilter(enableWire);
}

WireListener::~WireListener()
{
    QLoggingCategory::installFilter(previousFilter);
    qInstallMessageHandler(previousHandler);
    currentListener = nullptr;
}

bool WireListener::record(const QString &fileName)
{
    m_recording.setFileName(fileName);
    return m_recording.open(QIODevice::WriteOnly | QIODevice::Truncate);
}

QString WireListener::errorString() const
{
    return m_recording.errorString();
}

bool WireListener::isRecordComplete() const
{
    QMutexLocker locker(&m_mutex);
    return m_isRecordComplete;
}

PortStory WireListener::story(const QString &portName) const
{
    QMutexLocker locker(&m_mutex);
    return m_stories.value(eventName(portName));
}

void WireListener::handle(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (qstrcmp(context.category, Category) == 0) {
        currentListener->hear(text.toUtf8());
        return;
    }
    previousHandler(type, context, text);
}

void WireListener::hear(const QByteArray &line)
{
    const QJsonObject event = QJsonDocument::fromJson(line).object();
    QMutexLocker locker(&m_mutex);
    m_stories[event.value(QLatin1String("port")).toString()].take(event);
    if (m_recording.isOpen()) {
        const bool isWritten = m_recording.write(line + '\n') == line.size() + 1 && m_recording.flush();
        m_isRecordComplete = m_isRecordComplete && isWritten;
    }
}

} // namespace printsrv
