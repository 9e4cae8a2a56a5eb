// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "filesizelimit.h"
#include "guardedfile.h"
#include "replacedfile.h"
#include "savelock.h"
#include "testfixture.h"

#include <textprinterdocument.h>

#include <climits>
#include <cstring>
#include <filesystem>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

constexpr int ShortTimeoutMs = 200;
constexpr qint64 LargestBytes = 64 * 1024 * 1024;

// A document that is told from others by a number.
TextPrinterDocument documentOf(int number)
{
    TextPrinterDocument document;
    document.setSymbolsPerLine(number);
    document.appendBlock(
        DocumentBlock::createSimpleBlock({QStringLiteral("Итого %1").arg(number)}, TextAlignLeft, 0, 0, 0, 0));
    return document;
}

// A file that vanishes right before it is locked the next time.
std::filesystem::path removedBeforeLocked;

bool writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

QByteArray readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Whether the program "sha1sum" finds that the file fits the sum beside it, called from another folder.
bool isAcceptedByProgram(const QString &path)
{
    QProcess process;
    process.setWorkingDirectory(QStringLiteral("/"));
    process.start(QStringLiteral("/usr/bin/env"),
                  {QStringLiteral("PATH=/usr/bin:/bin"), QStringLiteral("sha1sum"), QStringLiteral("-c"),
                   path + QStringLiteral(".sha1")});
    return process.waitForFinished() && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}

} // namespace

// Stands in front of the system's function.
extern "C" int flock(int descriptor, int operation) noexcept
{
    std::error_code error;
    std::filesystem::remove(std::exchange(removedBeforeLocked, {}), error);
    return int(syscall(SYS_flock, descriptor, operation));
}

class DocumentFileTest : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void fileSets_data();
    void fileSets();
    void saveOverFileSets_data();
    void saveOverFileSets();
    void pathNames_data();
    void pathNames();
    void impossibleNames_data();
    void impossibleNames();
    void foreignFolders();
    void links_data();
    void links();
    void linksInACircle();
    void rights();
    void devices();
    void emptyPath();
    void programs_data();
    void programs();
    void hungProgram();
    void killedSaver();
    void removedLock();
    void failingSaves_data();
    void failingSaves();
    void strangeContent_data();
    void strangeContent();
    void hugeFiles_data();
    void hugeFiles();
    void hugeSave();

private:
    QString path() const;
    bool makeFile(const QString &file, QChar state, int number) const;
    bool makeFileSet(const QString &states) const;
    int loadedNumber() const;

    QScopedPointer<QTemporaryDir> m_folder;
    QByteArray m_searchPath;
};

void DocumentFileTest::init()
{
    m_folder.reset(new QTemporaryDir);
    QVERIFY(m_folder->isValid());
    m_searchPath = qgetenv("PATH");
    TestFixture::init();
}

void DocumentFileTest::cleanup()
{
    TestFixture::cleanup();
    qputenv("PATH", m_searchPath);
    std::error_code error;
    std::filesystem::remove_all(m_folder->path().toStdString(), error); // with names that Qt cannot have
}

QString DocumentFileTest::path() const
{
    return m_folder->filePath(QStringLiteral("document.json"));
}

// Makes one file in a state: 'g' good, 'b' not fitting its sum, 's' without a sum, 'h' with half a sum, '-' missing.
bool DocumentFileTest::makeFile(const QString &file, QChar state, int number) const
{
    const QString sum = file + QStringLiteral(".sha1");
    const QByteArray bytes = QJsonDocument::fromVariant(documentOf(number).toMap()).toJson(QJsonDocument::Compact);
    const QByteArray digest = QCryptographicHash::hash(bytes, QCryptographicHash::Sha1).toHex();
    switch (state.unicode()) {
    case 'g':
        return writeFile(file, bytes) && writeFile(sum, digest + "  " + QFile::encodeName(file) + "\n");
    case 'b':
        return writeFile(file, bytes + ' ') && writeFile(sum, digest);
    case 's':
        return writeFile(file, bytes);
    case 'h':
        return writeFile(file, bytes) && writeFile(sum, digest.left(20));
    default:
        return true;
    }
}

