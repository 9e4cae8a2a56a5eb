// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "entrynumbers.h"

#include <algorithm>

namespace printsrv {

EntryNumbers::EntryNumbers(const QVector<ReceiptTrace::Source> &sources)
{
    for (int index = 0; index < sources.size(); ++index) {
        const ReceiptTrace::Source &source = sources.at(index);
        if (source.kind != ReceiptTrace::ESource::Entries) {
            continue;
        }
        QVector<int> &tabs = m_tabs[index];
        for (int at = source.text.indexOf(QLatin1Char('\t')); at >= 0;
             at = source.text.indexOf(QLatin1Char('\t'), at + 1)) {
            tabs.append(at);
        }
    }
}

int EntryNumbers::numberOf(ReceiptTrace::Origin origin) const
{
    const auto tabs = m_tabs.constFind(origin.source);
    if (tabs == m_tabs.constEnd()) {
        return 0;
    }
    return int(std::lower_bound(tabs->cbegin(), tabs->cend(), origin.offset) - tabs->cbegin()) + 1;
}

} // namespace printsrv
