// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_ENTRYNUMBERS_H
#define PRINTSRV_ENTRYNUMBERS_H

#include <receipttrace.h>

#include <QHash>

namespace printsrv {

/** The numbers of the entries by the characters in them. */
class EntryNumbers
{
public:
    EntryNumbers() = default;
    explicit EntryNumbers(const QVector<ReceiptTrace::Source> &sources);

    /** The entry of a character, from 1; 0 for a character that comes from no entry. */
    int numberOf(ReceiptTrace::Origin origin) const;

private:
    QHash<int, QVector<int>> m_tabs; // offsets of the TABs between entries, by their source
};

} // namespace printsrv

#endif
