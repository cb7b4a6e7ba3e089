// SPDX-License-Identifier: Apache-2.0
#include "cli/SignatureCheck.h"

#include "cli/Json.h"
#include "cli/VerbLine.h"

#include <QJsonArray>

namespace {

QString timeText(const QDateTime &time)
{
    return time.toString(Qt::ISODate);
}

QString fingerprintText(const QByteArray &fingerprint)
{
    return QString::fromLatin1(fingerprint.toHex(':').toUpper());
}

QJsonValue heldValue(Held held)
{
    return held == Held::Absent ? QJsonValue() : QJsonValue(held == Held::Yes);
}

QJsonValue anchorValue(TrustAnchor anchor)
{
    if (anchor == TrustAnchor::None)
        return {};
    return anchor == TrustAnchor::Apple ? QStringLiteral("apple") : QStringLiteral("file");
}

QJsonObject certificateObject(const CertificateInfo &certificate)
{
    return {
        {QStringLiteral("name"), certificate.name},
        {QStringLiteral("team"), textOrNull(certificate.team)},
        {QStringLiteral("validFrom"), timeText(certificate.validFrom)},
        {QStringLiteral("expires"), timeText(certificate.validUntil)},
        {QStringLiteral("sha256"), QString::fromLatin1(certificate.sha256.toHex())},
        {QStringLiteral("forPackages"), certificate.isForPackages},
    };
}

QJsonValue timestampValue(const std::optional<SignatureTimestamp> &timestamp)
{
    if (!timestamp)
        return {};
    return QJsonObject{{QStringLiteral("time"), textOrNull(timeText(timestamp->time))},
                       {QStringLiteral("service"), textOrNull(timestamp->service)},
                       {QStringLiteral("counts"), timestamp->problem.isEmpty()},
                       {QStringLiteral("problem"), textOrNull(timestamp->problem)}};
}

QString heldText(Held held)
{
    if (held == Held::Absent)
        return QStringLiteral("none");
    return held == Held::Yes ? QStringLiteral("holds") : QStringLiteral("does not hold");
}

QString anchorText(TrustAnchor anchor)
{
    if (anchor == TrustAnchor::None)
        return QStringLiteral("nobody known");
    return anchor == TrustAnchor::Apple ? QStringLiteral("Apple's root")
                                        : QStringLiteral("a given trust anchor");
}

QString timestampText(const SignatureTimestamp &timestamp)
{
    const QString time = timestamp.time.isValid() ? timeText(timestamp.time) : QStringLiteral("unreadable");
    return timestamp.problem.isEmpty()
               ? time + QStringLiteral(" by ") + timestamp.service
               : time + QStringLiteral(", which does not count: ") + timestamp.problem;
}

QList<Console::Row> chainRows(const QList<CertificateInfo> &chain)
{
    QList<Console::Row> rows;
    for (const CertificateInfo &one : chain) {
        rows.append({rows.isEmpty() ? QStringLiteral("signed by") : QStringLiteral("issued by"), one.name});
        rows.append({QStringLiteral("  expires"), timeText(one.validUntil)});
        rows.append({QStringLiteral("  SHA-256"), fingerprintText(one.sha256)});
    }
    return rows;
}

Problem refused(const QString &package, const QString &text)
{
    return {package,
            text + QStringLiteral("; get the package again from where it came, or from who is to sign it")};
}

} // namespace

QList<Option> demandOptions(QLatin1String teamOption)
{
    return {
        {OptionName::requireSigned,
         QStringLiteral("refuse a package without a signature that holds and is trusted")},
        {teamOption, QStringLiteral("refuse a package that this team has not signed"), Value::text("ID")},
        withRemark({OptionName::trustAnchors,
                    QStringLiteral("file with certificates of authorities to trust besides Apple's root"),
                    Value::certificates()},
                   QStringLiteral(", in PEM form")),
    };
}

SignatureDemands demandsOf(const VerbLine &line, QLatin1String teamOption)
{
    return {line.isSet(OptionName::requireSigned), line.value(teamOption),
            line.path(OptionName::trustAnchors)};
}