// The main file holds document 1 and the backup document 2.
bool DocumentFileTest::makeFileSet(const QString &states) const
{
    return makeFile(path(), states.at(0), 1) && makeFile(path() + QStringLiteral(".bak"), states.at(1), 2);
}

// The number of the document that loads, 0 when none does.
int DocumentFileTest::loadedNumber() const
{
    TextPrinterDocument document;
    return document.loadFromFile(path()) ? document.symbolsPerLine() : 0;
}

void DocumentFileTest::fileSets_data()
{
    QTest::addColumn<QString>("states"); // of the main file and the backup, as makeFile() knows them
    QTest::addColumn<int>("loaded");
    QTest::addColumn<int>("warnings");

    const auto row = [](const char *states, int loaded, int warnings) {
        QTest::newRow(states) << QString::fromLatin1(states) << loaded << warnings;
    };
    row("gg", 1, 0);
    row("gb", 1, 0);
    row("g-", 1, 0);
    row("bg", 2, 1);
    row("sg", 2, 1);
    row("hg", 2, 1);
    row("-g", 2, 0);
    row("bb", 0, 2);
    row("bs", 0, 2);
    row("s-", 0, 1);
    row("-s", 0, 1);
    row("--", 0, 0);
}

void DocumentFileTest::fileSets()
{
    QFETCH(QString, states);
    QFETCH(int, loaded);
    QFETCH(int, warnings);
    QVERIFY(makeFileSet(states));
    for (int i = 0; i < warnings; ++i) {
        expectWarning(QStringLiteral("Document file .*document.json.* is not used: its? "));
    }
    TextPrinterDocument document = documentOf(99);
    QCOMPARE(document.loadFromFile(path()), loaded != 0);
    QCOMPARE(document, documentOf(loaded != 0 ? loaded : 99));
}

void DocumentFileTest::saveOverFileSets_data()
{
    fileSets_data();
}

void DocumentFileTest::saveOverFileSets()
{
    QFETCH(QString, states);
    QVERIFY(makeFileSet(states));
    QVERIFY(documentOf(3).saveToFile(path()));
    QCOMPARE(loadedNumber(), 3);
    for (const QString &file : {path(), path() + QStringLiteral(".bak")}) {
        QCOMPARE(readFile(file), readFile(path()));
        QVERIFY(isAcceptedByProgram(file));
    }
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden).size(), 4); // nothing else is left behind
    QVERIFY(QFile::remove(path()));
    QCOMPARE(loadedNumber(), 3);

    TextPrinterDocument::removeFile(path());
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden), QStringList());
}

void DocumentFileTest::pathNames_data()
{
    QTest::addColumn<QString>("name");

    for (const char *name :
         {"a b", "-c", "--help", "quote\"'$(x)", "back\\slash", "new\nline", "return\r", "Чек", "#", "100%1"}) {
        QTest::newRow(name) << QString::fromUtf8(name);
    }
    QTest::newRow("longest") << QString(NAME_MAX - int(strlen(".bak.sha1")), QLatin1Char('n'));
}

void DocumentFileTest::pathNames()
{
    QFETCH(QString, name);
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(m_folder->path()));
    const bool isSaved = documentOf(5).saveToFile(name);
    TextPrinterDocument loaded;
    const bool isLoaded = loaded.loadFromFile(name);
    QVERIFY(QDir::setCurrent(before));
    QVERIFY(isSaved && isLoaded);
    QCOMPARE(loaded, documentOf(5));
    QVERIFY(isAcceptedByProgram(m_folder->filePath(name)));
    QVERIFY(isAcceptedByProgram(m_folder->filePath(name) + QStringLiteral(".bak")));
}

