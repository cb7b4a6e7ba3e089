// SPDX-License-Identifier: Apache-2.0
#include "config/Product.h"
#include "config/SettingText.h"
#include "core/NearestWord.h"
#include "core/PrintableText.h"
#include "core/SafeFile.h"
#include "profile/ProfileForm.h"
#include "project/PlacedProblem.h"
#include "project/Project.h"
#include "project/ProjectPaths.h"
#include "project/ProjectShape.h"
#include "project/YamlReader.h"

#include <QFileInfo>

#include <algorithm>

namespace {

using Json::Type;
using Json::Value;

constexpr int longestChain = 16;
constexpr int mostVariants = 1000;

PlacedText textOf(const Value *object, QLatin1String name)
{
    const Value *value = object ? object->member(name) : nullptr;
    return value ? PlacedText{value->text, value->place} : PlacedText{};
}

/// The entries of a list, as a setting takes them.
PlacedText joined(const Value &value)
{
    if (value.type == Type::Null)
        return {QString(), value.place};
    QStringList entries;
    for (const Value &entry : value.values)
        entries += entry.text;
    return {value.type == Type::List ? entries.join(QLatin1Char(';')) : value.text, value.place};
}

QStringList namesIn(const Value *object, QLatin1String name)
{
    QStringList names;
    if (const Value *list = object ? object->member(name) : nullptr) {
        for (const Value &entry : list->values)
            names += entry.text;
    }
    return names;
}

Result<Value> readText(const QString &path)
{
    const Result<QByteArray> bytes = SafeFile::readContents(path);
    if (!bytes)
        return Problem{{}, bytes.problem().text};
    if (!path.endsWith(QLatin1String(".json"), Qt::CaseInsensitive))
        return Yaml::read(*bytes);
    if (bytes->size() > Yaml::maximumBytes)
        return Problem{{},
                       QStringLiteral("it is larger than %1 MiB").arg(Yaml::maximumBytes / (1024 * 1024))};
    Json::Place place;
    const Result<Value> value = Json::read(*bytes, &place);
    return value ? value : Result<Value>(problemAt(place, value.problem().text));
}

/// The variants by name, and those that one inherits from.
class Family
{
public:
    explicit Family(const Value &variants)
    {
        for (const Value &variant : variants.values)
            m_variants.insert(variant.name, &variant);
    }

    /// From the one that inherits nothing to this one.
    Result<QList<const Value *>> chainOf(const Value &variant) const
    {
        QList<const Value *> chain{&variant};
        while (const Value *parent = chain.first()->member(QStringLiteral("extends"))) {
            const Value *next = m_variants.value(parent->text);
            if (!next)
                return problemAt(parent->place, QStringLiteral("there is no variant \"%1\"%2")
                                                    .arg(printableStart(parent->text, 64),
                                                         nearestHint(parent->text, m_variants.keys())));
            if (chain.contains(next))
                return problemAt(parent->place,
                                 QStringLiteral("\"%1\" inherits from itself by this").arg(next->name));
            if (chain.size() == longestChain)
                return problemAt(
                    parent->place,
                    QStringLiteral("more than %1 variants inherit from each other").arg(longestChain));
            chain.prepend(next);
        }
        return chain;
    }

private:
    QMap<QString, const Value *> m_variants;
};

class Reading
{
public:
    Reading(const QString &path, const Value &root)
        : m_root(root)
    {
        m_project.file = path;
        m_project.folder = QFileInfo(path).path();
    }

    Result<Project> run()
    {
        m_project.product = Product::find(&Product::word, textOf(&m_root, QLatin1String("product")).text);
        m_output = textOf(&m_root, QLatin1String("output"));
        if (m_output.isEmpty())
            m_output.text = QStringLiteral("dist/${variant}");
        m_project.outputRoot =
            m_output.text.section(QLatin1String("${"), 0, 0).section(QLatin1Char('/'), 0, -2);
        if (!Placeholders::areIn(m_output.text))
            m_project.outputRoot = m_output.text;
        readVendor();
        readIdentity();
        readSigning();
        const Result<> read = readVariants(*m_root.member(QStringLiteral("variants")));
        return read ? Result<Project>(m_project) : read.problem();
    }

private:
    const Value *part(const char *name) const { return m_root.member(QLatin1String(name)); }

    PlacedText pathIn(const Value *object, QLatin1String name) const
    {
        PlacedText path = textOf(object, name);
        if (!path.isEmpty())
            path.text.prepend(m_project.folder + QLatin1Char('/'));
        return path;
    }

    void readVendor()
    {
        const Value *vendor = part("vendor");
        m_project.vendor = {pathIn(vendor, QLatin1String("package")), textOf(vendor, QLatin1String("sha256")),
                            textOf(vendor, QLatin1String("signer")), textOf(vendor, QLatin1String("team")),
                            pathIn(vendor, QLatin1String("trust-anchors"))};
    }

    void readIdentity()
    {
        const Value *identity = part("identity");
        const auto text = [&](const char *name) { return textOf(identity, QLatin1String(name)).text; };
        m_project.identity = {text("prefix"), text("organization"), text("description"), text("scope")};
    }

    void readSigning()
    {
        const Value *signing = part("signing");
        const Value *profile = signing ? signing->member(QStringLiteral("profile")) : nullptr;
        const Value *package = signing ? signing->member(QStringLiteral("package")) : nullptr;
        const QLatin1String identity("identity");
        m_project.signing = {textOf(profile, identity), textOf(package, identity),
                             textOf(package, QLatin1String("timestamp")).text,
                             textOf(package, QLatin1String("allow-any-certificate")).text ==
                                 QLatin1String("true")};
    }

