// SPDX-License-Identifier: Apache-2.0
#include "config/SettingRules.h"

#include "config/CCommon.h"
#include "config/DefaultPlugins.h"
#include "config/Product.h"

#include <limits>

namespace {

/// The row of the mode that a document names; 0 for the default and for every other text.
int attachmentRow(const QString &word)
{
    const std::vector<Setting::Choice> &choices = attachmentChoices();
    for (std::size_t row = 1; row < choices.size(); ++row) {
        if (word == choices[row].word)
            return static_cast<int>(row);
    }
    return 0;
}

/// In a document the first row that is not the default is 0.
int attachmentRowOfNumber(const QString &text)
{
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    const bool isMode = isNumber && number >= 0 && number < std::numeric_limits<int>::max();
    return isMode ? number + 1 : 0;
}

void setPolicy(EditorXmlData &data, bool isSet, int policy)
{
    data.bMIPCheckPolicySet = isSet;
    data.nMIPCheckPolicyOnDocSave = isSet ? policy : -1;
}

QString takeMarked(QStringList &marked, const QString &library)
{
    return marked.removeAll(library) > 0 ? library + QLatin1Char(';') : QString();
}

} // namespace

QString digit(bool isSo)
{
    return isSo ? QStringLiteral("1") : QStringLiteral("0");
}

bool isOne(const QString &text)
{
    return text == QLatin1String("1");
}

const std::vector<Setting::Choice> &attachmentChoices()
{
    static const std::vector<Setting::Choice> choices = {{QLatin1String("0"), QLatin1String("Default")},
                                                         {QLatin1String("1"), QLatin1String("Enabled")},
                                                         {QLatin1String("2"), QLatin1String("Disabled")}};
    return choices;
}

std::optional<QString> attachmentText(const EditorXmlData &data)
{
    const int chosen = data.nFileAttachmentsMode;
    const int row = chosen >= 1 ? chosen : attachmentRow(data.strDisableOpenSaveFileAttach);
    return row >= 1 ? QString::number(row - 1) : QString();
}

void settleAttachmentMode(EditorXmlData &data, const Product &)
{
    const QString &text = data.strDisableOpenSaveFileAttach;
    const int named = attachmentRow(text);
    const int row = named >= 1 ? named : attachmentRowOfNumber(text);
    if (row >= 1)
        data.nFileAttachmentsMode = row;
}

void dropNamedAttachments(EditorXmlData &data)
{
    data.strDisableOpenSaveFileAttach = EditorXmlData().strDisableOpenSaveFileAttach;
}

void dropChosenAttachments(EditorXmlData &data)
{
    data.nFileAttachmentsMode = EditorXmlData().nFileAttachmentsMode;
}

std::optional<QString> policyText(const EditorXmlData &data)
{
    if (!data.bMIPCheckPolicySet)
        return std::nullopt;
    return QString::number(data.nMIPCheckPolicyOnDocSave);
}

void readPolicyText(EditorXmlData &data, const QString &text)
{
    bool isNumber = false;
    const int policy = text.toInt(&isNumber);
    setPolicy(data, isNumber, policy);
}

std::variant<QString, int> policyInProfile(const EditorXmlData &data)
{
    if (!data.bMIPCheckPolicySet)
        return QString(QLatin1String(""));
    return data.nMIPCheckPolicyOnDocSave;
}

void readPolicyInProfile(EditorXmlData &data, const ProfileValue &value)
{
    setPolicy(data, value.isThere, value.number);
}

std::variant<bool, int, QString> shownPolicy(const EditorXmlData &data)
{
    // The list offers "not set" first, then the policies from 0 on.
    const int policy = data.bMIPCheckPolicySet ? data.nMIPCheckPolicyOnDocSave : -1;
    return policy == 0 || policy == 1 ? policy + 1 : 0;
}

void takePolicy(EditorXmlData &data, const int &row)
{
    setPolicy(data, row == 1 || row == 2, row - 1);
}

void followPolicy(EditorXmlData &data)
{
    setPolicy(data, data.nMIPCheckPolicyOnDocSave != -1, data.nMIPCheckPolicyOnDocSave);
}

void followPolicySet(EditorXmlData &data)
{
    const int policy = data.nMIPCheckPolicyOnDocSave;
    setPolicy(data, data.bMIPCheckPolicySet, policy == -1 ? 1 : policy);
}

std::optional<QString> libraryText(const EditorXmlData &data)
{
    return digit(data.nAuthLibrary == 1);
}

void readLibraryText(EditorXmlData &data, const QString &text)
{
    data.nAuthLibrary = isOne(text) ? 1 : 0;
}

std::variant<QString, int> libraryInProfile(const EditorXmlData &data)
{
    return digit(data.nAuthLibrary == 1);
}

void readLibraryInProfile(EditorXmlData &data, const ProfileValue &value)
{
    data.nAuthLibrary = value.number == 1 ? 1 : 0;
}

std::variant<bool, int, QString> shownLibrary(const EditorXmlData &data)
{
    return data.nAuthLibrary == 1 ? 1 : 0;
}

void takeManagedLogin(EditorXmlData &data, const bool &isChecked)
{
    data.bUseOAuth2 = data.bUseOAuth2 || isChecked;
}

std::variant<bool, int, QString> shownDomainMode(const EditorXmlData &data)
{
    return isOne(data.strLoginDomain);
}

void takeDomainMode(EditorXmlData &data, const bool &isWhitelist)
{
    data.strLoginDomain = isWhitelist ? QStringLiteral("1") : QStringLiteral("2");
}

std::optional<QString> viewerText(const EditorXmlData &data)
{
    return digit(!data.bSetAsDefaultViewer);
}

void readViewerText(EditorXmlData &data, const QString &text)
{
    data.bSetAsDefaultViewer = text == QLatin1String("0");
}

void settlePlugins(EditorXmlData &data, const Product &product)
{
    QStringList marked = data.strUnloadPluginArray.split(QLatin1Char(';'), Qt::SkipEmptyParts);
    QString ordered;
    const auto plugins = CCommon::EditorXmlReadPluginsTemplate(product);
    for (const _EditorXmlPuginData_ &plugin : plugins)
        ordered += takeMarked(marked, plugin.path);
    while (!marked.isEmpty())
        ordered += takeMarked(marked, QString(marked.first()));
    data.strUnloadPluginArray = ordered;
}