void DocumentFileTest::impossibleNames_data()
{
    QTest::addColumn<QString>("name");

    QTest::newRow("too long by one byte") << QString(NAME_MAX - int(strlen(".bak.sha1")) + 1, QLatin1Char('n'));
    QTest::newRow("255 bytes") << QString(NAME_MAX, QLatin1Char('n'));
    QTest::newRow("NUL") << QStringLiteral("document") + QChar(0) + QStringLiteral(".json");
    QTest::newRow("half a character") << QStringLiteral("document") + QChar(0xD800);
    QTest::newRow("no such folder") << QStringLiteral("folder/document");
}

// Refused before anything is written, rather than written under another name or half.
void DocumentFileTest::impossibleNames()
{
    QFETCH(QString, name);
    expectCritical(QStringLiteral("Cannot write"));
    QVERIFY(!documentOf(1).saveToFile(m_folder->filePath(name)));
    QVERIFY(QDir(m_folder->path()).isEmpty(QDir::Files | QDir::Hidden | QDir::System));
}

// The folder has a name that no text in UTF-8 stands for.
void DocumentFileTest::foreignFolders()
{
    const QByteArray folder = QFile::encodeName(m_folder->path()) + "/\xff";
    QCOMPARE(mkdir(folder.constData(), S_IRWXU), 0);
    const QString link = m_folder->filePath(QStringLiteral("link"));
    QCOMPARE(symlink(folder.constData(), QFile::encodeName(link).constData()), 0);
    const QString path = link + QStringLiteral("/document.json");
    QVERIFY(documentOf(1).saveToFile(path));
    TextPrinterDocument loaded;
    QVERIFY(loaded.loadFromFile(path));
    QVERIFY(isAcceptedByProgram(path));

    const QString before = QDir::currentPath();
    QCOMPARE(chdir(folder.constData()), 0);
    expectCritical(QStringLiteral("Cannot write"));
    const bool isSaved = documentOf(2).saveToFile(QStringLiteral("document.json"));
    QVERIFY(QDir::setCurrent(before));
    QVERIFY(!isSaved);
    QVERIFY(loaded.loadFromFile(path));
    QCOMPARE(loaded, documentOf(1));
}

void DocumentFileTest::links_data()
{
    QTest::addColumn<QList<QByteArray>>("targets"); // of the path, of that, …

    QTest::newRow("link") << QList<QByteArray>{"other/target.json"};
    QTest::newRow("link to a link") << QList<QByteArray>{"other/link.json", "target.json"};
    QTest::newRow("up from a linked folder") << QList<QByteArray>{"linked/../target.json"};
    QTest::newRow("no valid text") << QList<QByteArray>{"other/target\xff.json"};
}

void DocumentFileTest::links()
{
    QFETCH(QList<QByteArray>, targets);
    const QByteArray folder = QFile::encodeName(m_folder->path()) + '/';
    QVERIFY(QDir(m_folder->path()).mkpath(QStringLiteral("other/deep")));
    QCOMPARE(symlink("other/deep", (folder + "linked").constData()), 0);
    QByteArray last = QFile::encodeName(path());
    for (const QByteArray &target : qAsConst(targets)) {
        QCOMPARE(symlink(target.constData(), last.constData()), 0);
        last = last.left(last.lastIndexOf('/') + 1) + target;
    }
    for (int number : {1, 2}) { // the links dangle at first
        QVERIFY(documentOf(number).saveToFile(path()));
        QCOMPARE(loadedNumber(), number);
        struct stat file = {};
        QCOMPARE(lstat(last.constData(), &file), 0);
        QVERIFY(S_ISREG(file.st_mode));
        QVERIFY(QFileInfo(path()).isSymLink());
        QCOMPARE(readFile(path()), readFile(path() + QStringLiteral(".bak")));
    }
}

void DocumentFileTest::linksInACircle()
{
    QVERIFY(QFile::link(QStringLiteral("document.json"), path()));
    expectCritical(QStringLiteral("Cannot write .*document.json\" which is no regular file"));
    QVERIFY(!documentOf(1).saveToFile(path()));
    QVERIFY(QFileInfo(path()).isSymLink());
}

