// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDomDocument>
#include <QList>
#include <QString>
#include <QStringList>

/// One page of the guide.
struct GuidePage
{
    QString name; ///< file name
    QDomDocument document;
    QString problem; ///< why the page is not well formed; empty otherwise
};

/// The guide in the build folder. A page is read as XML, so that whatever reads XML can check it.
namespace GuidePages {

/// Path of a file in the guide's folder.
QString path(const QString &name);

/// All pages, in the order of their names.
const QList<GuidePage> &all();

/// The page of that name, or null.
const GuidePage *find(const QString &name);

/// The elements of a page with that tag, in document order; without a tag, all elements.
QList<QDomElement> elements(const GuidePage &page, const QString &tag = {});

/// Every `id` of a page, in document order.
QStringList ids(const GuidePage &page);

/// What a page's `href` and `src` say, decoded: a file name, "#id" or both; empty for none.
QStringList links(const GuidePage &page);

/// Whether a decoded link leads to a file of the guide and, if it names one, to an id there.
bool leadsSomewhere(const GuidePage &from, const QString &link);

/// The text that a page shows, with every run of white space as one blank.
QString text(const GuidePage &page);

/// The text of all pages together.
QString allText();

/// The texts of the samples of a kind, the kind being a class of their `pre`.
QStringList samples(const GuidePage &page, const QString &kind);

} // namespace GuidePages
