// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "config/EditorXmlData.h"
#include "config/JsonReader.h"
#include "core/Result.h"
#include "project/Placeholders.h"

#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

struct Product;

/// A text of a project file and where it stands, for messages.
struct PlacedText
{
    QString text;
    Json::Place place{};

    bool isEmpty() const { return text.isEmpty(); }
};

/// One file that a variant has as a result. What its options mean is said in ProjectShape.
struct ProjectOutput
{
    QString kind;    ///< "document", "profile", ...
    PlacedText path; ///< below the project's folder, with placeholders
    QMap<QString, PlacedText> options;

    QString option(QLatin1String name) const { return options.value(name).text; }
    bool isSet(QLatin1String name) const { return option(name) == QLatin1String("true"); }
};

/// A setting that gets a value, or its default.
struct ProjectChange
{
    QString name;
    PlacedText value;
    bool isDefault = false;
};

/// One set of outputs, with all that it has inherited.
struct ProjectVariant
{
    PlacedText name;
    bool isAbstract = false;      ///< only others are made from it
    PlacedText config;            ///< path of the document that its settings begin with, or empty
    QList<ProjectChange> changes; ///< in their order
    QList<ProjectOutput> outputs; ///< in the order in which they are made
    QStringList allowed;          ///< codes of warnings

    bool has(QLatin1String outputKind) const;

    /// The settings, from those of `config` or the defaults.
    EditorXmlData settings(const EditorXmlData &start, const Product &product) const;
};

/// What a project file says. Paths are absolute unless something else is said.
struct Project
{
    struct Vendor
    {
        PlacedText package; ///< empty where no variant makes a package
        PlacedText sha256;
        PlacedText signer; ///< name of the certificate
        PlacedText team;
        PlacedText anchors; ///< path
    };
    struct Identity
    {
        QString prefix;
        QString organization;
        QString description;
        QString scope;
    };
    struct Signing
    {
        PlacedText profileIdentity; ///< these two may be references, see secret()
        PlacedText packageIdentity;
        QString timestamp;
        bool anyCertificate = false;
    };

    QString file;
    QString folder; ///< that the file lies in
    const Product *product = nullptr;
    Vendor vendor;
    Identity identity;
    Signing signing;
    QString outputRoot; ///< relative, up to the first folder whose name has a placeholder
    QList<ProjectVariant> variants;

    /// Reads a project file, YAML or JSON. The problem says where it is: "FILE:LINE:COLUMN".
    static Result<Project> read(const QString &path);

    /// A problem about a place in the file.
    Problem wrong(const PlacedText &text, const QString &problem) const;

    /// The same project with the names of outputs filled in. A problem when two outputs are one file, or a
    /// name is none afterwards.
    Result<Project> named(const QString &vendorVersion) const;

    /// Whether a name needs the version of the vendor's package.
    bool needsVendorVersion() const;

    /// The text, or what it refers to. The problem names the reference only.
    Result<QString> secret(const PlacedText &reference) const;
};