// A new file takes over whose it is and who may read it, and so does a file that a link leads to.
void DocumentFileTest::rights()
{
    constexpr uid_t Somebody = 4711;
    const uid_t owner = geteuid() == 0 ? Somebody : geteuid();
    const QString target = m_folder->filePath(QStringLiteral("target.json"));
    QVERIFY(QFile::link(target, path()) && documentOf(1).saveToFile(path()));
    const QByteArray name = QFile::encodeName(target);
    QCOMPARE(chown(name.constData(), owner, geteuid() == 0 ? Somebody : getegid()), 0);
    QCOMPARE(chmod(name.constData(), S_IRUSR | S_IWUSR | S_IRGRP), 0);
    QVERIFY(documentOf(2).saveToFile(path()));
    struct stat file = {};
    QCOMPARE(stat(name.constData(), &file), 0);
    QCOMPARE(file.st_uid, owner);
    QCOMPARE(int(file.st_mode & ALLPERMS), S_IRUSR | S_IWUSR | S_IRGRP);
}

// A device file is not replaced by a document, even by root.
void DocumentFileTest::devices()
{
    const QByteArray name = QFile::encodeName(path());
    QCOMPARE(mkfifo(name.constData(), S_IRUSR | S_IWUSR), 0);
    expectCritical(QStringLiteral("Cannot write .*document.json\" which is no regular file"));
    QVERIFY(!documentOf(1).saveToFile(path()));
    struct stat file = {};
    QCOMPARE(stat(name.constData(), &file), 0);
    QVERIFY(S_ISFIFO(file.st_mode));
}

void DocumentFileTest::emptyPath()
{
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(m_folder->path()));
    QVERIFY(writeFile(QStringLiteral(".bak"), "mine"));
    TextPrinterDocument document = documentOf(1);
    const bool isSaved = document.saveToFile(QString());
    const bool isLoaded = document.loadFromFile(QString());
    TextPrinterDocument::removeFile(QString());
    QVERIFY(QDir::setCurrent(before));
    QVERIFY(!isSaved && !isLoaded);
    QCOMPARE(document, documentOf(1));
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden), QStringList(QStringLiteral(".bak")));
}

void DocumentFileTest::programs_data()
{
    QTest::addColumn<QByteArray>("script");

    QTest::newRow("missing") << QByteArray();
    QTest::newRow("fails") << QByteArray("exit 1");
    QTest::newRow("prints something else") << QByteArray("echo da39a3ee5e6b4b0d3255bfef95601890afd80709");
    QTest::newRow("prints half") << QByteArray("echo da39a3ee5e");
    QTest::newRow("is killed") << QByteArray("kill -9 $$");
    QTest::newRow("prints for ever") << QByteArray("while :; do echo rubbish; done");
    QTest::newRow("closes its output") << QByteArray("exec >&-");
}

void DocumentFileTest::programs()
{
    QFETCH(QByteArray, script);
    QTemporaryDir programs;
    QVERIFY(
        QFile::link(QStandardPaths::findExecutable(QStringLiteral("sync")), programs.filePath(QStringLiteral("sync"))));
    const QString program = programs.filePath(QStringLiteral("sha1sum"));
    if (!script.isEmpty()) {
        QVERIFY(writeFile(program, "#!/bin/sh\n" + script + "\n"));
        QVERIFY(QFile::setPermissions(program, QFile::ReadOwner | QFile::ExeOwner));
    }
    qputenv("PATH", QFile::encodeName(programs.path()));
    expectWarning(QStringLiteral("sha1sum gave no sum of .*document.json\""));
    expectWarning(QStringLiteral("sha1sum gave no sum of .*document.json.bak\""));
    QVERIFY(documentOf(1).saveToFile(path()));
    QCOMPARE(loadedNumber(), 1);
    QVERIFY(isAcceptedByProgram(path()));
    QVERIFY(isAcceptedByProgram(path() + QStringLiteral(".bak")));
}

