// SPDX-License-Identifier: Apache-2.0
#include "package/verification/ResultVerification.h"

#include "config/ConfigDocument.h"
#include "config/Product.h"
#include "config/Settings.h"
#include "config/UnreadSettings.h"
#include "core/Command.h"
#include "package/BuildRehearsal.h"
#include "package/verification/ScriptsComparison.h"

#include <QDir>
#include <QFile>

namespace {

const QString documentName = QStringLiteral("ProfStore.xml");
const QString viewerToolName = QStringLiteral("duti");

/// Settings in a document, and the document for what else it says.
struct ReadDocument
{
    QDomDocument document;
    EditorXmlData settings;
};

QByteArray sha256(const QByteArray &bytes)
{
    Digest digest("sha256");
    digest.add(bytes.constData(), bytes.size());
    return digest.checksum().digits;
}

/// What a member becomes with another content.
ScriptsMember withContent(ScriptsMember member, const QByteArray &content)
{
    member.size = content.size();
    member.sha256 = sha256(content);
    member.content = content;
    return member;
}

ScriptsMember addedFile(const QByteArray &content, int permissions)
{
    return withContent({QStringLiteral("file"), permissions, 0, 0, 0, {}, {}}, content);
}

/// One result under judgement.
class Verification
{
public:
    Verification(const VerificationRequest &request, const QString &folder)
        : m_request(request)
        , m_product(*request.product)
        , m_folder(folder)
        , m_scripts(m_product.componentPackage + QStringLiteral("/Scripts"))
    {
    }

    Result<ResultVerification> run();

private:
    Result<> readTables();
    void judgeScripts(const ContentsEntry &vendors);
    void judgeOtherScripts(const QString &entry, const ScriptsMembers &vendors,
                           const ScriptsMembers &results);
    void judgeProductScripts(const ScriptsMembers &vendors, const ScriptsMembers &results);
    std::optional<ReadDocument> readDocument(const QByteArray &bytes);
    void judgeDocument(const ReadDocument &found, const QByteArray &again);
    void judgeSettings(const EditorXmlData &found);
    void judgeSyntax(const ScriptsMembers &members);
    ScriptsMembers expectedOf(const ScriptsMembers &vendors, const ScriptsMembers &results,
                              const BuildRehearsal &build);
    ScriptsMember expectedViewerTool(const ScriptsMembers &results);
    Result<BuildRehearsal> rehearse(const EditorXmlData &settings, bool wantsIManageLogin);
    Result<BuildRehearsal> fittingRehearsal(const EditorXmlData &settings, const ScriptsMembers &results);
    QString newFolder();
    void add(const char *code, const QString &entry, const QString &text)
    {
        m_verification.findings.append({QString::fromLatin1(code), entry, text});
    }
    QString inScripts(const QString &member) const { return m_scripts + QLatin1Char('/') + member; }

