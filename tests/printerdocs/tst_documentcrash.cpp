// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "foldercontent.h"
#include "numbereddocument.h"
#include "testfixture.h"
#include "tracedchild.h"

#include <csignal>
#include <sys/resource.h>
#include <unistd.h>

// Saves a document in a child process that is killed before each of its system calls, or whose calls fail: what loads
// afterwards is the document before or the new one. With PRINTSRV_SOAK set everything is tried, otherwise a kill at
// every second call, fewer under sanitizers, and a part of the rest.

namespace {

constexpr uid_t Nobody = 65534;
constexpr int Before = 1; // the number of the document that loads at first
constexpr int Saved = 2; // of the one that is being saved
constexpr int SavedNext = 3; // of the one that is saved after a kill
constexpr int Older = 9;

bool isSoak()
{
    return !qEnvironmentVariableIsEmpty("PRINTSRV_SOAK");
}

// How far apart the tries stand: 1 where everything is tried.
int stride(int usual)
{
#ifdef __SANITIZE_ADDRESS__
    constexpr int Slowness = 4;
#else
    constexpr int Slowness = 1;
#endif
    return isSoak() ? 1 : usual * Slowness;
}

QVector<Fault::EKind> killsAt(int call)
{
    if (isSoak()) {
        return {Fault::Kill, Fault::KillAll};
    }
    return {call % 3 == 0 ? Fault::Kill : Fault::KillAll};
}

// Lets children that are ordinary users use a folder and own its files, as far as we may give them.
void share(const QString &path)
{
    const QDir folder(path);
    const QStringList names = folder.entryList(QDir::Files | QDir::Hidden);
    for (const QString &name : names) {
        const bool isDone = chown(QFile::encodeName(folder.filePath(name)).constData(), Nobody, Nobody) == 0;
        Q_UNUSED(isDone);
    }
    QFile::setPermissions(path, QFile::Permissions(0x7777));
}

void limit(__rlimit_resource_t resource, rlim_t most)
{
    const rlimit both{most, most};
    setrlimit(resource, &both);
}

void leaveDescriptors(int count)
{
    const int lowest = dup(STDOUT_FILENO);
    close(lowest);
    limit(RLIMIT_NOFILE, rlim_t(lowest + count));
}

// Nothing when the tests run as an ordinary user, who cannot become another one.
void becomeNobody()
{
    const bool isDone = setgid(Nobody) == 0 && setuid(Nobody) == 0;
    Q_UNUSED(isDone);
}

} // namespace

using Circumstance = std::function<void()>;
Q_DECLARE_METATYPE(Circumstance)

class DocumentCrashTest : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanupTestCase();
    void kills_data();
    void kills();
    void killsInARow_data();
    void killsInARow();
    void failingCalls_data();
    void failingCalls();
    void circumstances_data();
    void circumstances();

private:
    ChildEnd save(int number, const Fault &fault = {}) const;
    int loaded() const;
    FolderContent start(const QString &state);
    FolderContent folder() const;
    QByteArray problemAfter(const FolderContent &start, const Fault &fault, int number) const;
    bool isSavedAgain() const;

    QScopedPointer<QTemporaryDir> m_folder;
    QTemporaryDir m_programs;
    QString m_path;
    std::function<void()> m_beforeSave;
};

// The disk is not cut off from power here, so that nothing needs to be synced.
void DocumentCrashTest::initTestCase()
{
    const auto link = [this](const char *program, const char *name) {
        return QFile::link(QStandardPaths::findExecutable(QString::fromLatin1(program)),
                           m_programs.filePath(QString::fromLatin1(name)));
    };
    QVERIFY(link("sha1sum", "sha1sum") && link("true", "sync"));
    share(m_programs.path());
    qputenv("PATH", QFile::encodeName(m_programs.path()));
    QLoggingCategory::setFilterRules(QStringLiteral("printsrv.printerdocs=false"));
}

void DocumentCrashTest::init()
{
    m_folder.reset(new QTemporaryDir);
    QVERIFY(m_folder->isValid());
    m_path = m_folder->filePath(QStringLiteral("document.json"));
    m_beforeSave = [] {
    };
    TestFixture::init();
}

