// SPDX-License-Identifier: Apache-2.0
#include "tests/profile/ProfileSamples.h"

#include "config/KeptElement.h"
#include "config/Settings.h"
#include "tests/support/TestFiles.h"

#include <QDomDocument>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTemporaryDir>

#include <string>

const QByteArray ProfileSamples::editorBundle = "com.pelix-software.Pelix.PDF.Editor";
const QByteArray ProfileSamples::readerBundle = "com.pelix-software.Pelix.PDF.Reader";

namespace {

QByteArray member(const QByteArray &key, const QByteArray &value)
{
    return "<key>" + key + "</key>" + value;
}

QByteArray textMember(const QByteArray &key, const QByteArray &text)
{
    return text.isEmpty() ? QByteArray() : member(key, ProfileSamples::string(text));
}

QString randomText(QRandomGenerator &random)
{
    static const std::u32string alphabet =
        U"abcXYZ019 .;|:@<>&\"'-_%1\\U\\\u00E4\u00DF\u65E5\u672C\u00E9\uE0F0\U0001F600\U0010FFFD";
    std::u32string text;
    for (quint32 left = random.bounded(20); left > 0; --left)
        text += alphabet.at(random.bounded(quint32(alphabet.size())));
    return QString::fromStdU32String(text);
}

bool coin(QRandomGenerator &random)
{
    return random.bounded(2) == 1;
}

/// A tree in which children of one name stand together, because their order among others is not kept.
QDomElement randomTree(QDomDocument &document, const QString &name, QRandomGenerator &random, int depth)
{
    QDomElement element = document.createElement(name);
    for (quint32 i = random.bounded(4); i > 0; --i)
        element.setAttribute(QStringLiteral("Attribute%1").arg(i), randomText(random));
    if (depth == 0)
        return element;
    for (quint32 i = random.bounded(4); i > 0; --i)
        element.appendChild(randomTree(document, QStringLiteral("Category"), random, depth - 1));
    return element;
}

QDomElement keptTree(const QString &name, QRandomGenerator &random)
{
    QDomDocument document;
    return keptElement(randomTree(document, name, random, 4));
}

} // namespace

QByteArray ProfileSamples::propertyList(const QByteArray &value)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">" + value + "</plist>\n";
}

QByteArray ProfileSamples::dictionary(const QList<QByteArray> &keysAndValues)
{
    QByteArray members;
    for (int i = 0; i + 1 < keysAndValues.size(); i += 2)
        members += member(keysAndValues.at(i), keysAndValues.at(i + 1));
    return "<dict>" + members + "</dict>";
}

QByteArray ProfileSamples::string(const QByteArray &text)
{
    return "<string>" + text + "</string>";
}

QByteArray ProfileSamples::array(const QByteArray &items)
{
    return "<array>" + items + "</array>";
}

QByteArray ProfileSamples::preference(const QByteArray &text, const QList<QByteArray> &keysAndValues)
{
    return dictionary({"Preference", dictionary(QList<QByteArray>{"Text", string(text)} + keysAndValues)});
}

QByteArray ProfileSamples::profileFile(const QByteArray &bundleIdentifier, const QByteArray &keysAndValues)
{
    const QByteArray payload =
        "<dict>" + textMember("PayloadIdentifier", bundleIdentifier) + keysAndValues + "</dict>";
    return propertyList(
        dictionary({"PayloadDisplayName", string("A name"), "PayloadIdentifier", string("host.1"),
                    "PayloadUUID", string("U-1"), "PayloadOrganization", string("Org"), "PayloadDescription",
                    string("What for"), "PayloadContent", array(payload)}));
}

QByteArray ProfileSamples::installedProfile(const QByteArray &bundleIdentifier, const QByteArray &identifier,
                                            const QByteArray &uuid, const QByteArray &content)
{
    const QByteArray item =
        dictionary({"PayloadIdentifier", string(bundleIdentifier), "PayloadContent", content});
    return "<dict>" + textMember("ProfileIdentifier", identifier) + textMember("ProfileUUID", uuid) +
           textMember("ProfileDisplayName", "Installed name") +
           textMember("ProfileOrganization", "Installed org") +
           textMember("ProfileDescription", "Installed for") + member("ProfileItems", array(item)) +
           "</dict>";
}

QByteArray ProfileSamples::listing(const QByteArray &profiles)
{
    return propertyList(dictionary({"_computerlevel", array(profiles)}));
}

QJsonObject ProfileSamples::readByPython(const QByteArray &propertyList)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("profile"));
    TestFiles::write(path, propertyList);
    const QByteArray json = TestFiles::outputOf(
        QStringLiteral("/usr/bin/python3"),
        {QStringLiteral("-c"),
         QStringLiteral(
             "import json, plistlib, sys; print(json.dumps(plistlib.load(open(sys.argv[1], 'rb'))))"),
         path});
    return QJsonDocument::fromJson(json).object();
}

QJsonObject ProfileSamples::payloadOf(const QJsonObject &profile)
{
    return profile[QLatin1String("PayloadContent")].toArray().first().toObject();
}

EditorXmlData ProfileSamples::randomRecord(QRandomGenerator &random)
{
    EditorXmlData data;
    for (const Setting &setting : settings()) {
        const auto *flag = std::get_if<bool EditorXmlData::*>(&setting.member);
        if (flag && setting.profile.read)
            data.**flag = coin(random);
    }
    data.nFileAttachmentsMode = int(random.bounded(4)) - 1;
    data.strBuiltInPermList = randomText(random);
    data.strUnloadPluginArray = randomText(random);
    data.bMIPCheckPolicySet = coin(random);
    data.nMIPCheckPolicyOnDocSave = data.bMIPCheckPolicySet ? int(random.bounded(2)) : -1;
    data.nAuthLibrary = int(random.bounded(3));
    if (coin(random))
        data.elemRibbonCategory = keptTree(QStringLiteral("RibbonUI"), random);
    if (coin(random))
        data.elemQuickAccessBar = keptTree(QStringLiteral("QuickAccessBar"), random);
    data.strLoginDomain = coin(random) ? QStringLiteral("1") : QStringLiteral("2");
    data.strLoginDomainList = randomText(random);
    data.payloadInfo.PayloadIdentifier = randomText(random);
    data.payloadInfo.PayloadUUID = randomText(random);
    return data;
}

EditorXmlData ProfileSamples::throughProfile(EditorXmlData data, bool editor)
{
    const QString product = editor ? QStringLiteral("Pelix PDF Editor") : QStringLiteral("Pelix PDF Reader");
    QDomDocument document;
    if (!data.bMIPCheckPolicySet) { // written as the empty text, which reads as set and off
        data.bMIPCheckPolicySet = true;
        data.nMIPCheckPolicyOnDocSave = 0;
    }
    data.nAuthLibrary = data.nAuthLibrary == 1 ? 1 : 0;
    if (data.elemRibbonCategory.isNull()) // always replaced, by an empty element at least
        data.elemRibbonCategory = keptElement(document.createElement(QStringLiteral("RibbonUI")));
    if (data.elemQuickAccessBar.isNull())
        data.elemQuickAccessBar = keptElement(document.createElement(QStringLiteral("QuickAccessBar")));
    data.payloadInfo.PayloadDisplayName = product;
    data.payloadInfo.PayloadOrganization = QStringLiteral("Pelix Software Inc.");
    data.payloadInfo.PayloadDescription =
        QStringLiteral("The configuration info will apply to %1, only for Subscription versions 2025.1+, "
                       "and Classic 13.1.8+.")
            .arg(product);
    return data;
}
