// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "printershelper.h"

#include "candidatesettings.h"
#include "portwait.h"
#include "probes.h"

#include <textprintermodels.h>

#include <QCoreApplication>

const QLoggingCategory &SEARCH_PRINTERS()
{
    static const QLoggingCategory category("printers");
    return category;
}

PrintersHelper::PrintersHelper(const QSharedPointer<QSerialPort> &port, QObject *parent)
    : QObject(parent)
    , m_port(port)
    , m_candidates(printsrv::candidateSettings())
{
    setObjectName(QStringLiteral("printersHelper[%1]").arg(port.isNull() ? QString() : port->portName()));
}

PrintersHelper::~PrintersHelper() = default;

void PrintersHelper::setStopFlag(const QSharedPointer<const std::atomic_bool> &flag)
{
    m_stopFlag = flag;
}

bool PrintersHelper::isStopped() const
{
    return !m_stopFlag.isNull() && *m_stopFlag;
}

void PrintersHelper::setPortSettings(const PortSettings &settings)
{
    if (m_port.isNull()) {
        return;
    }
    m_port->setBaudRate(settings.baudRate(), QSerialPort::AllDirections);
    m_port->setParity(settings.parity());
    m_port->setDataBits(settings.dataBits());
    m_port->setStopBits(settings.stopBits());
    m_port->setFlowControl(settings.flowControl());
}

bool PrintersHelper::portIsValid() const
{
    return !m_port.isNull() && m_port->isOpen();
}

bool PrintersHelper::waitForReadyRead(int msecs)
{
    QCoreApplication::processEvents(QEventLoop::ExcludeSocketNotifiers);
    if (!portIsValid() || isStopped()) {
        return false;
    }
    if (m_port->bytesAvailable() > 0) {
        return true;
    }
    const printsrv::EWaitResult result = printsrv::waitForInput(*m_port, msecs, m_stopFlag.data());
    if (result == printsrv::EWaitResult::Lost) {
        m_port->close();
    }
    return result == printsrv::EWaitResult::Ready;
}

bool PrintersHelper::scan(QString &model, PortSettings &settings)
{
    if (m_port.isNull()) {
        qCCritical(SEARCH_PRINTERS) << tr("There are no port objects");
        return false;
    }
    qCDebug(SEARCH_PRINTERS) << tr("Start search on %1 for printers").arg(m_port->portName());
    const bool isFound = openPort() && (model.isEmpty() ? runAllProbes(model, settings) : runProbeOf(model, settings));
    qCDebug(SEARCH_PRINTERS) << tr("Stop search on %1 for printers").arg(m_port->portName()) << model;
    return isFound;
}

bool PrintersHelper::openPort()
{
    if (m_port->isOpen() || m_port->open(QIODevice::ReadWrite)) {
        return true;
    }
    qCCritical(SEARCH_PRINTERS) << tr("Open port error (%1)").arg(m_port->portName());
    return false;
}

bool PrintersHelper::runAllProbes(QString &model, PortSettings &settings)
{
    return scan1D491(model, settings) || scanSwecoin(model, settings) || scanStar(model, settings)
        || scanAV268(model, settings) || scanSimple(model, settings);
}

bool PrintersHelper::runProbeOf(QString &model, PortSettings &settings)
{
    m_candidates = {settings};
    if (model == TextPrinterModels::MODEL_AV_268) {
        return scanAV268(model, settings);
    }
    // Contract: MODEL_CITIZEN_CPP_8001 is found by a search, but has no verification.
    const QStringList reportingModelByte{
        TextPrinterModels::MODEL_CUSTOM_VKP_80,     TextPrinterModels::MODEL_CUSTOM_TG_2480_H,
        TextPrinterModels::MODEL_CUSTOM_TG_2480_SE, TextPrinterModels::MODEL_CITIZEN_PPU_700,
        TextPrinterModels::MODEL_CITIZEN_CBM_1000,  TextPrinterModels::MODEL_CITIZEN_CTS_2000,
        TextPrinterModels::MODEL_EPSON_EU_4XX};
    if (reportingModelByte.contains(model)) {
        return scan1D491(model, settings);
    }
    if (model == TextPrinterModels::MODEL_TSP_TUP) {
        return walkStar(m_candidates, model, settings);
    }
    if (model == TextPrinterModels::MODEL_CITIZEN_PPU_231) {
        return scanSimple(model, settings);
    }
    return model == TextPrinterModels::MODEL_SWECOIN_TM_20XX && scanSwecoin(model, settings);
}

bool PrintersHelper::scanSwecoin(QString &model, PortSettings &settings)
{
    return printsrv::walkCandidates({*this, m_port.data(), m_stopFlag.data(), "scanSwecoin"}, m_candidates,
                                    printsrv::talkToSwecoin, model, settings);
}

bool PrintersHelper::scan1D491(QString &model, PortSettings &settings)
{
    return printsrv::walkCandidates({*this, m_port.data(), m_stopFlag.data(), "scan1D491"}, m_candidates,
                                    printsrv::talkTo1D491, model, settings);
}

bool PrintersHelper::scanStar(QString &model, PortSettings &settings)
{
    return walkStar(prepareStarSettings(), model, settings);
}

bool PrintersHelper::walkStar(const QVector<PortSettings> &candidates, QString &model, PortSettings &settings)
{
    return printsrv::walkCandidates({*this, m_port.data(), m_stopFlag.data(), "scanStar"}, candidates,
                                    printsrv::talkToStar, model, settings);
}

bool PrintersHelper::scanSimple(QString &model, PortSettings &settings)
{
    return printsrv::walkCandidates({*this, m_port.data(), m_stopFlag.data(), "scanSimple"},
                                    printsrv::notFasterThan(printsrv::SimpleMaximumBaudRate, m_candidates),
                                    printsrv::talkToSimple, model, settings);
}

bool PrintersHelper::scanAV268(QString &model, PortSettings &settings)
{
    printsrv::ProbeLine line({*this, m_port.data(), m_stopFlag.data(), "scanAV268"});
    printsrv::setAv268Parameters(&settings);
    return printsrv::converseAt(line, settings, {}, printsrv::talkToAv268, model);
}

QVector<PortSettings> PrintersHelper::prepareStarSettings()
{
    return printsrv::starSettings();
}
