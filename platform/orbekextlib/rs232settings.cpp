// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "rs232settings.h"

#include "logging.h"

#include <initializer_list>

using namespace orbekext;

namespace {

enum class EOutcome {
    Applied,
    Refused,
};

// One serial parameter: its key, and how it goes from and to a descriptor's value.
struct Parameter
{
    const char *key;
    EOutcome (*set)(PortSettings &port, const QString &value);
    QVariant (*get)(const PortSettings &port);
};

EOutcome setPortName(PortSettings &port, const QString &value)
{
    port.setPortName(value);
    return EOutcome::Applied;
}

EOutcome setBaudRate(PortSettings &port, const QString &value)
{
    const int baudRate = value.toInt();
    if (baudRate <= 0) {
        return EOutcome::Refused;
    }
    port.setBaudRate(baudRate);
    return EOutcome::Applied;
}

template<typename Enum>
EOutcome setMember(PortSettings &port, void (PortSettings::*setter)(Enum), const QString &value,
                   std::initializer_list<Enum> members)
{
    bool isNumber = false;
    const int number = value.toInt(&isNumber);
    for (const Enum member : members) {
        if (isNumber && member == number) {
            (port.*setter)(member);
            return EOutcome::Applied;
        }
    }
    return EOutcome::Refused;
}

EOutcome setDataBits(PortSettings &port, const QString &value)
{
    return setMember(port, &PortSettings::setDataBits, value,
                     {QSerialPort::Data5, QSerialPort::Data6, QSerialPort::Data7, QSerialPort::Data8});
}

EOutcome setParity(PortSettings &port, const QString &value)
{
    return setMember(port, &PortSettings::setParity, value,
                     {QSerialPort::NoParity, QSerialPort::EvenParity, QSerialPort::OddParity, QSerialPort::SpaceParity,
                      QSerialPort::MarkParity});
}

EOutcome setStopBits(PortSettings &port, const QString &value)
{
    return setMember(port, &PortSettings::setStopBits, value,
                     {QSerialPort::OneStop, QSerialPort::OneAndHalfStop, QSerialPort::TwoStop});
}

EOutcome setFlowControl(PortSettings &port, const QString &value)
{
    return setMember(port, &PortSettings::setFlowControl, value,
                     {QSerialPort::NoFlowControl, QSerialPort::HardwareControl, QSerialPort::SoftwareControl});
}

constexpr Parameter Parameters[] = {
    {"portName", setPortName,
     [](const PortSettings &port) {
         return QVariant(port.portName());
     }},
    {"baudRate", setBaudRate,
     [](const PortSettings &port) {
         return QVariant(port.baudRate());
     }},
    {"dataBits", setDataBits,
     [](const PortSettings &port) {
         return QVariant(int(port.dataBits()));
     }},
    {"parity", setParity,
     [](const PortSettings &port) {
         return QVariant(int(port.parity()));
     }},
    {"stopBits", setStopBits,
     [](const PortSettings &port) {
         return QVariant(int(port.stopBits()));
     }},
    {"flowControl", setFlowControl,
     [](const PortSettings &port) {
         return QVariant(int(port.flowControl()));
     }},
};

const Parameter *findParameter(const QString &key)
{
    for (const Parameter &parameter : Parameters) {
        if (key == QLatin1String(parameter.key)) {
            return &parameter;
        }
    }
    return nullptr;
}

} // namespace

RS232Settings::RS232Settings(const QString &section)
    : m_section(section)
{
}

QString RS232Settings::section() const
{
    return m_section;
}

void RS232Settings::setSection(const QString &section)
{
    m_section = section;
}

bool RS232Settings::setValue(const QVariantMap &descriptor)
{
    const auto group = descriptor.constFind(QStringLiteral("group"));
    if (group == descriptor.constEnd() || group->toString() != m_section) {
        return false;
    }
    const Parameter *parameter = findParameter(descriptor.value(QStringLiteral("key")).toString());
    if (parameter == nullptr) {
        return false;
    }
    const QString value = descriptor.value(QStringLiteral("value")).toString();
    if (parameter->set(*this, value) == EOutcome::Refused) {
        qCWarning(LOG) << "Serial parameter" << parameter->key << "of section" << m_section << "cannot be" << value;
    }
    return true;
}

QVariantList RS232Settings::toList() const
{
    QVariantList list;
    for (const Parameter &parameter : Parameters) {
        list.append(QVariantMap{{QStringLiteral("group"), m_section},
                                {QStringLiteral("key"), QString::fromLatin1(parameter.key)},
                                {QStringLiteral("value"), parameter.get(*this)}});
    }
    return list;
}

bool RS232Settings::operator==(const RS232Settings &other) const
{
    return m_section == other.m_section && PortSettings::operator==(other);
}

bool RS232Settings::operator!=(const RS232Settings &other) const
{
    return !(*this == other);
}
