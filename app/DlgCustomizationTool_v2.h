// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "config/EditorXmlData.h"
#include "config/PcwTypes.h"

#include <QDialog>
#include <QPointer>
#include <QUrl>

#include <functional>
#include <map>
#include <memory>

class ChangedMarks;
class CPDF_Waiting;
class HelpSide;
class ICutsomizationHandler;
class MessagesView;
class PageVeil;
class QButtonGroup;
class QMenu;
class QSplitter;
class QStackedLayout;
class QThread;
class QToolButton;
class StatusArea;
class tab_import_xml;
struct BuildPlan;
struct Product;

namespace Ui {
class DlgCustomizationTool_v2;
}

/// The tool's one main window: a registry of settings pages, the pages that open the work, and the flows
/// that make an output. User-interface thread only, but for what is said to run in the build's worker.
class DlgCustomizationTool_v2 : public QDialog
{
    Q_OBJECT

public:
    /// Also sets the two modes of the process. `bEditor` is true for the Editor, false for the Reader.
    DlgCustomizationTool_v2(bool bEditor, PCW_CONFIGTYPE configType, QWidget *parent = nullptr);
    ~DlgCustomizationTool_v2() override;

    const Product &product() const { return m_product; }

    /// The record that every page is filled from and every output is made of.
    static EditorXmlData *const m_pEditorXmlData;

    // ---- Registry ----

    /// Adds a page and its button. False when there is no handler, when the page does not exist for this
    /// product or mode, or when its id is taken.
    bool Register(const std::shared_ptr<ICutsomizationHandler> &handler);

    /// Makes the button of a page and puts it into the column; disabled until something is loaded.
    QToolButton *CreateTabButton(const std::shared_ptr<ICutsomizationHandler> &handler);

    // ---- Pages and help ----

    /// Makes and shows the page that opens the work. Done once.
    void InitWelcomeTab();

    /// Builds every page up to the highest id that has a place in the stack, filled from the record. Done
    /// once.
    void InitTabWidgets();

    /// Fills every page from the record again. Always true.
    bool UpdateTabWidgets();

    /// Shows the page whose button is checked, or the welcome page as long as there are no pages.
    void RefreshStackLayoutWidget();

    /// Saving, and choosing a page.
    void EnableButtons(bool enable);

    /// Opens or closes the help panel beside the current page.
    void ShowInfomation(bool show);

    /// File name of the help for what is shown, URL-encoded; never empty.
    QString InfoName();

    /// Shows the user guide in place of the page. The information button is pressed as long as the guide is
    /// there; pressing it again, or choosing a page, closes the guide.
    void ShowUserGuide();

    /// The current page's splitter, or null when no page is shown.
    QSplitter *Splitter() const;

    /// Takes a vendor package to work on. False when it is not the product's, which the user is told.
    bool on_fileloaded(const QString &path);

    /// Fills record and pages from a profile file or, for an empty path, from the installed profile. A file
    /// that is no profile of the product is refused in silence.
    void on_profileload(const QString &path);

    /// Takes a file to work on as the Open button does: a package or a profile, as the mode wants. Nothing
    /// for an empty path.
    void openPath(const QString &path);

    // ---- Values of the pages' controls; also in the build's worker ----

    /// The value of the first control of that name that has one of the type: false, 0 or empty when no page
    /// has. `found` says whether one has and the validator, if any, accepts it; a refused value is
    /// reported to its page and returned all the same.
    bool GetBoolProperty(const QString &objectName, bool *found = nullptr,
                         const std::function<bool(bool)> &isAcceptable = {});
    int GetIntProperty(const QString &objectName, bool *found = nullptr,
                       const std::function<bool(int)> &isAcceptable = {});
    QString GetStringProperty(const QString &objectName, bool *found = nullptr,
                              const std::function<bool(const QString &)> &isAcceptable = {});

    /// Library names of the plug-ins that are marked, each followed by ";".
    QString EditorXmlGetPluginList();

    /// Brings the record up to date with the pages. Cannot fail: what no page offers becomes false, 0 or
    /// empty.
    void ReloadEditorXmlData();

