// SPDX-License-Identifier: Apache-2.0
// Whatever an archive of scripts holds: nothing appears outside the folder that it is unpacked to.
#include "hosttools/base/Error.h"
#include "hosttools/base/Files.h"
#include "hosttools/flatpkg/Cpio.h"

#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <sys/mman.h>
#include <unistd.h>

using namespace FlatPkg;
namespace fs = std::filesystem;

namespace {

/// A folder in a folder, removed at the end; whatever lies beside the inner one has escaped.
class Cage
{
public:
    Cage()
    {
        // In memory where that is possible: removing thousands of files keeps a disk busy.
        const fs::path place = access("/dev/shm", W_OK) == 0 ? "/dev/shm" : fs::temp_directory_path();
        std::string pattern = (place / "fuzz-cpio-XXXXXX").string();
        m_outer = mkdtemp(pattern.data());
    }
    ~Cage() { fs::remove_all(m_outer); }

    fs::path renewedInner() const
    {
        const fs::path inner = m_outer / "inner";
        fs::remove_all(inner);
        fs::create_directory(inner);
        return inner;
    }
    bool isTight() const
    {
        return std::distance(fs::directory_iterator(m_outer), fs::directory_iterator()) == 1;
    }

private:
    fs::path m_outer;
};

FileDescriptor inMemory(const unsigned char *bytes, std::size_t count)
{
    FileDescriptor file(memfd_create("archive", MFD_CLOEXEC));
    writeAll(file.get(), reinterpret_cast<const char *>(bytes), static_cast<qint64>(count), 0);
    return file;
}

bool leadsOutside(const fs::directory_entry &entry, const fs::path &root)
{
    if (!entry.is_symlink())
        return false;
    std::error_code circular;
    const fs::path target = fs::weakly_canonical(entry.path(), circular);
    return !circular && target.string().compare(0, root.string().size(), root.string()) != 0;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *bytes, std::size_t count)
{
    static const Cage cage;
    const fs::path inner = cage.renewedInner();
    const FileDescriptor folder = openFolder(inner.c_str());
    try {
        unpackCpio(inMemory(bytes, count).get(), folder.get());
    } catch (const Error &) { // refused; what was made until then must be as harmless
    }
    if (!cage.isTight())
        std::abort();
    for (const fs::directory_entry &entry : fs::recursive_directory_iterator(inner))
        if (leadsOutside(entry, fs::canonical(inner)))
            std::abort();
    return 0;
}
