// SPDX-License-Identifier: Apache-2.0
#include "package/verification/Provenance.h"

#include "core/FileDigest.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUrl>

namespace {

const QString statementType = QStringLiteral("https://in-toto.io/Statement/v1");
const QString predicateType = QStringLiteral("https://slsa.dev/provenance/v1");
const QString buildType = QStringLiteral("tag:pelix-software.com,2026:pct/build/v1");
const QString builderId = QStringLiteral("tag:pelix-software.com,2026:pct");
const QString vendorName = QStringLiteral("vendor");
const QString settingsName = QStringLiteral("settings");

QJsonObject digestObject(const StatedFile &file)
{
    return {{QStringLiteral("sha256"), QString::fromLatin1(file.sha256)}};
}

QJsonObject subjectObject(const StatedFile &file)
{
    return {{QStringLiteral("name"), file.name}, {QStringLiteral("digest"), digestObject(file)}};
}

QJsonObject dependencyObject(const QString &name, const StatedFile &file)
{
    const QString uri = QStringLiteral("file:") + QString::fromLatin1(QUrl::toPercentEncoding(file.name));
    return {{QStringLiteral("name"), name},
            {QStringLiteral("uri"), uri},
            {QStringLiteral("digest"), digestObject(file)}};
}

QJsonObject definitionObject(const ProvenanceFacts &facts)
{
    QJsonArray dependencies{dependencyObject(vendorName, facts.vendor)};
    if (!facts.settings.sha256.isEmpty())
        dependencies.append(dependencyObject(settingsName, facts.settings));
    QJsonObject internals;
    if (facts.sourceDate)
        internals.insert(QStringLiteral("SOURCE_DATE_EPOCH"), *facts.sourceDate);
    return {{QStringLiteral("buildType"), buildType},
            {QStringLiteral("externalParameters"), QJsonObject{{QStringLiteral("product"), facts.product}}},
            {QStringLiteral("internalParameters"), internals},
            {QStringLiteral("resolvedDependencies"), dependencies}};
}

QJsonObject runObject(const ProvenanceFacts &facts)
{
    const QJsonObject version{{QStringLiteral("pct"), facts.toolVersion}};
    return {{QStringLiteral("builder"),
             QJsonObject{{QStringLiteral("id"), builderId}, {QStringLiteral("version"), version}}},
            {QStringLiteral("byproducts"), QJsonArray{subjectObject(facts.document)}}};
}

QString sha256In(const QJsonObject &file)
{
    return file.value(QStringLiteral("digest")).toObject().value(QStringLiteral("sha256")).toString();
}

/// One statement under judgement.
class Statement
{
public:
    explicit Statement(const QByteArray &bytes)
        : m_statement(QJsonDocument::fromJson(bytes).object())
        , m_definition(m_statement.value(QStringLiteral("predicate"))
                           .toObject()
                           .value(QStringLiteral("buildDefinition"))
                           .toObject())
    {
    }

    Deviations contradictions(const ProvenanceFacts &known);

private:
    bool isOurs() const;
    void judgeParameters(const ProvenanceFacts &known);
    void judgeDependency(const char *code, const QString &name, const StatedFile &known);
    bool hasSubject(const StatedFile &package) const;
    void add(const char *code, const QString &text)
    {
        m_findings.append({QString::fromLatin1(code), {}, text});
    }

    QJsonObject m_statement;
    QJsonObject m_definition;
    Deviations m_findings;
};

Deviations Statement::contradictions(const ProvenanceFacts &known)
{
    if (m_statement.isEmpty())
        add("provenance-unreadable", QStringLiteral("has a statement that is no JSON"));
    else if (!isOurs())
        add("provenance-type", QStringLiteral("has a statement that is not about a build of this tool"));
    if (!m_findings.isEmpty())
        return m_findings;
    judgeParameters(known);
    if (!hasSubject(known.package))
        add("provenance-package", QStringLiteral("is not the one that the statement is about"));
    judgeDependency("provenance-vendor", vendorName, known.vendor);
    judgeDependency("provenance-settings", settingsName, known.settings);
    return m_findings;
}

bool Statement::isOurs() const
{
    return m_statement.value(QStringLiteral("_type")) == statementType &&
           m_statement.value(QStringLiteral("predicateType")) == predicateType &&
           m_definition.value(QStringLiteral("buildType")) == buildType;
}

/// What nobody here knows could have changed the build.
void Statement::judgeParameters(const ProvenanceFacts &known)
{
    const QString product = QStringLiteral("product");
    const QJsonObject parameters = m_definition.value(QStringLiteral("externalParameters")).toObject();
    for (const QString &name : parameters.keys()) {
        if (name != product)
            add("provenance-parameter",
                QStringLiteral("has a statement with the parameter \"%1\", which no build has").arg(name));
    }
    if (!known.product.isEmpty() && parameters.value(product) != known.product)
        add("provenance-parameter", QStringLiteral("has a statement for another product"));
}

bool Statement::hasSubject(const StatedFile &package) const
{
    const QJsonArray subjects = m_statement.value(QStringLiteral("subject")).toArray();
    return subjects.size() == 1 && sha256In(subjects.first().toObject()) == QLatin1String(package.sha256);
}

void Statement::judgeDependency(const char *code, const QString &name, const StatedFile &known)
{
    if (known.sha256.isEmpty())
        return;
    for (const QJsonValue dependency : m_definition.value(QStringLiteral("resolvedDependencies")).toArray()) {
        const QJsonObject file = dependency.toObject();
        if (file.value(QStringLiteral("name")) == name && sha256In(file) == QLatin1String(known.sha256))
            return;
    }
    add(code, QStringLiteral("was made of another file than %1, by its statement").arg(known.name));
}

} // namespace

Result<StatedFile> statedFile(const QString &path)
{
    if (path.isEmpty())
        return StatedFile();
    const Result<QByteArray> digest = sha256OfFile(path);
    if (!digest)
        return digest.problem();
    return StatedFile{QFileInfo(path).fileName(), *digest};
}

QByteArray provenanceStatement(const ProvenanceFacts &facts)
{
    const QJsonObject statement{{QStringLiteral("_type"), statementType},
                                {QStringLiteral("subject"), QJsonArray{subjectObject(facts.package)}},
                                {QStringLiteral("predicateType"), predicateType},
                                {QStringLiteral("predicate"),
                                 QJsonObject{{QStringLiteral("buildDefinition"), definitionObject(facts)},
                                             {QStringLiteral("runDetails"), runObject(facts)}}}};
    return QJsonDocument(statement).toJson();
}

Deviations contradictions(const QByteArray &statement, const ProvenanceFacts &known)
{
    return Statement(statement).contradictions(known);
}
