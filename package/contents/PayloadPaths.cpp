// SPDX-License-Identifier: Apache-2.0
#include "package/contents/PayloadPaths.h"

#include "package/contents/CpioReader.h"
#include "package/contents/Unpacking.h"

namespace {

constexpr qint64 mostBytes = 32LL * 1024 * 1024 * 1024;
constexpr int mostPaths = 500 * 1000;

bool isPayload(const ContentsEntry &entry)
{
    return entry.isFile() && entry.path.section(QLatin1Char('/'), -1) == QLatin1String("Payload");
}

/// Adds the paths in one payload.
Result<> addPaths(Bytes payload, qint64 *room, QStringList *paths)
{
    CpioReader reader(unpackedArchive(std::move(payload)));
    for (;;) {
        const Result<std::optional<CpioMember>> member = reader.next();
        if (!member)
            return member.problem();
        if (!*member)
            return {};
        *room -= (*member)->size;
        if (*room < 0 || paths->size() == mostPaths)
            return Problem{{}, QStringLiteral("holds more than a payload can")};
        paths->append((*member)->path());
    }
}

} // namespace

Result<QStringList> payloadPaths(const TableOfContents &table)
{
    QStringList paths;
    qint64 room = mostBytes;
    bool isThere = false;
    for (const ContentsEntry &entry : table.entries) {
        if (!isPayload(entry))
            continue;
        isThere = true;
        if (const Result<> added = addPaths(table.bytesOf(entry), &room, &paths); !added)
            return Problem{table.package, entry.path + QLatin1Char(' ') + added.problem().text};
    }
    return isThere ? Result<QStringList>(paths) : Problem{table.package, QStringLiteral("has no payload")};
}