void DocumentFileTest::hungProgram()
{
    const QString program = m_folder->filePath(QStringLiteral("sha1sum"));
    QVERIFY(writeFile(program, "#!/bin/sh\nexec sleep 1000\n"));
    QVERIFY(QFile::setPermissions(program, QFile::ReadOwner | QFile::ExeOwner));
    qputenv("PATH", QFile::encodeName(m_folder->path()) + ':' + m_searchPath);
    expectWarning(QStringLiteral("sha1sum gave no sum"));
    expectWarning(QStringLiteral("sha1sum gave no sum"));
    QVERIFY(printsrv::guardedfile::save(path(), "bytes", ShortTimeoutMs));
    QByteArray bytes;
    QVERIFY(printsrv::guardedfile::load(path(), bytes));
    QCOMPARE(bytes, QByteArray("bytes"));
}

// What a killed saver wrote may be all that is good, and may not be on the disk: it is synced before anything is
// replaced.
void DocumentFileTest::killedSaver()
{
    QTemporaryDir programs;
    const QString program = programs.filePath(QStringLiteral("sync"));
    const QString first = programs.filePath(QStringLiteral("backup"));
    const QString backup = path() + QStringLiteral(".bak");
    QVERIFY(makeFileSet(QStringLiteral("gg")));
    const QByteArray content = readFile(backup);
    QVERIFY(
        writeFile(program, "#!/bin/sh\ncp -n " + QFile::encodeName(backup) + ' ' + QFile::encodeName(first) + '\n'));
    QVERIFY(QFile::setPermissions(program, QFile::ReadOwner | QFile::ExeOwner));
    qputenv("PATH", QFile::encodeName(programs.path()) + ':' + m_searchPath);
    const auto lock = printsrv::replacedfile::hiddenName(path().toStdString(), ".lock");
    QVERIFY(writeFile(QString::fromStdString(lock.string()), QByteArray()));
    QVERIFY(documentOf(3).saveToFile(path()));
    QCOMPARE(readFile(first), content); // as it was when the first sync came
    QVERIFY(!std::filesystem::exists(lock));
}

// The saver before removes its lock when this one has opened it and has not taken it yet. Another one would make a lock
// of its own beside one that has no name.
void DocumentFileTest::removedLock()
{
    removedBeforeLocked = printsrv::replacedfile::hiddenName(path().toStdString(), ".lock");
    printsrv::SaveLock lock(path(), ShortTimeoutMs);
    QVERIFY(lock.isHeld());
    const printsrv::SaveLock other(path(), ShortTimeoutMs);
    QVERIFY(!other.isHeld());
    QCOMPARE(other.problem(), QStringLiteral("which another saver keeps busy"));
    lock.setComplete();
}

void DocumentFileTest::failingSaves_data()
{
    QTest::addColumn<QString>("states");
    QTest::addColumn<QString>("obstacle"); // a file that is a folder
    QTest::addColumn<int>("limit"); // bytes that fit into a file
    QTest::addColumn<int>("criticals");
    QTest::addColumn<int>("warnings");
    QTest::addColumn<int>("loaded"); // 3 is the document that was to be saved

    struct Lines
    {
        int criticals;
        int warnings;
    };
    const auto row = [](const char *name, const char *states, const char *obstacle, Lines lines, int loaded) {
        const QString folder = QString::fromLatin1(obstacle);
        QTest::newRow(name) << QString::fromLatin1(states) << folder << (folder.isEmpty() ? 0 : 1 << 30)
                            << lines.criticals << lines.warnings << loaded;
    };
    row("full disk, nothing there", "--", "", {2, 0}, 0);
    row("full disk, both good", "gg", "", {2, 0}, 1);
    row("full disk, no copy of the main file", "g-", "", {2, 0}, 1);
    row("full disk, backup is the only good one", "-g", "", {1, 0}, 2);
    row("main file is a folder", "--", ".", {1, 1}, 3);
    row("main file is a folder, good backup stays", "-g", ".", {1, 1}, 2);
    row("sum is a folder, backup stays", "-g", ".sha1", {1, 1}, 2);
    row("sum is a folder, nothing there", "--", ".sha1", {1, 1}, 0);
    row("backup is a folder", "--", ".bak", {1, 0}, 3);
    row("backup is a folder, main file stays", "g-", ".bak", {2, 0}, 1);
    row("sum of the backup is a folder", "--", ".bak.sha1", {1, 0}, 3);
}

