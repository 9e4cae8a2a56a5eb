// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "printerdocument.h"

#include "textnumber.h"

#include <QDebug>

bool PrinterDocument::isCopy() const
{
    return m_isCopy;
}

void PrinterDocument::setIsCopy(bool isCopy)
{
    m_isCopy = isCopy;
}

QString PrinterDocument::entries() const
{
    return m_entries;
}

void PrinterDocument::setEntries(const QString &entries)
{
    m_entries = entries;
}

QVariantMap PrinterDocument::attributes() const
{
    return m_attributes;
}

void PrinterDocument::setAttributes(const QVariantMap &attributes)
{
    m_attributes = attributes;
}

QVariant PrinterDocument::attributeValue(const QString &name) const
{
    const auto found = m_attributes.constFind(name);
    if (found == m_attributes.constEnd()) {
        return QString();
    }
    if (found->userType() != QMetaType::QString) {
        return *found;
    }
    const QVariant number = printsrv::numberFromText(*static_cast<const QString *>(found->constData()));
    return number.isValid() ? number : *found;
}

bool PrinterDocument::hasAttribute(const QString &name) const
{
    Q_UNUSED(name)
    return true;
}

bool PrinterDocument::removeFiscalAttrs() const
{
    return true;
}

bool PrinterDocument::operator==(const PrinterDocument &other) const
{
    return m_isCopy == other.m_isCopy && m_entries == other.m_entries && m_attributes == other.m_attributes;
}

bool PrinterDocument::operator!=(const PrinterDocument &other) const
{
    return !(*this == other);
}

QDebug operator<<(QDebug debug, const PrinterDocument &document)
{
    const QDebugStateSaver saver(debug);
    debug.nospace() << "PrinterDocument(copy: " << document.isCopy() << ", attributes: " << document.attributes().keys()
                    << ')';
    return debug;
}
