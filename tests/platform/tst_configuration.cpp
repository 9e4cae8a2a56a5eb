// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "testfixture.h"

#include <dircreator.h>
#include <initconfig.h>

#include <QTemporaryDir>

class TestConfiguration : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void reads_data();
    void reads();
    void readsAgainWhatChanged_data();
    void readsAgainWhatChanged();
    void missingFileIsNoFault();
    void folderAsFileWarns();
    void createsFolders_data();
    void createsFolders();
    void warnsOfWhatStandsInTheWay_data();
    void warnsOfWhatStandsInTheWay();

private:
    QTemporaryDir m_folder;
};

void TestConfiguration::reads_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("workDir");
    QTest::addColumn<QString>("dataDir");

    addRow("both", QByteArray("[paths]\nworkDir=/w\ndataDir=/d\n"), "/w", "/d");
    addRow("data follows work", QByteArray("[paths]\nworkDir=/w\n"), "/w", "/w");
    addRow("work stays", QByteArray("[paths]\ndataDir=/d\n"), "/var/lib/orbek", "/d");
    addRow("empty values", QByteArray("[paths]\nworkDir=\ndataDir=\n"), "/var/lib/orbek", "/var/lib/orbek");
    addRow("other section", QByteArray("[path]\nworkDir=/w\n"), "/var/lib/orbek", "/var/lib/orbek");
    addRow("empty file", QByteArray(), "/var/lib/orbek", "/var/lib/orbek");
    addRow("comma", QByteArray("[paths]\nworkDir=/a,b\n"), "/a,b", "/a,b");
    addRow("UTF-8", QByteArray("[paths]\nworkDir=/чек\n"), QStringLiteral(u"/чек"), QStringLiteral(u"/чек"));
}

void TestConfiguration::reads()
{
    QFETCH(QByteArray, content);
    QTemporaryFile file;
    QVERIFY(file.open());
    file.write(content);
    file.close();
    const InitConfig config(file.fileName());
    QTEST(config.workDir(), "workDir");
    QTEST(config.dataDir(), "dataDir");
}

void TestConfiguration::readsAgainWhatChanged_data()
{
    QTest::addColumn<bool>("isReplaced");
    QTest::newRow("in place") << false;
    QTest::newRow("by another file") << true;
}

// Of the same length, so that only the file's times and identity tell.
void TestConfiguration::readsAgainWhatChanged()
{
    QFETCH(bool, isReplaced);
    const QString path = m_folder.filePath(QStringLiteral("changed.conf"));
    for (const char *folder : {"/one", "/two", "/six"}) {
        QFile file(isReplaced ? path + QStringLiteral(".new") : path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(QByteArray("[paths]\nworkDir=") + folder + '\n');
        file.close();
        if (isReplaced) {
            QFile::remove(path);
            QVERIFY(file.rename(path));
        }
        QTest::qWait(150); // only a file that has not just changed is kept in mind
        QCOMPARE(InitConfig(path).workDir(), QLatin1String(folder));
        QCOMPARE(InitConfig(path).workDir(), QLatin1String(folder));
    }
    QVERIFY(QFile::remove(path));
    QCOMPARE(InitConfig(path).workDir(), QStringLiteral("/var/lib/orbek"));
}

void TestConfiguration::missingFileIsNoFault()
{
    QCOMPARE(InitConfig(m_folder.filePath(QStringLiteral("none.conf"))).workDir(), QStringLiteral("/var/lib/orbek"));
}

void TestConfiguration::folderAsFileWarns()
{
    expectWarning(QStringLiteral("Configuration \".*\" cannot be read"));
    QCOMPARE(InitConfig(m_folder.path()).workDir(), QStringLiteral("/var/lib/orbek"));
}

void TestConfiguration::createsFolders_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("one") << "one";
    QTest::newRow("again") << "one";
    QTest::newRow("with those above") << "two/three/four";
    QTest::newRow("slash at the end") << "five/";
    QTest::newRow("not Latin") << QStringLiteral(u"чек");
}

void TestConfiguration::createsFolders()
{
    QFETCH(QString, path);
    path = m_folder.filePath(path);
    QVERIFY(DirCreator::checkAndCreate(path, DirCreator::DEFAULT_ALL));
    QVERIFY(QFileInfo(path).isDir());
}

void TestConfiguration::warnsOfWhatStandsInTheWay_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("a file at its place") << "file";
    QTest::newRow("a file above it") << "file/folder";
    QTest::newRow("a link to nowhere") << "link";
    QTest::newRow("a name that is too long") << QString(300, QLatin1Char('x'));
    QTest::newRow("empty") << QString();
}

void TestConfiguration::warnsOfWhatStandsInTheWay()
{
    QFETCH(QString, path);
    QFile file(m_folder.filePath(QStringLiteral("file")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QFile::link(QStringLiteral("nowhere"), m_folder.filePath(QStringLiteral("link")));
    expectWarning(QStringLiteral("Folder \".*%1\" cannot be created: \"\\w+").arg(path));
    QVERIFY(!DirCreator::checkAndCreate(path.isEmpty() ? path : m_folder.filePath(path), DirCreator::DEFAULT_ALL));
}

QTEST_GUILESS_MAIN(TestConfiguration)
#include "tst_configuration.moc"
