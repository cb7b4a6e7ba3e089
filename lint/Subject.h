// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "config/Settings.h"
#include "config/XmlTree.h"
#include "core/Result.h"
#include "core/TextPlace.h"

#include <QByteArray>
#include <QStringList>
#include <QVector>

/// What is looked for flaws, in a form that documents, profiles and JSON share. One thread.
namespace Lint {

/// Of each kind of thing in a file, and of the entries of a list, so many are looked at: more than a file
/// that is meant well can have, and few enough to be quick.
constexpr int mostLookedAt = 2000;

enum class Form { Document, Profile, Json };

/// What a file says of one setting.
struct Said
{
    const Setting *setting;
    QString text;        ///< as it stands there; true and false as 1 and 0
    bool isThere = true; ///< false where only the item is there that should say it
    TextPlace place;
};

/// A key, an attribute or an element that nothing reads.
struct Unread
{
    QString text; ///< for people
    QString name;
    QStringList known; ///< what would be read in its place
    TextPlace place;
};

struct Subject
{
    Form form = Form::Document;
    const Product *product = nullptr;
    EditorXmlData settings; ///< as read, with the identity of a profile
    QVector<Said> said;     ///< in the order of the file
    QVector<Unread> unread;
    bool isCut = false; ///< whether more of one of them is in the file
    QDomElement ribbon; ///< "RibbonUI", and below "QuickAccessBar"; null where there is none
    QDomElement quickAccessBar;
    QDomDocument document; ///< holds the two elements; null where the record does
    XmlPlaces places;      ///< of what stands in the document
};

/// Where the file says the setting first; no place when it does not.
TextPlace placeOf(const Subject &subject, const Setting &setting);

/// The place of an element of the ribbon or the quick-access bar, or of the one that holds all.
TextPlace placeIn(const Subject &subject, const QDomElement &element);

/// The subject of settings of which nothing is known but what they are.
Subject subjectOf(Form form, const Product &product, const EditorXmlData &settings);

/// The subject of a file of this form, out of a package or a signed message: `contents` is what it holds,
/// `settings` what was read from it. A problem when the contents cannot be read.
Result<Subject> subjectOf(Form form, const QByteArray &contents, const Product &product,
                          const EditorXmlData &settings);

// What the forms add to a subject, for subjectOf().
Result<> addDocument(Subject &subject, const QByteArray &xml);
Result<> addProfile(Subject &subject, const QByteArray &list);
Result<> addJson(Subject &subject, const QByteArray &json);

} // namespace Lint