    Result<> readVariants(const Value &variants)
    {
        if (variants.values.size() > mostVariants)
            return problemAt(variants.place, QStringLiteral("more than %1 variants").arg(mostVariants));
        const Family family(variants);
        for (const Value &variant : variants.values) {
            const Result<QList<const Value *>> chain = family.chainOf(variant);
            if (!chain)
                return chain.problem();
            if (Result<> read = readVariant(*chain); !read)
                return read;
        }
        return {};
    }

    Result<> readVariant(const QList<const Value *> &chain)
    {
        const Value &last = *chain.last();
        ProjectVariant variant;
        variant.name = {last.name, last.namePlace};
        variant.isAbstract = textOf(&last, QLatin1String("abstract")).text == QLatin1String("true");
        takeSettings(part("settings"), variant);
        for (const Value *each : chain) {
            takeSettings(each, variant);
            if (each->member(QStringLiteral("allow")))
                variant.allowed = namesIn(each, QLatin1String("allow"));
        }
        for (const ProjectShape::Field &kind : ProjectShape::outputs())
            takeOutput(kind.name, chain, variant);
        m_project.variants.append(variant);
        return checkVariant(variant);
    }

    /// A document takes the place of all that came before it.
    void takeSettings(const Value *from, ProjectVariant &variant) const
    {
        const PlacedText config = pathIn(from, QLatin1String("config"));
        if (!config.isEmpty()) {
            variant.config = config;
            variant.changes.clear();
        }
        if (const Value *defaults = from ? from->member(QStringLiteral("unset")) : nullptr) {
            for (const Value &name : defaults->values)
                variant.changes.append({name.text, {QString(), name.place}, true});
        }
        if (const Value *values = from ? from->member(QStringLiteral("set")) : nullptr) {
            for (const Value &value : values->values)
                variant.changes.append({value.name, joined(value), false});
        }
    }

    /// The child's options win one by one.
    void takeOutput(const QString &kind, const QList<const Value *> &chain, ProjectVariant &variant) const
    {
        bool isWanted = false;
        ProjectOutput output{kind, {}, {}};
        for (const Value *each : chain) {
            const Value *outputs = each->member(QStringLiteral("outputs"));
            const Value *given = outputs ? outputs->member(kind) : nullptr;
            if (!given)
                continue;
            isWanted = given->text != QLatin1String("false");
            output.path.place = given->namePlace;
            for (const Value &option : given->values)
                output.options.insert(option.name, joined(option));
        }
        if (!isWanted)
            return;
        output.path.text = m_output.text + QLatin1Char('/') + nameOf(output);
        variant.outputs.append(output);
    }

    static QString nameOf(const ProjectOutput &output)
    {
        const QString given = output.option(QLatin1String("name"));
        return given.isEmpty() ? ProjectPaths::usualName(output) : given;
    }

    /// So that a mistake is told where it stands, whatever the settings start from.
    Result<> checkVariant(const ProjectVariant &variant) const
    {
        EditorXmlData scratch;
        for (const ProjectChange &change : variant.changes) {
            const Result<const Setting *> setting = SettingText::named(change.name);
            if (!setting)
                return problemAt(change.value.place, setting.problem().text);
            const Result<> taken = change.isDefault ? Result<>()
                                                    : SettingText::take(**setting, change.value.text,
                                                                        *m_project.product, scratch);
            if (!taken)
                return problemAt(change.value.place, taken.problem().text);
        }
        return checkOutputs(variant);
    }

    Result<> checkOutputs(const ProjectVariant &variant) const
    {
        for (const ProjectOutput &output : variant.outputs) {
            if (output.kind == QLatin1String("pkginfo") && !variant.has(QLatin1String("package")))
                return problemAt(output.path.place,
                                 QStringLiteral("a pkginfo needs \"package\" among the variant's outputs"));
            const QString lacking = missingFor(output);
            if (!lacking.isEmpty())
                return problemAt(
                    output.path.place,
                    QStringLiteral("a %1 needs \"%2\" in the project").arg(output.kind, lacking));
        }
        return {};
    }

    /// The part of the project that an output cannot be made without, or empty.
    QString missingFor(const ProjectOutput &output) const
    {
        const bool isPackage = output.kind == QLatin1String("package");
        const bool isProfile = output.kind == QLatin1String("profile");
        const bool isPayload = settingsFormOf(output.option(QLatin1String("form"))) == SettingsForm::Payload;
        const bool isSigned = output.isSet(QLatin1String("sign"));
        if (isPackage && m_project.vendor.package.isEmpty())
            return QStringLiteral("vendor");
        if ((isProfile || isPayload) && m_project.identity.prefix.isEmpty())
            return QStringLiteral("identity");
        if (isPackage && isSigned && m_project.signing.packageIdentity.isEmpty())
            return QStringLiteral("signing: package");
        return isProfile && isSigned && m_project.signing.profileIdentity.isEmpty()
                   ? QStringLiteral("signing: profile")
                   : QString();
    }

    const Value &m_root;
    PlacedText m_output;
    Project m_project;
};

Result<Project> readChecked(const QString &path)
{
    const Result<Value> root = readText(path);
    if (!root)
        return root.problem();
    if (const Result<> sound = ProjectShape::check(*root); !sound)
        return sound.problem();
    return Reading(path, *root).run();
}

} // namespace

Result<Project> Project::read(const QString &path)
{
    Result<Project> project = readChecked(path);
    return project ? project : Result<Project>(placedIn(path, project.problem()));
}
