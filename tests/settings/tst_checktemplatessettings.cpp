// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "settingsfixture.h"

#include <checktemplatessettings.h>
#include <printsrvsettings.h>

#include <QTemporaryDir>

namespace {

const QString Section = QStringLiteral("CHECK_TEMPLATES");
const QString PathKey = QStringLiteral("checkTemplatesPath");
const QString TemplateKey = QStringLiteral("defaultCheckTemplate");

void useConfiguration(const QString &path, const QString &content)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content.toUtf8());
    file.close();
    qputenv("ORBEK_CONFIG", QFile::encodeName(path));
}

} // namespace

class TestCheckTemplatesSettings : public SettingsFixture
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void listsTheStoredPath();
    void followsTheConfiguration();
    void takesValues_data();
    void takesValues();
    void takesLists();
    void namesTheServicesPaths();
    void createsTheServicesFolders();
    void goesOnWithoutFolders();

private:
    QTemporaryDir m_folder;
};

void TestCheckTemplatesSettings::init()
{
    SettingsFixture::init();
    useConfiguration(m_folder.filePath(QStringLiteral("orbek.conf")),
                     QStringLiteral("[paths]\nworkDir=%1/work\ndataDir=%1/data\n").arg(m_folder.path()));
    CheckTemplatesSettings settings;
    settings.setCheckTemplatesPath(QString());
    settings.setDefaultCheckTemplate(QStringLiteral("default.cpt"));
}

void TestCheckTemplatesSettings::listsTheStoredPath()
{
    CheckTemplatesSettings settings;
    const QStringList fresh{QStringLiteral("CHECK_TEMPLATES checkTemplatesPath QString "),
                            QStringLiteral("CHECK_TEMPLATES defaultCheckTemplate QString default.cpt")};
    QCOMPARE(described(settings.toList()), fresh);
    settings.setCheckTemplatesPath(QStringLiteral("/t"));
    QCOMPARE(shown(CheckTemplatesSettings().toList(), PathKey).toString(), QStringLiteral("/t"));
}

void TestCheckTemplatesSettings::followsTheConfiguration()
{
    CheckTemplatesSettings settings;
    settings.setCheckTemplatesPath(QStringLiteral("/t"));
    QCOMPARE(settings.checkTemplatesPath(), QStringLiteral("/t"));
    settings.setCheckTemplatesPath(QString());
    QCOMPARE(settings.checkTemplatesPath(), m_folder.filePath(QStringLiteral("work/templates")));
    useConfiguration(m_folder.filePath(QStringLiteral("other.conf")),
                     QStringLiteral("[paths]\nworkDir=%1/other\n").arg(m_folder.path()));
    QCOMPARE(settings.checkTemplatesPath(), m_folder.filePath(QStringLiteral("other/templates")));
}

void TestCheckTemplatesSettings::takesValues_data()
{
    QTest::addColumn<QVariantMap>("change");
    QTest::addColumn<bool>("isTaken");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("fileName");

    addRow("path", descriptor(Section, PathKey, QStringLiteral("/n")), true, "/n", "default.cpt");
    addRow("template", descriptor(Section, TemplateKey, QStringLiteral("n")), true, "/t", "n");
    addRow("empty template", descriptor(Section, TemplateKey, QVariant()), true, "/t", QString());
    addRow("number", descriptor(Section, PathKey, 5), true, "5", "default.cpt");
    addRow("key that is only a word", descriptor(Section, QStringLiteral("specsymbolsPath"), QStringLiteral("/n")),
           false, "/t", "default.cpt");
    addRow("other group", descriptor(QStringLiteral("PRINTER"), PathKey, 1), false, "/t", "default.cpt");
    addRow("no group", QVariantMap{{QStringLiteral("key"), PathKey}}, false, "/t", "default.cpt");
}

void TestCheckTemplatesSettings::takesValues()
{
    QFETCH(QVariantMap, change);
    CheckTemplatesSettings settings;
    settings.setCheckTemplatesPath(QStringLiteral("/t"));
    QTEST(settings.setValue(change), "isTaken");
    QTEST(settings.checkTemplatesPath(), "path");
    QTEST(settings.defaultCheckTemplate(), "fileName");
}

void TestCheckTemplatesSettings::takesLists()
{
    CheckTemplatesSettings settings;
    settings.setList({descriptor(Section, PathKey, QStringLiteral("/first")), QStringLiteral("no map"),
                      descriptor(Section, PathKey, QStringLiteral("/last")),
                      descriptor(Section, TemplateKey, QStringLiteral("other.cpt"))});
    QCOMPARE(settings.checkTemplatesPath(), QStringLiteral("/last"));
    QCOMPARE(settings.defaultCheckTemplate(), QStringLiteral("other.cpt"));
}

void TestCheckTemplatesSettings::namesTheServicesPaths()
{
    PrintSrvSettings settings;
    QCOMPARE(settings.stateInterval(), 30000);
    QCOMPARE(settings.serviceDataPath(), m_folder.filePath(QStringLiteral("data/printsrv")));
    QCOMPARE(settings.kpkGenConfig(), m_folder.filePath(QStringLiteral("data/printsrv/kpk.gen")));
    QCOMPARE(settings.pngOutputFile(7), m_folder.filePath(QStringLiteral("data/png/doc_7.png")));
    QCOMPARE(settings.pngOutputFile(-1), m_folder.filePath(QStringLiteral("data/png/doc_-1.png")));
}

void TestCheckTemplatesSettings::createsTheServicesFolders()
{
    const PrintSrvSettings settings;
    QVERIFY(QFileInfo(settings.serviceDataPath()).isDir());
    QVERIFY(QFileInfo(m_folder.filePath(QStringLiteral("work/png"))).isDir());
    QVERIFY(!QFileInfo::exists(m_folder.filePath(QStringLiteral("data/png")))); // the service's own business
}

void TestCheckTemplatesSettings::goesOnWithoutFolders()
{
    useConfiguration(m_folder.filePath(QStringLiteral("bad.conf")),
                     QStringLiteral("[paths]\nworkDir=%1/bad.conf\n").arg(m_folder.path()));
    expectWarning(QStringLiteral("Folder \".*/bad.conf/printsrv\" cannot be created"));
    expectWarning(QStringLiteral("Folder \".*/bad.conf/png\" cannot be created"));
    QCOMPARE(CheckTemplatesSettings().checkTemplatesPath(), m_folder.filePath(QStringLiteral("bad.conf/templates")));
}

QTEST_GUILESS_MAIN(TestCheckTemplatesSettings)
#include "tst_checktemplatessettings.moc"
