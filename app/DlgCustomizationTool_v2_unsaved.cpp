// SPDX-License-Identifier: Apache-2.0
#include "app/DlgCustomizationTool_v2.h"

#include "app/ChangedMarks.h"
#include "app/Messages.h"
#include "config/CCommon.h"
#include "config/Settings.h"

#include <QAbstractButton>
#include <QFileInfo>
#include <QLocale>
#include <QMessageBox>

namespace {

int askWhetherToSave(QWidget *window)
{
    QMessageBox box(QMessageBox::Warning, QString(), QString(),
                    QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, window);
    box.setText(QLatin1Char('\n') + DlgCustomizationTool_v2::tr("There are settings that are not saved."));
    box.button(QMessageBox::Discard)->setText(DlgCustomizationTool_v2::tr("Don't Save"));
    box.setDefaultButton(QMessageBox::Save);
    return box.exec();
}

/// What the window says of a setting, in its language.
QString shownTitleOf(const Setting &setting, const QWidget &window)
{
    const auto *control =
        setting.control.name.isEmpty() ? nullptr : window.findChild<QWidget *>(setting.control.name);
    const auto *button = qobject_cast<const QAbstractButton *>(control);
    const QString shown = button ? button->text() : control ? control->accessibleName() : QString();
    return shown.isEmpty() ? QString(setting.title) : shown;
}

bool isOffered(const Setting &setting, const Product &product)
{
    const bool isForPackages = setting.place.section == Setting::Section::Installation;
    return (product.isEditor() || !setting.isOnlyForEditor) &&
           (!isForPackages || CCommon::GetPCWConfigType() == PCW_CONFIG_PACKAGE);
}

} // namespace

EditorXmlData DlgCustomizationTool_v2::settingsOnPages()
{
    const EditorXmlData before = *m_pEditorXmlData;
    ReloadEditorXmlData();
    EditorXmlData shown = *m_pEditorXmlData;
    *m_pEditorXmlData = before;
    // Nobody edits it on a page.
    shown.payloadInfo = {};
    return shown;
}

void DlgCustomizationTool_v2::markSaved()
{
    m_savedSettings = settingsOnPages();
    m_marks->look();
}

bool DlgCustomizationTool_v2::hasUnsavedSettings()
{
    return m_tabsInitialised && settingsOnPages() != m_savedSettings;
}

bool DlgCustomizationTool_v2::mayClose()
{
    if (!hasUnsavedSettings())
        return true;
    const int answer = askWhetherToSave(this);
    if (answer != QMessageBox::Save)
        return answer == QMessageBox::Discard;
    save();
    // A build has only begun.
    m_closesAfterBuild = isBuilding();
    return !m_closesAfterBuild && !hasUnsavedSettings();
}

QStringList DlgCustomizationTool_v2::changedSettings(const EditorXmlData &onPages) const
{
    QStringList titles;
    for (const Setting &setting : settings()) {
        const QString title = shownTitleOf(setting, *this);
        if (isOffered(setting, m_product) && differsFromDefault(setting, onPages, m_product) &&
            !titles.contains(title))
            titles += title;
    }
    return titles;
}

void DlgCustomizationTool_v2::tellSaved(const QString &path)
{
    markSaved();
    const QStringList changed = changedSettings(m_savedSettings);
    const QString size = QLocale().formattedDataSize(QFileInfo(path).size());
    QString text = tr("Saved: %1 (%2)").arg(path, size) + QLatin1Char('\n');
    text += changed.isEmpty()
                ? tr("All settings have their defaults.")
                : tr("Settings that differ from the defaults: %1").arg(changed.join(QStringLiteral(", ")));
    Messages::ofThisRun().tell(text, path);
}