void DocumentCrashTest::cleanupTestCase()
{
    QLoggingCategory::setFilterRules(QString());
}

ChildEnd DocumentCrashTest::save(int number, const Fault &fault) const
{
    const TextPrinterDocument document = numberedDocument(number);
    return runTraced(
        [&] {
            m_beforeSave();
            return document.saveToFile(m_path);
        },
        fault);
}

// The number of the document that loads; 0 when none does, -1 when it is not the document of its number.
int DocumentCrashTest::loaded() const
{
    TextPrinterDocument document;
    if (!document.loadFromFile(m_path)) {
        return 0;
    }
    const int number = document.symbolsPerLine();
    return document == numberedDocument(number) ? number : -1;
}

FolderContent DocumentCrashTest::folder() const
{
    return readFolder(m_folder->path());
}

// Makes file sets from which the document "Before" loads.
FolderContent DocumentCrashTest::start(const QString &state)
{
    const QString backup = QStringLiteral("document.json.bak");
    save(Older);
    const FolderContent older = folder();
    save(Before);
    FolderContent content = folder();
    if (state == QStringLiteral("main damaged")) {
        content[QStringLiteral("document.json")] += ' ';
    } else if (state == QStringLiteral("backup damaged")) {
        content[backup].chop(1);
    } else if (state == QStringLiteral("backup missing")) {
        content.remove(backup);
    } else if (state == QStringLiteral("backup older")) {
        content[backup] = older[backup];
        content[backup + QStringLiteral(".sha1")] = older[backup + QStringLiteral(".sha1")];
    }
    return content;
}

void DocumentCrashTest::kills_data()
{
    QTest::addColumn<QString>("state");

    for (const char *state : {"both good", "backup damaged", "backup missing", "backup older", "main damaged"}) {
        QTest::newRow(state) << QString::fromLatin1(state);
    }
}

// Strikes the saver of a document; empty when the document before or that one loads then, and that one when the saver
// said so.
QByteArray DocumentCrashTest::problemAfter(const FolderContent &start, const Fault &fault, int number) const
{
    if (!writeFolder(m_folder->path(), start)) {
        return "the folder cannot be written";
    }
    share(m_folder->path());
    const int before = loaded();
    const ChildEnd end = save(number, fault);
    const int after = loaded();
    const bool isKill = fault.kind == Fault::Kill || fault.kind == Fault::KillAll;
    const bool isGood = after == number || (after == before && !end.answer);
    if (isGood && end.signal == (isKill && end.isStruck ? SIGKILL : 0)) {
        return {};
    }
    return QStringLiteral("fault %1, call %2 of %3, error %4: signal %5, answer %6, loaded %7 after %8")
        .arg(fault.kind)
        .arg(fault.call)
        .arg(end.calls)
        .arg(fault.error)
        .arg(end.signal)
        .arg(end.answer)
        .arg(after)
        .arg(before)
        .toUtf8();
}

// Whether the next save is complete and what a killed one left is gone.
bool DocumentCrashTest::isSavedAgain() const
{
    return save(SavedNext).answer && loaded() == SavedNext && folder().size() == 4;
}

void DocumentCrashTest::kills()
{
    QFETCH(QString, state);
    const FolderContent content = start(state);
    QVERIFY(writeFolder(m_folder->path(), content));
    QCOMPARE(loaded(), Before);
    const int calls = save(Saved).calls;
    for (int call = 1; call <= calls; call += stride(2)) {
        const auto kinds = killsAt(call);
        for (const Fault::EKind kind : kinds) {
            const QByteArray problem = problemAfter(content, {kind, call, 0}, Saved);
            QVERIFY2(problem.isEmpty(), problem.constData());
        }
        QVERIFY2(call % stride(9) != 0 || isSavedAgain(), qPrintable(QString::number(call)));
    }
    qInfo("%d calls", calls);
}

void DocumentCrashTest::killsInARow_data()
{
    kills_data();
}

