// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "mountedfolder.h"
#include "numbereddocument.h"
#include "testfixture.h"

// Saves on small disks that are full or almost full: what loads then is the document before or the new one, and the new
// one when the saver says so. Where nothing can be mounted the program says so and tests nothing.

namespace {

constexpr int Lines = 30;
constexpr int MostLeft = 12;
constexpr int PageBytes = 4096;

// Takes what the disk has left, in empty files or pages, and gives so many of them back.
void fill(const QDir &folder, int fileBytes, int left)
{
    int count = 0;
    for (bool isTaken = true; isTaken; ++count) {
        QFile file(folder.filePath(QString::number(count)));
        isTaken
            = file.open(QIODevice::WriteOnly) && file.write(QByteArray(fileBytes, 'x')) == fileBytes && file.flush();
    }
    for (int i = 0; i <= left; ++i) { // the last one was not taken
        QFile::remove(folder.filePath(QString::number(count - 1 - i)));
    }
}

} // namespace

class DocumentDiskTest : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void fullDisks_data();
    void fullDisks();
    void fileInUse();
};

void DocumentDiskTest::fullDisks_data()
{
    QTest::addColumn<QByteArray>("options");
    QTest::addColumn<int>("fileBytes");
    QTest::addColumn<bool>("isFirst");

    QTest::newRow("64 KB") << QByteArray("size=64k") << PageBytes << false;
    QTest::newRow("64 KB, first save") << QByteArray("size=64k") << PageBytes << true;
    QTest::newRow("no inodes") << QByteArray("nr_inodes=24") << 0 << false;
    QTest::newRow("no inodes, first save") << QByteArray("nr_inodes=24") << 0 << true;
}

void DocumentDiskTest::fullDisks()
{
    QFETCH(QByteArray, options);
    QFETCH(int, fileBytes);
    QFETCH(bool, isFirst);
    QLoggingCategory::setFilterRules(QStringLiteral("printsrv.printerdocs=false"));
    int saves = 0;
    for (int left = 0; left <= MostLeft; ++left) {
        const QTemporaryDir folder;
        const MemoryDisk disk(folder.path(), options.constData());
        QVERIFY(disk.isMounted());
        const QString path = folder.filePath(QStringLiteral("document.json"));
        QVERIFY(isFirst || numberedDocument(1, Lines).saveToFile(path));
        fill(folder.path(), fileBytes, left);
        const bool isSaved = numberedDocument(2, Lines).saveToFile(path);
        TextPrinterDocument loaded;
        const bool isLoaded = loaded.loadFromFile(path);
        QVERIFY2(isLoaded || (isFirst && !isSaved), qPrintable(QString::number(left)));
        const int number = loaded.symbolsPerLine();
        QVERIFY2(number == 2 || !isSaved, qPrintable(QString::number(left)));
        QVERIFY(!isLoaded || loaded == numberedDocument(number, Lines));
        saves += isSaved ? 1 : 0;
    }
    QLoggingCategory::setFilterRules(QString());
    QVERIFY2(saves > 0 && saves <= MostLeft, qPrintable(QString::number(saves))); // it was as narrow as was meant
}

// A file on which something is mounted can be written but not replaced: it stays what it was.
void DocumentDiskTest::fileInUse()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("document.json"));
    const QByteArray name = QFile::encodeName(path);
    QVERIFY(numberedDocument(1, Lines).saveToFile(path));
    QCOMPARE(mount(name.constData(), name.constData(), nullptr, MS_BIND, nullptr), 0);
    expectCritical(QStringLiteral("Cannot write .*document.json\""));
    const bool isSaved = numberedDocument(2, Lines).saveToFile(path);
    TextPrinterDocument loaded;
    const bool isLoaded = loaded.loadFromFile(path);
    umount2(name.constData(), MNT_DETACH);
    QVERIFY(!isSaved && isLoaded);
    QCOMPARE(loaded, numberedDocument(1, Lines));
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size(), 4); // nothing else is left behind
}

int main(int argc, char **argv)
{
    if (!hasOwnMounts()) {
        return skipped("this process may not mount");
    }
    DocumentDiskTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_documentdisk.moc"
