// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>

#include <vector>

/// A table of contents as text in which only what a signature changes is changed: times, extended attributes
/// and everything else that the vendor's tools have written stay as they are. All of it throws
/// FlatPkg::Error.
class TocEdit
{
public:
    /// The text must have passed FlatPkg::readToc.
    explicit TocEdit(const QByteArray &xml);

    /// The bytes of all members, from the start of the heap.
    qint64 firstByte() const { return m_first; }
    qint64 endByte() const { return m_end; }

    /// The text for a heap whose members begin at `first`, with `elements` in the place of the checksum and
    /// of earlier signatures.
    QByteArray text(const QByteArray &elements, qint64 first) const;

private:
    class Survey;

    /// A part of the text that is replaced.
    struct Span
    {
        qint64 start = 0;
        qint64 end = 0;
    };
    /// Where a member or an extended attribute says that its bytes lie.
    struct Place
    {
        Span offsetText;
        qint64 offset = 0;
        qint64 length = 0;
        bool isMember = true;
    };

    void measure(qint64 fixedEnd);
    bool isMoved(const Place &place) const { return place.length > 0 && place.offset >= m_first; }

    QByteArray m_xml;
    qint64 m_elementsAt = 0;
    std::vector<Span> m_removed; ///< checksum and signatures
    std::vector<Place> m_places;
    qint64 m_first = 0;
    qint64 m_end = 0;
};
