// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_PRINTERDOCUMENT_H
#define PRINTSRV_PRINTERDOCUMENT_H

#include <QMetaType>
#include <QString>
#include <QVariant>

/**
 * Holds the data of one receipt ("check") that a template is filled from: named attributes, the entry lines of the
 * goods or payments, and whether the receipt is a copy of one that was printed before.
 *
 * A plain value; no operation fails. Reentrant.
 */
class Q_DECL_EXPORT PrinterDocument
{
public:
    /** True when the document is a copy of a receipt printed before, so that the copy mark is printed; false by
     * default. */
    bool isCopy() const;
    void setIsCopy(bool isCopy);

    /**
     * The entry lines that take the place of the tag "<ENTRIES>", already in the form of template lines; a TAB
     * separates two lines and "=" parts the left side of a line from its right side. Empty by default.
     */
    QString entries() const;
    void setEntries(const QString &entries);

    /** All attributes by their names, as they were set; empty by default. Names are case-sensitive. */
    QVariantMap attributes() const;
    void setAttributes(const QVariantMap &attributes);

    /**
     * Returns the value of the attribute @p name in the type in which it is formatted.
     *
     * A text that is a decimal integer of at most 18 characters becomes a 64-bit integer, any other number of at most
     * 15 characters a double (with a point, or else with a comma); longer digit strings, such as card numbers, stay
     * text and lose no digit. A value that is no text comes back as it was set. A missing attribute gives a variant
     * that holds an empty text, not an invalid variant.
     */
    QVariant attributeValue(const QString &name) const;

    /** Contract: true for every @p name; a missing attribute is no error, it prints nothing. */
    bool hasAttribute(const QString &name) const;

    /** Contract: changes nothing and returns true, so that X parts are always removed from a receipt. */
    bool removeFiscalAttrs() const;

    /** True when the copy flag, the entries and all attributes are equal. */
    bool operator==(const PrinterDocument &other) const;
    bool operator!=(const PrinterDocument &other) const;

private:
    bool m_isCopy = false;
    QString m_entries;
    QVariantMap m_attributes;
};

Q_DECLARE_METATYPE(PrinterDocument)

/** Writes the copy flag and the names of the attributes, never their values: those are the customer's. */
Q_DECL_EXPORT QDebug operator<<(QDebug debug, const PrinterDocument &document);

#endif
