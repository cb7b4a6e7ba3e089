// SPDX-License-Identifier: Apache-2.0
#include "hosttools/flatpkg/ExtendedAttribute.h"

#include <array>
#include <sys/xattr.h>

namespace FlatPkg {

namespace {

// ext4 keeps all attributes of a file in one block of this size.
constexpr size_t largestValue = 4096;

} // namespace

void setExtendedAttribute(int fd, const QByteArray &name, const QByteArray &value)
{
    const auto size = static_cast<size_t>(value.size());
    if (fsetxattr(fd, name.constData(), value.constData(), size, 0) != 0)
        fremovexattr(fd, name.constData()); // rather none than an outdated one
}

std::optional<QByteArray> extendedAttribute(int fd, const QByteArray &name)
{
    std::array<char, largestValue> value;
    const ssize_t size = fgetxattr(fd, name.constData(), value.data(), value.size());
    if (size < 0)
        return std::nullopt;
    return QByteArray(value.data(), static_cast<int>(size));
}

} // namespace FlatPkg
