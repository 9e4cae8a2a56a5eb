// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_DESCRIPTOR_H
#define PRINTSRV_DESCRIPTOR_H

#include <QVariant>

namespace printsrv {

/** One entry of a settings descriptor list, taken from or turned into its map. */
struct Descriptor
{
    QString group;
    QString key;
    QVariant value;

    /** False when the map had no "group"; such a descriptor belongs to nobody. */
    bool hasGroup = true;

    /** Takes "group", "key" and "value" of @p map; what is missing reads as empty. */
    static Descriptor fromMap(const QVariantMap &map);

    /** The map with exactly the three keys. */
    QVariantMap toMap() const;
};

} // namespace printsrv

#endif
