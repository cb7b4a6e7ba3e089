// SPDX-License-Identifier: Apache-2.0
#include "tests/resources/GuidePages.h"

#include "tests/support/TestFiles.h"

#include <QDir>
#include <QFileInfo>
#include <QUrl>
#include <QXmlStreamReader>

namespace {

QString folder()
{
    return QStringLiteral(PCT_GUIDE_DIR);
}

/// Where and why the bytes are not well formed; empty otherwise.
QString firstProblem(const QByteArray &xml)
{
    QXmlStreamReader reader(xml);
    while (!reader.atEnd())
        reader.readNext();
    if (!reader.hasError())
        return {};
    return QStringLiteral("%1:%2: %3")
        .arg(QString::number(reader.lineNumber()), QString::number(reader.columnNumber()),
             reader.errorString());
}

GuidePage readPage(const QString &name)
{
    GuidePage page;
    page.name = name;
    const QByteArray bytes = TestFiles::read(GuidePages::path(name));
    page.problem = firstProblem(bytes);
    if (!page.document.setContent(bytes) && page.problem.isEmpty())
        page.problem = QStringLiteral("makes no document");
    if (!page.problem.isEmpty())
        page.problem.prepend(name + QLatin1Char(':'));
    return page;
}

QList<GuidePage> readAll()
{
    QList<GuidePage> pages;
    const QStringList names = QDir(folder()).entryList({QStringLiteral("*.html")}, QDir::Files, QDir::Name);
    for (const QString &name : names)
        pages.append(readPage(name));
    return pages;
}

void addElements(const QDomElement &element, const QString &tag, QList<QDomElement> &found)
{
    if (tag.isEmpty() || element.tagName() == tag)
        found.append(element);
    for (QDomElement child = element.firstChildElement(); !child.isNull(); child = child.nextSiblingElement())
        addElements(child, tag, found);
}

} // namespace

QString GuidePages::path(const QString &name)
{
    return folder() + QLatin1Char('/') + name;
}

const QList<GuidePage> &GuidePages::all()
{
    static const QList<GuidePage> pages = readAll();
    return pages;
}

const GuidePage *GuidePages::find(const QString &name)
{
    for (const GuidePage &page : all()) {
        if (page.name == name)
            return &page;
    }
    return nullptr;
}

QList<QDomElement> GuidePages::elements(const GuidePage &page, const QString &tag)
{
    QList<QDomElement> found;
    addElements(page.document.documentElement(), tag, found);
    return found;
}

QStringList GuidePages::ids(const GuidePage &page)
{
    QStringList found;
    for (const QDomElement &element : elements(page)) {
        if (element.hasAttribute(QStringLiteral("id")))
            found.append(element.attribute(QStringLiteral("id")));
    }
    return found;
}

QStringList GuidePages::links(const GuidePage &page)
{
    QStringList found;
    for (const QDomElement &element : elements(page)) {
        for (const auto &name : {QStringLiteral("href"), QStringLiteral("src")}) {
            if (element.hasAttribute(name))
                found.append(QUrl::fromPercentEncoding(element.attribute(name).toUtf8()));
        }
    }
    return found;
}

bool GuidePages::leadsSomewhere(const GuidePage &from, const QString &link)
{
    const int hash = link.indexOf(QLatin1Char('#'));
    const QString file = hash < 0 ? link : link.left(hash);
    if (!file.isEmpty() && !QFileInfo(path(file)).isFile())
        return false;
    if (hash < 0)
        return !file.isEmpty();
    const GuidePage *target = file.isEmpty() ? &from : find(file);
    return target && ids(*target).contains(link.mid(hash + 1));
}

QString GuidePages::text(const GuidePage &page)
{
    return page.document.documentElement().text().simplified();
}

QString GuidePages::allText()
{
    QString together;
    for (const GuidePage &page : all())
        together += text(page) + QLatin1Char(' ');
    return together;
}

QStringList GuidePages::samples(const GuidePage &page, const QString &kind)
{
    QStringList found;
    for (const QDomElement &element : elements(page, QStringLiteral("pre"))) {
        if (element.attribute(QStringLiteral("class")).split(QLatin1Char(' ')).contains(kind))
            found.append(element.text());
    }
    return found;
}
