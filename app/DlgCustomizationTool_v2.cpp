// SPDX-License-Identifier: Apache-2.0
#include "app/DlgCustomizationTool_v2.h"

#include "app/ChangedMarks.h"
#include "app/CPDF_Waiting.h"
#include "app/DlgAbout.h"
#include "app/HelpSide.h"
#include "app/Messages.h"
#include "app/MessagesView.h"
#include "app/PageButton.h"
#include "app/ShowInFolder.h"
#include "app/StatusArea.h"
#include "app/ToolBarLook.h"
#include "app/WindowActions.h"
#include "config/CCommon.h"
#include "config/EditorXmlData.h"
#include "config/Product.h"
#include "core/Logging.h"
#include "pages/ICutsomizationHandler.h"
#include "pages/SharpPicture.h"
#include "ui_DlgCustomizationTool_v2.h"
#include "welcome/tab_import_xml.h"

#include <QButtonGroup>
#include <QDragEnterEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QScopedValueRollback>
#include <QStackedLayout>
#include <QThread>

#include <algorithm>

using namespace ToolBarLook;

EditorXmlData *const DlgCustomizationTool_v2::m_pEditorXmlData = &theEditorXmlData;

DlgCustomizationTool_v2::DlgCustomizationTool_v2(bool bEditor, PCW_CONFIGTYPE configType, QWidget *parent)
    : QDialog(parent, Qt::Window)
    , m_ui(std::make_unique<Ui::DlgCustomizationTool_v2>())
    , m_product(Product::of(bEditor))
{
    m_ui->setupUi(this);
    showSharpPicture(m_ui->label_pct_icon, QStringLiteral(":/img/pct.png"));
    styleToolBar();
    if (configType == PCW_CONFIG_PROFILE)
        styleToolBarForProfile();
    CCommon::SetPCWConfigType(configType);
    CCommon::SetPCWAppType(m_product.type);

    m_waiting = new CPDF_Waiting(this);
    m_stack = new QStackedLayout;
    m_stack->setContentsMargins(16, 16, 16, 16);
    m_ui->gridLayout->addLayout(m_stack, 1, 1, 2, 1);
    m_veil = new PageVeil(*m_stack, this);
    m_help = std::make_unique<HelpSide>(*this, *m_stack, *m_ui->tb_info);
    m_pageButtons = new QButtonGroup(this);
    m_pageButtons->setExclusive(true);
    if (!m_product.isEditor())
        m_currentPageId = configType == PCW_CONFIG_PROFILE ? 3 : 1;

    createMenu();
    createActions();
    addStatusArea();
    m_marks = new ChangedMarks(
        m_product, [this] { return settingsOnPages(); }, this);
    connect(m_marks, &ChangedMarks::looked, this, &DlgCustomizationTool_v2::showCounts);
    setAcceptDrops(true);
    InitWelcomeTab();
    connectButtons();
    EnableButtons(false);
}

DlgCustomizationTool_v2::~DlgCustomizationTool_v2()
{
    // The worker reads this window's pages.
    if (m_worker)
        m_worker->wait();
    delete m_worker;
}

void DlgCustomizationTool_v2::styleToolBar()
{
    m_ui->tb_open->setStyleSheet(toolButtonSheet(QStringLiteral("open")));
    m_ui->tb_open->setToolTip(toolTipText(tr("Open"), tr("Import a pkg installation package")));
    m_ui->tb_save->setStyleSheet(toolButtonSheet(QStringLiteral("save")));
    m_ui->tb_save->setToolTip(
        toolTipText(tr("Save"), tr("Save the configured settings as installation package")));
    m_ui->tb_info->setStyleSheet(checkableToolButtonSheet(QStringLiteral("info")));
    m_ui->tb_info->setToolTip(toolTipText(tr("Information"), tr("Customization Wizard Help")));
    m_ui->tb_about->setStyleSheet(toolButtonSheet(QStringLiteral("about")));
    m_ui->tb_about->setToolTip(toolTipText(tr("About"), tr("About Customization Wizard")));
}

void DlgCustomizationTool_v2::styleToolBarForProfile()
{
    m_ui->tb_open->setStyleSheet(toolButtonSheet(QStringLiteral("open2")));
    m_ui->tb_open->setToolTip(toolTipText(tr("Open"), tr("Import a .mobileconfig configuration profile")));
    m_ui->tb_save->setStyleSheet(toolButtonSheet(QStringLiteral("save")));
    m_ui->tb_save->setToolTip(toolTipText(
        tr("Save"), tr("Save the configured settings as a\u00a0.mobileconfig configuration profile")));
}

void DlgCustomizationTool_v2::createMenu()
{
    m_menu = new QMenu(this);
    QAction *guide = m_menu->addAction(tr("User Guide"));
    connect(guide, &QAction::triggered, this, &DlgCustomizationTool_v2::ShowUserGuide);
    QAction *about = m_menu->addAction(tr("About PCT"));
    connect(about, &QAction::triggered, this, &DlgCustomizationTool_v2::showAbout);
    m_ui->tb_about->setMenu(m_menu);
    m_ui->tb_about->setPopupMode(QToolButton::InstantPopup);
}

void DlgCustomizationTool_v2::connectButtons()
{
    connect(m_pageButtons, &QButtonGroup::idClicked, this, [this] {
        RefreshStackLayoutWidget();
        On_ReloadInformation();
    });
    connect(m_pageButtons, &QButtonGroup::idToggled, this, &DlgCustomizationTool_v2::reachChosenPageByTab);
    connect(m_ui->tb_open, &QToolButton::clicked, this, &DlgCustomizationTool_v2::openFile);
    connect(m_ui->tb_save, &QToolButton::clicked, this, &DlgCustomizationTool_v2::save);
    connect(m_ui->tb_info, &QToolButton::clicked, this, &DlgCustomizationTool_v2::ShowInfomation);
    const auto menuClosed = [this] {
        qCDebug(logApp, "about to hide");
        m_ui->tb_about->repaint();
    };
    connect(m_menu, &QMenu::aboutToHide, this, menuClosed, Qt::QueuedConnection);
}