    const VerificationRequest &m_request;
    const Product &m_product;
    QString m_folder;
    QString m_scripts; ///< path of the product's
    int m_folders = 0;
    TableOfContents m_vendor;
    TableOfContents m_result;
    ResultVerification m_verification;
};

Result<ResultVerification> Verification::run()
{
    if (const Result<> read = readTables(); !read)
        return read.problem();
    m_verification.findings = compareEntries(m_vendor, m_result, m_request.depth);
    m_verification.entries = static_cast<int>(m_vendor.entries.size());
    for (const ContentsEntry &entry : m_vendor.entries) {
        if (entry.isScripts())
            judgeScripts(entry);
    }
    return m_verification;
}

Result<> Verification::readTables()
{
    const Result<TableOfContents> vendor = TableOfContents::read(m_request.vendor);
    if (!vendor)
        return vendor.problem();
    const Result<TableOfContents> result = TableOfContents::read(m_request.result);
    if (!result)
        return result.problem();
    m_vendor = *vendor;
    m_result = *result;
    if (m_vendor.find(m_scripts))
        return {};
    return Problem{m_request.vendor,
                   QStringLiteral("has no scripts of the %1; give the vendor's original package")
                       .arg(QString(m_product.title))};
}

/// That they are missing altogether is told with the entries.
void Verification::judgeScripts(const ContentsEntry &vendors)
{
    const ContentsEntry *results = m_result.find(vendors.path);
    if (!results || !results->isScripts())
        return;
    const Result<ScriptsMembers> expected = readScripts(m_vendor, vendors);
    const Result<ScriptsMembers> found = readScripts(m_result, *results);
    for (const Result<ScriptsMembers> *members : {&expected, &found}) {
        if (!*members)
            return add("scripts-unreadable", vendors.path, members->problem().line());
    }
    m_verification.members += static_cast<int>(found->size());
    if (vendors.path == m_scripts)
        judgeProductScripts(*expected, *found);
    else
        m_verification.findings += compareScripts(vendors.path, *expected, *found);
}

/// Without a sound document nothing can be said of the rest than where it is not the vendor's.
void Verification::judgeProductScripts(const ScriptsMembers &vendors, const ScriptsMembers &results)
{
    const auto document = readDocument(results.value(documentName).content);
    const Result<BuildRehearsal> build =
        document ? fittingRehearsal(document->settings, results) : Result<BuildRehearsal>(Problem());
    if (document && !build)
        add("no-build", m_scripts,
            QStringLiteral("no build works on the vendor's: ") + build.problem().line());
    if (!build) {
        m_verification.findings += compareScripts(m_scripts, vendors, results);
        return;
    }
    judgeDocument(*document, build->document);
    m_verification.findings += compareScripts(m_scripts, expectedOf(vendors, results, *build), results);
    judgeSyntax(results);
}

std::optional<ReadDocument> Verification::readDocument(const QByteArray &bytes)
{
    const QString path = newFolder() + QLatin1Char('/') + documentName;
    const QString entry = inScripts(documentName);
    if (bytes.isEmpty()) {
        add("document-missing", entry,
            QStringLiteral("is missing or no document, so nothing was customized"));
        return {};
    }
    const Result<> written = SafeFile::replaceContents(path, bytes, SafeFile::Lasting::No);
    const Result<QDomDocument> document =
        written ? ConfigDocument::load(path) : Result<QDomDocument>(written.problem());
    if (!document) {
        add("document-unreadable", entry, document.problem().text);
        return {};
    }
    ReadDocument read{*document, {}};
    ConfigDocument::apply(read.document, read.settings);
    return read;
}

void Verification::judgeDocument(const ReadDocument &found, const QByteArray &again)
{
    const QString entry = inScripts(documentName);
    const QDomElement root = found.document.documentElement();
    if (root.tagName() != m_product.rootElement)
        add("document-product", entry, QStringLiteral("is not one of the %1").arg(QString(m_product.title)));
    for (const UnreadSetting &setting : unreadSettings(found.document))
        add("document-lint", entry, QStringLiteral("has %1, which nobody reads").arg(setting.text));
    judgeSettings(found.settings);
    const auto same = readDocument(again);
    const QString version = QStringLiteral("version");
    if (same && same->document.documentElement().attribute(version) != root.attribute(version))
        add("document-version", entry,
            QStringLiteral("names the version \"%1\", which is not the vendor's")
                .arg(root.attribute(version)));
}

void Verification::judgeSettings(const EditorXmlData &found)
{
    if (!m_request.settings)
        return;
    const Result<BuildRehearsal> build = rehearse(*m_request.settings, false);
    const auto wanted = build ? readDocument(build->document) : std::nullopt;
    for (const Setting &setting : settings()) {
        if (wanted && !sameValue(setting, wanted->settings, found))
            add("document-setting", inScripts(documentName),
                QStringLiteral("has another %1 than was asked for").arg(QString(setting.name)));
    }
}

QString Verification::newFolder()
{
    const QString folder = m_folder + QLatin1Char('/') + QString::number(++m_folders);
    QDir().mkdir(folder);
    return folder;
}

Result<BuildRehearsal> Verification::rehearse(const EditorXmlData &settings, bool wantsIManageLogin)
{
    return rehearseBuild(m_request.vendor, m_product,
                         {settings, settings.bSetAsDefaultViewer, wantsIManageLogin}, newFolder());
}

/// A document does not tell whether the sign-in was added with it, only that it may have been.
Result<BuildRehearsal> Verification::fittingRehearsal(const EditorXmlData &settings,
                                                      const ScriptsMembers &results)
{
    Result<BuildRehearsal> without = rehearse(settings, false);
    if (!without || !m_product.isEditor() || !settings.bUseOAuth2 ||
        without->changes.last().after == results.value(QStringLiteral("postinstall")).content)
        return without;
    return rehearse(settings, true);
}

ScriptsMembers Verification::expectedOf(const ScriptsMembers &vendors, const ScriptsMembers &results,
                                        const BuildRehearsal &build)
{
    constexpr int readable = 0644;
    ScriptsMembers expected = vendors;
    for (const ScriptChange &change : build.changes)
        expected[change.name] = withContent(vendors.value(change.name), change.after);
    expected.insert(documentName, addedFile(results.value(documentName).content, readable));
    if (build.addsViewerTool)
        expected.insert(viewerToolName, expectedViewerTool(results));
    return expected;
}

/// One of those that are known: that of this tool, or the one that was given.
ScriptsMember Verification::expectedViewerTool(const ScriptsMembers &results)
{
    constexpr int executable = 0755;
    const QByteArray found = results.value(viewerToolName).sha256;
    ScriptsMember expected;
    for (const QString &path : {m_request.viewerTool, QStringLiteral(":/duti")}) {
        const Result<QByteArray> bytes =
            path.isEmpty() ? Result<QByteArray>(Problem()) : SafeFile::readContents(path);
        if (bytes)
            expected = addedFile(*bytes, executable);
        if (expected.sha256 == found)
            break;
    }
    if (!found.isEmpty() && expected.sha256 != found) {
        add("viewer-tool", inScripts(viewerToolName),
            QStringLiteral("is none that is known; its SHA-256 is %1").arg(QString::fromLatin1(found)));
        expected.sha256 = found;
    }
    return expected;
}

void Verification::judgeSyntax(const ScriptsMembers &members)
{
    for (const char *name : {"preinstall", "postinstall"}) {
        const QString script = QString::fromLatin1(name);
        if (!members.contains(script))
            continue;
        const QString path = newFolder() + QLatin1Char('/') + script;
        const Result<> written =
            SafeFile::replaceContents(path, members.value(script).content, SafeFile::Lasting::No);
        const CommandResult parsed = Command::run(QStringLiteral("bash"), {QStringLiteral("-n"), path});
        if (!written || !parsed.succeeded())
            add("script-syntax", inScripts(script),
                QStringLiteral("cannot be parsed: ") +
                    (written ? parsed.problem() : written.problem().line()));
    }
}

} // namespace

Result<ResultVerification> verifyResult(const VerificationRequest &request, const QString &privateFolder)
{
    return Verification(request, privateFolder).run();
}
