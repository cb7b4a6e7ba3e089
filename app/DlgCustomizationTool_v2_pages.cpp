// SPDX-License-Identifier: Apache-2.0
#include "app/DlgCustomizationTool_v2.h"

#include "app/ChangedMarks.h"
#include "app/HelpSide.h"
#include "app/OpenedFile.h"
#include "app/PageButton.h"
#include "app/RegisterPages.h"
#include "config/CCommon.h"
#include "config/EditorXmlData.h"
#include "config/Product.h"
#include "pages/CTabWidget.h"
#include "pages/ICutsomizationHandler.h"
#include "ui_DlgCustomizationTool_v2.h"
#include "welcome/OpenFile.h"
#include "welcome/tab_import_xml.h"
#include "welcome/tab_welcome.h"
#include "welcome/tab_welcome_profile.h"

#include <QButtonGroup>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSplitter>
#include <QStackedLayout>

void DlgCustomizationTool_v2::addPage(QWidget *page)
{
    // Made before the page is shown, the splitter does not make it flicker.
    if (auto *tab = qobject_cast<CTabWidget *>(page))
        tab->Splitter();
    m_stack->addWidget(page);
}

QWidget *DlgCustomizationTool_v2::addHosted(QWidget *page)
{
    // The opening pages get a splitter from a host, so that help can be shown beside them as well.
    auto *host = new CTabWidget(this);
    auto *layout = new QVBoxLayout(host);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(page);
    addPage(host);
    return host;
}

void DlgCustomizationTool_v2::InitWelcomeTab()
{
    if (m_welcome)
        return;
    m_welcome =
        CCommon::GetPCWConfigType() == PCW_CONFIG_PROFILE ? makeProfileWelcome() : makePackageWelcome();
    m_stack->setCurrentWidget(addHosted(m_welcome));
    // Its contents end where those of the other pages do, which have the panel's edge beside them.
    On_ReloadInformation();
    // What there is to do first, rather than the first button of the toolbar.
    m_welcome->findChild<QPushButton *>()->setFocus();
}

QWidget *DlgCustomizationTool_v2::makePackageWelcome()
{
    auto *page = new tab_welcome(this);
    connect(page, &tab_welcome::sig_fileloaded, this, &DlgCustomizationTool_v2::on_fileloaded,
            Qt::QueuedConnection);
    return page;
}

QWidget *DlgCustomizationTool_v2::makeProfileWelcome()
{
    auto *page = new tab_welcome_profile(m_pEditorXmlData, this);
    connect(page, &tab_welcome_profile::sig_profileloaded, this, &DlgCustomizationTool_v2::on_profileload,
            Qt::QueuedConnection);
    const auto loadInstalled = [this] { on_profileload(QString()); };
    connect(page, &tab_welcome_profile::sig_systemprofileloaded, this, loadInstalled, Qt::QueuedConnection);
    return page;
}

QWidget *DlgCustomizationTool_v2::pageOf(int id)
{
    const auto entry = m_handlers.find(id);
    return id > highestPageId || entry == m_handlers.end() ? nullptr : entry->second->GetWidget(true);
}

void DlgCustomizationTool_v2::InitTabWidgets()
{
    if (m_tabsInitialised)
        return;
    for (const auto &[id, handler] : m_handlers) {
        QWidget *page = pageOf(id);
        if (!page)
            continue;
        handler->ImportProperty(page, m_pEditorXmlData);
        addPage(page);
        m_marks->watch(page);
    }
    m_tabsInitialised = true;
    markSaved();
}

bool DlgCustomizationTool_v2::UpdateTabWidgets()
{
    for (const auto &[id, handler] : m_handlers) {
        if (QWidget *page = pageOf(id))
            handler->ImportProperty(page, m_pEditorXmlData);
    }
    RefreshStackLayoutWidget();
    return true;
}

void DlgCustomizationTool_v2::RefreshStackLayoutWidget()
{
    QWidget *page = m_tabsInitialised ? pageOf(m_pageButtons->checkedId()) : m_welcome->parentWidget();
    if (page)
        m_stack->setCurrentWidget(page);
}

void DlgCustomizationTool_v2::showFirstPage()
{
    const auto first = m_handlers.lower_bound(m_currentPageId);
    if (first == m_handlers.end() || first->first > highestPageId)
        return;
    m_pageButtons->button(first->first)->setChecked(true);
    RefreshStackLayoutWidget();
}

void DlgCustomizationTool_v2::uncheckPageButtons()
{
    QAbstractButton *checked = m_pageButtons->checkedButton();
    if (!checked)
        return;
    m_pageButtons->setExclusive(false);
    checked->setChecked(false);
    m_pageButtons->setExclusive(true);
}

void DlgCustomizationTool_v2::showCounts()
{
    for (const auto &[id, handler] : m_handlers) {
        if (QWidget *page = handler->GetWidget(false))
            qobject_cast<PageButton *>(m_pageButtons->button(id))->setCount(m_marks->countOn(page));
    }
}

void DlgCustomizationTool_v2::reachChosenPageByTab()
{
    const QAbstractButton *chosen = m_pageButtons->checkedButton();
    for (QAbstractButton *button : m_pageButtons->buttons())
        button->setFocusPolicy(!chosen || button == chosen ? Qt::TabFocus : Qt::NoFocus);
}

