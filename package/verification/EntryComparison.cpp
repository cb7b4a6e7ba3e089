// SPDX-License-Identifier: Apache-2.0
#include "package/verification/EntryComparison.h"

#include <QFileInfo>
#include <QHash>
#include <QMap>
#include <QSet>

#include <future>

namespace {

using EntriesByPath = QMap<QString, const ContentsEntry *>;

/// The same path twice is for one of the two readers of a package to choose from.
EntriesByPath byPath(const TableOfContents &table, const QString &whose, Deviations *findings)
{
    EntriesByPath entries;
    for (const ContentsEntry &entry : table.entries) {
        if (entries.contains(entry.path))
            findings->append({QStringLiteral("entry-twice"), entry.path,
                              QStringLiteral("stands twice in the table of %1").arg(whose)});
        entries.insert(entry.path, &entry);
    }
    return entries;
}

/// A pair of entries with one path whose bytes are to be the same, and the kind of checksum to tell by.
struct Pair
{
    const ContentsEntry *vendor;
    const ContentsEntry *result;
    QByteArray style;
};

using Digests = QHash<QString, Checksum>; ///< by path; none for what cannot be read

/// Entries that share their bytes are read once, so that many of them cost no more than one.
Digests digestsOf(const TableOfContents &table, const QList<Pair> &pairs, const ContentsEntry *Pair::*side)
{
    Digests digests;
    QHash<QString, Checksum> read;
    for (const Pair &pair : pairs) {
        const ContentsEntry &entry = *(pair.*side);
        const QString place = QStringLiteral("%1 %2 %3 %4 %5")
                                  .arg(entry.offset)
                                  .arg(entry.length)
                                  .arg(entry.size)
                                  .arg(entry.encoding, QString::fromLatin1(pair.style));
        if (!read.contains(place)) {
            const auto digest = digestOf(*table.bytesOf(entry), pair.style, entry.size);
            read.insert(place, digest && digest->size == entry.size ? digest->checksum : Checksum());
        }
        if (const Checksum checksum = read.value(place); !checksum.style.isEmpty())
            digests.insert(entry.path, checksum);
    }
    return digests;
}

/// Places that overlap are no saving of room but a way to make a reader busy.
bool overlap(const TableOfContents &table)
{
    QSet<QPair<qint64, qint64>> places;
    qint64 total = 0;
    for (const ContentsEntry &entry : table.entries) {
        const QPair<qint64, qint64> place(entry.offset, entry.length);
        if (places.contains(place))
            continue;
        places.insert(place);
        total += entry.length;
        if (total > QFileInfo(table.package).size())
            return true;
    }
    return false;
}

class Comparison
{
public:
    Comparison(const TableOfContents &vendor, const TableOfContents &result, Depth depth);

    Deviations run();

private:
    bool haveOneOwner() const;
    void compare(const ContentsEntry &vendor, const ContentsEntry &result);
    void compareOwners(const ContentsEntry &vendor, const ContentsEntry &result);
    void compareBytes();
    bool mustRead(const Pair &pair) const;
    void judgeBytes(const Pair &pair, const Checksum &wanted, const Checksum &found);
    void add(const char *code, const QString &entry, const QString &text)
    {
        m_findings.append({QString::fromLatin1(code), entry, text});
    }

