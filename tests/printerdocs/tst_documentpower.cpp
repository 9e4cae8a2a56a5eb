// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "mountedfolder.h"
#include "numbereddocument.h"
#include "testfixture.h"

#include <QRandomGenerator>

#include <csignal>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>

// Cuts a disk off from power while documents are saved on it, at random moments, also just after a saver was killed and
// another one began: what loads when the disk is back is the last document whose save was answered or a later one.
// PRINTSRV_POWER_CUTS sets how often. Where no disk image can be mounted the program says so and tests nothing.

namespace {

constexpr int UsualCuts = 40;
constexpr unsigned long LongestLifeUs = 1000000;
constexpr quint64 ImageBytes = 16 * 1024 * 1024;
constexpr quint32 NoLogFlush = 2; // EXT4_GOING_FLAGS_NOLOGFLUSH
const unsigned long Shutdown = _IOR('X', 125, quint32); // EXT4_IOC_SHUTDOWN

bool run(const QString &program, const QStringList &arguments)
{
    return QProcess::execute(program, arguments) == 0;
}

// The disk: an image with ext4 that trusts programs to sync what they rename, and commits often.
class Disk
{
public:
    bool make()
    {
        QFile file(image());
        return file.open(QIODevice::WriteOnly) && file.resize(ImageBytes) && QDir().mkdir(path())
            && run(QStringLiteral("mkfs.ext4"), {QStringLiteral("-q"), image()}) && turnOn();
    }

    bool turnOn() const
    {
        return run(QStringLiteral("mount"),
                   {QStringLiteral("-o"), QStringLiteral("loop,commit=1,noauto_da_alloc"), image(), path()});
    }

    bool cutPower() const
    {
        quint32 flags = NoLogFlush;
        const int folder = open(QFile::encodeName(path()).constData(), O_RDONLY | O_CLOEXEC);
        const bool isCut = folder >= 0 && ioctl(folder, Shutdown, &flags) == 0;
        close(folder);
        return isCut;
    }

    bool turnOff() const
    {
        return QTest::qWaitFor([this] { return umount2(QFile::encodeName(path()).constData(), 0) == 0; });
    }

    QString path() const
    {
        return m_folder.filePath(QStringLiteral("disk"));
    }

private:
    QString image() const
    {
        return m_folder.filePath(QStringLiteral("image"));
    }

    QTemporaryDir m_folder;
};

// A process that saves documents of following numbers until it is killed or the disk fails.
class Saver
{
public:
    Saver(const QString &path, int number)
        : m_answered(number)
        , m_isStarted(pipe2(m_pipe, O_CLOEXEC) == 0)
        , m_process(fork())
    {
        if (m_process == 0) {
            setpgid(0, 0);
            while (numberedDocument(++number).saveToFile(path) && write(m_pipe[1], &number, sizeof number) > 0) { }
            _exit(EXIT_SUCCESS);
        }
        setpgid(m_process, m_process);
        close(m_pipe[1]);
    }

    // Kills it with all that it started; the number of its last save that was answered, the one given when none was.
    int end()
    {
        kill(-m_process, SIGKILL);
        waitpid(m_process, nullptr, 0);
        for (int number = 0; read(m_pipe[0], &number, sizeof number) == sizeof number;) {
            m_answered = number;
        }
        close(m_pipe[0]);
        return m_answered;
    }

    bool isStarted() const
    {
        return m_isStarted && m_process > 0;
    }

private:
    int m_answered;
    int m_pipe[2];
    bool m_isStarted;
    pid_t m_process;
};

int cuts()
{
    const int wanted = qEnvironmentVariableIntValue("PRINTSRV_POWER_CUTS");
    return wanted > 0 ? wanted : UsualCuts;
}

} // namespace

class DocumentPowerTest : public TestFixture
{
    Q_OBJECT

public:
    explicit DocumentPowerTest(const Disk &disk)
        : m_disk(disk)
        , m_path(disk.path() + QStringLiteral("/document.json"))
    {
    }

private Q_SLOTS:
    void initTestCase();
    void powerCuts();

private:
    int loaded() const;

    const Disk &m_disk;
    QTemporaryDir m_programs;
    QString m_path;
};

// Other disks need not be synced with this one.
void DocumentPowerTest::initTestCase()
{
    QFile sync(m_programs.filePath(QStringLiteral("sync")));
    QVERIFY(sync.open(QIODevice::WriteOnly));
    sync.write("#!/bin/sh\nexec /bin/sync -f " + QFile::encodeName(m_disk.path()) + " 2>/dev/null\n");
    QVERIFY(sync.setPermissions(QFile::ReadOwner | QFile::ExeOwner));
    qputenv("PATH", QFile::encodeName(m_programs.path()) + ':' + qgetenv("PATH"));
    QLoggingCategory::setFilterRules(QStringLiteral("printsrv.printerdocs=false"));
}

int DocumentPowerTest::loaded() const
{
    TextPrinterDocument document;
    const bool isLoaded = document.loadFromFile(m_path);
    const int number = document.symbolsPerLine();
    return isLoaded && document == numberedDocument(number) ? number : -1;
}

void DocumentPowerTest::powerCuts()
{
    QRandomGenerator random(20261123);
    QVERIFY(numberedDocument(1).saveToFile(m_path));
    int number = 1;
    for (int i = 0; i < cuts(); ++i) {
        int kept = number; // this one or a later one must load
        int newest = number;
        for (int lives = random.bounded(1, 4); lives > 0; --lives) {
            Saver saver(m_path, number);
            QVERIFY(saver.isStarted());
            QThread::usleep(random.bounded(quint32(LongestLifeUs)) / quint32(lives * lives));
            QVERIFY(lives > 1 || m_disk.cutPower());
            const int answered = saver.end();
            kept = answered > number ? answered : kept;
            newest = answered + 1;
            if (lives > 1) {
                number = loaded();
                QVERIFY2(number == answered || number == newest,
                         qPrintable(QStringLiteral("kill: loaded %1 after %2").arg(number).arg(answered)));
            }
        }
        QVERIFY(m_disk.turnOff() && m_disk.turnOn());
        number = loaded();
        QVERIFY2(kept <= number && number <= newest,
                 qPrintable(QStringLiteral("cut %1: loaded %2 after %3").arg(i).arg(number).arg(kept)));
    }
    qInfo("%d power cuts, last document %d", cuts(), number);
    QVERIFY2(number > cuts() / 4, "hardly a save was complete");
}

int main(int argc, char **argv)
{
    Disk disk;
    if (!hasOwnMounts() || !disk.make()) {
        return skipped("this process may not mount a disk image");
    }
    DocumentPowerTest test(disk);
    const int result = QTest::qExec(&test, argc, argv);
    disk.turnOff();
    return result;
}

#include "tst_documentpower.moc"