void DocumentFileTest::failingSaves()
{
    QFETCH(QString, states);
    QFETCH(QString, obstacle);
    QFETCH(int, limit);
    QFETCH(int, criticals);
    QFETCH(int, warnings);
    QVERIFY(makeFileSet(states));
    if (!obstacle.isEmpty()) {
        QVERIFY(QDir().mkpath(path() + (obstacle == QStringLiteral(".") ? QString() : obstacle)));
    }
    for (int i = 0; i < criticals; ++i) {
        expectCritical(QStringLiteral("Cannot write .*document.json"));
    }
    for (int i = 0; i < warnings; ++i) {
        expectWarning(QStringLiteral("sha1sum gave no sum|is not used"));
    }
    {
        const FileSizeLimit fullDisk(static_cast<rlim_t>(limit));
        QVERIFY(!documentOf(3).saveToFile(path()));
    }
    QTEST(loadedNumber(), "loaded");
}

void DocumentFileTest::strangeContent_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("isLoaded");

    QTest::newRow("no JSON") << QByteArray("{\"blocks\":") << false;
    QTest::newRow("empty") << QByteArray() << false;
    QTest::newRow("nested too deeply") << QByteArray(2000000, '[') << false;
    QTest::newRow("a list") << QByteArray("[1]") << true;
    QTest::newRow("no key of ours") << QByteArray("{}") << true;
}

void DocumentFileTest::strangeContent()
{
    QFETCH(QByteArray, bytes);
    QFETCH(bool, isLoaded);
    QVERIFY(makeFileSet(QStringLiteral("-g")));
    QVERIFY(writeFile(path(), bytes));
    const QByteArray digest = QCryptographicHash::hash(bytes, QCryptographicHash::Sha1).toHex();
    QVERIFY(writeFile(path() + QStringLiteral(".sha1"), "\\" + digest)); // as for a name with a backslash
    if (!isLoaded) {
        expectWarning(QStringLiteral("Document file .* offset"));
    }
    // Contract: the document is reset whether it is JSON or not, and the good backup is not asked.
    TextPrinterDocument document = documentOf(99);
    QCOMPARE(document.loadFromFile(path()), isLoaded);
    TextPrinterDocument reset;
    reset.setDoInit(false);
    QCOMPARE(document, reset);
}

void DocumentFileTest::hugeFiles_data()
{
    QTest::addColumn<qint64>("size");
    QTest::addColumn<QString>("warning");

    QTest::newRow("of the limit") << LargestBytes << "does not fit its checksum";
    QTest::newRow("over the limit") << LargestBytes + 1 << "larger than 64 MiB";
    QTest::newRow("over every memory") << (qint64(1) << 40) << "larger than 64 MiB";
}

void DocumentFileTest::hugeFiles()
{
    QFETCH(qint64, size);
    QFETCH(QString, warning);
    QVERIFY(makeFileSet(QStringLiteral("gg")));
    QVERIFY(QFile::resize(path(), size)); // sparse: it takes no room
    expectWarning(warning);
    QCOMPARE(loadedNumber(), 2);
}

// What could not be read again is not written.
void DocumentFileTest::hugeSave()
{
    QVERIFY(makeFileSet(QStringLiteral("g-")));
    expectCritical(QStringLiteral("Cannot write .* of more than 64 MiB"));
    QVERIFY(!printsrv::guardedfile::save(path(), QByteArray(int(LargestBytes) + 1, ' '), ShortTimeoutMs));
    QCOMPARE(loadedNumber(), 1);
    QVERIFY(!QFileInfo::exists(path() + QStringLiteral(".bak")));
}

QTEST_GUILESS_MAIN(DocumentFileTest)
#include "tst_documentfile.moc"