void DocumentCrashTest::killsInARow()
{
    QFETCH(QString, state);
    const FolderContent content = start(state);
    QVERIFY(writeFolder(m_folder->path(), content));
    const int calls = save(Saved).calls;
    const int step = stride(29);
    QVector<FolderContent> tried;
    for (int first = 1; first <= calls; first += step) {
        QVERIFY(writeFolder(m_folder->path(), content));
        save(Saved, {Fault::KillAll, first, 0});
        const FolderContent left = folder();
        if (tried.contains(left)) {
            continue; // the next save would do the same again
        }
        tried.append(left);
        const int nextCalls = save(SavedNext).calls;
        for (int second = 1 + first % step; second <= nextCalls; second += step) {
            const QByteArray problem = problemAfter(left, {Fault::KillAll, second, 0}, SavedNext);
            QVERIFY2(problem.isEmpty(), (problem + " after a kill at " + QByteArray::number(first)).constData());
        }
    }
    qInfo("%d folders that a kill leaves, %d calls", tried.size(), calls);
}

void DocumentCrashTest::failingCalls_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<Circumstance>("user");

    QTest::newRow("once") << int(Fault::FailOnce) << Circumstance([] {});
    QTest::newRow("for ever") << int(Fault::FailForEver) << Circumstance([] {});
    QTest::newRow("for ever, ordinary user") << int(Fault::FailForEver) << Circumstance(becomeNobody);
}

void DocumentCrashTest::failingCalls()
{
    QFETCH(int, kind);
    QFETCH(Circumstance, user);
    constexpr std::array Errors{ENOSPC, EIO, EMFILE, EROFS};
    const int step = stride(int(Errors.size()));
    const FolderContent content = start(QStringLiteral("backup missing")); // so that every part of a save has work
    m_beforeSave = user;
    const int calls = save(Saved).calls;
    for (int call = 1; call <= calls; ++call) {
        for (int error = call % step; error < int(Errors.size()); error += step) {
            const QByteArray problem = problemAfter(content, {Fault::EKind(kind), call, Errors.at(error)}, Saved);
            QVERIFY2(problem.isEmpty(), problem.constData());
        }
    }
    m_beforeSave = [] {
    };
    QVERIFY(isSavedAgain());
}

void DocumentCrashTest::circumstances_data()
{
    QTest::addColumn<Circumstance>("circumstance");
    QTest::addColumn<bool>("isSaved");

    const auto row = [](const char *name, bool isSaved, const Circumstance &circumstance) {
        QTest::newRow(name) << circumstance << isSaved;
    };
    row("ordinary user", true, becomeNobody);
    row("SIGCHLD ignored", true, [] { std::signal(SIGCHLD, SIG_IGN); });
    row("descriptors 0 to 2 closed", true, [] { close_range(STDIN_FILENO, STDERR_FILENO, 0); });
    row("eight descriptors left", true, [] { leaveDescriptors(8); });
    row("two descriptors left", true, [] { leaveDescriptors(2); });
    row("one descriptor left", false, [] { leaveDescriptors(1); });
    row("none left", false, [] { leaveDescriptors(0); });
    row("no programs", true, [] { qputenv("PATH", "/nowhere"); });
    row("no more processes", true, [] {
        limit(RLIMIT_NPROC, 0);
        becomeNobody();
    });
    row("no file may grow", false, [] {
        std::signal(SIGXFSZ, SIG_IGN);
        limit(RLIMIT_FSIZE, 0);
    });
}

void DocumentCrashTest::circumstances()
{
    QFETCH(Circumstance, circumstance);
    QFETCH(bool, isSaved);
    QVERIFY(writeFolder(m_folder->path(), start(QStringLiteral("backup older"))));
    share(m_folder->path());
    m_beforeSave = circumstance;
    const ChildEnd end = save(Saved);
    QCOMPARE(end.signal, 0);
    QCOMPARE(end.answer, isSaved);
    QCOMPARE(loaded(), isSaved ? Saved : Before);
    m_beforeSave = [] {
    };
    QVERIFY(isSavedAgain());
}

// No application object: the library needs none to save.
int main(int argc, char **argv)
{
    return runApart([=] {
        DocumentCrashTest test;
        return QTest::qExec(&test, argc, argv);
    });
}

#include "tst_documentcrash.moc"
