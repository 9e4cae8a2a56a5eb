// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_CHECKTEMPLATESSETTINGS_H
#define PRINTSRV_CHECKTEMPLATESSETTINGS_H

#include <QMutex>
#include <QString>
#include <QVariant>

/**
 * Where the receipt templates ("check templates") lie, and which of them is the default.
 *
 * The values are class-wide: every object shows the same ones. Thread-safe; a static initialiser of another library
 * that links this one may use the class.
 */
class Q_DECL_EXPORT CheckTemplatesSettings
{
public:
    /** "CHECK_TEMPLATES", the group of all descriptors of this class. */
    static const QString SECTION;
    /** "checkTemplatesPath", key of checkTemplatesPath(). */
    static const QString CHECK_TEMPLATES_PATH;
    /** "specsymbolsPath", part of the settings vocabulary; this library neither reads nor writes it. */
    static const QString SPEC_SYMBOLS_PATH;
    /** "z_templatesPath", part of the settings vocabulary; this library neither reads nor writes it. */
    static const QString Z_TEMPLATES_PATH;
    /** "fiscalTemplatesPath", part of the settings vocabulary; this library neither reads nor writes it. */
    static const QString FISCAL_TEMPLATES_PATH;
    /** "defaultCheckTemplate", key of defaultCheckTemplate(). */
    static const QString DEFAULT_CHECK_TEMPLATE;

    CheckTemplatesSettings();
    virtual ~CheckTemplatesSettings();

    /**
     * Folder of the templates and of their special-symbol files. When none was set it is "templates" in the terminal's
     * work folder, for which the system configuration is read again at each call, see PrintSrvSettings.
     */
    QString checkTemplatesPath() const;

    /** Sets the folder of the templates; an empty one brings the default back. */
    void setCheckTemplatesPath(const QString &path);

    /** File name of the default template; "default.cpt" unless it was changed. */
    QString defaultCheckTemplate() const;
    void setDefaultCheckTemplate(const QString &fileName);

    /**
     * The two descriptors, "checkTemplatesPath" and "defaultCheckTemplate", both strings. The path is the one that was
     * set: empty while the default is in use.
     */
    QVariantList toList() const;

    /**
     * Applies one descriptor, its value as text. Returns true when it was one of the two of toList(); false, and
     * nothing is changed, for another group or key.
     */
    bool setValue(const QVariantMap &descriptor);

    /** Applies the descriptors of @p list in their order as setValue() does, all under one lock; others are passed
     * over.
     */
    void setList(const QVariantList &list);

private:
    static bool storeDescriptor(const QVariantMap &map);

    static QMutex _settingsMutex;
    static QString _checkTemplatesPath;
    static QString _defaultCheckTemplate;
};

#endif
