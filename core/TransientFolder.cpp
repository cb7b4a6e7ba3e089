// SPDX-License-Identifier: Apache-2.0
#include "core/TransientFolder.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <mutex>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr int passesAtMost = 100'000;

std::mutex &registryMutex()
{
    static std::mutex mutex;
    return mutex;
}

std::vector<TransientFolder *> &registry()
{
    static std::vector<TransientFolder *> folders;
    return folders;
}

QByteArray randomName(const QString &prefix)
{
    static const char letters[] = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
    QByteArray name = QFile::encodeName(prefix);
    for (int i = 0; i < 6; ++i)
        name += letters[QRandomGenerator::system()->bounded(int(sizeof letters) - 1)];
    return name;
}

/// An open folder and its names; takes the descriptor over.
class Listing
{
public:
    explicit Listing(int descriptor)
        : m_stream(::fdopendir(descriptor))
    {
        if (!m_stream && descriptor >= 0)
            ::close(descriptor);
    }
    ~Listing()
    {
        if (m_stream)
            ::closedir(m_stream);
    }
    Listing(const Listing &) = delete;
    Listing &operator=(const Listing &) = delete;

    int descriptor() const { return ::dirfd(m_stream); }

    std::vector<QByteArray> names() const
    {
        std::vector<QByteArray> found;
        while (const dirent *entry = m_stream ? ::readdir(m_stream) : nullptr) {
            const QByteArray name(entry->d_name);
            if (name != "." && name != "..")
                found.push_back(name);
        }
        return found;
    }

private:
    DIR *m_stream;
};

bool isFolder(int folder, const QByteArray &name)
{
    struct stat status = {};
    return ::fstatat(folder, name.constData(), &status, AT_SYMLINK_NOFOLLOW) == 0 && S_ISDIR(status.st_mode);
}

int openFolder(int folder, const char *name)
{
    return ::openat(folder, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
}

/// Removes all in a folder with one more descriptor, however deep it is: what a subfolder holds is moved
/// up and comes in a later turn.
class Removal
{
public:
    explicit Removal(int folder)
        : m_folder(folder)
    {
    }

    void run()
    {
        std::vector<QByteArray> names = namesLeft();
        for (int pass = 0; !names.empty() && pass < passesAtMost; ++pass) {
            for (const QByteArray &name : names)
                removeEntry(name);
            std::vector<QByteArray> left = namesLeft();
            if (left == names)
                return;
            names = std::move(left);
        }
    }

private:
    std::vector<QByteArray> namesLeft() const
    {
        std::vector<QByteArray> names = Listing(openFolder(m_folder, ".")).names();
        std::sort(names.begin(), names.end());
        return names;
    }

    void removeEntry(const QByteArray &name)
    {
        if (!isFolder(m_folder, name)) {
            ::unlinkat(m_folder, name.constData(), 0);
            return;
        }
        if (::unlinkat(m_folder, name.constData(), AT_REMOVEDIR) == 0)
            return;
        empty(name);
        ::unlinkat(m_folder, name.constData(), AT_REMOVEDIR);
    }

    /// A package may hold folders that even their owner cannot change.
    void empty(const QByteArray &name)
    {
        ::fchmodat(m_folder, name.constData(), S_IRWXU, 0);
        const Listing subfolder(openFolder(m_folder, name.constData()));
        for (const QByteArray &entry : subfolder.names()) {
            if (isFolder(subfolder.descriptor(), entry))
                moveUp(subfolder.descriptor(), entry);
            else
                ::unlinkat(subfolder.descriptor(), entry.constData(), 0);
        }
    }

    void moveUp(int subfolder, const QByteArray &name)
    {
        ::fchmodat(subfolder, name.constData(), S_IRWXU, 0);
        const QByteArray unused = "moved-up-" + QByteArray::number(++m_movedUp);
        ::renameat(subfolder, name.constData(), m_folder, unused.constData());
    }

    int m_folder;
    int m_movedUp = 0;
};

} // namespace

TransientFolder::TransientFolder(const HeldFolder &parent, const QString &prefix)
    : m_parent(parent)
    , m_made(parent.opened())
{
    const std::lock_guard<std::mutex> lock(registryMutex());
    if (m_made)
        m_made = make(prefix);
    if (m_made)
        m_made = open();
    if (m_made)
        registry().push_back(this);
}

TransientFolder::TransientFolder(const QString &prefix)
    : TransientFolder(HeldFolder(temporaryPath()), prefix)
{
}

TransientFolder::~TransientFolder()
{
    if (!m_made)
        return;
    const std::lock_guard<std::mutex> lock(registryMutex());
    registry().erase(std::remove(registry().begin(), registry().end(), this), registry().end());
    remove();
}

/// Qt takes the top folder of the file system when TMPDIR leads nowhere; we want to hear of it.
QString TransientFolder::temporaryPath()
{
    const QString configured = qEnvironmentVariable("TMPDIR");
    return configured.isEmpty() ? QDir::tempPath() : configured;
}

void TransientFolder::removeAllAtTheEnd()
{
    registryMutex().lock();
    for (TransientFolder *folder : registry())
        folder->remove();
}

QString TransientFolder::path() const
{
    return m_parent.path() + QLatin1Char('/') + QFile::decodeName(m_name);
}

QString TransientFolder::filePath(const QString &name) const
{
    return m_made ? path() + QLatin1Char('/') + name : QString();
}

Result<> TransientFolder::make(const QString &prefix)
{
    int made = -1;
    do {
        m_name = randomName(prefix);
        made = ::mkdirat(m_parent.descriptor(), m_name.constData(), S_IRWXU);
    } while (made != 0 && errno == EEXIST);
    return made == 0 ? Result<>() : failure();
}

Result<> TransientFolder::open()
{
    m_descriptor = openFolder(m_parent.descriptor(), m_name.constData());
    m_spare = m_descriptor >= 0 ? ::fcntl(m_descriptor, F_DUPFD_CLOEXEC, 0) : -1;
    if (m_spare >= 0)
        return {};
    const Problem problem = failure();
    if (m_descriptor >= 0)
        ::close(m_descriptor);
    m_descriptor = -1;
    ::unlinkat(m_parent.descriptor(), m_name.constData(), AT_REMOVEDIR);
    return problem;
}

void TransientFolder::remove()
{
    ::close(m_spare);
    Removal(m_descriptor).run();
    ::close(m_descriptor);
    m_descriptor = -1;
    ::unlinkat(m_parent.descriptor(), m_name.constData(), AT_REMOVEDIR);
}

Problem TransientFolder::failure() const
{
    return {m_parent.path(), QString::fromLocal8Bit(std::strerror(errno))};
}