Result<SignatureReport> signatureOf(const QString &package, const SignatureDemands &demands)
{
    if (demands.anchors.isEmpty())
        return reportSignature(package, {});
    const Result<TrustAnchors> anchors = TrustAnchors::fromFile(demands.anchors);
    return anchors ? reportSignature(package, *anchors) : Result<SignatureReport>(anchors.problem());
}

Result<> meets(const QString &package, const SignatureReport &report, const SignatureDemands &demands)
{
    if (!demands.isTrusted())
        return {};
    if (!report.isSigned)
        return refused(package, QStringLiteral("is not signed"));
    if (!report.holds())
        return refused(package, QStringLiteral("its signature does not hold: ") +
                                    report.breaks.join(QStringLiteral("; ")));
    if (!report.isTrusted())
        return refused(package, QStringLiteral("its signature is not trusted: ") +
                                    report.doubts.join(QStringLiteral("; ")));
    if (!demands.team.isEmpty() && report.team != demands.team)
        return refused(
            package,
            QStringLiteral("is signed by the team \"%1\", not by \"%2\"").arg(report.team, demands.team));
    return {};
}

QList<BuildWarning> signatureWarnings(const SignatureReport &report)
{
    if (!report.isSigned || report.holds())
        return {};
    return {{QStringLiteral("signature-broken"),
             QStringLiteral("its signature does not hold: %1; somebody has changed it since it was signed")
                 .arg(report.breaks.join(QStringLiteral("; ")))}};
}

QJsonObject signatureObject(const SignatureReport &report)
{
    QJsonArray chain;
    for (const CertificateInfo &certificate : report.chain)
        chain.append(certificateObject(certificate));
    return {
        {QStringLiteral("signed"), report.isSigned},
        {QStringLiteral("holds"), report.isSigned ? QJsonValue(report.holds()) : QJsonValue()},
        {QStringLiteral("trusted"), report.isSigned ? QJsonValue(report.isTrusted()) : QJsonValue()},
        {QStringLiteral("digest"), heldValue(report.digest)},
        {QStringLiteral("rsa"), heldValue(report.rsa)},
        {QStringLiteral("cms"), heldValue(report.cms)},
        {QStringLiteral("anchor"), anchorValue(report.anchor)},
        {QStringLiteral("team"), textOrNull(report.team)},
        {QStringLiteral("chain"), chain},
        {QStringLiteral("timestamp"), timestampValue(report.timestamp)},
        {QStringLiteral("judgedAt"), textOrNull(timeText(report.judgedAt))},
        {QStringLiteral("ticket"), report.hasTicket},
        {QStringLiteral("problems"), QJsonArray::fromStringList(report.breaks + report.doubts)},
    };
}

QList<Console::Row> signatureRows(const SignatureReport &report)
{
    const QString ticket = report.hasTicket ? QStringLiteral("stapled") : QStringLiteral("none");
    if (!report.isSigned)
        return {{QStringLiteral("signature"), QStringLiteral("none")}, {QStringLiteral("ticket"), ticket}};
    QList<Console::Row> rows{{QStringLiteral("digest"), heldText(report.digest)},
                             {QStringLiteral("RSA signature"), heldText(report.rsa)},
                             {QStringLiteral("CMS signature"), heldText(report.cms)}};
    rows += chainRows(report.chain);
    rows.append({QStringLiteral("chain ends in"), anchorText(report.anchor)});
    rows.append({QStringLiteral("team"), report.team.isEmpty() ? QStringLiteral("none") : report.team});
    rows.append({QStringLiteral("timestamp"),
                 report.timestamp ? timestampText(*report.timestamp) : QStringLiteral("none")});
    rows.append({QStringLiteral("judged at"), timeText(report.judgedAt)});
    rows.append({QStringLiteral("ticket"), ticket});
    for (const QString &problem : report.breaks + report.doubts)
        rows.append({QStringLiteral("problem"), problem});
    return rows;
}
