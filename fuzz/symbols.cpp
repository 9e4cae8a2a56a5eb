// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "support.h"
#include "targets.h"

#include <specialcharacters.h>

#include <sys/mman.h>
#include <unistd.h>

namespace {

// To draw a symbol, all sizes of it are looked at.
constexpr int MostDrawn = 1000;

/** A file without a place on a disk, for readers that take a path. */
class MemoryFile
{
public:
    MemoryFile()
        : m_descriptor(memfd_create("input", MFD_CLOEXEC))
    {
    }

    ~MemoryFile()
    {
        close(m_descriptor);
    }
    Q_DISABLE_COPY_MOVE(MemoryFile)

    bool setContent(const QByteArray &content) const
    {
        return ftruncate(m_descriptor, 0) == 0
            && pwrite(m_descriptor, content.constData(), size_t(content.size()), 0) == content.size();
    }

    QString path() const
    {
        return QStringLiteral("/proc/self/fd/%1").arg(m_descriptor);
    }

private:
    int m_descriptor;
};

} // namespace

void fuzz::symbols(const QByteArray &input)
{
    const LogCount log;
    static const MemoryFile file;
    require(file.setContent(input), "the input can be kept in a file");
    SpecialCharacters characters;
    characters.load(file.path());
    require(log.lines() <= 1, "a symbol file is complained of once");
    const auto images = characters.images();
    for (auto image = images.cbegin(); image != images.cend(); ++image) {
        const auto rowBytes = (qint64(image->width()) + 7) / 8;
        require(image->isValid() && image->image().size() == rowBytes * image->height(), "a symbol has all its dots");
        const bool isDrawn = images.size() > MostDrawn
            || !characters.getPngImage(image.key(), image->width(), image->height()).isNull();
        require(isDrawn, "a symbol can be drawn");
    }
}