void DlgCustomizationTool_v2::turnPage(int by)
{
    QList<QAbstractButton *> buttons;
    for (const auto &[id, handler] : m_handlers) {
        if (id <= highestPageId && m_pageButtons->button(id)->isEnabled())
            buttons += m_pageButtons->button(id);
    }
    if (buttons.isEmpty())
        return;
    const auto count = buttons.size();
    const auto shown = buttons.indexOf(m_pageButtons->checkedButton());
    const auto next = shown < 0 && by < 0 ? count - 1 : (shown + by + count) % count;
    buttons.at(next)->click();
}

void DlgCustomizationTool_v2::findOnPage()
{
    for (QLineEdit *line : findChildren<QLineEdit *>(QStringLiteral("lineEdit_filter"))) {
        if (!line->isVisible())
            continue;
        line->setFocus(Qt::ShortcutFocusReason);
        line->selectAll();
    }
}

QWidget *DlgCustomizationTool_v2::pageForDrops() const
{
    for (QWidget *page : {m_welcome.data(), static_cast<QWidget *>(m_import.data())}) {
        if (page && m_stack->currentWidget()->isAncestorOf(page))
            return page;
    }
    return nullptr;
}

void DlgCustomizationTool_v2::EnableButtons(bool enable)
{
    m_ui->tb_save->setEnabled(enable);
    for (QAbstractButton *button : m_pageButtons->buttons())
        button->setEnabled(enable);
}

bool DlgCustomizationTool_v2::on_fileloaded(const QString &path)
{
    // A drop reaches the page even while the window is disabled for a build.
    if (path.isEmpty() || isBuilding())
        return false;
    if (!CCommon::CheckPkg(path, m_product.isEditor())) {
        const QString text = m_product.isEditor()
                                 ? tr("Please select the installation package for Pelix PDF Editor")
                                 : tr("Please select the installation package for Pelix PDF Reader");
        QMessageBox::warning(this, QString(), text + QLatin1Char('\n'), QMessageBox::Ok);
        return false;
    }
    InitTabWidgets();
    showFirstPage();
    On_ReloadInformation();
    EnableButtons(true);
    if (!m_import)
        showImportPage();
    m_packagePath = path;
    showOpenFile(path);
    logWhatABuildWouldSay(path, m_product);
    return true;
}

void DlgCustomizationTool_v2::showImportPage()
{
    m_import = new tab_import_xml(this);
    connect(m_import, &tab_import_xml::sig_fileloaded, this, &DlgCustomizationTool_v2::importDocument,
            Qt::QueuedConnection);
    m_stack->setCurrentWidget(addHosted(m_import));
    // With its button still checked, the first page could not be chosen by a click.
    uncheckPageButtons();
    On_ReloadInformation();
}

void DlgCustomizationTool_v2::importDocument(const QString &path)
{
    if (path.isEmpty() || isBuilding() || !CCommon::ParseXml(path, m_pEditorXmlData))
        return;
    UpdateTabWidgets();
    markSaved();
    showFirstPage();
    On_ReloadInformation();
    EnableButtons(true);
}

void DlgCustomizationTool_v2::openFile()
{
    const bool profile = CCommon::GetPCWConfigType() == PCW_CONFIG_PROFILE;
    openPath(chooseFileToOpen(this, profile ? tr("configration profiles (*.mobileconfig)")
                                            : tr("Package files (*.pkg)")));
}

void DlgCustomizationTool_v2::openPath(const QString &path)
{
    // A profile's empty path would stand for the installed one.
    if (path.isEmpty())
        return;
    if (CCommon::GetPCWConfigType() == PCW_CONFIG_PROFILE)
        on_profileload(path);
    else
        on_fileloaded(path);
}

void DlgCustomizationTool_v2::save()
{
    m_focusBeforeSave = focusWidget();
    m_ui->tb_save->setEnabled(false);
    if (CCommon::GetPCWConfigType() == PCW_CONFIG_PROFILE)
        On_SaveProfile();
    else
        On_SavePackage();
    m_ui->tb_save->setEnabled(true);
    returnFocus();
}

void DlgCustomizationTool_v2::returnFocus()
{
    // What is disabled gives its focus away: the button during the save, the window during a build.
    if (!isBuilding() && m_focusBeforeSave)
        m_focusBeforeSave->setFocus();
}

void DlgCustomizationTool_v2::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    if (CCommon::GetPCWConfigType() != PCW_CONFIG_PROFILE || m_tabsInitialised)
        return;
    InitTabWidgets();
    EnableButtons(true);
}

QString DlgCustomizationTool_v2::InfoName()
{
    const auto entry = m_handlers.find(m_pageButtons->checkedId());
    const bool pageShown = m_tabsInitialised && entry != m_handlers.end() && entry->first <= highestPageId;
    const QString name = pageShown ? entry->second->GetInfoName() : QString();
    return name.isEmpty() ? QStringLiteral("Welcome.html") : name;
}

QSplitter *DlgCustomizationTool_v2::Splitter() const
{
    return m_help->splitter();
}

void DlgCustomizationTool_v2::On_ReloadInformation()
{
    ShowInfomation(m_ui->tb_info->isChecked());
}

void DlgCustomizationTool_v2::ShowInfomation(bool show)
{
    m_help->showPanel(show, InfoName());
}

void DlgCustomizationTool_v2::ShowUserGuide()
{
    m_help->showGuide();
}
