// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "config/EditorXmlData.h"
#include "project/Stamp.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

struct Product;

/// What is told of one variant.
struct ReportedVariant
{
    QString name;
    EditorXmlData settings;
    QList<StampedFile> files;
    QStringList warnings;
    QString problem; ///< why it could not be made; empty when it was
};

/// What people want to know of a project's results. The same results make the same bytes. Any thread.
struct ProjectReport
{
    const Product *product = nullptr;
    QString tool;          ///< version that has made it
    QString vendorPackage; ///< below the project's folder, or empty
    QString vendorVersion;
    QList<ReportedVariant> variants;

    enum class Format { Html, Markdown, Json };

    /// Of "html", "markdown" and "json", and of the endings of such files; HTML for all else.
    static Format formatNamed(const QString &word);

    QByteArray as(Format format) const;
    QByteArray markdown() const;
    QByteArray html() const; ///< one file, for screens of any width and for paper
    QByteArray json() const;
};

struct Project;

/// What is told of these variants of a project.
ProjectReport reportOn(const Project &project, const QString &vendorVersion,
                       const QList<ReportedVariant> &variants);

/// The settings as a document for the product carries them, in which what is not set has one form only.
EditorXmlData carriedSettings(const EditorXmlData &settings, const Product &product);

/// One setting in a report.
struct ReportedSetting
{
    QString name;
    QString title;
    QString meaning;
    QString help;       ///< page of the guide
    QStringList values; ///< in words, one for each variant
    QString usual;      ///< the default
};

/// The settings that the variant at the index has not as they are by default, with its value alone.
QList<ReportedSetting> unusualSettings(const ProjectReport &report, int variant);

/// The settings that not all variants have alike, with the values of all.
QList<ReportedSetting> differingSettings(const ProjectReport &report);

/// The same as a table, its heading first; no row when nothing differs.
QList<QStringList> differenceTable(const ProjectReport &report);