    const TableOfContents &m_vendor;
    const TableOfContents &m_result;
    Depth m_depth;
    Deviations m_findings;
    QList<Pair> m_pairs;
    bool m_hasOneOwner;
};

Comparison::Comparison(const TableOfContents &vendor, const TableOfContents &result, Depth depth)
    : m_vendor(vendor)
    , m_result(result)
    , m_depth(depth)
    , m_hasOneOwner(haveOneOwner())
{
}

bool Comparison::haveOneOwner() const
{
    for (const ContentsEntry &entry : m_result.entries) {
        if (entry.uid != m_result.entries.first().uid || entry.gid != m_result.entries.first().gid)
            return false;
    }
    return true;
}

Deviations Comparison::run()
{
    const EntriesByPath vendor = byPath(m_vendor, QStringLiteral("the vendor's package"), &m_findings);
    const EntriesByPath result = byPath(m_result, QStringLiteral("the result"), &m_findings);
    for (const ContentsEntry *entry : vendor) {
        if (!result.contains(entry->path))
            add("entry-removed", entry->path, QStringLiteral("is missing"));
        else
            compare(*entry, *result.value(entry->path));
    }
    for (const ContentsEntry *entry : result) {
        if (!vendor.contains(entry->path))
            add("entry-added", entry->path, QStringLiteral("is not in the vendor's package"));
    }
    if (overlap(m_vendor) || overlap(m_result))
        add("entries-overlap", {}, QStringLiteral("entries lie on top of each other"));
    else
        compareBytes();
    return m_findings;
}

void Comparison::compare(const ContentsEntry &vendor, const ContentsEntry &result)
{
    if (vendor.type != result.type) {
        add("entry-type", vendor.path,
            QStringLiteral("is a %1 instead of a %2").arg(result.type, vendor.type));
        return;
    }
    if (vendor.isScripts())
        return;
    if (vendor.mode && vendor.mode != result.mode)
        add("entry-mode", vendor.path,
            QStringLiteral("has the mode %1 instead of %2")
                .arg(result.mode.value_or(0), 4, 8, QLatin1Char('0'))
                .arg(*vendor.mode, 4, 8, QLatin1Char('0')));
    compareOwners(vendor, result);
    if (vendor.target != result.target)
        add("entry-target", vendor.path,
            QStringLiteral("leads to \"%1\" instead of \"%2\"").arg(result.target, vendor.target));
    if (vendor.size != result.size)
        add("entry-size", vendor.path,
            QStringLiteral("has %1 bytes instead of %2").arg(result.size).arg(vendor.size));
    else if (vendor.isFile() && (vendor.length > 0 || result.length > 0))
        m_pairs.append(
            {&vendor, &result, vendor.checksum.isKnown() ? vendor.checksum.style : QByteArray("sha256")});
}

void Comparison::compareOwners(const ContentsEntry &vendor, const ContentsEntry &result)
{
    const bool isSame =
        (!vendor.uid || vendor.uid == result.uid) && (!vendor.gid || vendor.gid == result.gid);
    if (isSame || m_hasOneOwner)
        return;
    add("entry-owner", vendor.path,
        QStringLiteral("belongs to %1:%2 instead of %3:%4")
            .arg(result.uid.value_or(0))
            .arg(result.gid.value_or(0))
            .arg(vendor.uid.value_or(0))
            .arg(vendor.gid.value_or(0)));
}

/// Both packages at the same time, because computing takes longer than reading.
void Comparison::compareBytes()
{
    QList<Pair> unknown;
    for (const Pair &pair : m_pairs) {
        if (mustRead(pair))
            unknown.append(pair);
    }
    std::future<Digests> vendors =
        std::async(std::launch::async, digestsOf, std::cref(m_vendor), std::cref(unknown), &Pair::vendor);
    const Digests results = digestsOf(m_result, m_pairs, &Pair::result);
    const Digests read = vendors.get();
    for (const Pair &pair : m_pairs) {
        const QString path = pair.vendor->path;
        judgeBytes(pair, mustRead(pair) ? read.value(path) : pair.vendor->checksum, results.value(path));
    }
}

bool Comparison::mustRead(const Pair &pair) const
{
    return m_depth == Depth::Deep || !pair.vendor->checksum.isKnown();
}

void Comparison::judgeBytes(const Pair &pair, const Checksum &wanted, const Checksum &found)
{
    const QString path = pair.vendor->path;
    const auto contradicts = [](const Checksum &told, const Checksum &read) {
        return told.style == read.style && !(told == read);
    };
    if (found.digits.isEmpty())
        add("entry-unreadable", path, QStringLiteral("cannot be unpacked in the result"));
    else if (wanted.digits.isEmpty())
        add("entry-unreadable", path, QStringLiteral("cannot be unpacked in the vendor's package"));
    else if (!(found == wanted))
        add("entry-bytes", path, QStringLiteral("has other bytes than the vendor's"));
    else if (contradicts(pair.vendor->checksum, wanted))
        add("entry-bytes", path, QStringLiteral("has other bytes than the vendor's table says"));
    else if (contradicts(pair.result->checksum, found))
        add("entry-bytes", path, QStringLiteral("has other bytes than its own table says"));
}

} // namespace

Deviations compareEntries(const TableOfContents &vendor, const TableOfContents &result, Depth depth)
{
    return Comparison(vendor, result, depth).run();
}
