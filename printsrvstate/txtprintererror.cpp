// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "txtprintererror.h"

#include <QDebug>

namespace {

constexpr int BlockingErrors = TxtPrinterError::PrinterNotAnswering | TxtPrinterError::PaperOut
    | TxtPrinterError::CoverOpen | TxtPrinterError::MechanismFault;

TxtPrinterError::EErrors errorsFrom(int word)
{
    return TxtPrinterError::EErrors(QFlag(word));
}

} // namespace

TxtPrinterError::TxtPrinterError(TxtPrinterError::EError code, const QString &text)
    : m_errorCode(code)
    , m_errorText(text)
{
}

TxtPrinterError::TxtPrinterError(QFlags<TxtPrinterError::EError> code, const QString &text)
    : m_errorCode(code)
    , m_errorText(text)
{
}

TxtPrinterError::TxtPrinterError(const QVariantMap &map)
{
    setMap(map);
}

QFlags<TxtPrinterError::EError> TxtPrinterError::errorCode() const
{
    return m_errorCode;
}

void TxtPrinterError::setErrorCode(const QFlags<TxtPrinterError::EError> &code)
{
    m_errorCode = code;
}

QString TxtPrinterError::errorText() const
{
    return m_errorText;
}

void TxtPrinterError::setErrorText(const QString &text)
{
    m_errorText = text;
}

bool TxtPrinterError::operator==(const TxtPrinterError &other) const
{
    return m_errorCode == other.m_errorCode && m_errorText == other.m_errorText;
}

bool TxtPrinterError::operator!=(const TxtPrinterError &other) const
{
    return !(*this == other);
}

TxtPrinterError::operator bool()
{
    return (m_errorCode & BlockingErrors) != 0;
}

void TxtPrinterError::setMap(const QVariantMap &map)
{
    m_errorCode = errorsFrom(map.value(QStringLiteral("code")).toInt());
    m_errorText = map.value(QStringLiteral("text")).toString();
}

QVariantMap TxtPrinterError::toMap() const
{
    return {{QStringLiteral("code"), static_cast<int>(m_errorCode)}, {QStringLiteral("msg"), m_errorText}};
}

QDebug operator<<(QDebug debug, const TxtPrinterError &error)
{
    const QDebugStateSaver saver(debug);
    debug.nospace() << "TxtPrinterError(0x" << Qt::hex << static_cast<uint>(error.errorCode()) << ", "
                    << error.errorText() << ')';
    return debug;
}