bool DlgCustomizationTool_v2::Register(const std::shared_ptr<ICutsomizationHandler> &handler)
{
    if (!handler)
        return false;
    if (handler->IsOnlyForEditor() && !m_product.isEditor())
        return false;
    if (CCommon::GetPCWConfigType() == PCW_CONFIG_PROFILE && !handler->SupportsProfile())
        return false;
    const bool isNew = m_handlers.emplace(handler->GetTabId(), handler).second;
    if (isNew)
        CreateTabButton(handler);
    return isNew;
}

QToolButton *DlgCustomizationTool_v2::CreateTabButton(const std::shared_ptr<ICutsomizationHandler> &handler)
{
    auto *button = new PageButton(m_ui->widget_category);
    button->setObjectName(handler->GetTabName());
    button->setText(handler->GetTabTitle());
    button->setToolTip(toolTipText(handler->GetTabTitle(), handler->GetTabTooltip()));
    button->setIcon(pageButtonIcon(handler->GetTabIcon()));
    button->setIconSize({24, 24});
    button->setFixedHeight(40);
    button->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    button->setStyleSheet(pageButtonSheet());
    button->setCheckable(true);
    button->setEnabled(false);
    m_pageButtons->addButton(button, handler->GetTabId());

    QVBoxLayout *column = m_ui->verticalLayout_category;
    column->removeItem(m_ui->verticalSpacer);
    // Not beyond the end, where Qt 6 would write outside its list.
    column->insertWidget(std::min(handler->GetTabId(), column->count()), button);
    column->addItem(m_ui->verticalSpacer);
    // What stands below the buttons comes after them.
    setTabOrder(button, m_status->findChild<QToolButton *>());
    return button;
}

void DlgCustomizationTool_v2::createActions()
{
    WindowActions::Deeds deeds;
    deeds.open = [this] { m_ui->tb_open->click(); };
    deeds.save = [this] { m_ui->tb_save->click(); };
    deeds.find = [this] { findOnPage(); };
    deeds.showHelp = [this] { m_ui->tb_info->click(); };
    deeds.showGuide = [this] { ShowUserGuide(); };
    deeds.showAbout = [this] { showAbout(); };
    deeds.showMessages = [this] { showMessages(); };
    deeds.turnPage = [this](int by) { turnPage(by); };
    placeMenus(*new WindowActions(deeds, *this), *this);
}

void DlgCustomizationTool_v2::addStatusArea()
{
    const QString output = CCommon::GetPCWConfigType() == PCW_CONFIG_PROFILE ? tr("%1: configuration profile")
                                                                             : tr("%1: installer package");
    m_status = new StatusArea(output.arg(m_product.title), this);
    m_ui->gridLayout->addWidget(m_status, 2, 0);
    connect(m_status, &StatusArea::messagesWanted, this, &DlgCustomizationTool_v2::showMessages);
    connect(&Messages::ofThisRun(), &Messages::added, this, &DlgCustomizationTool_v2::countMessage);
}

void DlgCustomizationTool_v2::showOpenFile(const QString &path)
{
    m_status->setFile(path);
    setWindowFilePath(path);
}

void DlgCustomizationTool_v2::countMessage()
{
    if (!m_messages || !m_messages->isVisible())
        m_status->setUnseen(++m_unseenMessages);
}

void DlgCustomizationTool_v2::showMessages()
{
    if (!m_messages) {
        m_messages = new MessagesView(this);
        connect(m_messages, &MessagesView::fileWanted, this, &showInFolder);
    }
    m_unseenMessages = 0;
    m_status->setUnseen(0);
    m_messages->show();
    m_messages->raise();
    m_messages->activateWindow();
}

void DlgCustomizationTool_v2::showAbout()
{
    DlgAbout about(this);
    about.exec();
}

bool DlgCustomizationTool_v2::isBuilding() const
{
    // From the start of a worker until its result is shown, which ends later than the thread.
    return !isEnabled();
}

void DlgCustomizationTool_v2::closeEvent(QCloseEvent *event)
{
    if (isBuilding() || !mayClose()) {
        event->ignore();
        return;
    }
    QDialog::closeEvent(event);
}

void DlgCustomizationTool_v2::keyPressEvent(QKeyEvent *event)
{
    // A dialog would close; the main window does not lose the administrator's work to one key.
    if (event->matches(QKeySequence::Cancel)) {
        event->ignore();
        return;
    }
    QDialog::keyPressEvent(event);
}

void DlgCustomizationTool_v2::dragEnterEvent(QDragEnterEvent *event)
{
    passToPage(*event);
}

void DlgCustomizationTool_v2::dropEvent(QDropEvent *event)
{
    passToPage(*event);
}

void DlgCustomizationTool_v2::passToPage(QDropEvent &event)
{
    event.ignore();
    QWidget *page = pageForDrops();
    // What the page refuses comes back to its parents.
    if (!page || m_passesDrop)
        return;
    const QScopedValueRollback<bool> passing(m_passesDrop, true);
    // Sent, it would go to where the drag is, which is here.
    static_cast<QObject *>(page)->event(&event);
}

void DlgCustomizationTool_v2::resizeEvent(QResizeEvent *event)
{
    QDialog::resizeEvent(event);
    m_waiting->setpos();
    m_veil->follow();
}
