// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_TXTPRINTERERROR_H
#define PRINTSRV_TXTPRINTERERROR_H

#include <QFlags>
#include <QMetaType>
#include <QString>
#include <QVariant>

QT_BEGIN_NAMESPACE
class QDebug;
QT_END_NAMESPACE

/**
 * What went wrong with a text printer: a word of error flags and a text for people.
 *
 * Four flags stop printing; the others inform. A plain value, moved by taking the text. Reentrant.
 */
class Q_DECL_EXPORT TxtPrinterError
{
public:
    /** One error condition, a bit of the flag word. The four blocking ones make the record count as an error. */
    enum EError : int {
        NoError = 0, /**< Nothing is wrong; the default. */
        PrinterNotAnswering = 0x001, /**< Blocking: the printer is off, unplugged or does not answer. */
        PaperOut = 0x002, /**< Blocking: there is no paper. */
        PaperLow = 0x004, /**< The roll is about to end. */
        ReceiptInPresenter = 0x008, /**< The last receipt was not taken yet. */
        ReceiptRetracted = 0x010, /**< A receipt that nobody took was pulled back. */
        CoverOpen = 0x020, /**< Blocking: the cover or the head is open. */
        HeadHot = 0x040, /**< The head is hot; printing pauses until it has cooled down. */
        VoltageOutOfRange = 0x080, /**< The supply voltage is too low or too high. */
        CommandRejected = 0x100, /**< The printer did not know a command; the receipt may look wrong. */
        MechanismFault = 0x200, /**< Blocking: cutter, head or paper transport failed, a paper jam for instance. */
    };
    Q_DECLARE_FLAGS(EErrors, EError)

    /** Makes a record without flags and text. */
    TxtPrinterError() = default;
    TxtPrinterError(TxtPrinterError::EError code, const QString &text);
    TxtPrinterError(QFlags<TxtPrinterError::EError> code, const QString &text);

    /** Makes a record and fills it as setMap() does. */
    explicit TxtPrinterError(const QVariantMap &map);

    /** The flags; none by default. Bits that have no name are carried and compared. */
    QFlags<TxtPrinterError::EError> errorCode() const;
    void setErrorCode(const QFlags<TxtPrinterError::EError> &code);

    /** The text for people; empty by default. */
    QString errorText() const;
    void setErrorText(const QString &text);

    /** True when all flags and the texts are equal. */
    bool operator==(const TxtPrinterError &other) const;
    bool operator!=(const TxtPrinterError &other) const;

    /** True when any of the four blocking flags is set. Contract: not const. */
    operator bool();

    /** Replaces both fields by "code" and "text" of @p map; what is missing becomes 0 or empty. */
    void setMap(const QVariantMap &map);

    /** "code" (int) and "msg" (string). Contract: setMap() reads the text from "text", so that it does not come back.
     */
    QVariantMap toMap() const;

private:
    QFlags<EError> m_errorCode;
    QString m_errorText;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(TxtPrinterError::EErrors)
Q_DECLARE_METATYPE(TxtPrinterError)

/** Writes the flag word in hexadecimal and the text. */
Q_DECL_EXPORT QDebug operator<<(QDebug debug, const TxtPrinterError &error);

#endif
