// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/Result.h"

#include <QByteArray>
#include <QJsonArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

struct Project;

/// One file that was made. The path is below the project's folder.
struct StampedFile
{
    QString kind;
    QString path;
    qint64 size = 0;
    QByteArray sha256; ///< in hexadecimal

    /// Of the file that lies at `file`, whatever its path is going to be.
    static Result<StampedFile> of(const QString &kind, const QString &path, const QString &file);
};

/// As objects of JSON, for stamps and for programs.
QJsonArray jsonOf(const QList<StampedFile> &files);

/// What a variant was made from, and what came of it. Stamps lie beside the outputs, in a hidden folder; no
/// secret is in them.
struct Stamp
{
    QString variant;
    QByteArray inputs; ///< digest of all that the outputs follow from, in hexadecimal
    QList<StampedFile> files;
    QStringList former{}; ///< paths of what was made once and is no output any more

    /// Of all files, the former ones last.
    QStringList paths() const;

    /// Path of a variant's stamp, below the project's folder.
    static QString pathOf(const Project &project, const QString &variant);

    /// The stamp as it was written; nothing for one that is missing or was changed.
    static std::optional<Stamp> read(const Project &project, const QString &variant);
    Result<> write(const Project &project) const;

    /// The stamps of all variants that were ever made.
    static QList<Stamp> all(const Project &project);
};