    /// What the pages hold now, without the identity. The record stays as it is: looking never changes what a
    /// save writes.
    EditorXmlData settingsOnPages();

    /// Whether the pages hold something else than what was loaded or saved last.
    bool hasUnsavedSettings();

    // ---- Saving a package ----

    /// Asks where to, then builds in a worker behind the disabled window, tells how it went, and offers to
    /// sign the package when there is an identity for packages.
    void On_SavePackage();

    /// Runs in the worker: builds the package and leaves 0 in the window's build status, or 1 on failure.
    static void Process(DlgCustomizationTool_v2 *window, QString inputPackage, QString outputPackage,
                        const QString &documentPath);

    // ---- Saving a profile ----

    /// Asks where to and, if the installed profile is another one, under which identifier; writes the
    /// profile and offers to sign it.
    void On_SaveProfile();

public slots:
    /// Shows the help that goes with what is shown now. Pages may connect to it by name.
    void On_ReloadInformation();

protected:
    void showEvent(QShowEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    using Handlers = std::map<int, std::shared_ptr<ICutsomizationHandler>>;

    void styleToolBar();
    void styleToolBarForProfile();
    void createMenu();
    void connectButtons();
    void showAbout();
    void openFile();
    void save();
    bool mayClose();
    void markSaved();
    QStringList changedSettings(const EditorXmlData &onPages) const;
    void tellSaved(const QString &path);
    void addStatusArea();
    void showMessages();
    void countMessage();
    void showOpenFile(const QString &path);
    void createActions();
    void turnPage(int by);
    void findOnPage();
    void returnFocus();
    void closeIfAsked();
    QWidget *pageForDrops() const;
    void passToPage(QDropEvent &event);
    void reachChosenPageByTab();
    void showCounts();

    void addPage(QWidget *page);
    QWidget *addHosted(QWidget *page);
    QWidget *pageOf(int id);
    QWidget *makePackageWelcome();
    QWidget *makeProfileWelcome();
    void showFirstPage();
    void showImportPage();
    void importDocument(const QString &path);
    void uncheckPageButtons();

    template <typename Value, typename Validator>
    Value lookUp(const QString &objectName, bool *found, const Validator &isAcceptable);

    QString askDocumentName(const QString &proposed);
    QString askDocumentPath(const QString &outputPackage);
    void startBuild(const QString &outputPackage, const QString &documentPath);
    void runInWorker(const std::function<void()> &work, const std::function<void()> &showResult);
    void showBuildResult(const QString &outputPackage, bool documentKept);
    bool isBuilding() const;
    BuildPlan planOf(const QString &inputPackage, const QString &outputPackage, const QString &documentPath);

    QString askProfilePath();
    bool settleIdentifier();
    bool writeProfile(const QString &path);
    void offerSigning(const QString &path);
    void offerPackageSigning(const QString &package);
    void showSigningResult(bool isSigned);

    std::unique_ptr<Ui::DlgCustomizationTool_v2> m_ui;
    Handlers m_handlers;
    QStackedLayout *m_stack = nullptr;
    QButtonGroup *m_pageButtons = nullptr;
    QMenu *m_menu = nullptr;
    QPointer<CPDF_Waiting> m_waiting;
    QPointer<PageVeil> m_veil;
    QPointer<QWidget> m_welcome;
    QPointer<tab_import_xml> m_import;
    std::unique_ptr<HelpSide> m_help;
    QPointer<StatusArea> m_status;
    QPointer<ChangedMarks> m_marks;
    QPointer<QWidget> m_focusBeforeSave;
    QPointer<MessagesView> m_messages;
    EditorXmlData m_savedSettings;
    QPointer<QThread> m_worker;
    QString m_packagePath;
    const Product &m_product;
    bool m_tabsInitialised = false;
    bool m_closesAfterBuild = false;
    bool m_passesDrop = false;
    int m_unseenMessages = 0;
    int m_currentPageId = 0;
    int m_nBuildStatus = 0;
};
