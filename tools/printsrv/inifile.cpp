// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "inifile.h"

#include "descriptorlist.h"

#include <QFile>
#include <QSettings>
#include <QTemporaryDir>

namespace printsrv {

namespace {

const QLatin1Char Separator('/');

// QSettings works on files only, and notices neither a full disk nor a short write. So it gets a file of its own, and
// the bytes that it made are read once more, from another file, before anybody relies on them.
class IniFile
{
public:
    // False when the file cannot be made or the text is no INI text.
    [[nodiscard]] bool open(const QByteArray &text)
    {
        QFile file(path());
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.flush()) {
            return false;
        }
        file.close();
        m_settings.reset(new QSettings(path(), QSettings::IniFormat));
        m_settings->setIniCodec("UTF-8");
        m_settings->allKeys(); // reads the file
        return m_settings->status() == QSettings::NoError;
    }

    QSettings &settings()
    {
        return *m_settings;
    }

    QVariantMap entries() const
    {
        QVariantMap map;
        const QStringList keys = m_settings->allKeys();
        for (const QString &key : keys) {
            // A value with commas outside quotes comes as a list.
            map.insert(key, m_settings->value(key).toStringList().join(QLatin1Char(',')));
        }
        return map;
    }

    // What QSettings made of it; empty when it could not.
    QByteArray text()
    {
        m_settings->sync();
        QFile file(path());
        const bool isReadable = m_settings->status() == QSettings::NoError && file.open(QIODevice::ReadOnly);
        return isReadable ? file.readAll() : QByteArray();
    }

private:
    QString path() const
    {
        return m_folder.filePath(QStringLiteral("settings.ini"));
    }

    QTemporaryDir m_folder;
    QScopedPointer<QSettings> m_settings;
};

QString entryName(const QVariantMap &descriptor)
{
    const QString group = groupOf(descriptor);
    return group.isEmpty() ? keyOf(descriptor) : group + Separator + keyOf(descriptor);
}

} // namespace

Outcome<QVariantList> descriptorsFromIni(const QByteArray &text)
{
    IniFile file;
    if (!file.open(text)) {
        return Failure{QStringLiteral("no INI file: entries are lines KEY=VALUE under lines [GROUP]")};
    }
    QVariantList list;
    const QVariantMap entries = file.entries();
    for (auto entry = entries.begin(); entry != entries.end(); ++entry) {
        const int end = entry.key().lastIndexOf(Separator);
        list.append(makeDescriptor(entry.key().left(qMax(end, 0)), entry.key().mid(end + 1), entry.value()));
    }
    return list;
}

Outcome<QByteArray> mergedIni(const QByteArray &text, const QVariantList &descriptors)
{
    IniFile file;
    if (!file.open(text)) {
        return Failure{QStringLiteral("not written, as it is no INI file: mend it or move it away")};
    }
    for (const QVariant &element : descriptors) {
        file.settings().setValue(entryName(element.toMap()), valueOf(element.toMap()).toString());
    }
    const QVariantMap wanted = file.entries();
    const QByteArray merged = file.text();
    IniFile check;
    if (!check.open(merged) || check.entries() != wanted) {
        return Failure{QStringLiteral("not written: the new content cannot be made; is the temporary folder full?")};
    }
    return merged;
}

} // namespace printsrv
