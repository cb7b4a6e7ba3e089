// SPDX-License-Identifier: Apache-2.0
#include "project/Stamp.h"

#include "config/JsonReader.h"
#include "core/FileDigest.h"
#include "core/SafeFile.h"
#include "project/Project.h"
#include "project/ProjectPaths.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

const QString ending = QStringLiteral(".json");

QString stampFolder(const Project &project)
{
    const QString name = QStringLiteral(".pct-stamps");
    return project.outputRoot.isEmpty() ? name : project.outputRoot + QLatin1Char('/') + name;
}

QString textIn(const Json::Value &object, const char *name)
{
    const Json::Value *value = object.member(QLatin1String(name));
    return value ? value->text : QString();
}

StampedFile fileFrom(const Json::Value &object)
{
    return {textIn(object, "kind"), textIn(object, "path"), textIn(object, "size").toLongLong(),
            textIn(object, "sha256").toLatin1()};
}

/// Somebody else may have written it, so its paths are held to what outputs may have.
bool isSound(const Stamp &stamp, const Project &project)
{
    for (const QString &path : stamp.paths()) {
        if (!ProjectPaths::checkOutput(project.folder, path))
            return false;
    }
    return !stamp.inputs.isEmpty();
}

} // namespace

Result<StampedFile> StampedFile::of(const QString &kind, const QString &path, const QString &file)
{
    if (SafeFile::kindOf(file) != SafeFile::Kind::File)
        return Problem{file, QStringLiteral("is missing")};
    const Result<QByteArray> digest = sha256OfFile(file);
    if (!digest)
        return digest.problem();
    return StampedFile{kind, path, QFileInfo(file).size(), *digest};
}

QJsonArray jsonOf(const QList<StampedFile> &files)
{
    QJsonArray array;
    for (const StampedFile &file : files)
        array.append(QJsonObject{{QStringLiteral("kind"), file.kind},
                                 {QStringLiteral("path"), file.path},
                                 {QStringLiteral("size"), file.size},
                                 {QStringLiteral("sha256"), QString::fromLatin1(file.sha256)}});
    return array;
}

QStringList Stamp::paths() const
{
    QStringList paths;
    for (const StampedFile &file : files)
        paths += file.path;
    return paths + former;
}

QString Stamp::pathOf(const Project &project, const QString &variant)
{
    return stampFolder(project) + QLatin1Char('/') + variant + ending;
}

std::optional<Stamp> Stamp::read(const Project &project, const QString &variant)
{
    const QString path = project.folder + QLatin1Char('/') + pathOf(project, variant);
    const Result<QByteArray> bytes = SafeFile::readContents(path);
    const Result<Json::Value> root = bytes ? Json::read(*bytes) : Result<Json::Value>(bytes.problem());
    if (!root)
        return std::nullopt;
    Stamp stamp{variant, textIn(*root, "inputs").toLatin1(), {}};
    if (const Json::Value *files = root->member(QStringLiteral("files"))) {
        for (const Json::Value &file : files->values)
            stamp.files.append(fileFrom(file));
    }
    if (const Json::Value *former = root->member(QStringLiteral("former"))) {
        for (const Json::Value &one : former->values)
            stamp.former.append(one.text);
    }
    return isSound(stamp, project) ? std::optional<Stamp>(stamp) : std::nullopt;
}

Result<> Stamp::write(const Project &project) const
{
    const QJsonObject object{{QStringLiteral("inputs"), QString::fromLatin1(inputs)},
                             {QStringLiteral("files"), jsonOf(files)},
                             {QStringLiteral("former"), QJsonArray::fromStringList(former)}};
    const QString path = pathOf(project, variant);
    const QString folder = project.folder + QLatin1Char('/') + stampFolder(project);
    if (SafeFile::kindOf(folder) == SafeFile::Kind::Link)
        return Problem{folder, QStringLiteral("is a link; remove it")};
    if (Result<> made = ProjectPaths::makeFolders(project.folder, path); !made)
        return made;
    return SafeFile::replaceContents(project.folder + QLatin1Char('/') + path, QJsonDocument(object).toJson(),
                                     SafeFile::Lasting::No);
}

QList<Stamp> Stamp::all(const Project &project)
{
    QList<Stamp> stamps;
    const QDir folder(project.folder + QLatin1Char('/') + stampFolder(project));
    for (const QFileInfo &entry :
         folder.entryInfoList({QLatin1Char('*') + ending}, QDir::Files, QDir::Name)) {
        if (const std::optional<Stamp> stamp = read(project, entry.completeBaseName()))
            stamps.append(*stamp);
    }
    return stamps;
}
